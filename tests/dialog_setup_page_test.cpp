// The "Setup Probe" tab: defaults that follow the speed grade and the DRAM type, the internal
// Vref switches, the title of the threshold group, and what a controller in the design decides.

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QListWidget>
#include <QRegularExpression>
#include <QStackedWidget>

#include "support/DialogFixture.h"

using lanetap_test::OpenDialog;
using lanetap_test::probeInstance;

namespace {

// "key=shown" of each of the blank-separated keys, ";" between two. A line edit "keyBox" shows its
// text, and its unit box "keyVBox" if it has one; a combo box "keyBox" its current text; a check
// box named `key` "on" or "off".
std::string fields(const OpenDialog& opened, const QString& keys) {
    QStringList texts;
    for (const QString& key : keys.split(' ')) {
        const auto* check = opened.dialog()->findChild<QCheckBox*>(key);
        const auto* box = opened.dialog()->findChild<QComboBox*>(key + "Box");
        const auto* unit = opened.dialog()->findChild<QComboBox*>(key + "VBox");
        texts << key + "=" +
                     (check ? (check->isChecked() ? "on" : "off")
                      : box ? box->currentText()
                            : opened.find<QLineEdit>(key + "Box")->text() +
                                  (unit ? " " + unit->currentText() : ""));
    }
    return texts.join(';').toStdString();
}

// "1" for each widget that is enabled of its own (whatever its tab), "0" for one disabled.
std::string enabled(const OpenDialog& opened, const QString& names) {
    std::string states;
    for (const QString& name : names.split(' ')) {
        states += opened.find<QWidget>(name)->testAttribute(Qt::WA_ForceDisabled) ? '0' : '1';
    }
    return states;
}

// The 28 thresholds in the 2400 MT/s column; the two receiver windows have no unit box.
const QString k2400 =
    "vih_dq_ac=0.08 V;vil_dq_ac=0.08 V;vih_dq_dc=0.065 V;vil_dq_dc=0.065 V;tdivwDQ=0.2;"
    "vih_ca_ac=0.1 V;vil_ca_ac=0.1 V;vih_ca_dc=0.075 V;vil_ca_dc=0.075 V;tcivwCA=0.3;"
    "se_high_DQS=0.7 None;se_low_DQS=0.5 None;se_high_CK=0.7 None;se_low_CK=0.5 None;"
    "voh_ac=0.9 None;vol_ac=0.7 None;voh_dc=0.9 None;vol_dc=0.7 None;"
    "vihDiff_DQS_ac=0.160 V;vilDiff_DQS_ac=-0.160 V;vihDiff_DQS=0.13 V;vilDiff_DQS=-0.13 V;"
    "vihDiff_CK_ac=0.2 V;vilDiff_CK_ac=-0.2 V;vihDiff_CK=0.15 V;vilDiff_CK=-0.15 V;"
    "voh_diff=0.3 None;vol_diff=-0.3 None";
const QString kThresholds = QString(k2400).remove(QRegularExpression("=[^;]*")).replace(';', ' ');

QString controller(const QString& burstMode, const QString& dataMode, const QString& simulation) {
    return lanetap_test::ddrPart(
        "U1", "DDR_Controller", "U1",
        QString(R"("DDRIbisFile":"controller.ibs","RefDesName":"U1","BurstMode":"%1",)"
                R"("DataMode":"%2","SimulationMode":"%3","DataRate":"3200",)"
                R"("DataRateUnit":"Mbps","DataRateType":"1T")")
            .arg(burstMode, dataMode, simulation),
        {});
}

}  // namespace

