// The "Select Compliance Measurements" tab, driven through its widgets on a dialog opened as the
// host opens it: which signal types it offers per cycle, what it lists and titles, how changes of
// the setup page treat the selection, the PDF output widgets and the directory chooser, and what
// Apply stores and the netlist then writes.

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QColor>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGroupBox>
#include <QHash>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSet>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeWidget>
#include <functional>
#include <ostream>

#include "support/BlockReader.h"
#include "support/DialogFixture.h"
#include "support/SelectionPages.h"

inline void PrintTo(const QStringList& texts, std::ostream* out) {
    *out << '{' << texts.join(", ").toStdString() << '}';
}

namespace {

using lanetap_test::childTexts;
using lanetap_test::OpenDialog;
using IdsByGroup = QHash<QString, QSet<int>>;

constexpr int complianceTab = 4;

// A DDR instance whose ports sit on nets named after their pins, so that a controller and a
// memory with the same pins are connected pin to pin.
QString ddrInstance(const QString& name, const QString& cell, const QString& refDes,
                    const QStringList& pins, const QString& parameters) {
    QStringList terminals;
    QStringList ports;
    for (const QString& pin : pins) {
        const QString family = pin.left(pin.size() - 1);
        terminals << QString(R"({"name":"%1","net":"n_%1"})").arg(pin);
        ports << QString(R"({"port":"%1","pin":"%1","refDes":"%2","channel":0,"signal":"%3",)"
                         R"("index":%4})")
                     .arg(pin, refDes, family, pin.right(1));
    }
    return QString(R"({"name":"%1","cell":"%2","parameters":{%3},"terminals":[%4],)"
                   R"("ddrPorts":[%5]})")
        .arg(name, cell, parameters, terminals.join(','), ports.join(','));
}

const QStringList busPins = {"DQ0", "DQS_t0", "DQS_c0", "CK_t0", "CK_c0"};

QString controllerInstance(const QString& simulationMode = "transient") {
    return ddrInstance("C1", "DDR_Controller", "U1", busPins,
                       QString(R"("DDRIbisFile":"c.ibs","RefDesName":"U1","DataMode":"read",)"
                               R"("SimulationMode":"%1","BurstMode":"No BURST",)"
                               R"("DataRate":"3200","DataRateUnit":"Mbps","DataRateType":"1T")")
                           .arg(simulationMode));
}

QString memoryInstance(const QStringList& pins = busPins) {
    return ddrInstance("M2", "DDR_Memory", "U2", pins,
                       R"("DDRIbisFile":"m.ibs","RefDesName":"U2","DieMode":"No")");
}

// The probe opens on the compliance tab with compliance on, unless `parameters` says otherwise.
QString probe(const QString& parameters = {}) {
    QString values = R"("TabWidgetTabNumber":"4","EnableComplianceMeasurements":"1")";
    if (!parameters.isEmpty()) {
        values += "," + parameters;
    }
    return lanetap_test::probeInstance("X1", values);
}

// Controller U1 and memory U2 share the data bit, the strobe pair and the clock pair.
QByteArray fullBus(const QString& probeParameters = {}) {
    return lanetap_test::designText(
        {controllerInstance(), memoryInstance(), probe(probeParameters)});
}

// The compliance tab's widgets, with the moves a user makes on them.
class CompliancePage {
public:
    explicit CompliancePage(OpenDialog& opened)
        : opened(opened),
          types(opened.find<QTreeWidget>("selectComplianceSelectedSignalTree")),
          available(opened.find<QTreeWidget>("selectComplianceAvailableMeasurementTree")),
          selected(opened.find<QTreeWidget>("selectComplianceSelectedMeasurementTree")) {}

    // Leaves the tab and comes back, as the user does to see it rebuilt.
    void enter() {
        auto* tabs = opened.find<QTabWidget>("measurementTabs");
        tabs->setCurrentIndex(0);
        tabs->setCurrentIndex(complianceTab);
    }
    QComboBox* box(const char* name) { return opened.find<QComboBox>(name); }
    QString title() { return opened.find<QGroupBox>("complianceMeasurementsGroup")->title(); }
    QString description() { return opened.find<QLabel>("complianceDescriptionLabel")->text(); }

    void pickType(const QString& type) { ASSERT_TRUE(lanetap_test::choose(types, {type})); }
    void add(const QString& type, const QString& name) {
        move(type, name, available, "addComplianceButton");
    }
    void remove(const QString& type, const QString& name) {
        move(type, name, selected, "removeComplianceButton");
    }
    // The selected names of a signal type, as the page shows them when the type is picked.
    QStringList selectedOf(const QString& type) {
        types->setCurrentItem(nullptr);
        pickType(type);
        return childTexts(selected);
    }

