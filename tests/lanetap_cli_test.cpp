// The lanetap program: set and get of parameters, what saving keeps, saving in one step, and the
// exit codes of the commands.

#include <gtest/gtest.h>

#include <unistd.h>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "standin/Host.h"
#include "support/TestSupport.h"

namespace {

using lanetap_test::ProgramRun;
using lanetap_test::runProgram;
using lanetap_test::Workspace;

// A design that uses every field the format has, some of them more than once, and fields the
// format does not know.
const char* const richDesign = R"({
  "format": "lanetap-design-1",
  "name": "rich",
  "comment": "kept as it is",
  "revision": {"number": 7, "authors": ["a", "b"], "draft": false},
  "instances": [
    {"name": "X1", "cell": "LaneTap", "library": "lanetap",
     "parameters": {"vdd": "1.2 V", "SelectedSignalList": "DQ_Ch0_U1_DQ0,"},
     "position": {"x": 10, "y": -2.5}},
    {"name": "U1", "cell": "DDR_Memory", "library": "ddr", "model": "inactive", "status": 2,
     "terminals": [{"name": "DQ0", "net": "n_dq0"},
                   {"name": "A", "bits": [{"name": "A<0>", "net": "n_a0"},
                                          {"name": "A<1>", "net": null}]},
                   {"name": "NC"}],
     "ddrPorts": [{"port": "DQ0", "pin": "DQ0", "refDes": "U1", "channel": 3,
                   "signal": "DQ", "index": 0},
                  {"port": "A<0>", "pin": "A0", "refDes": "U1", "signal": 5}]},
    {"name": "U2", "cell": "DDR_Controller", "model": "none", "parameters": {}},
    {"name": "U3", "cell": "Other", "parameters": {"Note": "two  blanks"}, "extra": null}
  ]
}
)";

QJsonObject jsonOf(const QByteArray& bytes) {
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    EXPECT_EQ(error.error, QJsonParseError::NoError) << error.errorString().toStdString();
    return document.object();
}

void expectOneErrorLine(const ProgramRun& run) {
    EXPECT_TRUE(run.err.startsWith("lanetap: error: ")) << run.err.toStdString();
    EXPECT_EQ(run.err.count('\n'), 1) << run.err.toStdString();
    EXPECT_TRUE(run.err.endsWith('\n')) << run.err.toStdString();
}

TEST(LanetapProgram, SavingKeepsEverythingButTheChangedParameter) {
    Workspace workspace;
    const QString path = workspace.write("design.json", richDesign);
    const ProgramRun set = runProgram({"set", path, "--probe", "U1", "DataRate=2400 MT/s"});
    ASSERT_EQ(set.exitCode, 0) << set.err.toStdString();

    QJsonObject expected = jsonOf(richDesign);
    QJsonArray instances = expected["instances"].toArray();
    QJsonObject memory = instances[1].toObject();
    memory["parameters"] = QJsonObject{{"DataRate", "2400 MT/s"}};
    instances[1] = memory;
    expected["instances"] = instances;
    EXPECT_EQ(jsonOf(lanetap_test::readBytes(path)), expected)
        << lanetap_test::readBytes(path).toStdString();

    // Setting a parameter to the value it has changes nothing at all.
    const QByteArray saved = lanetap_test::readBytes(path);
    ASSERT_EQ(runProgram({"set", path, "--probe", "U3", "Note=two  blanks"}).exitCode, 0);
    EXPECT_EQ(lanetap_test::readBytes(path), saved);
    EXPECT_EQ(workspace.files(), QStringList{"design.json"});
}

TEST(LanetapProgram, FailedSaveLeavesTheFileAsItWas) {
    Workspace workspace;
    // Large enough that the new text cannot be written within one block of 512 bytes.
    const QString path = workspace.write("design.json", richDesign);
    const QByteArray before = lanetap_test::readBytes(path);
    ASSERT_GT(before.size(), 1024);

    const ProgramRun run =
        lanetap_test::runProgramWithFileLimit({"set", path, "--probe", "X1", "vdd=1.1 V"}, 1);
    EXPECT_EQ(run.exitCode, 2);
    expectOneErrorLine(run);
    EXPECT_TRUE(run.err.startsWith(("lanetap: error: " + path + ": cannot write").toUtf8()))
        << run.err.toStdString();
    EXPECT_EQ(lanetap_test::readBytes(path), before);
    EXPECT_EQ(workspace.files(), QStringList{"design.json"});
}

