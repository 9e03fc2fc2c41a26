// The setup as the probe's parameters keep it: what opening the dialog rewrites, what Apply
// writes and from which page, and what a reused dialog adds.

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMap>
#include <QPushButton>
#include <QStackedWidget>

#include "support/BlockReader.h"
#include "support/DialogFixture.h"

using lanetap_test::OpenDialog;
using lanetap_test::probeInstance;

namespace {

// The record maps come out in hash order: records and the names behind their head (the key, or
// key and id) are sorted before comparing.
QString sortedRecords(const QString& text, int headSize) {
    QStringList records;
    for (const QString& record : text.split(',', Qt::SkipEmptyParts)) {
        QStringList parts = record.split(' ', Qt::SkipEmptyParts);
        QStringList tail = parts.mid(headSize);
        tail.sort();
        records << (parts.mid(0, headSize) + tail).join(' ');
    }
    records.sort();
    return records.join(" , ");
}

const QMap<QString, int> kRecordHeads = {
    {"SelectedMeasurementsListMap", 1},          {"SelectedGroupMeasurementsListMap", 1},
    {"SelectedMeasurementsRefSignalListMap", 2}, {"SelectedComplianceListMap", 1},
    {"SelectedGroupComplianceListMap", 1},       {"WriteLevelingSelectedRefSignalListMap", 1}};

QString comparable(const QString& key, const QString& value) {
    return kRecordHeads.contains(key) ? sortedRecords(value, kRecordHeads.value(key)) : value;
}

QString quoted(const QString& text) {
    QString escaped = text;
    return '"' + escaped.replace('"', "\\\"") + '"';
}

QString parameterObject(const QList<QPair<QString, QString>>& values) {
    QStringList pairs;
    for (const auto& value : values) {
        pairs << quoted(value.first) + ":" + quoted(value.second);
    }
    return pairs.join(',');
}

// A DDR4 memory U2 on channel 0 with DQ0, the strobe pair DQS0 and the clock pair CK0.
QString memoryU2() {
    return R"({"name":"U2","cell":"DDR_Memory","library":"ddr",
      "parameters":{"DDRIbisFile":"memory.ibs","RefDesName":"U2","RefDesDQM":"x8","DieMode":"No"},
      "terminals":[{"name":"DQ0","net":"n_dq0"},{"name":"DQS_t0","net":"n_dqs_p"},
                   {"name":"DQS_c0","net":"n_dqs_n"},{"name":"CK_t0","net":"n_ck_p"},
                   {"name":"CK_c0","net":"n_ck_n"}],
      "ddrPorts":[
        {"port":"DQ0","pin":"DQ0","refDes":"U2","channel":0,"signal":"DQ","index":0},
        {"port":"DQS_t0","pin":"DQS_t0","refDes":"U2","channel":0,"signal":"DQS_t","index":0},
        {"port":"DQS_c0","pin":"DQS_c0","refDes":"U2","channel":0,"signal":"DQS_c","index":0},
        {"port":"CK_t0","pin":"CK_t0","refDes":"U2","channel":0,"signal":"CK_t","index":0},
        {"port":"CK_c0","pin":"CK_c0","refDes":"U2","channel":0,"signal":"CK_c","index":0}]})";
}

const QString kDq0 = "DQ_Ch0_U2_DQ0";
const QString kDqs0 = "DQS_Ch0_U2_DQS0";
const QString kCk0 = "CK_Ch0_U2_CK0";

// Stored text and the text the opening rewrites it to. Stale signal keys, unknown ids and
// compliance tests of another signal type go; numbers and voltages are reformatted by their
// readers; the write-leveling keys belong to the other route and stay as they were.
struct KeyCase {
    QString key;
    QString stored;
    QString normalised;
};

