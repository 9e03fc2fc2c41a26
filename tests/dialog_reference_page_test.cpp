// The "Select Reference Signal" tab: the reference every signal gets when the dialog opens, the
// signal-measurement pairs, their titles and colours, what may serve as reference, and moving
// references in and out.

#include <gtest/gtest.h>

#include <QGroupBox>
#include <QPushButton>
#include <QRegularExpression>
#include <QTabWidget>
#include <QTreeWidget>

#include "support/DialogFixture.h"
#include "support/SelectionPages.h"

using lanetap_test::busDesign;
using lanetap_test::childTexts;
using lanetap_test::choose;
using lanetap_test::itemAt;
using lanetap_test::leafKeys;
using lanetap_test::OpenDialog;
using lanetap_test::storedReferenceMap;

namespace {

constexpr int skewId = 1;

// A DDR part on channel 0 whose pins ("DQ13", "DQS_t1", "DM_n1", ...) each have a net of their
// own and sit on the designator `refDes`.
QString ddrPart(const QString& name, const QString& cell, const QString& refDes,
                const QString& parameters, const QStringList& pins) {
    QStringList terminals;
    QStringList ports;
    for (const QString& pin : pins) {
        QString family = pin;
        family.remove(QRegularExpression("\\d+$"));
        terminals << QString(R"({"name":"%1","net":"n_%2_%1"})").arg(pin, name);
        ports << QString(R"({"port":"%1","pin":"%1","refDes":"%2","channel":0,)"
                         R"("signal":"%3","index":%4})")
                     .arg(pin, refDes, family, pin.mid(family.size()));
    }
    return QString(
               R"({"name":"%1","cell":"%2","parameters":{%3},"terminals":[%4],"ddrPorts":[%5]})")
        .arg(name, cell, parameters, terminals.join(","), ports.join(","));
}

const QStringList strobes{"DQS_t0", "DQS_t1", "DQS_t2", "DQS_t3"};

// Four memories whose designators are organised in every way the strobe numbering knows. The
// controller, first in the design, makes U2 and U4 four bits wide with odd strobes; memory U2,
// read later, makes U2 eight bits wide with even strobes again. U4 is known to the controller
// alone. Clocks stand at U1 (CK0) and U2 (CK1); U3 has none.
QByteArray layoutDesign() {
    const QString controller =
        ddrPart("C1", "DDR_Controller", "C1",
                R"("RefDesName":"U4 U2","RefDesDQM":"x4 x4","DQSIndex":"Odd",)"
                R"("SimulationMode":"transient","DataMode":"read")",
                {});
    const QString u1 = ddrPart("M1", "DDR_Memory", "U1",
                               R"("RefDesName":"U1","RefDesDQM":"x8","Tdqs":"yes",)"
                               R"("DQSIndex":"Continuous")",
                               strobes + QStringList{"DQ13", "A0", "CKE0", "CK_t0"});
    const QString u2 =
        ddrPart("M2", "DDR_Memory", "U2",
                R"("RefDesName":"U2","RefDesDQM":"x8","Tdqs":"yes","DQSIndex":"Even")",
                strobes + QStringList{"DQ13", "A0", "CK_t1"});
    const QString u3 =
        ddrPart("M3", "DDR_Memory", "U3",
                R"("RefDesName":"U3","RefDesDQM":"x8","Tdqs":"yes","DQSIndex":"Odd")",
                strobes + QStringList{"DQ13", "DM_n1", "A0"});
    const QString u4 =
        ddrPart("M4", "DDR_Memory", "U4", R"("RefDesName":"")", strobes + QStringList{"DQ13"});
    return lanetap_test::designText(
        {controller, u1, u2, u3, u4,
         lanetap_test::probeInstance("X1", R"("TabWidgetTabNumber":"4")")});
}

QTreeWidgetItem* itemWithKey(QTreeWidgetItem* item, const QString& key) {
    if (item->parent() && item->text(2) == key) {
        return item;
    }
    for (int i = 0; i < item->childCount(); ++i) {
        if (QTreeWidgetItem* found = itemWithKey(item->child(i), key)) {
            return found;
        }
    }
    return nullptr;
}

// The colour a column was given, invalid while it has none.
QColor colourOf(const QTreeWidgetItem* item, int column) {
    const QBrush brush = item->foreground(column);
    return brush.style() == Qt::NoBrush ? QColor() : brush.color();
}

// The reference tab and the two tabs before it of a dialog opened with every tab unlocked.
struct ReferenceTab {
    explicit ReferenceTab(OpenDialog& dialog) : opened(dialog) {}

