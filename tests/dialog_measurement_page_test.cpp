// The "Select Measurements" tab: measurements chosen for a signal or a group of signals, the
// titles and descriptions the page shows, and what Apply stores of the choice.

#include <gtest/gtest.h>

#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QTreeWidget>

#include "support/DialogFixture.h"
#include "support/SelectionPages.h"

using lanetap_test::busDesign;
using lanetap_test::busSignalKeys;
using lanetap_test::childTexts;
using lanetap_test::choose;
using lanetap_test::itemAt;
using lanetap_test::OpenDialog;
using lanetap_test::storedIdMap;
using lanetap_test::storedReferenceMap;

namespace {

const QString initialDescription =
    "Description:\nClick on an available/selected measurement in the list above.";
const QString noSignalTitle = "Select Signal ID/Signal Group from Selected Signal Tree";
const QString titlePrefix = "Select Measurements for Selected Signal: ";
const QStringList allMeasurements{"BER Contour", "Eye",         "Mask Margin", "Skew",
                                  "Slew Rate",   "Strobed Eye", "Waveform"};

QString selectedSignalList(const QStringList& keys) {
    return keys.join(",") + ",";
}

// The measurement tab of a dialog opened with every tab unlocked and `selected` chosen.
struct MeasurementTab {
    explicit MeasurementTab(const QStringList& selected)
        : opened(busDesign(QString(R"("TabWidgetTabNumber":"4","SelectedSignalList":"%1")")
                               .arg(selectedSignalList(selected)))) {
        enter();
    }

    void enter() { tabs->setCurrentIndex(2); }
    bool chooseSignal(const QStringList& path) { return choose(signalTree, path); }
    // The measurements the page lists as chosen for the signal or group at `path`.
    QStringList chosenFor(const QStringList& path) {
        EXPECT_TRUE(chooseSignal(path)) << path.join("/").toStdString();
        return childTexts(selected);
    }
    void add(const QStringList& path, const QString& measurement) {
        ASSERT_TRUE(chooseSignal(path)) << path.join("/").toStdString();
        ASSERT_TRUE(choose(available, {measurement})) << measurement.toStdString();
        opened.find<QPushButton>("addMeasurementButton")->click();
    }
    void remove(const QStringList& path, const QString& measurement) {
        ASSERT_TRUE(chooseSignal(path)) << path.join("/").toStdString();
        ASSERT_TRUE(choose(selected, {measurement})) << measurement.toStdString();
        opened.find<QPushButton>("removeMeasurementButton")->click();
    }
    // Moves the signal at `path` on the signal tab, then comes back here.
    void moveSignal(const char* button, const char* tree, const QStringList& path) {
        tabs->setCurrentIndex(1);
        ASSERT_TRUE(choose(opened.find<QTreeWidget>(tree), path));
        opened.find<QPushButton>(button)->click();
        enter();
    }
    QString title() { return opened.find<QGroupBox>("measurementSelectionGroup")->title(); }
    QString description() { return opened.find<QLabel>("measurementDescriptionLabel")->text(); }
    void apply() { opened.find<QPushButton>("applyButton")->click(); }

    OpenDialog opened;
    QTabWidget* tabs = opened.find<QTabWidget>("measurementTabs");
    QTreeWidget* signalTree = opened.find<QTreeWidget>("selectMeasurementSelectedSignalTree");
    QTreeWidget* available = opened.find<QTreeWidget>("selectMeasurementAvailableMeasurementTree");
    QTreeWidget* selected = opened.find<QTreeWidget>("selectMeasurementSelectedMeasurementTree");
};

QString descriptionOf(const QString& measurement) {
    if (measurement == "BER Contour") {
        return "Description:\nPlots the contour at target BER.\n"
               "Cannot be plot for DQS/CK signal type or Transient simulation.";
    }
    if (measurement == "Eye") {
        return "Description:\n Measures an ideal clock triggered eye density.";
    }
    if (measurement == "Slew Rate") {
        return "Description:\nMeasures minimum and maximum slew rate of a signal in V/ns.";
    }
    return "Description:\nSaves the transient waveform to dataset.\n"
           "Cannot be saved for DDR simulation.";
}

// Every item of the tree below `path`, with the path that reaches it.
QList<QStringList> pathsBelow(QTreeWidget* tree, const QStringList& path) {
    QList<QStringList> paths;
    for (const QString& child : childTexts(tree, path)) {
        paths << path + QStringList{child};
        paths << pathsBelow(tree, path + QStringList{child});
    }
    return paths;
}

}  // namespace