QList<KeyCase> keyCases() {
    QList<KeyCase> cases = {
        {"StackWidgetPageNumber", "1", "2"},
        {"EnableWriteLeveling", "0", "0"},
        {"TabWidgetTabNumber", "2", "2"},
        {"SelectedSignalList", kDq0 + ",STALE_KEY,", kDq0 + ","},
        {"dqsSignalMode", "1", "1"},
        {"modeOfOperation", "0", "0"},
        {"dramType", "0", "0"},
        {"speedGradeList", "2400,2666,3200,", "2400,2666,3200,"},
        {"speedGradeIndex", "1", "1"},
        {"targetBER", "0.000001", "1e-06"},
        {"InterpolationTimeResolution", "2.5", "2"},
        {"TimeResolution", " 12abc", "12"},
        {"AmplitudeResolution", "1 000 mV", "1000 mV"},
        {"ResultsPDFPath", "\"/tmp/compliance pdfs\"", "\"/tmp/compliance pdfs\""},
        {"SaveToPDF", "1", "1"},
        {"EnableScreenshots", "5", "1"},
        {"vdd", "1.25 V", "1.25 V"},
        {"vddq", "1250 mV", "1250 mV"},
        {"vdd1", "1.8 V", "1.8 V"},
        {"vdd2", "1.05 V", "1.05 V"},
        {"vtt", "0.61 V", "0.61 V"},
        {"UseInternalVrefDQ", "0", "0"},
        {"GroupDQBox", "Byte", "Byte"},
        {"tdivwDQ", "0.20", "0.2"},
        {"UseInternalVrefCA", "7", "1"},
        {"GroupCABox", "Everything", "Individual"},
        {"vref_ca", "0.5 Volt", "0.5Volt"},
        {"tcivwCA", "abc", "0"},
        {"voh_ac", "0.95", "0.95"},
        {"SelectedMeasurementsListMap", kDq0 + " 3 1 6 ,STALE_KEY 2 ,", kDq0 + " 1 3 ,"},
        {"SelectedGroupMeasurementsListMap", "DQ_Ch0 2 5 ,DQ 6 ,", "DQ_Ch0 2 5 ,DQ 6 ,"},
        {"SelectedMeasurementsRefSignalListMap",
         kDq0 + " 1 " + kDqs0 + " STALE_KEY ," + kDq0 + " 0 " + kCk0 + " ,STALE_KEY 0 " + kCk0 +
             " ,",
         kDq0 + " 1 " + kDqs0 + " ," + kDq0 + " 0 " + kCk0 + " ,"},
        {"EnableComplianceMeasurements", "1", "1"},
        {"SelectedComplianceListMap", kDq0 + " 11311 30206 ,", kDq0 + " 11311 ,"},
        {"SelectedGroupComplianceListMap", "DQ 103000 30101 30206 ,CK_Ch0 ,",
         "DQ 103000 30101 ,CK_Ch0 ,"},
        {"WritelevelingSelectedSignalList", kDqs0 + ",STALE_KEY,", kDqs0 + ",STALE_KEY,"},
        {"WriteLevelingSelectedRefSignalListMap", kDqs0 + " STALE_KEY ,", kDqs0 + " STALE_KEY ,"},
    };
    // The remaining voltages, each with a value of its own that no default has.
    const QStringList thresholds = {
        "vih_dq_ac",     "vil_dq_ac",      "vih_dq_dc",      "vil_dq_dc",   "vref_dq",
        "vih_ca_ac",     "vil_ca_ac",      "vih_ca_dc",      "vil_ca_dc",   "se_high_DQS",
        "se_low_DQS",    "se_high_CK",     "se_low_CK",      "vol_ac",      "voh_dc",
        "vol_dc",        "vihDiff_DQS_ac", "vilDiff_DQS_ac", "vihDiff_DQS", "vilDiff_DQS",
        "vihDiff_CK_ac", "vilDiff_CK_ac",  "vihDiff_CK",     "vilDiff_CK",  "voh_diff",
        "vol_diff"};
    for (int i = 0; i < thresholds.size(); ++i) {
        const QString value = QString("%1 mV").arg(301 + i);
        cases << KeyCase{thresholds[i], value, value};
    }
    return cases;
}

QByteArray storedSetupDesign() {
    QList<QPair<QString, QString>> values;
    for (const KeyCase& keyCase : keyCases()) {
        values << qMakePair(keyCase.key, keyCase.stored);
    }
    return lanetap_test::designText({memoryU2(), probeInstance("X1", parameterObject(values))});
}

