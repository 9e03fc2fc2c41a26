// The "Setup Probe" tab: defaults that follow the speed grade and the DRAM type, the internal
// Vref switches, the title of the threshold group, and what a controller in the design decides.

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QListWidget>
#include <QStackedWidget>

#include "support/DialogFixture.h"

using lanetap_test::OpenDialog;
using lanetap_test::probeInstance;

namespace {

// The thresholds of the 2400 MT/s column: key, amplitude, unit ("" for the two receiver windows,
// whose unit box holds only "UI").
struct Threshold {
    const char* key;
    const char* amplitude;
    const char* unit;
};

const Threshold kThresholds2400[] = {
    {"vih_dq_ac", "0.08", "V"},       {"vil_dq_ac", "0.08", "V"},
    {"vih_dq_dc", "0.065", "V"},      {"vil_dq_dc", "0.065", "V"},
    {"tdivwDQ", "0.2", ""},           {"vih_ca_ac", "0.1", "V"},
    {"vil_ca_ac", "0.1", "V"},        {"vih_ca_dc", "0.075", "V"},
    {"vil_ca_dc", "0.075", "V"},      {"tcivwCA", "0.3", ""},
    {"se_high_DQS", "0.7", "None"},   {"se_low_DQS", "0.5", "None"},
    {"se_high_CK", "0.7", "None"},    {"se_low_CK", "0.5", "None"},
    {"voh_ac", "0.9", "None"},        {"vol_ac", "0.7", "None"},
    {"voh_dc", "0.9", "None"},        {"vol_dc", "0.7", "None"},
    {"vihDiff_DQS_ac", "0.160", "V"}, {"vilDiff_DQS_ac", "-0.160", "V"},
    {"vihDiff_DQS", "0.13", "V"},     {"vilDiff_DQS", "-0.13", "V"},
    {"vihDiff_CK_ac", "0.2", "V"},    {"vilDiff_CK_ac", "-0.2", "V"},
    {"vihDiff_CK", "0.15", "V"},      {"vilDiff_CK", "-0.15", "V"},
    {"voh_diff", "0.3", "None"},      {"vol_diff", "-0.3", "None"},
};

const char* const kSupplies[] = {"vdd", "vddq", "vdd1", "vdd2", "vtt"};

QString field(const OpenDialog& opened, const QString& key) {
    return opened.find<QLineEdit>(key + "Box")->text();
}

QString unit(const OpenDialog& opened, const QString& key) {
    return opened.find<QComboBox>(key + "VBox")->currentText();
}

void setVoltage(const OpenDialog& opened, const QString& key, const QString& amplitude,
                const QString& unitText) {
    opened.find<QLineEdit>(key + "Box")->setText(amplitude);
    if (auto* box = opened.dialog()->findChild<QComboBox*>(key + "VBox")) {
        box->setCurrentText(unitText);
    }
}

// Whether a widget of the compliance tab is enabled of its own: the tab itself stays disabled until
// the wizard reaches it.
bool onComplianceTab(const OpenDialog& opened, const QWidget* widget) {
    return widget->isEnabledTo(opened.find<QWidget>("selectComplianceTab"));
}

QString controller(const QString& burstMode, const QString& dataMode,
                   const QString& simulationMode) {
    return QString(R"({"name":"U1","cell":"DDR_Controller","library":"ddr",
        "parameters":{"DDRIbisFile":"controller.ibs","RefDesName":"U1","BurstMode":"%1",
                      "DataMode":"%2","SimulationMode":"%3","DataRate":"3200",
                      "DataRateUnit":"Mbps","DataRateType":"1T"}})")
        .arg(burstMode, dataMode, simulationMode);
}

// A probe that asks for the opposite of what the controllers below decide.
QString probeAgainst(const QString& dramType, const QString& modes) {
    return probeInstance("X1", QString(R"("dqsSignalMode":"%2","modeOfOperation":"%2",
        "dramType":"%1","vdd":"1.0 V","EnableComplianceMeasurements":"1")")
                                   .arg(dramType, modes));
}

}  // namespace

TEST(DialogSetupPage, ASpeedGradeResetsEveryThresholdAndNothingElse) {
    OpenDialog opened(lanetap_test::designText({probeInstance("X1")}));
    ASSERT_NE(opened.dialog(), nullptr) << opened.lastCall().error;
    for (const Threshold& threshold : kThresholds2400) {
        setVoltage(opened, threshold.key, "9", "kV");
    }
    for (const char* key : {"vref_dq", "vref_ca", "vdd", "vtt"}) {
        setVoltage(opened, key, "9", "kV");
    }
    opened.find<QLineEdit>("targetBERBox")->setText("1e-3");

    auto* speedGrade = opened.find<QComboBox>("speedGradeBox");
    speedGrade->setCurrentIndex(speedGrade->findText("2400"));
    ASSERT_EQ(speedGrade->currentText(), "2400");
    for (const Threshold& threshold : kThresholds2400) {
        EXPECT_EQ(field(opened, threshold.key), threshold.amplitude) << threshold.key;
        if (*threshold.unit) {
            EXPECT_EQ(unit(opened, threshold.key), threshold.unit) << threshold.key;
        }
    }
    for (const char* key : {"vref_dq", "vref_ca", "vdd", "vtt"}) {
        EXPECT_EQ(field(opened, key), "9") << key;
        EXPECT_EQ(unit(opened, key), "kV") << key;
    }
    EXPECT_EQ(opened.find<QLineEdit>("targetBERBox")->text(), "1e-3");

    // Typed text counts at each change: a rate between two grades takes the next one up, a text
    // that is no number the 3200 column.
    speedGrade->setEditText("1700");
    EXPECT_EQ(field(opened, "vih_dq_ac"), "0.093");
    EXPECT_EQ(field(opened, "vihDiff_DQS_ac"), "0.186");
    speedGrade->setEditText("3200 MT/s");
    EXPECT_EQ(field(opened, "vih_dq_ac"), "0.07");
    EXPECT_EQ(field(opened, "tdivwDQ"), "0.23");
    EXPECT_EQ(field(opened, "vilDiff_DQS_ac"), "-0.140");
}