// Every threshold, supply and Vref stored as 9 kV; the DQ Vref computed internally, the CA one
// not, no PDF saved.
TEST(DialogSetupPage, FieldsFollowSpeedGradeDramTypeVrefSwitchesAndThresholdRow) {
    const QString supplies = "vdd vddq vdd1 vdd2 vtt";
    QStringList stored = {R"("UseInternalVrefDQ":"1","UseInternalVrefCA":"0","SaveToPDF":"0")"};
    for (const QString& key : (kThresholds + " " + supplies + " vref_dq vref_ca").split(' ')) {
        stored << QString(R"("%1":"9 kV")").arg(key);
    }
    OpenDialog opened(lanetap_test::designText({probeInstance("X1", stored.join(','))}));
    ASSERT_NE(opened.dialog(), nullptr) << opened.lastCall().error;
    const std::string untouchedVrefs = ";vref_dq=9 kV;vref_ca=9 kV";
    auto* speedGrade = opened.find<QComboBox>("speedGradeBox");
    speedGrade->setCurrentIndex(speedGrade->findText("2400"));
    EXPECT_EQ(fields(opened, kThresholds), k2400.toStdString());
    EXPECT_EQ(fields(opened, supplies + " vref_dq vref_ca"),
              "vdd=9 kV;vddq=9 kV;vdd1=9 kV;vdd2=9 kV;vtt=9 kV" + untouchedVrefs);
    auto* dramType = opened.find<QComboBox>("dramTypeBox");
    dramType->setCurrentText("LPDDR4");
    EXPECT_EQ(fields(opened, supplies + " vref_dq vref_ca"),
              "vdd=1.1 V;vddq=1.1 V;vdd1=1.1 V;vdd2=1.1 V;vtt=0.55 V" + untouchedVrefs);
    dramType->setCurrentText("DDR4");
    EXPECT_EQ(fields(opened, supplies), "vdd=1.2 V;vddq=1.2 V;vdd1=1.2 V;vdd2=1.2 V;vtt=0.6 V");
    EXPECT_EQ(fields(opened, kThresholds), k2400.toStdString());
    // Typed text counts at each change; a text that is no number reads the 3200 column.
    speedGrade->setEditText("3200 MT/s");
    EXPECT_EQ(fields(opened, "vih_dq_ac vilDiff_DQS_ac tdivwDQ"),
              "vih_dq_ac=0.07 V;vilDiff_DQS_ac=-0.140 V;tdivwDQ=0.23");

    const QString vrefs =
        "groupDQSignalBox vref_dqBox vref_dqVBox groupCASignalBox vref_caBox vref_caVBox";
    EXPECT_EQ(enabled(opened, vrefs + " pdfDirPath browsePDFDirButton"), "10001100");
    opened.find<QCheckBox>("internalVrefDQCheckBox")->setChecked(false);
    opened.find<QCheckBox>("internalVrefCACheckBox")->setChecked(true);
    EXPECT_EQ(enabled(opened, vrefs), "011100");
    auto* group = opened.find<QGroupBox>("signalThresholdGroup");
    EXPECT_EQ(group->title(), "Test Environment Setup Setting");
    opened.find<QListWidget>("thresholdListWidget")->setCurrentRow(4);
    EXPECT_EQ(group->title(), "Single Ended Input (DQS) Setting");
    EXPECT_EQ(opened.find<QStackedWidget>("thresholdStackedWidget")->currentWidget()->objectName(),
              "singleEndedDqsPage");
}

// The probe asks for the opposite of what each controller decides; the dialog is then reused on a
// design without a controller, where the earlier controller still decides. Without bursts only
// the DRAM type is the user's, and a stored LPDDR4 shows yet gets the DDR4 supplies; a DDR
// simulation has no compliance measurements.
TEST(DialogSetupPage, AControllerDecidesModesDramTypeSuppliesAndCompliance) {
    const struct {
        QString controller;
        const char* probeModes;
        const char* expected;
    } cases[] = {
        {controller("No BURST", "read", "transient"), "1",
         "00111 dqsSignalMode=Continuous;modeOfOperation=Read;dramType=LPDDR4;"
         "enableComplianceCheckBox=on;vdd=1.2 V"},
        {controller("LPDDR4", "write", "DDR"), "0",
         "00000 dqsSignalMode=Burst;modeOfOperation=Write;dramType=LPDDR4;"
         "enableComplianceCheckBox=off;vdd=1.1 V"},
    };
    for (const auto& c : cases) {
        const QString probe = probeInstance("X1", QString(R"("dqsSignalMode":"%1",
            "modeOfOperation":"%1","dramType":"%1","vdd":"1.0 V","EnableComplianceMeasurements":"1")")
                                                      .arg(c.probeModes));
        OpenDialog opened(lanetap_test::designText({c.controller, probe}));
        for (int opening = 0; opening < 2; ++opening) {
            ASSERT_NE(opened.dialog(), nullptr) << opened.lastCall().error;
            const std::string boxes =
                enabled(opened,
                        "dqsSignalModeBox modeOfOperationBox dramTypeBox enableComplianceCheckBox "
                        "complianceGroup");
            EXPECT_EQ(boxes + " " +
                          fields(opened,
                                 "dqsSignalMode modeOfOperation dramType "
                                 "enableComplianceCheckBox vdd"),
                      c.expected)
                << "opening " << opening;
            opened.host().host.loadDesign(
                opened.host().workspace.write("second.json", lanetap_test::designText({probe})));
            opened.show("X1");
        }
    }
}
