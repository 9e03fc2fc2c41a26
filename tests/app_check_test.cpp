// lanetap check: every finding on a design made to have it, nothing above a note for a setup
// that holds together, and the design file left as it was.

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "support/TestSupport.h"

namespace {

using lanetap_test::ProgramRun;
using lanetap_test::runProgram;

// "severity code key item" of each finding, "-" for null, sorted.
QStringList findings(const ProgramRun& run) {
    QStringList lines;
    for (const QJsonValue& f : QJsonDocument::fromJson(run.out)["findings"].toArray()) {
        QStringList fields;
        for (const char* name : {"severity", "code", "key", "item"}) {
            fields << (f[name].isNull() ? QString("-") : f[name].toString());
        }
        lines << fields.join(' ');
    }
    lines.sort();
    return lines;
}

TEST(CheckCommand, NamesEveryFindingAndLeavesTheFileAsItWas) {
    lanetap_test::Workspace workspace;
    const QString stale = workspace.write(
        "stale.json", lanetap_test::readBytes(LANETAP_SOURCE_DIR "/examples/stale_setup.json"));
    const QByteArray before = lanetap_test::readBytes(stale);
    const ProgramRun json = runProgram({"check", stale, "--probe", "X1", "--json"});
    EXPECT_EQ(json.exitCode, 1);
    EXPECT_EQ(QJsonDocument::fromJson(json.out)["design"].toString(), stale);
    EXPECT_EQ(findings(json),
              QStringList({"error bad-voltage vdd2 -",
                           "note compliance-inactive EnableComplianceMeasurements -",
                           "note controller-override modeOfOperation -",
                           "warning bad-index speedGradeIndex -", "warning bad-number targetBER -",
                           "warning compliance-not-offered SelectedGroupComplianceListMap DQ 30101",
                           "warning missing-reference SelectedMeasurementsRefSignalListMap "
                           "DQS_Ch0_U2_DQS0 Skew",
                           "warning netlist-warning - -", "warning netlist-warning - -",
                           "warning stale-reference SelectedMeasurementsRefSignalListMap "
                           "DQ_Ch0_U2_DQ0 DQS_Ch0_U9_DQS0",
                           "warning stale-signal SelectedSignalList DQ_Ch0_U2_DQ8",
                           "warning unknown-id SelectedGroupComplianceListMap DQ 999999",
                           "warning unknown-id SelectedMeasurementsListMap DQ_Ch0_U2_DQ0 6",
                           "warning unsafe-value ResultsPDFPath /tmp/compliance results"}));
    const ProgramRun text = runProgram({"check", stale, "--probe", "X1"});
    EXPECT_EQ(text.exitCode, 1);
    const QStringList lines = QString::fromUtf8(text.out).split('\n', Qt::SkipEmptyParts);
    EXPECT_EQ(lines.size(), 15);
    EXPECT_EQ(lines.value(0),
              "warning stale-signal SelectedSignalList DQ_Ch0_U2_DQ8: the design "
              "has no such signal; the dialog drops it and the block leaves it out");
    EXPECT_EQ(lines.value(14), "1 error(s), 11 warning(s), 2 note(s)");
    EXPECT_EQ(lanetap_test::readBytes(stale), before);

    // A setup that holds together has nothing above a note; here, that nothing is selected.
    const QString empty = workspace.write(
        "empty.json", lanetap_test::readBytes(LANETAP_SOURCE_DIR "/examples/ddr4_x8_write.json"));
    ASSERT_EQ(runProgram({"set", empty, "--probe", "X1", "SelectedSignalList="}).exitCode, 0);
    const ProgramRun consistent = runProgram({"check", empty, "--probe", "X1", "--json"});
    EXPECT_EQ(consistent.exitCode, 0);
    EXPECT_EQ(findings(consistent), QStringList{"note nothing-selected SelectedSignalList -"});
}

}  // namespace