TEST(DialogSetupPage, TheDramTypeSetsTheFiveSuppliesOnly) {
    OpenDialog opened(lanetap_test::designText({probeInstance("X1")}));
    ASSERT_NE(opened.dialog(), nullptr) << opened.lastCall().error;
    setVoltage(opened, "vtt", "0.7", "mV");
    setVoltage(opened, "vih_dq_ac", "5", "mV");
    auto* dramType = opened.find<QComboBox>("dramTypeBox");

    dramType->setCurrentText("LPDDR4");
    for (const char* key : kSupplies) {
        EXPECT_EQ(unit(opened, key), "V") << key;
    }
    EXPECT_EQ(field(opened, "vdd"), "1.1");
    EXPECT_EQ(field(opened, "vdd2"), "1.1");
    EXPECT_EQ(field(opened, "vtt"), "0.55");
    EXPECT_EQ(field(opened, "vih_dq_ac"), "5");
    EXPECT_EQ(unit(opened, "vih_dq_ac"), "mV");

    setVoltage(opened, "vtt", "0.7", "mV");
    dramType->setCurrentText("DDR4");
    EXPECT_EQ(field(opened, "vdd1"), "1.2");
    EXPECT_EQ(field(opened, "vtt"), "0.6");
    EXPECT_EQ(unit(opened, "vtt"), "V");
}

TEST(DialogSetupPage, ANoBurstControllerLeavesOnlyTheDramTypeToTheUser) {
    OpenDialog opened(lanetap_test::designText(
        {controller("No BURST", "read", "transient"), probeAgainst("1", "1")}));
    ASSERT_NE(opened.dialog(), nullptr) << opened.lastCall().error;
    auto* dqsMode = opened.find<QComboBox>("dqsSignalModeBox");
    auto* cycle = opened.find<QComboBox>("modeOfOperationBox");
    auto* dramType = opened.find<QComboBox>("dramTypeBox");
    EXPECT_FALSE(dqsMode->isEnabled());
    EXPECT_FALSE(cycle->isEnabled());
    EXPECT_TRUE(dramType->isEnabled());
    EXPECT_EQ(dqsMode->currentText(), "Continuous");
    EXPECT_EQ(cycle->currentText(), "Read");
    EXPECT_EQ(opened.stored("dqsSignalMode"), "0");
    EXPECT_EQ(opened.stored("modeOfOperation"), "0");
    // A stored LPDDR4 under a controller without bursts shows LPDDR4 yet gets the DDR4 supplies,
    // and the opening stores them.
    EXPECT_EQ(dramType->currentText(), "LPDDR4");
    EXPECT_EQ(field(opened, "vdd"), "1.2");
    EXPECT_EQ(opened.stored("vdd"), "1.2 V");
    EXPECT_EQ(opened.stored("dramType"), "1");
    auto* compliance = opened.find<QCheckBox>("enableComplianceCheckBox");
    EXPECT_TRUE(onComplianceTab(opened, compliance));
    EXPECT_TRUE(compliance->isChecked());
}

TEST(DialogSetupPage, ABurstingControllerDecidesTheDramTypeAndADdrSimulationHasNoCompliance) {
    OpenDialog opened(
        lanetap_test::designText({controller("LPDDR4", "write", "DDR"), probeAgainst("0", "0")}));
    ASSERT_NE(opened.dialog(), nullptr) << opened.lastCall().error;
    auto* dramType = opened.find<QComboBox>("dramTypeBox");
    EXPECT_FALSE(dramType->isEnabled());
    EXPECT_EQ(dramType->currentText(), "LPDDR4");
    EXPECT_EQ(opened.find<QComboBox>("dqsSignalModeBox")->currentText(), "Burst");
    EXPECT_EQ(opened.find<QComboBox>("modeOfOperationBox")->currentText(), "Write");
    EXPECT_EQ(field(opened, "vdd"), "1.1");
    auto* compliance = opened.find<QCheckBox>("enableComplianceCheckBox");
    EXPECT_FALSE(onComplianceTab(opened, compliance));
    EXPECT_FALSE(compliance->isChecked());
    EXPECT_FALSE(onComplianceTab(opened, opened.find<QGroupBox>("complianceGroup")));
    EXPECT_EQ(opened.stored("EnableComplianceMeasurements"), "0");
    EXPECT_EQ(opened.stored("dramType"), "1");

    // The dialog is reused on a design without a controller: the earlier controller still
    // decides, and its disabling stays.
    const QString second = opened.host().workspace.write(
        "second.json", lanetap_test::designText({probeAgainst("0", "0")}));
    opened.host().host.loadDesign(second);
    ASSERT_NE(opened.show("X1"), nullptr) << opened.lastCall().error;
    EXPECT_FALSE(dramType->isEnabled());
    EXPECT_FALSE(opened.find<QComboBox>("dqsSignalModeBox")->isEnabled());
    EXPECT_EQ(opened.find<QComboBox>("modeOfOperationBox")->currentText(), "Write");
    EXPECT_EQ(dramType->currentText(), "LPDDR4");
    EXPECT_FALSE(onComplianceTab(opened, compliance));
    EXPECT_EQ(opened.stored("modeOfOperation"), "1");
}