    void enter() { tabs->setCurrentIndex(3); }

    // Adds a measurement on the measurement tab to the item at `path` of its signal tree.
    void addMeasurement(const QStringList& path, const QString& name) {
        tabs->setCurrentIndex(2);
        ASSERT_TRUE(choose(opened.find<QTreeWidget>("selectMeasurementSelectedSignalTree"), path));
        ASSERT_TRUE(
            choose(opened.find<QTreeWidget>("selectMeasurementAvailableMeasurementTree"), {name}));
        opened.find<QPushButton>("addMeasurementButton")->click();
    }

    QTreeWidgetItem* signal(const QString& key) {
        return itemWithKey(signals->invisibleRootItem(), key);
    }
    void chooseSignal(const QString& key) {
        QTreeWidgetItem* item = signal(key);
        ASSERT_NE(item, nullptr) << key.toStdString();
        signals->setCurrentItem(item);
    }
    void chooseMeasurement(const QString& name) { ASSERT_TRUE(choose(measurements, {name})); }

    // Makes the item at `path` of a reference tree current and presses the button under it.
    void move(QTreeWidget* from, const QStringList& path) {
        ASSERT_TRUE(choose(from, path)) << path.join("/").toStdString();
        opened
            .find<QPushButton>(from == available ? "addRefSignalButton" : "removeRefSignalButton")
            ->click();
    }

    QString title() const { return group->title(); }
    bool referenceTreesEmpty() const {
        return available->topLevelItemCount() == 0 && selected->topLevelItemCount() == 0;
    }
    // The references of one pair as Apply stores them.
    QSet<QString> storedReferences(const QString& key, int id) {
        opened.find<QPushButton>("applyButton")->click();
        return storedReferenceMap(opened.stored("SelectedMeasurementsRefSignalListMap"))
            .value(key)
            .value(id);
    }

    OpenDialog& opened;
    QTabWidget* tabs = opened.find<QTabWidget>("measurementTabs");
    QTreeWidget* signals = opened.find<QTreeWidget>("selectRefSignalSelectedSignalTree");
    QTreeWidget* measurements = opened.find<QTreeWidget>("selectRefSignalSelectedMeasurementTree");
    QTreeWidget* available = opened.find<QTreeWidget>("selectRefSignalAvailableRefSignalTree");
    QTreeWidget* selected = opened.find<QTreeWidget>("selectRefSignalSelectedRefSignalTree");
    QGroupBox* group = opened.find<QGroupBox>("RefSignalSelectionGroup");
};

// The layout design with every signal selected and "Skew" chosen for every signal type, on the
// reference tab.
struct SkewEverywhere {
    SkewEverywhere() {
        opened.find<QTabWidget>("measurementTabs")->setCurrentIndex(1);
        auto* available = opened.find<QTreeWidget>("selectSignalAvailableSignalTree");
        while (available->topLevelItemCount() > 0) {
            available->setCurrentItem(available->topLevelItem(0));
            opened.find<QPushButton>("addSignalButton")->click();
        }
        for (const char* type : {"A", "CK", "CKE", "DM", "DQ", "DQS"}) {
            tab.addMeasurement({type}, "Skew");
        }
        tab.enter();
    }
    // The references "Skew" of the signal starts with.
    QSet<QString> defaultsOf(const QString& key) {
        tab.chooseSignal(key);
        EXPECT_EQ(tab.measurements->currentItem() ? tab.measurements->currentItem()->text(0) : "",
                  "Skew");
        return leafKeys(tab.selected);
    }