    OpenDialog& opened;
    QTreeWidget* types;
    QTreeWidget* available;
    QTreeWidget* selected;

private:
    void move(const QString& type, const QString& name, QTreeWidget* from, const char* button) {
        pickType(type);
        ASSERT_TRUE(lanetap_test::choose(from, {name}));
        opened.find<QPushButton>(button)->click();
    }
};

// A column of the top-level items of a flat tree.
QStringList columnTexts(QTreeWidget* tree, int column) {
    QStringList texts;
    for (int i = 0; i < tree->topLevelItemCount(); ++i) {
        texts << tree->topLevelItem(i)->text(column);
    }
    return texts;
}

// Runs `act` on the directory chooser as soon as it is open, while the button's click waits in
// the chooser's own event loop.
void whenChooserOpens(const std::function<void(QFileDialog*)>& act, int attempts = 500) {
    QTimer::singleShot(10, [act, attempts] {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            auto* chooser = qobject_cast<QFileDialog*>(widget);
            if (chooser && chooser->isVisible()) {
                act(chooser);
                return;
            }
        }
        if (attempts > 0) {
            whenChooserOpens(act, attempts - 1);
        } else {
            ADD_FAILURE() << "no directory chooser opened";
        }
    });
}

}  // namespace

TEST(CompliancePage, OffersTheSignalTypesOfTheReceivingSide) {
    OpenDialog opened(fullBus());
    CompliancePage page(opened);
    // Reading: data and strobe are received by the controller, the clock by the memory.
    ASSERT_EQ(childTexts(page.types), QStringList({"CK", "DQ", "DQS"}));
    EXPECT_EQ(columnTexts(page.types, 1),
              QStringList({"DDR_Memory", "DDR_Controller", "DDR_Controller"}));
    EXPECT_EQ(columnTexts(page.types, 2), QStringList({"CK", "DQ", "DQS"}));
    EXPECT_EQ(page.types->topLevelItem(1)->foreground(1).color(), QColor(Qt::darkGreen));

    // Writing: the memory receives everything.
    page.box("modeOfOperationBox")->setCurrentText("Write");
    page.enter();
    EXPECT_EQ(columnTexts(page.types, 1), QStringList({"DDR_Memory", "DDR_Memory", "DDR_Memory"}));

    // A memory with the clock alone: no data or strobe of the memory to look at in writing.
    OpenDialog clockOnly(lanetap_test::designText(
        {controllerInstance(), memoryInstance({"CK_t0", "CK_c0"}), probe()}));
    CompliancePage other(clockOnly);
    EXPECT_EQ(childTexts(other.types), QStringList({"CK", "DQ", "DQS"}));
    other.box("modeOfOperationBox")->setCurrentText("Write");
    other.enter();
    EXPECT_EQ(childTexts(other.types), QStringList({"CK"}));

    // A controller alone offers nothing in writing: the page is empty and says what to do.
    OpenDialog lone(lanetap_test::designText({controllerInstance(), probe()}));
    CompliancePage empty(lone);
    EXPECT_EQ(childTexts(empty.types), QStringList({"DQ", "DQS"}));
    empty.box("modeOfOperationBox")->setCurrentText("Write");
    empty.enter();
    EXPECT_EQ(empty.types->topLevelItemCount(), 0);
    EXPECT_EQ(empty.available->topLevelItemCount(), 0);
    EXPECT_EQ(empty.selected->topLevelItemCount(), 0);
    EXPECT_EQ(empty.title(), "Select Signal ID/Signal Group from Selected Signal Tree");
}

