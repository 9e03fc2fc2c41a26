// A setup made by walking every tab of the real dialog, saved with Finish, then netlisted.

#include <gtest/gtest.h>

#include <QCheckBox>
#include <algorithm>

#include "netlist/BlockReader.h"
#include "support/BlockSettingNames.h"
#include "support/SelectionPages.h"

using namespace lanetap_test;

TEST(DialogEndToEnd, EveryTabOfTheWizardReachesTheBlock) {
    Pages pages(busDesign());
    pages.press("nextButton");  // Setup Probe as it stands
    // Signals: the controller's data byte and a strobe of channel 0; reading, the controller
    // receives.
    pages.act("selectSignalAvailableSignalTree", {"DQ", "Ch0", "U1"}, "addSignalButton");
    pages.act("selectSignalAvailableSignalTree", {"DQS", "Ch0", "U1", "DQS0"}, "addSignalButton");
    pages.press("nextButton");
    // Measurements of DQ2: an eye, and a skew that takes the strobe of its byte by default.
    pages.act("selectMeasurementSelectedSignalTree", {"DQ", "Ch0", "U1", "DQ2"});
    for (const QString name : {"Eye", "Skew"}) {
        pages.act("selectMeasurementAvailableMeasurementTree", {name}, "addMeasurementButton");
    }
    pages.press("nextButton");
    // References: the clock joins the strobe as a reference of the skew.
    pages.act("selectRefSignalSelectedSignalTree", {"DQ", "Ch0", "U1", "DQ2"});
    pages.act("selectRefSignalSelectedMeasurementTree", {"Skew"});
    pages.act("selectRefSignalAvailableRefSignalTree", {"CK", "Ch0", "U1", "CK0"},
              "addRefSignalButton");
    pages.press("nextButton");
    // Compliance: a clock test, by all the ids of its name.
    pages.find<QCheckBox>("enableComplianceCheckBox")->setChecked(true);
    pages.act("selectComplianceSelectedSignalTree", {"CK"});
    pages.act("selectComplianceAvailableMeasurementTree", {"VSEH(CK)"}, "addComplianceButton");
    pages.press("finishButton");
    EXPECT_EQ(pages.host().host.commandsEnded, 1);

    const standin::CallResult netlist = pages.host().host.netlistProbe("X1");
    ASSERT_TRUE(netlist.ok) << netlist.error;
    const LaneTapUI::NetlistBlock block =
        LaneTapUI::readBlock(QString::fromStdString(netlist.text));
    EXPECT_TRUE(block.problems.isEmpty()) << block.problemTexts().join("; ").toStdString();
    EXPECT_EQ(block.settings.value("Settings_ReadWriteOperation"), "\"read\"");
    EXPECT_EQ(block.settings.value("EnableCompliance"), "1");
    // A skew line needs both its signals watched: the selected strobe and the reference clock.
    QList<QStringList> measurements = block.nodeMeasMap;
    std::sort(measurements.begin(), measurements.end());
    EXPECT_EQ(measurements, (QList<QStringList>{{"DQ_Ch0_U1_DQ2", "CK_Ch0_U1_CK0", "Skew"},
                                                {"DQ_Ch0_U1_DQ2", "DQS_Ch0_U1_DQS0", "Skew"},
                                                {"DQ_Ch0_U1_DQ2", "Unreferenced", "Eye"}}));
    QStringList compliance = block.complianceMeasMap.value(0);
    compliance.sort();
    EXPECT_EQ(compliance, (QStringList{"10333", "10337", "CK"}));
    EXPECT_EQ(block.complianceMeasMap.size(), 1);
}