void expectStoredSetup(const OpenDialog& opened, const char* when) {
    for (const KeyCase& keyCase : keyCases()) {
        EXPECT_EQ(comparable(keyCase.key, opened.stored(keyCase.key)).toStdString(),
                  comparable(keyCase.key, keyCase.normalised).toStdString())
            << keyCase.key.toStdString() << " " << when;
    }
}

QMap<QString, QString> storedValues(const OpenDialog& opened) {
    QMap<QString, QString> values;
    for (const KeyCase& keyCase : keyCases()) {
        values.insert(keyCase.key, opened.stored(keyCase.key));
    }
    return values;
}

}  // namespace

TEST(DialogPersistence, EveryKeyIsNormalisedByOpeningAndSurvivesApplyAndReopening) {
    OpenDialog opened(storedSetupDesign());
    ASSERT_NE(opened.dialog(), nullptr) << opened.lastCall().error;
    expectStoredSetup(opened, "after opening");
    EXPECT_EQ(opened.find<QLineEdit>("targetBERBox")->text(), "1e-06");
    EXPECT_EQ(opened.find<QComboBox>("vref_caVBox")->currentText(), "None");
    EXPECT_EQ(opened.find<QComboBox>("speedGradeBox")->currentText(), "2666");
    EXPECT_TRUE(opened.find<QCheckBox>("enableComplianceCheckBox")->isChecked());
    // Stored thresholds win over the defaults that the speed grade brought.
    EXPECT_EQ(opened.find<QLineEdit>("vih_dq_acBox")->text(), "301");
    EXPECT_EQ(opened.find<QComboBox>("vih_dq_acVBox")->currentText(), "mV");

    opened.find<QPushButton>("applyButton")->click();
    expectStoredSetup(opened, "after Apply");

    // A second opening of the same dialog adds the stored speed grades once more; the rest
    // stands as it was.
    ASSERT_NE(opened.show("X1"), nullptr) << opened.lastCall().error;
    opened.find<QPushButton>("applyButton")->click();
    for (const KeyCase& keyCase : keyCases()) {
        if (keyCase.key != "speedGradeList") {
            EXPECT_EQ(comparable(keyCase.key, opened.stored(keyCase.key)).toStdString(),
                      comparable(keyCase.key, keyCase.normalised).toStdString())
                << keyCase.key.toStdString() << " after reopening";
        }
    }
    EXPECT_EQ(opened.stored("speedGradeList"), "2400,2666,3200,2400,2666,3200,");
    EXPECT_EQ(opened.find<QComboBox>("speedGradeBox")->count(), 6);
    EXPECT_EQ(opened.find<QComboBox>("speedGradeBox")->currentText(), "2666");
}

TEST(DialogPersistence, AnEmptiedVoltageKeepsItsUnitOrBreaksTheNextOpening) {
    OpenDialog opened(lanetap_test::designText({probeInstance("X1")}));
    ASSERT_NE(opened.dialog(), nullptr) << opened.lastCall().error;
    auto* vdd = opened.find<QLineEdit>("vddBox");
    auto* vddUnit = opened.find<QComboBox>("vddVBox");

    vdd->clear();
    vddUnit->setCurrentText("V");
    opened.find<QPushButton>("applyButton")->click();
    EXPECT_EQ(opened.stored("vdd"), " V");
    ASSERT_NE(opened.show("X1"), nullptr) << opened.lastCall().error;
    EXPECT_EQ(vdd->text(), "");
    EXPECT_EQ(vddUnit->currentText(), "V");

    vddUnit->setCurrentText("None");
    opened.find<QLineEdit>("vttBox")->setText("0.65");
    opened.find<QPushButton>("applyButton")->click();
    EXPECT_EQ(opened.stored("vdd"), "");
    const QMap<QString, QString> beforeFailure = storedValues(opened);
    const int commits = opened.host().host.commits;

    EXPECT_EQ(opened.show("X1"), nullptr);
    EXPECT_EQ(opened.lastCall().error, "setVoltageAmplitudeAndUnits LaneTapVoltage failed");
    EXPECT_EQ(opened.host().host.commits, commits);
    EXPECT_EQ(storedValues(opened), beforeFailure);
    EXPECT_EQ(opened.stored("vtt"), "0.65 V");
}

