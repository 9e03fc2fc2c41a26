// The setup as the probe's parameters keep it: what opening the dialog rewrites, what Apply
// writes and from which page, what a reused dialog adds, and what the netlist reads back.

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QStackedWidget>

#include "netlist/BlockReader.h"
#include "support/BlockSettingNames.h"
#include "support/DialogFixture.h"

using lanetap_test::OpenDialog;
using lanetap_test::probeInstance;

namespace {

// A DDR4 memory U2 on channel 0 with DQ0, the strobe pair DQS0 and the clock pair CK0.
const QString kMemoryU2 = lanetap_test::ddrPart(
    "U2", "DDR_Memory", "U2",
    R"("DDRIbisFile":"memory.ibs","RefDesName":"U2","RefDesDQM":"x8","DieMode":"No")",
    {"DQ0", "DQS_t0", "DQS_c0", "CK_t0", "CK_c0"});

// "key=stored => as the opening rewrites it", or "key=stored" for a text that stays. Stale signal
// keys, unknown ids and compliance tests of another signal type go; numbers and voltages are
// reformatted by their readers; the write-leveling keys belong to the other route and stay, and so
// does text beyond ASCII, opening after opening. Each
// map holds one record with at most one id, so that the order of a hash does not show.
const QStringList kKeyRows =
    QString(
        "StackWidgetPageNumber=1 => 2;targetBER=0.000001 => 1e-06;TimeResolution= 12abc => 12;"
        "InterpolationTimeResolution=2.5 => 2;AmplitudeResolution=1 000 mV => 1000 mV;"
        "EnableScreenshots=5 => 1;tdivwDQ=0.20 => 0.2;UseInternalVrefCA=7 => 1;tcivwCA=abc => 0;"
        "GroupCABox=Everything => Individual;vref_ca=0.5 Volt => 0.5Volt;"
        "SelectedSignalList=DQ_Ch0_U2_DQ0,STALE_KEY, => DQ_Ch0_U2_DQ0,;"
        "SelectedMeasurementsListMap=DQ_Ch0_U2_DQ0 3 6 ,STALE_KEY 2 , => DQ_Ch0_U2_DQ0 3 ,;"
        "SelectedMeasurementsRefSignalListMap=DQ_Ch0_U2_DQ0 1 DQS_Ch0_U2_DQS0 STALE_KEY ,"
        "STALE_KEY 0 CK_Ch0_U2_CK0 , => DQ_Ch0_U2_DQ0 1 DQS_Ch0_U2_DQS0 ,;"
        "SelectedComplianceListMap=DQ_Ch0_U2_DQ0 11311 30206 , => DQ_Ch0_U2_DQ0 11311 ,;"
        "SelectedGroupComplianceListMap=DQ 30101 30206 , => DQ 30101 ,;"
        "SelectedGroupMeasurementsListMap=DQ_Ch0 5 ,;"
        "WritelevelingSelectedSignalList=DQS_Ch0_U2_DQS0,STALE_KEY,;"
        "WriteLevelingSelectedRefSignalListMap=DQS_Ch0_U2_DQS0 STALE_KEY ,;"
        "ResultsPDFPath=\"/tmp/josé's pdfs\";EnableWriteLeveling=0;TabWidgetTabNumber=2;"
        "dqsSignalMode=1;modeOfOperation=0;dramType=0;speedGradeList=2400,2666,3200,;"
        "speedGradeIndex=1;SaveToPDF=1;vdd=1.25 V;vddq=1250 mV;vdd1=1.8 V;vdd2=1.05 V;vtt=0.61 V;"
        "UseInternalVrefDQ=0;GroupDQBox=Byte;voh_ac=0.95;EnableComplianceMeasurements=1")
        .split(';');

// The voltages of the threshold pages in the order of the block's settings; those the rows above
// lack are stored with a value of their own.
const QStringList kThresholdKeys =
    QString(
        "vih_dq_ac vil_dq_ac vih_dq_dc vil_dq_dc vref_dq vih_ca_ac vil_ca_ac vih_ca_dc vil_ca_dc "
        "vref_ca se_high_DQS se_low_DQS se_high_CK se_low_CK voh_ac vol_ac voh_dc vol_dc "
        "vihDiff_DQS_ac vilDiff_DQS_ac vihDiff_DQS vilDiff_DQS vihDiff_CK_ac vilDiff_CK_ac "
        "vihDiff_CK vilDiff_CK voh_diff vol_diff")
        .split(' ');

using Parameters = standin::ParameterValues;

// Every key with its stored text, or with the text the opening makes of it.
Parameters setupTable(bool normalised) {
    Parameters values;
    for (int i = 0; i < kThresholdKeys.size(); ++i) {
        values[kThresholdKeys[i].toStdString()] = QString("%1 mV").arg(301 + i).toStdString();
    }
    for (const QString& row : kKeyRows) {
        const QStringList texts = row.section('=', 1).split(" => ");
        values[row.section('=', 0, 0).toStdString()] =
            (normalised ? texts.last() : texts.first()).toStdString();
    }
    return values;
}

const Parameters& stored(OpenDialog& opened) {
    return opened.host().host.design()->findInstance("X1")->parameters.values;
}

QByteArray storedSetupDesign() {
    QStringList pairs;
    for (const auto& [key, value] : setupTable(false)) {
        pairs << QString("\"%1\":\"%2\"")
                     .arg(QString::fromStdString(key),
                          QString::fromStdString(value).replace('"', "\\\""));
    }
    return lanetap_test::designText({kMemoryU2, probeInstance("X1", pairs.join(','))});
}

}  // namespace