    OpenDialog opened{layoutDesign()};
    ReferenceTab tab{opened};
};

}  // namespace

TEST(DefaultReferences, StrobesFollowWidthAndNumberingAndCommandsTheirNodesClock) {
    SkewEverywhere page;
    // DQ13 is in the second byte: strobe 1 counted continuously, 2 among even and 3 among odd
    // strobes. Four bits wide it is in the fourth nibble, strobe 3, whatever the numbering.
    EXPECT_EQ(page.defaultsOf("DQ_Ch0_U1_DQ13"), QSet<QString>{"DQS_Ch0_U1_DQS1"});
    EXPECT_EQ(page.defaultsOf("DQ_Ch0_U2_DQ13"), QSet<QString>{"DQS_Ch0_U2_DQS2"});
    EXPECT_EQ(page.defaultsOf("DQ_Ch0_U3_DQ13"), QSet<QString>{"DQS_Ch0_U3_DQS3"});
    EXPECT_EQ(page.defaultsOf("DQ_Ch0_U4_DQ13"), QSet<QString>{"DQS_Ch0_U4_DQS3"});
    // A data mask counts its own index as the byte: mask 1 with odd strobes is strobe 3.
    EXPECT_EQ(page.defaultsOf("DM_Ch0_U3_DM1"), QSet<QString>{"DQS_Ch0_U3_DQS3"});
    // Command signals and strobes take the clock at their node, whatever its number.
    EXPECT_EQ(page.defaultsOf("A_Ch0_U1_A0"), QSet<QString>{"CK_Ch0_U1_CK0"});
    EXPECT_EQ(page.defaultsOf("CKE_Ch0_U1_CKE0"), QSet<QString>{"CK_Ch0_U1_CK0"});
    EXPECT_EQ(page.defaultsOf("A_Ch0_U2_A0"), QSet<QString>{"CK_Ch0_U2_CK1"});
    EXPECT_EQ(page.defaultsOf("DQS_Ch0_U2_DQS3"), QSet<QString>{"CK_Ch0_U2_CK1"});
    // A clock refers to itself.
    EXPECT_EQ(page.defaultsOf("CK_Ch0_U2_CK1"), QSet<QString>{"CK_Ch0_U2_CK1"});

    // Without a clock at its node a command signal looks for CK0 there, which U3 lacks too: its
    // "Skew" has no reference and shows red, as does the signal's whole row.
    EXPECT_TRUE(page.defaultsOf("A_Ch0_U3_A0").isEmpty());
    QTreeWidgetItem* unreferenced = page.tab.signal("A_Ch0_U3_A0");
    EXPECT_EQ(colourOf(unreferenced, 0), QColor(Qt::red));
    EXPECT_EQ(colourOf(unreferenced, 1), QColor(Qt::red));
    EXPECT_EQ(colourOf(page.tab.measurements->topLevelItem(0), 0), QColor(Qt::red));
}

TEST(ReferenceCandidates, DataAndCommandSignalsExcludeEachOtherWhileClocksTakeAnything) {
    SkewEverywhere page;
    page.tab.chooseSignal("DQ_Ch0_U1_DQ13");
    EXPECT_EQ(childTexts(page.tab.available), (QStringList{"CK", "DM", "DQ", "DQS"}));
    // The signal itself is a candidate.
    EXPECT_TRUE(leafKeys(page.tab.available).contains("DQ_Ch0_U1_DQ13"));

    page.tab.chooseSignal("DM_Ch0_U3_DM1");
    EXPECT_EQ(childTexts(page.tab.available), (QStringList{"CK", "DM", "DQ", "DQS"}));

    page.tab.chooseSignal("CKE_Ch0_U1_CKE0");
    EXPECT_EQ(childTexts(page.tab.available), (QStringList{"A", "CK", "CKE", "DM"}));
    page.tab.chooseSignal("A_Ch0_U2_A0");
    EXPECT_EQ(childTexts(page.tab.available), (QStringList{"A", "CK", "CKE", "DM"}));

    page.tab.chooseSignal("CK_Ch0_U1_CK0");
    EXPECT_EQ(childTexts(page.tab.available), (QStringList{"A", "CK", "CKE", "DM", "DQ", "DQS"}));
    // Its own record is selected already and so no longer offered.
    EXPECT_FALSE(leafKeys(page.tab.available).contains("CK_Ch0_U1_CK0"));
}