TEST(DialogPersistence, ThePageShowingDecidesWhichHalfApplyWrites) {
    OpenDialog opened(storedSetupDesign());
    ASSERT_NE(opened.dialog(), nullptr) << opened.lastCall().error;
    auto* pages = opened.find<QStackedWidget>("stackedWidget");
    opened.find<QLineEdit>("vddBox")->setText("1.4");

    // The first page writes no half at all.
    pages->setCurrentIndex(0);
    opened.find<QPushButton>("applyButton")->click();
    EXPECT_EQ(opened.stored("StackWidgetPageNumber"), "0");
    EXPECT_EQ(opened.stored("vdd"), "1.25 V");
    EXPECT_EQ(opened.stored("TabWidgetTabNumber"), "2");

    // Next on the first page with write leveling checked enters its route from tab 0.
    opened.find<QCheckBox>("writeLevelingCheckBox")->setChecked(true);
    opened.find<QPushButton>("nextButton")->click();
    ASSERT_EQ(pages->currentIndex(), 1);
    opened.find<QPushButton>("applyButton")->click();
    EXPECT_EQ(opened.stored("StackWidgetPageNumber"), "1");
    EXPECT_EQ(opened.stored("EnableWriteLeveling"), "1");
    EXPECT_EQ(opened.stored("TabWidgetTabNumber"), "0");
    EXPECT_EQ(opened.stored("WritelevelingSelectedSignalList"), kDqs0 + ",");
    // The stored reference is no signal of the design and goes.
    EXPECT_EQ(opened.stored("WriteLevelingSelectedRefSignalListMap"), kDqs0 + " ,");
    EXPECT_EQ(opened.stored("vdd"), "1.25 V");
    EXPECT_EQ(opened.stored("SelectedSignalList"), kDq0 + ",");

    pages->setCurrentIndex(2);
    opened.find<QPushButton>("applyButton")->click();
    EXPECT_EQ(opened.stored("vdd"), "1.4 V");
    EXPECT_EQ(opened.stored("StackWidgetPageNumber"), "2");
}

namespace {

// Voltage pairs of the netlist's settings line and the fields they come from.
const QList<QPair<QString, QString>> kVoltageSettings = {
    {"AmplitudeResolution", "amplitudeResolution"},
    {"Settings_InputVDD", "vdd"},
    {"Settings_InputVDDQ", "vddq"},
    {"Settings_InputVDD1", "vdd1"},
    {"Settings_InputVDD2", "vdd2"},
    {"Settings_InputRefV_VTT", "vtt"},
    {"Settings_InputThreshold_Vih_ac_DQ", "vih_dq_ac"},
    {"Settings_InputThreshold_Vil_ac_DQ", "vil_dq_ac"},
    {"Settings_InputThreshold_Vih_dc_DQ", "vih_dq_dc"},
    {"Settings_InputThreshold_Vil_dc_DQ", "vil_dq_dc"},
    {"Settings_InputRefV_VrefDQ", "vref_dq"},
    {"Settings_InputThreshold_Vih_ac_CA", "vih_ca_ac"},
    {"Settings_InputThreshold_Vil_ac_CA", "vil_ca_ac"},
    {"Settings_InputThreshold_Vih_dc_CA", "vih_ca_dc"},
    {"Settings_InputThreshold_Vil_dc_CA", "vil_ca_dc"},
    {"Settings_InputRefV_VrefCA", "vref_ca"},
    {"Settings_InputThreshold_DQS_SE_High", "se_high_DQS"},
    {"Settings_InputThreshold_DQS_SE_Low", "se_low_DQS"},
    {"Settings_InputThreshold_CLK_SE_High", "se_high_CK"},
    {"Settings_InputThreshold_CLK_SE_Low", "se_low_CK"},
    {"Settings_InputThreshold_Voh_ac", "voh_ac"},
    {"Settings_InputThreshold_Vol_ac", "vol_ac"},
    {"Settings_InputThreshold_Voh_dc", "voh_dc"},
    {"Settings_InputThreshold_Vol_dc", "vol_dc"},
    {"Settings_VIHdiff_ac_DQS", "vihDiff_DQS_ac"},
    {"Settings_VILdiff_ac_DQS", "vilDiff_DQS_ac"},
    {"Settings_VIHdiff_DQS", "vihDiff_DQS"},
    {"Settings_VILdiff_DQS", "vilDiff_DQS"},
    {"Settings_VIHdiff_ac_CK", "vihDiff_CK_ac"},
    {"Settings_VILdiff_ac_CK", "vilDiff_CK_ac"},
    {"Settings_VIHdiff_CK", "vihDiff_CK"},
    {"Settings_VILdiff_CK", "vilDiff_CK"},
    {"Settings_VOHdiff_ac", "voh_diff"},
    {"Settings_VOLdiff_ac", "vol_diff"}};

}  // namespace

