// lanetap check: each way in which the block or the dialog departs from a stored setup is named,
// a setup that holds together has nothing above a note, and the design file stays as it was.

#include <gtest/gtest.h>

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include "support/TestSupport.h"

namespace {

using lanetap_test::ProgramRun;
using lanetap_test::readBytes;
using lanetap_test::runProgram;

// "severity code key item" of each finding, "-" for null.
QStringList findings(const ProgramRun& run) {
    QStringList lines;
    for (const QJsonValue f : QJsonDocument::fromJson(run.out)["findings"].toArray()) {
        QStringList fields;
        for (const char* name : {"severity", "code", "key", "item"}) {
            fields << (f[name].isNull() ? QString("-") : f[name].toString());
        }
        lines << fields.join(' ');
    }
    return lines;
}

// The worked example with the instances' parameters changed ({"X1": {"key": "value"}, ...}); an
// instance given null is taken out.
QByteArray changedExample(const QJsonObject& changes) {
    QJsonObject design =
        QJsonDocument::fromJson(readBytes(LANETAP_SOURCE_DIR "/examples/ddr4_x8_write.json"))
            .object();
    QJsonArray instances;
    for (const QJsonValue value : design["instances"].toArray()) {
        QJsonObject instance = value.toObject();
        const QJsonValue change = changes.value(instance["name"].toString());
        if (change.isNull()) {
            continue;
        }
        QJsonObject parameters = instance["parameters"].toObject();
        const QJsonObject changed = change.toObject();
        for (auto it = changed.constBegin(); it != changed.constEnd(); ++it) {
            parameters.insert(it.key(), it.value());
        }
        instance["parameters"] = parameters;
        instances.append(instance);
    }
    design["instances"] = instances;
    return QJsonDocument(design).toJson();
}

TEST(CheckCommand, NamesEachWayTheBlockOrTheDialogTakesTheSetupOtherwise) {
    const struct {
        const char* changes;  // JSON of changedExample
        // Findings that must be among those reported, "severity code key item" each.
        QStringList expected;
        // Codes that must not be reported.
        QStringList absent = {};
    } cases[] = {
        // Texts the settings line cannot carry, the controller's data rate among them.
        {R"({"U1": {"DataRate": "3200 EnableCompliance=0"}})",
         {"warning unsafe-value DataRate DataRate DataRateUnit of the controller"}},
        {R"({"X1": {"ResultsPDFPath": "reports/a;b"}})",
         {"warning unsafe-value ResultsPDFPath reports/a;b"}},
        {R"({"X1": {"GroupDQBox": "\"a b\""}})", {"warning unsafe-value GroupDQBox \"a b\""}},
        {R"({"X1": {"vdd": "1 2 3 V"}})",
         {"warning unsafe-value vdd 1 2 3 V", "error bad-voltage vdd -"}},
        {"{\"X1\": {\"ResultsPDFPath\": \"a\u2028b\"}}",
         {"warning unsafe-value ResultsPDFPath a\u2028b"}},
        // A controller without a burst pattern is DDR4 to the block, while the dialog shows the
        // probe's LPDDR4 and keeps its tests; without a controller a DRAM type 2 is LPDDR4 to the
        // block and leaves the dialog on DDR4.
        {R"({"X1": {"dramType": "1", "SelectedGroupComplianceListMap": "DQ 503000 503003 ,"}})",
         {"warning modes-differ dramType -",
          "warning not-written SelectedGroupComplianceListMap DQ 503000"}},
        {R"({"U1": null, "X1": {"dramType": "2"}})",
         {"warning modes-differ dramType -", "warning bad-index dramType -"}},
        // Numbers as the plug-in reads them.
        {R"({"X1": {"EnableComplianceMeasurements": "99999999999"}})",
         {"warning bad-number EnableComplianceMeasurements -"}},
        {R"({"X1": {"EnableComplianceMeasurements": "0x1"}})",
         {"warning bad-number EnableComplianceMeasurements -"}},
        {R"({"X1": {"EnableComplianceMeasurements": "inf"}})",
         {"warning bad-number EnableComplianceMeasurements -"}},
        {R"({"X1": {"speedGradeIndex": "0x6"}})", {"warning bad-number speedGradeIndex -"}},
        {R"({"X1": {"speedGradeIndex": "nan"}})", {"warning bad-number speedGradeIndex -"}},
        // Codes of the reference map that name no measurement, or are no number.
        {R"({"X1": {"SelectedMeasurementsRefSignalListMap": "DQ_Ch0_U2_DQ0 99 DQS_Ch0_U2_DQS0 ,"}})",
         {"warning unknown-id SelectedMeasurementsRefSignalListMap DQ_Ch0_U2_DQ0 99 "
          "DQS_Ch0_U2_DQS0"}},
        {R"({"X1": {"SelectedMeasurementsRefSignalListMap": "DQ_Ch0_U2_DQ0 abc DQS_Ch0_U2_DQS0 ,"}})",
         {"warning bad-number SelectedMeasurementsRefSignalListMap DQ_Ch0_U2_DQ0 abc"}},
        // A compliance key deeper than a signal type writes nothing.
        {R"({"X1": {"SelectedGroupComplianceListMap": "DQ_Ch0_U2 103000 ,"}})",
         {"warning not-written SelectedGroupComplianceListMap DQ_Ch0_U2 103000"}},
        // Measurements of a signal that is not selected: not written without compliance, and
        // dropped by the dialog though written with it.
        {R"({"X1": {"SelectedSignalList": "", "EnableComplianceMeasurements": "0"}})",
         {"warning not-written SelectedMeasurementsListMap DQ_Ch0_U2_DQ0 Eye",
          "note nothing-selected SelectedSignalList -"}},
        {R"({"X1": {"SelectedSignalList": ""}})",
         {"warning dialog-changes SelectedMeasurementsListMap DQ_Ch0_U2_DQ0 1 3"}},
        {R"({"X1": {"SelectedMeasurementsListMap": "DQ_Ch0_U2_DQ0 3 3 3 ,"}})",
         {"warning duplicate SelectedMeasurementsListMap DQ_Ch0_U2_DQ0 3"}},
        // The dialog's opening reads the resolutions as integers.
        {R"({"X1": {"InterpolationTimeResolution": "1e3", "TimeResolution": "12.5"}})",
         {"warning dialog-changes InterpolationTimeResolution '1e3' -> '1'",
          "warning dialog-changes TimeResolution '12.5' -> '12'",
          "warning bad-number InterpolationTimeResolution -"}},
        // Measurements their own descriptions rule out.
        {R"({"X1": {"SelectedSignalList": "DQ_Ch0_U2_DQ0,DQS_Ch0_U2_DQS0,CK_Ch0_U2_CK0,",
                    "SelectedMeasurementsListMap": "DQS_Ch0_U2_DQS0 5 ,CK_Ch0_U2_CK0 7 ,"}})",
         {"warning not-measurable SelectedMeasurementsListMap DQS_Ch0_U2_DQS0 Mask Margin",
          "warning not-measurable SelectedMeasurementsListMap CK_Ch0_U2_CK0 BER Contour"}},
        {R"({"U1": {"SimulationMode": "DDR"}, "X1": {"SelectedMeasurementsListMap": "DQ_Ch0_U2_DQ0 0 4 ,"}})",
         {"warning not-measurable SelectedMeasurementsListMap DQ_Ch0_U2_DQ0 Strobed Eye",
          "warning not-measurable SelectedMeasurementsListMap DQ_Ch0_U2_DQ0 Waveform"}},
        // The controller's rate and the probe's speed grade.
        {R"({"U1": {"DataRate": "2400"}})", {"warning rate-mismatch speedGradeIndex 3200"}},
        {R"({"U1": {"DataRate": "2000"}})", {"warning rate-mismatch DataRate 2000 Mbps"}},
        {R"({"U1": {"DataRateUnit": "furlongs"}})", {}, {"rate-mismatch"}},
        // A controller in the read cycle decides over a stored write.
        {R"({"U1": {"DataMode": "read"}})", {"note controller-override modeOfOperation -"}},
        // What compliance adds beyond the selection.
        {"{}", {"note compliance-adds EnableComplianceMeasurements -"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.changes);
        lanetap_test::Workspace workspace;
        const QJsonObject changes = QJsonDocument::fromJson(c.changes).object();
        ASSERT_FALSE(changes.isEmpty() && QByteArray(c.changes) != "{}");
        const QString design = workspace.write("design.json", changedExample(changes));
        const QByteArray before = readBytes(design);
        const ProgramRun run = runProgram({"check", design, "--probe", "X1", "--json"});
        const QStringList reported = findings(run);
        EXPECT_EQ(run.exitCode,
                  reported.filter(QRegularExpression("^(warning|error) ")).isEmpty() ? 0 : 1);
        for (const QString& finding : c.expected) {
            EXPECT_TRUE(reported.contains(finding)) << finding.toStdString() << "\nreported:\n"
                                                    << reported.join('\n').toStdString();
        }
        for (const QString& code : c.absent) {
            EXPECT_TRUE(reported.filter(" " + code + " ").isEmpty()) << code.toStdString();
        }
        EXPECT_EQ(readBytes(design), before);
    }
}