namespace {

// DQ17 of U2 has no strobe DQS2 and so no default reference; DQ2 has its strobe DQS0.
QByteArray storedSkewDesign() {
    return busDesign(R"("TabWidgetTabNumber":"4",)"
                     R"("SelectedSignalList":"DQ_Ch0_U2_DQ2,DQ_Ch0_U2_DQ17,DQ_Ch0_U2_DQ10,",)"
                     R"("SelectedMeasurementsListMap":"DQ_Ch0_U2_DQ2 1 3 ,DQ_Ch0_U2_DQ17 1 ,")");
}

}  // namespace

TEST(ReferenceMoves, AMissingReferenceShowsRedUntilOneIsAddedAndAgainWhenItGoes) {
    OpenDialog opened(storedSkewDesign());
    ReferenceTab tab(opened);
    tab.enter();
    // The first signal is current; DQ17, further down, is marked on entering all the same.
    ASSERT_EQ(tab.signals->currentItem(), tab.signal("DQ_Ch0_U2_DQ2"));
    QTreeWidgetItem* dq17 = tab.signal("DQ_Ch0_U2_DQ17");
    ASSERT_NE(dq17, nullptr);
    EXPECT_EQ(colourOf(dq17, 0), QColor(Qt::red));
    EXPECT_EQ(colourOf(dq17, 1), QColor(Qt::red));
    // A signal with no measurement keeps the colours of the tree.
    QTreeWidgetItem* dq10 = tab.signal("DQ_Ch0_U2_DQ10");
    EXPECT_EQ(colourOf(dq10, 0), QColor());
    EXPECT_EQ(colourOf(dq10, 1), QColor(Qt::darkGreen));

    tab.chooseSignal("DQ_Ch0_U2_DQ17");
    EXPECT_EQ(tab.title(),
              "Select Reference Signal for Selected Signal ID-Measurement Pair: DQ_Ch0_U2_DQ17 - "
              "Skew");
    EXPECT_TRUE(tab.group->isEnabled());
    EXPECT_TRUE(leafKeys(tab.selected).isEmpty());
    QTreeWidgetItem* skew = tab.measurements->topLevelItem(0);
    EXPECT_EQ(colourOf(skew, 0), QColor(Qt::red));

    tab.move(tab.available, {"DQS", "Ch0", "U2", "DQS1"});
    EXPECT_EQ(leafKeys(tab.selected), QSet<QString>{"DQS_Ch0_U2_DQS1"});
    EXPECT_FALSE(leafKeys(tab.available).contains("DQS_Ch0_U2_DQS1"));
    EXPECT_EQ(colourOf(dq17, 0), QColor(Qt::black));
    EXPECT_EQ(colourOf(dq17, 1), QColor(Qt::darkGreen));
    EXPECT_EQ(colourOf(skew, 0), QColor(Qt::black));
    EXPECT_EQ(tab.storedReferences("DQ_Ch0_U2_DQ17", skewId), QSet<QString>{"DQS_Ch0_U2_DQS1"});

    tab.move(tab.selected, {"DQS", "Ch0", "U2", "DQS1"});
    EXPECT_TRUE(leafKeys(tab.selected).isEmpty());
    EXPECT_TRUE(leafKeys(tab.available).contains("DQS_Ch0_U2_DQS1"));
    EXPECT_EQ(colourOf(dq17, 0), QColor(Qt::red));
    EXPECT_EQ(colourOf(dq17, 1), QColor(Qt::red));
    EXPECT_EQ(colourOf(skew, 0), QColor(Qt::red));
    // The pair still needs a reference: its entry stays, empty.
    opened.find<QPushButton>("applyButton")->click();
    const auto stored = storedReferenceMap(opened.stored("SelectedMeasurementsRefSignalListMap"));
    ASSERT_TRUE(stored.value("DQ_Ch0_U2_DQ17").contains(skewId));
    EXPECT_TRUE(stored.value("DQ_Ch0_U2_DQ17").value(skewId).isEmpty());

    // A whole type moves with all its leaves, a channel with its own.
    tab.move(tab.available, {"CK"});
    const QSet<QString> clocks{"CK_Ch0_U1_CK0", "CK_Ch1_U1_CK0", "CK_Ch0_U2_CK0", "CK_Ch1_U2_CK0"};
    EXPECT_EQ(leafKeys(tab.selected), clocks);
    EXPECT_EQ(itemAt(tab.available, {"CK"}), nullptr);
    EXPECT_EQ(tab.storedReferences("DQ_Ch0_U2_DQ17", skewId), clocks);
    EXPECT_EQ(colourOf(dq17, 0), QColor(Qt::black));

    tab.move(tab.selected, {"CK", "Ch1"});
    const QSet<QString> channel0{"CK_Ch0_U1_CK0", "CK_Ch0_U2_CK0"};
    EXPECT_EQ(leafKeys(tab.selected), channel0);
    EXPECT_EQ(tab.storedReferences("DQ_Ch0_U2_DQ17", skewId), channel0);

    // With no current reference the buttons change nothing.
    tab.available->setCurrentItem(nullptr);
    opened.find<QPushButton>("addRefSignalButton")->click();
    EXPECT_EQ(leafKeys(tab.selected), channel0);
}