TEST(CompliancePage, ListsTitlesAndDescribesTheTestsOfTheSettings) {
    OpenDialog opened(fullBus());
    opened.dialog()->window()->show();  // for clicks on the trees
    CompliancePage page(opened);
    page.pickType("DQ");
    EXPECT_EQ(page.title(),
              "Select Measurements for Selected Signal: DQ for DDR4 Continuous Read mode");
    // DDR4 data tests of the read cycle that a continuous strobe allows, sorted, each name once.
    EXPECT_EQ(childTexts(page.available),
              QStringList({"Overshoot amplitude (DQ)", "Overshoot area (Max Abs Level) (DQ)",
                           "Overshoot area (VDDQ to Max Abs Level) (DQ)", "SRQseF", "SRQseR",
                           "Undershoot amplitude (DQ)", "Undershoot area (Min Abs Level) (DQ)",
                           "Undershoot area (VSSQ to Min Abs Level) (DQ)", "VOH(AC)", "VOH(DC)",
                           "VOL(AC)", "VOL(DC)", "tDQSQ", "tDQSQ_DBI", "tQH", "tQH_DBI"}));
    EXPECT_EQ(page.selected->topLevelItemCount(), 0);
    // With nothing selected, the first available test is described.
    EXPECT_EQ(page.description(), "Description:\nPeak amplitude of AC overshoot");

    // A bursting strobe adds the tests that need one.
    page.box("dqsSignalModeBox")->setCurrentText("Burst");
    page.enter();
    page.pickType("DQ");
    EXPECT_EQ(page.title(), "Select Measurements for Selected Signal: DQ for DDR4 Burst Read mode");
    EXPECT_TRUE(childTexts(page.available).contains("tHZDQ"));

    page.add("DQ", "tDQSQ");
    EXPECT_EQ(childTexts(page.selected), QStringList({"tDQSQ"}));
    EXPECT_FALSE(childTexts(page.available).contains("tDQSQ"));
    // Clicking a test describes it.
    lanetap_test::clickItem(page.available, lanetap_test::itemAt(page.available, {"VOH(AC)"}));
    EXPECT_EQ(page.description(),
              "Description:\nAC Output Logic High.\nMeasurement dependent on corresponding DQS "
              "signal.");
    // Picking the type again describes the first selected test.
    page.pickType("CK");
    page.pickType("DQ");
    EXPECT_EQ(page.description(),
              "Description:\nDQS-DQ skew for DQS and associated DQ signals.\nMeasurement dependent "
              "on corresponding DQS and CK signal.");

    page.remove("DQ", "tDQSQ");
    EXPECT_EQ(page.selectedOf("DQ"), QStringList());
    EXPECT_TRUE(childTexts(page.available).contains("tDQSQ"));
}

TEST(CompliancePage, ACycleOrStrobeChangeEmptiesOnlyDataAndStrobeSelections) {
    OpenDialog opened(fullBus());
    CompliancePage page(opened);
    page.add("DQ", "Overshoot amplitude (DQ)");
    page.add("DQS", "Overshoot amplitude (DQS)");
    page.add("CK", "VSEH(CK)");

    page.box("modeOfOperationBox")->setCurrentText("Write");
    page.box("modeOfOperationBox")->setCurrentText("Read");
    page.enter();
    EXPECT_EQ(page.selectedOf("DQ"), QStringList());
    EXPECT_EQ(page.selectedOf("DQS"), QStringList());
    EXPECT_EQ(page.selectedOf("CK"), QStringList({"VSEH(CK)"}));

    page.add("DQ", "Overshoot amplitude (DQ)");
    page.box("dqsSignalModeBox")->setCurrentText("Burst");
    page.enter();
    EXPECT_EQ(page.selectedOf("DQ"), QStringList());
    EXPECT_EQ(page.selectedOf("CK"), QStringList({"VSEH(CK)"}));

    // The emptied groups stay as keys without ids; the clock keeps both ids of its name.
    opened.find<QPushButton>("applyButton")->click();
    EXPECT_EQ(lanetap_test::storedIdMap(opened.stored("SelectedGroupComplianceListMap")),
              IdsByGroup({{"DQ", {}}, {"DQS", {}}, {"CK", {10333, 10337}}}));
}

TEST(CompliancePage, AppliedChoiceReachesTheNetlistWithAllIdsOfTheName) {
    OpenDialog opened(fullBus());
    CompliancePage page(opened);
    page.add("CK", "VSEH(CK)");
    opened.find<QPushButton>("applyButton")->click();
    EXPECT_EQ(opened.stored("EnableComplianceMeasurements"), "1");
    EXPECT_EQ(lanetap_test::storedIdMap(opened.stored("SelectedGroupComplianceListMap")),
              IdsByGroup({{"CK", {10333, 10337}}}));

    const standin::CallResult result = opened.host().host.netlistProbe("X1");
    ASSERT_TRUE(result.ok) << result.error;
    const lanetap_test::NetlistBlock block =
        lanetap_test::readBlock(QString::fromStdString(result.text));
    ASSERT_EQ(block.complianceMeasMap.size(), 1) << result.text;
    const QStringList line = block.complianceMeasMap.first();
    ASSERT_EQ(line.size(), 3) << result.text;
    EXPECT_EQ(line[0], "CK");
    EXPECT_EQ(QSet<QString>({line[1], line[2]}), QSet<QString>({"10333", "10337"}));
}
