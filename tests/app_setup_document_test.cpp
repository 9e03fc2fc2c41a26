// lanetap export, apply and set: a setup in words goes there and back without changing a byte,
// and everything a probe cannot take is refused in one line, leaving the file as it was.

#include <gtest/gtest.h>

#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include "netlist/BlockReader.h"
#include "support/BlockSettingNames.h"
#include "support/TestSupport.h"

namespace {

using lanetap_test::ProgramRun;
using lanetap_test::readBytes;
using lanetap_test::runProgram;
using lanetap_test::Workspace;

const QString examples = LANETAP_SOURCE_DIR "/examples/";

// Every example design and a generated design of each kind: their files as the program reads them.
QList<QPair<QString, QByteArray>> designs() {
    QList<QPair<QString, QByteArray>> all;
    for (const QString& name : QDir(examples).entryList({"*.json"}, QDir::Files)) {
        if (!name.endsWith(".setup.json")) {
            all.append({name, readBytes(examples + name)});
        }
    }
    const QList<QStringList> variants{{},
                                      {"--dram", "lpddr4", "--channels", "2", "--die"},
                                      {"--width", "x4", "--read", "--ebd-nodes", "2"},
                                      {"--ddr-simulation", "--devices", "2"}};
    for (const QStringList& options : variants) {
        all.append(
            {"generate " + options.join(' '), runProgram(QStringList{"generate"} + options).out});
    }
    return all;
}

// Export, then apply what it wrote: nothing changes, not a byte of the file and so not of the
// block, and a dry run says so; a second export gives the same document.
TEST(SetupDocument, ExportThenApplyChangesNothing) {
    for (const auto& [name, bytes] : designs()) {
        SCOPED_TRACE(name.toStdString());
        Workspace workspace;
        const QString design = workspace.write("design.json", bytes);
        const QString setup = workspace.path("setup.json");
        const ProgramRun exported = runProgram({"export", design, "--probe", "X1", "-o", setup});
        ASSERT_EQ(exported.exitCode, 0) << exported.err.toStdString();
        const ProgramRun dry = runProgram({"apply", design, "--probe", "X1", setup, "--dry-run"});
        EXPECT_EQ(dry.out, "no change\n") << dry.err.toStdString();
        const ProgramRun applied = runProgram({"apply", design, "--probe", "X1", setup});
        EXPECT_EQ(applied.exitCode, 0) << applied.err.toStdString();
        EXPECT_EQ(readBytes(design), bytes);
        EXPECT_EQ(runProgram({"export", design, "--probe", "X1"}).out, readBytes(setup));
    }
}

// The byte-lane setup of the README: eight data lines with Eye and a Skew against the lane's
// strobe, and every DQ test the write cycle offers. Exported and applied to a fresh probe, the
// stored setup is the same.
TEST(SetupDocument, TheByteLaneSetupReachesTheBlockAndTravelsByExport) {
    Workspace workspace;
    const QByteArray fresh = readBytes(examples + "ddr4_byte_lane.json");
    const QString design = workspace.write("design.json", fresh);
    const ProgramRun applied =
        runProgram({"apply", design, "--probe", "X1", examples + "byte_lane.setup.json"});
    ASSERT_EQ(applied.exitCode, 0) << applied.err.toStdString();
    const ProgramRun netlist = runProgram({"netlist", design, "--probe", "X1"});
    const LaneTapUI::NetlistBlock block = LaneTapUI::readBlock(QString::fromUtf8(netlist.out));
    EXPECT_TRUE(block.problems.isEmpty()) << block.problemTexts().join("; ").toStdString();
    QStringList measured;
    for (const QStringList& line : block.nodeMeasMap) {
        measured << line.join(' ');
    }
    for (int bit = 0; bit < 8; ++bit) {
        const QString key = QString("DQ_Ch0_U2_DQ%1").arg(bit);
        EXPECT_TRUE(measured.contains(key + " Unreferenced Eye")) << key.toStdString();
        EXPECT_TRUE(measured.contains(key + " DQS_Ch0_U2_DQS0 Skew")) << key.toStdString();
    }
    EXPECT_EQ(measured.size(), 16);
    QStringList tests = block.complianceMeasMap.value(0);
    tests.sort();
    EXPECT_EQ(tests.join(' '), "103000 103001 103002 103003 103004 103005 DQ");

    const QString setup = workspace.path("exported.json");
    ASSERT_EQ(runProgram({"export", design, "--probe", "X1", "-o", setup}).exitCode, 0);
    const QString copy = workspace.write("copy.json", fresh);
    ASSERT_EQ(runProgram({"apply", copy, "--probe", "X1", setup}).exitCode, 0);
    EXPECT_EQ(runProgram({"get", copy, "--probe", "X1"}).out,
              runProgram({"get", design, "--probe", "X1"}).out);
}

// What a probe cannot take: the command fails with exit code 2 and one line naming the entry, and
// the file stays as it was. An accepted row changes the file.
TEST(SetupDocument, RefusesWhatTheProbeCannotTakeInOneLine) {
    const struct {
        // "set KEY=VALUE ..." or "apply {document}" on the byte-lane design with its setup applied.
        const char* command;
        const char* error;  // empty for a command that is accepted
    } cases[] = {
        {"set SelectedMeasurementsListMap=DQ_Ch0_U2_DQ0 Eye SlewRate ,",
         "SelectedMeasurementsListMap: 'Eye' is not a measurement code (0 Strobed Eye, 1 Skew"},
        {"set vddd=1.2", "probe X1 has no parameter 'vddd' (nearest: 'vdd')"},
        {"set SelectedSignalLIst=DQ_Ch0_U2_DQ0,",
         "no parameter 'SelectedSignalLIst' (nearest: 'SelectedSignalList')"},
        {"set vdd=1.2V", "the value of vdd of instance 'X1' is no voltage"},
        {"set vdd=abc", "the value of vdd of instance 'X1' is no voltage"},
        {"set vdd=1.2 Volt", "the value of vdd of instance 'X1' is no voltage"},
        {"set ResultsPDFPath=a;b",
         "the value of ResultsPDFPath of instance 'X1' holds the character ;"},
        {"set speedGradeIndex=3200", "speedGradeIndex: 3200 names no item of its box (0 1600,"},
        {"set dramType=LPDDR4", "dramType: 'LPDDR4' is not an index (0 DDR4, 1 LPDDR4)"},
        {"set TimeResolution=12.5", "TimeResolution: '12.5' is not an integer"},
        {"set GroupDQBox=nibble", "GroupDQBox: 'nibble' is none of Bit, Nibble, Byte"},
        {"set SelectedSignalList=DQ_Ch0_U2_DQ9,",
         "the design has no signal 'DQ_Ch0_U2_DQ9' (nearest: 'DQ_Ch0_U2_DQ0')"},
        {"set SelectedSignalList=DQ_Ch0_U2_DQ0", "every item ends with ','"},
        {"set SelectedGroupComplianceListMap=DQ 10333 ,", "'10333' is not a compliance test of DQ"},
        {"set SelectedMeasurementsRefSignalListMap=DQ_Ch0_U2_DQ0 ,", "is not an entry of this map"},
        {"set speedGradeList=1600,fast, speedGradeIndex=1",
         "speedGradeList: 'fast' is not a data rate"},
        {"set vdd=1.1 V dramType=1 speedGradeList=1600,2400, speedGradeIndex=1", ""},
        {"set SelectedMeasurementsListMap=DQ_Ch0_U2_DQ0 3 1 ,", ""},
        {"set --raw dramType=7", ""},
        {R"j(apply {"signals": ["DQ_Ch0_U2_DQ9"]})j",
         "signals[0]: the design has no signal 'DQ_Ch0_U2_DQ9' (nearest: 'DQ_Ch0_U2_DQ0')"},
        {R"j(apply {"signals": ["DQ_Ch1_*"]})j", "signals[0]: the design has no signal 'DQ_Ch1_*'"},
        {R"j(apply {"measurements": {"DQ_Ch0_U2_DQ0": ["Slew rate", "Eyes"]}})j",
         "measurements.DQ_Ch0_U2_DQ0: 'Eyes' is no measurement"},
        {R"j(apply {"measurements": {"DQ_Ch0_U2_DQ0": ["Eye"], "CK_Ch0_U2_CK0": ["Eye"]}})j",
         "measurements.CK_Ch0_U2_CK0: 'CK_Ch0_U2_CK0' names no selected signal"},
        {R"j(apply {"references": {"DQ_Ch0_U2_DQ1": {"Skew": ["A_Ch0_U2_A0"]}}})j",
         "A_Ch0_U2_A0 is of type A, which a DQ signal does not take as reference"},
        {R"j(apply {"references": {"DQ_Ch0_U2_DQ1": {"Eye": ["DQS_Ch0_U2_DQS0"]}}})j",
         "references.DQ_Ch0_U2_DQ1.Eye: Eye needs no reference signal"},
        {R"j(apply {"references": {"DQS_Ch0_U2_DQS0": {"Skew": ["auto"]}}})j",
         "DQS_Ch0_U2_DQS0 has no Skew measurement"},
        {R"j(apply {"compliance": {"tests": {"DQ": ["Overshoot amplitude (DQ)", "30101"]}}})j",
         "'30101' is not a test the compliance page offers DQ under DDR4, write cycle"},
        {R"j(apply {"compliance": {"tests": {"DQ": ["Overshot amplitude (DQ)"]}}})j",
         "(nearest: 'Overshoot amplitude (DQ)')"},
        {R"j(apply {"compliance": {"tests": {"QD": "offered"}}})j", "offers no group 'QD' here"},
        {R"j(apply {"testEnvironment": {"cycle": "Read"}})j",
         "testEnvironment.cycle: the design's controller decides it: Write"},
        {R"j(apply {"testEnvironment": {"speedGrade": 3000}})j",
         "testEnvironment.speedGrade: the probe's speed grades are 1600"},
        {R"j(apply {"testEnvironment": {"dramType": "DDR5"}})j", "'DDR5' is none of DDR4, LPDDR4"},
        {R"j(apply {"supplies": {"vdd": "1.2V"}})j", "supplies.vdd: '1.2V' is not a voltage"},
        {R"j(apply {"compliance": {"pdfDirectory": "/tmp/a b"}})j",
         "ResultsPDFPath: the value of ResultsPDFPath of instance 'X1' holds white space"},
        {R"j(apply {"testEnviroment": {}})j",
         "unknown field 'testEnviroment' (nearest: 'testEnvironment')"},
        {R"j(apply {"thresholds": {"vih_dq_ac": "0.08 V", "internalVrefDQ": "yes"}})j",
         "thresholds.internalVrefDQ: expected true or false"},
        {R"j(apply {"signals": ["DQ_Ch0_U2_DQ[0-3]"], "testEnvironment": {"speedGrade": 2400}})j",
         ""},
        {R"j(apply {"references": {"DQ_Ch0_U2_DQ*": {"Skew": ["auto", "CK_Ch0_U2_CK0"]}}})j", ""},
    };
    const QByteArray fresh = readBytes(examples + "ddr4_byte_lane.json");
    for (const auto& c : cases) {
        SCOPED_TRACE(c.command);
        Workspace workspace;
        const QString design = workspace.write("design.json", fresh);
        ASSERT_EQ(runProgram({"apply", design, "--probe", "X1", examples + "byte_lane.setup.json"})
                      .exitCode,
                  0);
        const QByteArray before = readBytes(design);
        const QString command = c.command;
        QStringList arguments{command.section(' ', 0, 0), design, "--probe", "X1"};
        if (arguments[0] == "set") {
            arguments << command.section(' ', 1).split(QRegularExpression(" (?=\\S+=|--)"));
        } else {
            arguments << workspace.write("setup.json", command.section(' ', 1).toUtf8());
        }
        const ProgramRun run = runProgram(arguments);
        if (*c.error == '\0') {
            EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
            EXPECT_NE(readBytes(design), before);
            continue;
        }
        EXPECT_EQ(run.exitCode, 2);
        EXPECT_TRUE(run.err.startsWith("lanetap: error: ")) << run.err.toStdString();
        EXPECT_TRUE(run.err.contains(c.error)) << run.err.toStdString();
        EXPECT_EQ(run.err.count('\n'), 1) << run.err.toStdString();
        EXPECT_EQ(readBytes(design), before);
    }
}

}  // namespace