TEST(LanetapProgram, ExitCodes) {
    Workspace workspace;
    const QString path = workspace.write("design.json", richDesign);
    const QByteArray before = lanetap_test::readBytes(path);
    struct Case {
        const char* label;
        QStringList arguments;
        int exitCode;
        // What stderr starts with; empty for a run that writes nothing there.
        QString err;
    };
    const QString missingPlugin = workspace.path("missing/liblanetap.so");
    const Case cases[] = {
        {"unknown command", {"frobnicate"}, 2, "lanetap: error: unknown command 'frobnicate'"},
        {"unknown option",
         {"get", path, "--probe", "X1", "--verbose"},
         2,
         "lanetap: error: unknown option --verbose"},
        {"option of another command",
         {"set", path, "--probe", "X1", "--plugin", "x", "a=1"},
         2,
         "lanetap: error: unknown option --plugin"},
        {"get without --probe", {"get", path}, 2, "lanetap: error: missing --probe"},
        {"netlist without --probe", {"netlist", path}, 2, "lanetap: error: missing --probe"},
        {"set without --probe", {"set", path, "vdd=1 V"}, 2, "lanetap: error: missing --probe"},
        {"--probe without its value", {"get", path, "--probe"}, 2, "lanetap: error: --probe"},
        {"help that takes a value", {"get", "--help=yes"}, 2, "lanetap: error: --help"},
        {"no such instance", {"get", path, "--probe", "X9"}, 2, "lanetap: error: " + path + ":"},
        {"no such parameter",
         {"get", path, "--probe", "X1", "NoSuchKey"},
         2,
         "lanetap: error: " + path + ":"},
        {"set without assignment", {"set", path, "--probe", "X1"}, 2, "lanetap: error: set"},
        {"set with a blank in the key",
         {"set", path, "--probe", "X1", "v dd=1"},
         2,
         "lanetap: error: 'v dd=1'"},
        {"set with an empty key", {"set", path, "--probe", "X1", "=1"}, 2, "lanetap: error: '=1'"},
        {"set with a control character",
         {"set", path, "--probe", "X1", "vdd=1\tV"},
         2,
         "lanetap: error: the value of vdd"},
        {"missing plug-in",
         {"netlist", path, "--probe", "X1", "--plugin", missingPlugin},
         4,
         "lanetap: error: cannot load plug-in"},
        {"not a plug-in",
         {"netlist", path, "--probe", "X1", "--plugin", path},
         4,
         "lanetap: error: cannot load plug-in"},
        {"overview", {"--help"}, 0, ""},
        {"netlist help", {"netlist", "--help"}, 0, ""},
        {"get help", {"get", "--help"}, 0, ""},
        {"set help", {"set", "--help"}, 0, ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        const ProgramRun run = runProgram(c.arguments);
        EXPECT_EQ(run.exitCode, c.exitCode) << run.err.toStdString();
        if (c.err.isEmpty()) {
            EXPECT_TRUE(run.err.isEmpty()) << run.err.toStdString();
            EXPECT_TRUE(run.out.startsWith("usage: lanetap ")) << run.out.toStdString();
        } else {
            expectOneErrorLine(run);
            EXPECT_TRUE(run.err.startsWith(c.err.toUtf8())) << run.err.toStdString();
            EXPECT_TRUE(run.out.isEmpty()) << run.out.toStdString();
        }
        EXPECT_EQ(lanetap_test::readBytes(path), before);
    }

    // The plug-in named by the environment is looked for as well.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("LANETAP_PLUGIN", missingPlugin);
    const ProgramRun fromEnvironment = runProgram({"netlist", path, "--probe", "X1"}, environment);
    EXPECT_EQ(fromEnvironment.exitCode, 4);
    expectOneErrorLine(fromEnvironment);
}

}  // namespace