TEST(DialogPersistence, TheNetlistCarriesTheSetupTheFieldsShow) {
    OpenDialog opened(lanetap_test::designText({memoryU2(), probeInstance("X1")}));
    ASSERT_NE(opened.dialog(), nullptr) << opened.lastCall().error;
    opened.find<QComboBox>("dqsSignalModeBox")->setCurrentText("Burst");
    opened.find<QComboBox>("dramTypeBox")->setCurrentText("LPDDR4");
    auto* speedGrade = opened.find<QComboBox>("speedGradeBox");
    speedGrade->setCurrentIndex(speedGrade->findText("2666"));
    opened.find<QLineEdit>("vddBox")->setText("1.15");
    opened.find<QLineEdit>("vih_dq_acBox")->setText("75");
    opened.find<QComboBox>("vih_dq_acVBox")->setCurrentText("mV");
    opened.find<QLineEdit>("vref_caBox")->setText("0.61");
    opened.find<QComboBox>("vref_caVBox")->setCurrentText("None");
    opened.find<QLineEdit>("targetBERBox")->setText("1e-9");
    opened.find<QLineEdit>("tdivwDQBox")->setText("0.25");
    opened.find<QComboBox>("groupDQSignalBox")->setCurrentText("Byte");
    opened.find<QCheckBox>("saveToPDFCheckBox")->setChecked(true);
    opened.find<QLineEdit>("pdfDirPath")->setText("\"/tmp/out\"");
    opened.find<QPushButton>("applyButton")->click();

    const standin::CallResult result = opened.host().host.netlistProbe("X1");
    ASSERT_TRUE(result.ok) << result.error;
    const lanetap_test::NetlistBlock block =
        lanetap_test::readBlock(QString::fromStdString(result.text));
    ASSERT_TRUE(block.problems.isEmpty()) << block.problems.join('\n').toStdString();
    for (const auto& setting : kVoltageSettings) {
        const QString unitText = opened.find<QComboBox>(setting.second + "VBox")->currentText();
        const QString shown = opened.find<QLineEdit>(setting.second + "Box")->text() +
                              (unitText == "None" ? QString() : " " + unitText);
        EXPECT_EQ(block.settings.value(setting.first), shown) << setting.first.toStdString();
    }
    EXPECT_EQ(block.settings.value("Settings_InputVDD"), "1.15 V");
    EXPECT_EQ(block.settings.value("Settings_InputRefV_VTT"), "0.55 V");
    EXPECT_EQ(block.settings.value("Settings_InputThreshold_Vih_ac_DQ"), "75 mV");
    EXPECT_EQ(block.settings.value("Settings_InputThreshold_Vih_ac_CA"), "0.09 V");
    EXPECT_EQ(block.settings.value("Settings_InputRefV_VrefCA"), "0.61");
    EXPECT_EQ(block.settings.value("Settings_DQSSignalType"), "\"burst\"");
    EXPECT_EQ(block.settings.value("Settings_chkLPDDR4"), "1");
    EXPECT_EQ(block.settings.value("SpeedGrade"), "2666");
    EXPECT_EQ(block.settings.value("Settings_pcboCustomSG"), "2666");
    EXPECT_EQ(block.settings.value("TargetBER"), "1e-9");
    EXPECT_EQ(block.settings.value("Settings_TimingWindowDQ"), "0.25");
    EXPECT_EQ(block.settings.value("GroupDQBy"), "\"Byte\"");
    EXPECT_EQ(block.settings.value("NEBProperties_SaveReportPDF"), "1");
    EXPECT_EQ(block.settings.value("NEBProperties_ReportPath"), "\"/tmp/out\"");
}
