// The "Select Signals" tab: the four-level signal trees, their order, and moving leaves, nodes,
// channels and whole signal types between the available and the selected side.

#include <gtest/gtest.h>

#include <QPushButton>
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

namespace {

// The signal tab of a dialog opened with every tab unlocked.
struct SignalTab {
    explicit SignalTab(OpenDialog& dialog) : opened(dialog) {
        opened.find<QTabWidget>("measurementTabs")->setCurrentIndex(1);
    }

    // Makes the item at `path` of one side current and presses that side's button.
    void add(const QStringList& path) {
        ASSERT_TRUE(choose(available, path)) << path.join("/").toStdString();
        opened.find<QPushButton>("addSignalButton")->click();
    }
    void remove(const QStringList& path) {
        ASSERT_TRUE(choose(selected, path)) << path.join("/").toStdString();
        opened.find<QPushButton>("removeSignalButton")->click();
    }
    // The keys of the selected signals, as the measurement tab, rebuilt on entering, shows them.
    QSet<QString> selectedKeys() {
        auto* tabs = opened.find<QTabWidget>("measurementTabs");
        tabs->setCurrentIndex(2);
        const QSet<QString> keys =
            leafKeys(opened.find<QTreeWidget>("selectMeasurementSelectedSignalTree"));
        tabs->setCurrentIndex(1);
        return keys;
    }

    OpenDialog& opened;
    QTreeWidget* available = opened.find<QTreeWidget>("selectSignalAvailableSignalTree");
    QTreeWidget* selected = opened.find<QTreeWidget>("selectSignalSelectedSignalTree");
};

QSet<QString> keysOfType(const QString& type) {
    QSet<QString> keys;
    for (const QString& key : lanetap_test::busSignalKeys()) {
        if (key.startsWith(type + "_")) {
            keys.insert(key);
        }
    }
    return keys;
}

}  // namespace

TEST(SignalTrees, RebuiltTreesSortNumericallyWhileMovedItemsStandLast) {
    OpenDialog opened(
        busDesign(R"("TabWidgetTabNumber":"4",)"
                  R"("SelectedSignalList":"DQ_Ch0_U2_DQ17,DQ_Ch0_U2_DQ10,DQ_Ch0_U2_DQ2,")"));
    SignalTab tab(opened);

    EXPECT_EQ(childTexts(tab.available), (QStringList{"CK", "DQ", "DQS"}));
    EXPECT_EQ(childTexts(tab.available, {"DQ"}), (QStringList{"Ch0", "Ch1"}));
    EXPECT_EQ(childTexts(tab.available, {"DQ", "Ch0"}), (QStringList{"U1"}));
    EXPECT_EQ(childTexts(tab.available, {"DQ", "Ch1", "U2"}), (QStringList{"DQ2", "DQ10", "DQ17"}));
    EXPECT_EQ(childTexts(tab.available, {"DQS", "Ch1", "U1"}), (QStringList{"DQS0", "DQS1"}));
    EXPECT_EQ(childTexts(tab.selected, {"DQ", "Ch0", "U2"}), (QStringList{"DQ2", "DQ10", "DQ17"}));

    // Every level carries its key in the hidden third column; the leaf names its instance.
    QTreeWidgetItem* leaf = itemAt(tab.available, {"DQS", "Ch1", "U1", "DQS1"});
    ASSERT_NE(leaf, nullptr);
    EXPECT_EQ(leaf->text(2), "DQS_Ch1_U1_DQS1");
    EXPECT_EQ(leaf->text(1), "U1");
    EXPECT_EQ(leaf->foreground(1).color(), QColor(Qt::darkGreen));
    EXPECT_EQ(leaf->parent()->text(2), "DQS_Ch1_U1");
    EXPECT_EQ(leaf->parent()->parent()->text(2), "Ch1");
    EXPECT_EQ(leaf->parent()->parent()->parent()->text(2), "DQS");
    EXPECT_EQ(tab.available->columnCount(), 2);
    EXPECT_EQ(tab.available->currentItem(), tab.available->topLevelItem(0));

    // A move appends: DQ10 then DQ2 stay in the order they came, under new keyless ancestors.
    tab.add({"DQ", "Ch1", "U2", "DQ10"});
    tab.add({"DQ", "Ch1", "U2", "DQ2"});
    EXPECT_EQ(childTexts(tab.selected, {"DQ"}), (QStringList{"Ch0", "Ch1"}));
    EXPECT_EQ(childTexts(tab.selected, {"DQ", "Ch1", "U2"}), (QStringList{"DQ10", "DQ2"}));
    EXPECT_EQ(itemAt(tab.selected, {"DQ", "Ch1"})->text(2), "");
    EXPECT_EQ(itemAt(tab.selected, {"DQ", "Ch1", "U2"})->text(2), "");
    EXPECT_EQ(itemAt(tab.selected, {"DQ"})->text(2), "DQ");
    EXPECT_EQ(tab.selected->currentItem(), itemAt(tab.selected, {"DQ", "Ch1", "U2", "DQ2"}));
    EXPECT_EQ(childTexts(tab.available, {"DQ", "Ch1", "U2"}), (QStringList{"DQ17"}));
}

