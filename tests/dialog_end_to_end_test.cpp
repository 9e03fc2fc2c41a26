// A setup made by walking every tab of the real dialog, saved with Finish, then netlisted.

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QPushButton>
#include <QTreeWidget>

#include "support/BlockReader.h"
#include "support/DialogFixture.h"
#include "support/SelectionPages.h"

using namespace lanetap_test;

namespace {

QSet<QString> fieldsAt(const QList<QStringList>& lines, int column) {
    QSet<QString> fields;
    for (const QStringList& line : lines) {
        fields.insert(line.value(column));
    }
    return fields;
}

}  // namespace

TEST(DialogEndToEnd, EveryTabOfTheWizardReachesTheBlock) {
    OpenDialog opened(busDesign());
    auto* next = opened.find<QPushButton>("nextButton");
    next->click();  // Setup Probe as it stands

    // Signals: the controller's data byte and strobes of channel 0; read cycle, so the
    // controller is the receiving side.
    auto* available = opened.find<QTreeWidget>("selectSignalAvailableSignalTree");
    ASSERT_TRUE(choose(available, {"DQ", "Ch0", "U1"}));
    opened.find<QPushButton>("addSignalButton")->click();
    ASSERT_TRUE(choose(available, {"DQS", "Ch0", "U1", "DQS0"}));
    opened.find<QPushButton>("addSignalButton")->click();
    next->click();

    // Measurements of DQ2: an eye, and a skew that takes the strobe of its byte by default.
    ASSERT_TRUE(choose(opened.find<QTreeWidget>("selectMeasurementSelectedSignalTree"),
                       {"DQ", "Ch0", "U1", "DQ2"}));
    auto* measurements = opened.find<QTreeWidget>("selectMeasurementAvailableMeasurementTree");
    for (const QString name : {"Eye", "Skew"}) {
        ASSERT_TRUE(choose(measurements, {name}));
        opened.find<QPushButton>("addMeasurementButton")->click();
    }
    next->click();

    // References: the clock joins the strobe as a reference of the skew.
    ASSERT_TRUE(choose(opened.find<QTreeWidget>("selectRefSignalSelectedSignalTree"),
                       {"DQ", "Ch0", "U1", "DQ2"}));
    ASSERT_TRUE(
        choose(opened.find<QTreeWidget>("selectRefSignalSelectedMeasurementTree"), {"Skew"}));
    ASSERT_TRUE(choose(opened.find<QTreeWidget>("selectRefSignalAvailableRefSignalTree"),
                       {"CK", "Ch0", "U1", "CK0"}));
    opened.find<QPushButton>("addRefSignalButton")->click();
    next->click();

    // Compliance: the first test the page offers for DQ.
    opened.find<QCheckBox>("enableComplianceCheckBox")->setChecked(true);
    ASSERT_TRUE(choose(opened.find<QTreeWidget>("selectComplianceSelectedSignalTree"), {"DQ"}));
    auto* offered = opened.find<QTreeWidget>("selectComplianceAvailableMeasurementTree");
    ASSERT_GT(offered->topLevelItemCount(), 0);
    offered->setCurrentItem(offered->topLevelItem(0));
    opened.find<QPushButton>("addComplianceButton")->click();
    opened.find<QPushButton>("finishButton")->click();
    EXPECT_EQ(opened.host().host.commandsEnded, 1);

    const standin::CallResult netlist = opened.host().host.netlistProbe("X1");
    ASSERT_TRUE(netlist.ok) << netlist.error;
    const NetlistBlock block = readBlock(QString::fromStdString(netlist.text));
    EXPECT_TRUE(block.problems.isEmpty()) << block.problems.join("; ").toStdString();
    EXPECT_EQ(block.settings.value("Settings_ReadWriteOperation"), "\"read\"");
    EXPECT_EQ(block.settings.value("EnableCompliance"), "1");

    const QSet<QString> watched = fieldsAt(block.nodeData, 0);
    for (const QString key :
         {"DQ_Ch0_U1_DQ2", "DQ_Ch0_U1_DQ10", "DQS_Ch0_U1_DQS0", "CK_Ch0_U1_CK0"}) {
        EXPECT_TRUE(watched.contains(key)) << key.toStdString();
    }
    EXPECT_FALSE(watched.contains("DQ_Ch0_U2_DQ2"));  // the memory's side was not chosen

    const QList<QStringList> expectedMeasurements = {{"DQ_Ch0_U1_DQ2", "Unreferenced", "Eye"},
                                                     {"DQ_Ch0_U1_DQ2", "DQS_Ch0_U1_DQS0", "Skew"},
                                                     {"DQ_Ch0_U1_DQ2", "CK_Ch0_U1_CK0", "Skew"}};
    EXPECT_EQ(block.nodeMeasMap.size(), expectedMeasurements.size());
    for (const QStringList& line : expectedMeasurements) {
        EXPECT_TRUE(block.nodeMeasMap.contains(line)) << line.join(" ").toStdString();
    }
    ASSERT_EQ(block.complianceMeasMap.size(), 1);
    EXPECT_EQ(block.complianceMeasMap.front().value(0), "DQ");
    EXPECT_GE(block.complianceMeasMap.front().size(), 2);
}