// A stale setup in text and in JSON: the summary counts the lines, and the file stays.
TEST(CheckCommand, ReportsAStaleSetupInTextAndJson) {
    lanetap_test::Workspace workspace;
    const QString stale =
        workspace.write("stale.json", readBytes(LANETAP_SOURCE_DIR "/examples/stale_setup.json"));
    const QByteArray before = readBytes(stale);
    const ProgramRun json = runProgram({"check", stale, "--probe", "X1", "--json"});
    EXPECT_EQ(json.exitCode, 1);
    EXPECT_EQ(QJsonDocument::fromJson(json.out)["design"].toString(), stale);
    QStringList reported = findings(json);
    reported.sort();
    EXPECT_EQ(reported,
              QStringList({"error bad-voltage vdd2 -",
                           "note compliance-inactive EnableComplianceMeasurements -",
                           "note controller-override modeOfOperation -",
                           "warning bad-index speedGradeIndex -", "warning bad-number targetBER -",
                           "warning missing-reference SelectedMeasurementsRefSignalListMap "
                           "DQS_Ch0_U2_DQS0 Skew",
                           "warning netlist-warning - -", "warning netlist-warning - -",
                           "warning not-written SelectedMeasurementsRefSignalListMap "
                           "DQ_Ch0_U2_DQ0 1 DQS_Ch0_U9_DQS0",
                           "warning not-written SelectedSignalList DQ_Ch0_U2_DQ8",
                           "warning unknown-id SelectedMeasurementsListMap DQ_Ch0_U2_DQ0 6",
                           "warning unsafe-value ResultsPDFPath /tmp/compliance results"}));
    const ProgramRun text = runProgram({"check", stale, "--probe", "X1"});
    EXPECT_EQ(text.exitCode, 1);
    const QStringList lines = QString::fromUtf8(text.out).split('\n', Qt::SkipEmptyParts);
    EXPECT_EQ(lines.size(), 13);
    EXPECT_EQ(lines.value(0),
              "error bad-voltage vdd2 -: the voltage is blank; the dialog cannot open");
    EXPECT_EQ(lines.value(12), "1 error(s), 9 warning(s), 2 note(s)");
    EXPECT_EQ(readBytes(stale), before);
}