TEST(MeasurementPage, TitleListsAndDescriptionFollowTheSignalAndClicks) {
    MeasurementTab tab({"DQ_Ch0_U2_DQ2", "DQ_Ch0_U2_DQ10", "CK_Ch0_U2_CK0"});
    tab.opened.dialog()->window()->show();
    // The page opens on the first signal type, with the whole catalogue offered.
    EXPECT_EQ(tab.signalTree->currentItem(), tab.signalTree->topLevelItem(0));
    EXPECT_EQ(tab.title(), titlePrefix + "CK");
    EXPECT_EQ(childTexts(tab.available), allMeasurements);
    EXPECT_TRUE(childTexts(tab.selected).isEmpty());
    EXPECT_EQ(tab.description(), descriptionOf("BER Contour"));

    // Group items show their key, not their label.
    ASSERT_TRUE(tab.chooseSignal({"DQ", "Ch0", "U2"}));
    EXPECT_EQ(tab.title(), titlePrefix + "DQ_Ch0_U2");
    ASSERT_TRUE(tab.chooseSignal({"DQ", "Ch0"}));
    EXPECT_EQ(tab.title(), titlePrefix + "Ch0");

    // The selected list is sorted with its first entry current; the available list keeps order.
    tab.add({"DQ", "Ch0", "U2", "DQ10"}, "Waveform");
    tab.add({"DQ", "Ch0", "U2", "DQ10"}, "Eye");
    EXPECT_EQ(tab.title(), titlePrefix + "DQ_Ch0_U2_DQ10");
    EXPECT_EQ(childTexts(tab.selected), (QStringList{"Eye", "Waveform"}));
    EXPECT_EQ(tab.selected->currentItem(), tab.selected->topLevelItem(0));
    EXPECT_EQ(childTexts(tab.available),
              (QStringList{"BER Contour", "Mask Margin", "Skew", "Slew Rate", "Strobed Eye"}));

    // A click describes; moving the current item by keyboard or code does not.
    lanetap_test::clickItem(tab.available, itemAt(tab.available, {"BER Contour"}));
    EXPECT_EQ(tab.description(), descriptionOf("BER Contour"));
    lanetap_test::clickItem(tab.selected, itemAt(tab.selected, {"Eye"}));
    EXPECT_EQ(tab.description(), descriptionOf("Eye"));
    tab.available->setFocus();
    QTest::keyClick(tab.available, Qt::Key_Down);
    EXPECT_EQ(tab.available->currentItem(), itemAt(tab.available, {"Mask Margin"}));
    choose(tab.selected, {"Waveform"});
    EXPECT_EQ(tab.description(), descriptionOf("Eye"));
    lanetap_test::clickItem(tab.available, itemAt(tab.available, {"Slew Rate"}));
    EXPECT_EQ(tab.description(), descriptionOf("Slew Rate"));

    // Another signal describes the first of its chosen measurements, or of the offered ones.
    ASSERT_TRUE(tab.chooseSignal({"DQ", "Ch0", "U2", "DQ2"}));
    EXPECT_EQ(tab.description(), descriptionOf("BER Contour"));
    ASSERT_TRUE(tab.chooseSignal({"DQ", "Ch0", "U2", "DQ10"}));
    EXPECT_EQ(tab.description(), descriptionOf("Eye"));
}

TEST(MeasurementPage, SkewOnATypeReachesEveryChannelNodeAndMemberWithItsDefaultReference) {
    MeasurementTab tab(busSignalKeys());
    tab.add({"DQ"}, "Skew");
    EXPECT_EQ(childTexts(tab.selected), QStringList{"Skew"});
    EXPECT_EQ(childTexts(tab.available).size(), 6);
    const QList<QStringList> belowDq = pathsBelow(tab.signalTree, {"DQ"});
    ASSERT_EQ(belowDq.size(), 2 + 4 + 10);
    for (const QStringList& path : belowDq) {
        EXPECT_EQ(tab.chosenFor(path), QStringList{"Skew"}) << path.join("/").toStdString();
    }
    // The bare channel key makes the DQ channels' choice the clock channels' choice too.
    EXPECT_EQ(tab.chosenFor({"CK", "Ch0"}), QStringList{"Skew"});
    EXPECT_TRUE(tab.chosenFor({"DQS"}).isEmpty());
    EXPECT_TRUE(tab.chosenFor({"DQS", "Ch0", "U1"}).isEmpty());
    EXPECT_TRUE(tab.chosenFor({"CK", "Ch1", "U2", "CK0"}).isEmpty());

    tab.apply();
    const QSet<int> skew{1};
    const QHash<QString, QSet<int>> groups{
        {"DQ", skew},        {"Ch0", skew},       {"Ch1", skew},      {"DQ_Ch0_U1", skew},
        {"DQ_Ch0_U2", skew}, {"DQ_Ch1_U1", skew}, {"DQ_Ch1_U2", skew}};
    EXPECT_EQ(storedIdMap(tab.opened.stored("SelectedGroupMeasurementsListMap")), groups);
    QHash<QString, QSet<int>> members;
    for (const QString& key : busSignalKeys()) {
        members.insert(key, key.startsWith("DQ_") ? skew : QSet<int>());
    }
    EXPECT_EQ(storedIdMap(tab.opened.stored("SelectedMeasurementsListMap")), members);

    // Each member got its strobe at the same node, DQS index/8; DQ17 has none and waits for one.
    QHash<QString, QHash<int, QSet<QString>>> references;
    for (const QString& node : QStringList{"Ch0_U1", "Ch1_U1", "Ch0_U2", "Ch1_U2"}) {
        references["DQ_" + node + "_DQ2"][1] = {"DQS_" + node + "_DQS0"};
        references["DQ_" + node + "_DQ10"][1] = {"DQS_" + node + "_DQS1"};
    }
    references["DQ_Ch0_U2_DQ17"][1] = {};
    references["DQ_Ch1_U2_DQ17"][1] = {};
    EXPECT_EQ(storedReferenceMap(tab.opened.stored("SelectedMeasurementsRefSignalListMap")),
              references);
}