// The opening rewrites every key; Apply writes it back the same, and so does the netlist, each
// voltage under its own setting; a second opening adds the stored speed grades once more. Then
// the page that shows decides which half of the setup Apply writes.
TEST(DialogPersistence, OpeningNormalisesEveryKeyAndApplyWritesTheHalfOfThePageShowing) {
    OpenDialog opened(storedSetupDesign());
    ASSERT_NE(opened.dialog(), nullptr) << opened.lastCall().error;
    Parameters normalised = setupTable(true);
    EXPECT_EQ(stored(opened), normalised);
    opened.find<QPushButton>("applyButton")->click();
    EXPECT_EQ(stored(opened), normalised);

    const standin::CallResult result = opened.host().host.netlistProbe("X1");
    ASSERT_TRUE(result.ok) << result.error;
    const auto block = LaneTapUI::readBlock(QString::fromStdString(result.text));
    const QStringList keys =
        QStringList{"AmplitudeResolution", "vdd", "vddq", "vdd1", "vdd2", "vtt"} + kThresholdKeys;
    QStringList settings;
    for (const QString& name : lanetap_test::blockSettingNames()) {
        if (name == "AmplitudeResolution" ||
            name.contains(QRegularExpression("^Settings_(Input|V)"))) {
            settings << name;
        }
    }
    ASSERT_EQ(settings.size(), keys.size());
    for (int i = 0; i < keys.size(); ++i) {
        EXPECT_EQ(block.settings.value(settings[i]).toStdString(),
                  normalised[keys[i].toStdString()])
            << settings[i].toStdString();
    }

    ASSERT_NE(opened.show("X1"), nullptr) << opened.lastCall().error;
    normalised["speedGradeList"] = "2400,2666,3200,2400,2666,3200,";
    EXPECT_EQ(stored(opened), normalised);
    EXPECT_EQ(opened.find<QComboBox>("speedGradeBox")->currentText(), "2666");

    // The first page writes no half and hides Back and Apply; Next from it with write leveling
    // checked enters that route from tab 0, whose Apply writes its half only: the stored signal
    // that is no signal of the design goes, and so does the stored reference.
    auto* pages = opened.find<QStackedWidget>("stackedWidget");
    auto* apply = opened.find<QPushButton>("applyButton");
    opened.find<QLineEdit>("vddBox")->setText("1.4");
    pages->setCurrentIndex(0);
    EXPECT_TRUE(apply->isHidden() && opened.find<QPushButton>("backButton")->isHidden());
    apply->click();
    normalised["StackWidgetPageNumber"] = "0";
    EXPECT_EQ(stored(opened), normalised);
    opened.find<QCheckBox>("writeLevelingCheckBox")->setChecked(true);
    opened.find<QPushButton>("nextButton")->click();
    ASSERT_EQ(pages->currentIndex(), 1);
    EXPECT_FALSE(apply->isHidden());
    apply->click();
    normalised["StackWidgetPageNumber"] = "1";
    normalised["EnableWriteLeveling"] = "1";
    normalised["TabWidgetTabNumber"] = "0";
    normalised["WritelevelingSelectedSignalList"] = "DQS_Ch0_U2_DQS0,";
    normalised["WriteLevelingSelectedRefSignalListMap"] = "DQS_Ch0_U2_DQS0 ,";
    EXPECT_EQ(stored(opened), normalised);
    pages->setCurrentIndex(2);
    apply->click();
    normalised["StackWidgetPageNumber"] = "2";
    normalised["vdd"] = "1.4 V";
    EXPECT_EQ(stored(opened), normalised);
}