// Setups that hold together: every example but the two made to show findings, and every kind of
// generated design, have nothing above a note.
TEST(CheckCommand, FindsNothingAboveANoteInSetupsThatHoldTogether) {
    lanetap_test::Workspace workspace;
    QStringList designs;
    for (const QString& name : QDir(LANETAP_SOURCE_DIR "/examples").entryList({"*.json"})) {
        if (!name.endsWith(".setup.json") && name != "stale_setup.json" &&
            name != "half_connected_pairs.json") {
            designs << LANETAP_SOURCE_DIR "/examples/" + name;
        }
    }
    const QList<QStringList> variants{{},
                                      {"--dram", "lpddr4", "--channels", "2", "--die"},
                                      {"--width", "x4", "--read", "--ebd-nodes", "2"},
                                      {"--ddr-simulation", "--devices", "2"},
                                      {"--dram", "lpddr4", "--read", "--width", "x8"}};
    for (const QStringList& options : variants) {
        designs << workspace.write(options.join('_') + ".json",
                                   runProgram(QStringList{"generate"} + options).out);
    }
    for (const QString& design : designs) {
        SCOPED_TRACE(design.toStdString());
        const ProgramRun run = runProgram({"check", design, "--probe", "X1", "--json"});
        EXPECT_EQ(run.exitCode, 0);
        EXPECT_EQ(findings(run).filter(QRegularExpression("^(warning|error) ")), QStringList());
    }
}

}  // namespace