TEST(ReferencePairs, GroupsLeavesAndReferenceFreeMeasurementsSetTreesTitleAndGroup) {
    OpenDialog opened(storedSkewDesign());
    ReferenceTab tab(opened);
    tab.enter();
    const QString skewTitle =
        "Select Reference Signal for Selected Signal ID-Measurement Pair: DQ_Ch0_U2_DQ2 - Skew";

    tab.chooseSignal("DQ_Ch0_U2_DQ2");
    tab.chooseMeasurement("Skew");
    EXPECT_TRUE(tab.group->isEnabled());
    EXPECT_FALSE(tab.referenceTreesEmpty());
    EXPECT_EQ(tab.title(), skewTitle);

    // A signal without measurements has no pair.
    tab.chooseSignal("DQ_Ch0_U2_DQ10");
    EXPECT_EQ(tab.measurements->topLevelItemCount(), 0);
    EXPECT_TRUE(tab.referenceTreesEmpty());
    EXPECT_EQ(tab.title(),
              "Select a Measurement from Selected Measurement Tree for Selected Signal ID: "
              "DQ_Ch0_U2_DQ10");

    // The first measurement in order, "Eye", needs no reference: the group is switched off.
    tab.chooseSignal("DQ_Ch0_U2_DQ2");
    EXPECT_EQ(childTexts(tab.measurements), (QStringList{"Eye", "Skew"}));
    EXPECT_EQ(tab.measurements->currentItem()->text(0), "Eye");
    EXPECT_FALSE(tab.group->isEnabled());
    EXPECT_TRUE(tab.referenceTreesEmpty());
    EXPECT_EQ(tab.title(),
              "No Reference Signal required for Selected Signal ID-Measurement Pair: "
              "DQ_Ch0_U2_DQ2-Eye");
    tab.chooseMeasurement("Skew");
    EXPECT_TRUE(tab.group->isEnabled());
    EXPECT_EQ(tab.title(), skewTitle);

    // A group item has no measurements and clears the pair.
    ASSERT_TRUE(choose(tab.signals, {"DQ"}));
    EXPECT_EQ(tab.measurements->topLevelItemCount(), 0);
    EXPECT_TRUE(tab.referenceTreesEmpty());
    EXPECT_EQ(tab.title(), "Select Signal ID from Selected Signal Tree");
}