TEST(SignalTrees, MovingNodesChannelsAndTypesMergesAndPrunesEmptiedBranches) {
    OpenDialog opened(busDesign(R"("TabWidgetTabNumber":"4")"));
    SignalTab tab(opened);
    ASSERT_EQ(tab.selected->topLevelItemCount(), 0);

    // The last leaf of a chain takes its three ancestors along, both ways.
    tab.add({"DQ", "Ch0", "U2", "DQ2"});
    EXPECT_EQ(childTexts(tab.available, {"DQ", "Ch0", "U2"}), (QStringList{"DQ10", "DQ17"}));
    EXPECT_EQ(childTexts(tab.selected, {"DQ", "Ch0", "U2"}), (QStringList{"DQ2"}));
    tab.remove({"DQ", "Ch0", "U2", "DQ2"});
    EXPECT_EQ(tab.selected->topLevelItemCount(), 0);
    EXPECT_EQ(childTexts(tab.available, {"DQ", "Ch0", "U2"}), (QStringList{"DQ10", "DQ17", "DQ2"}));

    // A node, then the whole type it belongs to: the type merges level by level with what is
    // already selected and leaves the available side without a DQ branch.
    tab.add({"DQ", "Ch0", "U2"});
    EXPECT_EQ(childTexts(tab.available, {"DQ", "Ch0"}), (QStringList{"U1"}));
    tab.add({"DQ"});
    EXPECT_EQ(childTexts(tab.available), (QStringList{"CK", "DQS"}));
    EXPECT_EQ(childTexts(tab.selected), (QStringList{"DQ"}));
    EXPECT_EQ(childTexts(tab.selected, {"DQ"}), (QStringList{"Ch0", "Ch1"}));
    EXPECT_EQ(childTexts(tab.selected, {"DQ", "Ch0"}), (QStringList{"U2", "U1"}));
    EXPECT_EQ(childTexts(tab.selected, {"DQ", "Ch0", "U2"}).size(), 3);
    EXPECT_EQ(childTexts(tab.selected, {"DQ", "Ch1", "U2"}).size(), 3);
    EXPECT_EQ(tab.selected->currentItem(), itemAt(tab.selected, {"DQ"}));

    // A channel of another type: a new top-level branch, appended after DQ.
    tab.add({"CK", "Ch1"});
    EXPECT_EQ(childTexts(tab.selected), (QStringList{"DQ", "CK"}));
    EXPECT_EQ(childTexts(tab.available, {"CK"}), (QStringList{"Ch0"}));
    const QSet<QString> clocksOnCh1{"CK_Ch1_U1_CK0", "CK_Ch1_U2_CK0"};
    EXPECT_EQ(tab.selectedKeys(), keysOfType("DQ") + clocksOnCh1);

    // A whole type back: the records go with it.
    tab.remove({"DQ"});
    EXPECT_EQ(childTexts(tab.selected), (QStringList{"CK"}));
    EXPECT_EQ(childTexts(tab.available), (QStringList{"CK", "DQS", "DQ"}));
    EXPECT_EQ(tab.selectedKeys(), clocksOnCh1);
    EXPECT_EQ(leafKeys(tab.available).size(), lanetap_test::busSignalKeys().size() - 2);

    opened.find<QPushButton>("applyButton")->click();
    EXPECT_EQ(lanetap_test::storedList(opened.stored("SelectedSignalList")), clocksOnCh1);
}