// Only the type's or the channel's entry reaches a signal added later; its node's does not.
TEST(MeasurementPage, ANodesEntryDoesNotReachASignalAddedLater) {
    MeasurementTab tab({"DQ_Ch1_U1_DQ2"});
    tab.add({"DQ", "Ch1", "U1"}, "Eye");
    tab.moveSignal("addSignalButton", "selectSignalAvailableSignalTree",
                   {"DQ", "Ch1", "U1", "DQ10"});
    EXPECT_EQ(tab.chosenFor({"DQ", "Ch1", "U1", "DQ2"}), QStringList{"Eye"});
    EXPECT_TRUE(tab.chosenFor({"DQ", "Ch1", "U1", "DQ10"}).isEmpty());
}

TEST(MeasurementPage, ASignalAddedLaterUnderATypeWithAnEntryTakesTheTypesList) {
    MeasurementTab tab({"DQ_Ch0_U2_DQ2", "DQ_Ch1_U1_DQ10", "CK_Ch0_U1_CK0"});
    tab.add({"DQ", "Ch1", "U1", "DQ10"}, "Eye");
    tab.add({"CK", "Ch0", "U1", "CK0"}, "Waveform");
    tab.moveSignal("removeSignalButton", "selectSignalSelectedSignalTree",
                   {"DQ", "Ch1", "U1", "DQ10"});
    tab.moveSignal("removeSignalButton", "selectSignalSelectedSignalTree",
                   {"CK", "Ch0", "U1", "CK0"});
    ASSERT_EQ(childTexts(tab.signalTree), QStringList{"DQ"});
    tab.add({"DQ"}, "Skew");

    tab.moveSignal("addSignalButton", "selectSignalAvailableSignalTree",
                   {"DQ", "Ch1", "U1", "DQ10"});
    tab.moveSignal("addSignalButton", "selectSignalAvailableSignalTree",
                   {"CK", "Ch0", "U1", "CK0"});
    // DQ10 takes the type's list in place of its own; the clock, whose type has no entry, keeps
    // its choice, although the bare channel key "Ch0" has one.
    EXPECT_EQ(tab.chosenFor({"DQ", "Ch1", "U1", "DQ10"}), QStringList{"Skew"});
    EXPECT_EQ(tab.chosenFor({"CK", "Ch0", "U1", "CK0"}), QStringList{"Waveform"});
    EXPECT_EQ(tab.chosenFor({"DQ", "Ch1", "U1"}), QStringList{"Skew"});
    EXPECT_TRUE(tab.chosenFor({"DQ", "Ch1"}).isEmpty());

    tab.apply();
    const QSet<int> skew{1};
    const QHash<QString, QSet<int>> groups{
        {"DQ", skew}, {"Ch0", skew}, {"DQ_Ch0_U2", skew}, {"DQ_Ch1", skew}, {"DQ_Ch1_U1", skew}};
    EXPECT_EQ(storedIdMap(tab.opened.stored("SelectedGroupMeasurementsListMap")), groups);
    const auto references =
        storedReferenceMap(tab.opened.stored("SelectedMeasurementsRefSignalListMap"));
    EXPECT_EQ(references.value("DQ_Ch1_U1_DQ10").value(1), QSet<QString>{"DQS_Ch1_U1_DQS1"});
}
