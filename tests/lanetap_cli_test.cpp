// The lanetap program: set and get of parameters, what saving keeps, saving in one step, the exit
// codes of the commands, and what their options take. Then design files that cannot be used: each
// is refused by the loader with a message that names the file, the place and the fault, and by the
// program with exit code 2, one line on stderr, and the file left exactly as it was.

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <tuple>

#include "standin/DesignFile.h"
#include "standin/Host.h"
#include "support/TestSupport.h"

namespace {

using lanetap_test::ProgramRun;
using lanetap_test::readBytes;
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
    {"name": "U1", "cell": "DDR_Memory", "library": "ddr", "model": "inactive", "status": 3,
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
    return QJsonDocument::fromJson(bytes).object();
}

void expectOneErrorLine(const ProgramRun& run, const QByteArray& part) {
    EXPECT_TRUE(run.err.startsWith("lanetap: error: ")) << run.err.toStdString();
    EXPECT_TRUE(run.err.contains(part)) << run.err.toStdString();
    EXPECT_EQ(run.err.count('\n'), 1) << run.err.toStdString();
    EXPECT_TRUE(run.err.endsWith('\n'));
    EXPECT_TRUE(run.out.isEmpty()) << run.out.toStdString();
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
    const QByteArray saved = readBytes(path);
    EXPECT_EQ(jsonOf(saved), expected) << saved.toStdString();
    // Setting a parameter to the value it has changes nothing at all; get shows what is stored.
    ASSERT_EQ(runProgram({"set", path, "--probe", "U3", "Note=two  blanks"}).exitCode, 0);
    EXPECT_EQ(readBytes(path), saved);
    EXPECT_EQ(workspace.files(), QStringList{"design.json"});
    const ProgramRun get = runProgram({"get", path, "--probe", "X1", "vdd", "SelectedSignalList"});
    EXPECT_EQ(get.out, "vdd=1.2 V\nSelectedSignalList=DQ_Ch0_U1_DQ0,\n");
}

TEST(LanetapProgram, FailedSaveLeavesTheFileAsItWas) {
    Workspace workspace;
    // Large enough that the new text cannot be written within one block of 512 bytes.
    const QString path = workspace.write("design.json", richDesign);
    const QByteArray before = readBytes(path);
    ASSERT_GT(before.size(), 1024);
    const ProgramRun run =
        lanetap_test::runProgramWithFileLimit({"set", path, "--probe", "X1", "vdd=1.1 V"}, 1);
    EXPECT_EQ(run.exitCode, 2);
    expectOneErrorLine(run, (path + ": cannot write").toUtf8());
    EXPECT_EQ(readBytes(path), before);
    EXPECT_EQ(workspace.files(), QStringList{"design.json"});
}

TEST(LanetapProgram, ExitCodesAndOneLineErrors) {
    Workspace workspace;
    const QString path = workspace.write("design.json", richDesign);
    const QByteArray before = readBytes(path);
    const QString missingPlugin = workspace.path("missing/liblanetap.so");
    const QString design = path + ":";
    // Arguments, exit code, and what the error line holds (a refused value is quoted); no error
    // text for help.
    // clang-format off
    const std::tuple<QStringList, int, QString> cases[] = {
        {{"frobnicate"}, 2, "unknown command 'frobnicate'"},
        {{"get", path, "--probe", "X1", "--verbose"}, 2, "unknown option --verbose"},
        {{"set", path, "--probe", "X1", "--plugin", "x", "a=1"}, 2, "unknown option --plugin"},
        {{"get", path}, 2, "missing --probe"}, {{"netlist", path}, 2, "missing --probe"},
        {{"check", path}, 2, "missing --probe"}, {{"check", path + "x", "--probe", "X1"}, 2, "cannot read"},
        {{"set", path, "vdd=1 V"}, 2, "missing --probe"}, {{"get", path, "--probe"}, 2, "--probe"},
        {{"get", "--help=yes"}, 2, "--help"}, {{"get", path, "--probe", "X9"}, 2, design},
        {{"get", path, "--probe", "X1", "NoSuchKey"}, 2, design}, {{"set", path, "--probe", "X1"}, 2, "set"},
        {{"set", path, "--probe", "X1", "v dd=1"}, 2, "'v dd=1'"}, {{"set", path, "--probe", "X1", "=1"}, 2, "'=1'"},
        {{"set", path, "--probe", "X1", "vdd=1\tV"}, 2, "the value of vdd"},
        {{"set", path, "--probe", "X1", "IbisPinSelEbdNodesName=a b,c"}, 2, "names board node 'b,c'"},
        {{QString(70, 'x') + "\n"}, 2, "unknown command '" + QString(60, 'x') + "…'"},
        {{"get", path, "--probe", "X\x7f" "1"}, 2, "no instance named 'X\\x7F1'"},
        {{"netlist", path, "--probe", "X1", "--plugin", missingPlugin}, 4, "cannot load plug-in"},
        {{"netlist", path, "--probe", "X1", "--plugin", path}, 4, "cannot load plug-in"},
        {{"catalogue", "--dram", "DDR5"}, 2, "'DDR5'"}, {{"catalogue", "--mode", "sideways"}, 2, "'sideways'"},
        {{"catalogue", "--dqs", "strobed"}, 2, "'strobed'"}, {{"catalogue", "--type", ""}, 2, "--type needs a signal type"},
        {{"catalogue", "--thresholds", "fast"}, 2, "'fast'"}, {{"catalogue", "--thresholds", "0"}, 2, "'0'"},
        {{"catalogue", "--thresholds", "-5"}, 2, "'-5'"}, {{"catalogue", "--thresholds"}, 2, "--thresholds"},
        {{"catalogue", "--type", "DQ", "--thresholds", "2400"}, 2, "apply to the compliance rows"},
        {{"catalogue", "--mode", "read", "--supplies"}, 2, "apply to the"},
        {{"catalogue", "--measurements", "--supplies"}, 2, "choose one of"},
        {{"catalogue", "--descriptions", "--measurements"}, 2, "apply to the"},
        {{"catalogue", "--dram", "DDR4", "--measurements"}, 2, "apply to the"},
        {{"catalogue", "design.json"}, 2, "'design.json'"}, {{"catalogue", "--colour"}, 2, "--colour"},
        {{"generate", "--channels", "0"}, 2, "'0'"}, {{"generate", "--channels", "17"}, 2, "'17'"},
        {{"generate", "--channels", "two"}, 2, "'two'"}, {{"generate", "--channels"}, 2, "--channels"},
        {{"generate", "--devices", "33"}, 2, "'33'"}, {{"generate", "--devices", ""}, 2, "not ''"},
        {{"generate", "--devices", "1.5"}, 2, "'1.5'"}, {{"generate", "--width", "x32"}, 2, "'x32'"},
        {{"generate", "--width", "8"}, 2, "'8'"}, {{"generate", "--dram", "ddr5"}, 2, "'ddr5'"},
        {{"generate", "--ebd-nodes", "-1"}, 2, "'-1'"}, {{"generate", "--ebd-nodes", "9"}, 2, "'9'"},
        {{"generate", "--dram", "lpddr4", "--width", "x4"}, 2, "'x4'"}, {{"generate", "--die=yes"}, 2, "--die"},
        {{"generate", "design.json"}, 2, "design.json"}, {{"generate", "--probe", "X1"}, 2, "--probe"},
        {{}, 2, ""}, {{"--help"}, 0, ""}, {{"help"}, 0, ""}, {{"netlist", "--help"}, 0, ""},
        {{"get", "--help"}, 0, ""}, {{"set", "--help"}, 0, ""}};
    // clang-format on
    for (const auto& [arguments, exitCode, error] : cases) {
        SCOPED_TRACE(arguments.join(' ').toStdString());
        const ProgramRun run = runProgram(arguments);
        EXPECT_EQ(run.exitCode, exitCode) << run.err.toStdString();
        if (error.isEmpty()) {
            EXPECT_TRUE(run.err.isEmpty()) << run.err.toStdString();
            EXPECT_TRUE(run.out.startsWith("usage: lanetap ")) << run.out.toStdString();
        } else {
            expectOneErrorLine(run, error.toUtf8());
        }
        EXPECT_EQ(readBytes(path), before);
    }
    // The plug-in named by the environment is looked for as well.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("LANETAP_PLUGIN", missingPlugin);
    const ProgramRun fromEnvironment = runProgram({"netlist", path, "--probe", "X1"}, environment);
    EXPECT_EQ(fromEnvironment.exitCode, 4);
    expectOneErrorLine(fromEnvironment, "cannot load plug-in");
}

// Each command parses its own options: help on -h everywhere, an option given twice refused, an
// output file written whole or not at all, signal types in any case, and a probe that must be one.
TEST(LanetapProgram, EveryCommandParsesItsOwnOptions) {
    Workspace workspace;
    const QString design = workspace.write(
        "design.json", readBytes(LANETAP_SOURCE_DIR "/examples/ddr4_x8_write.json"));
    const QString out = workspace.path("out.net");
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    environment.insert("XDG_RUNTIME_DIR", workspace.path(""));
    const QByteArray block = runProgram({"netlist", design, "--probe", "X1"}).out;
    const QByteArray dqRows = runProgram({"catalogue", "--type", "DQ"}).out;
    const QByteArray dmRows = runProgram({"catalogue", "--type", "DM"}).out;
    ASSERT_TRUE(block.contains("ComponentWithNodes:X1"));
    ASSERT_TRUE(dqRows.contains("dqComplianceTable") && dmRows.contains("dmComplianceTable"));
    const QByteArray before = "left as it was\n";
    const QString notAProbe = "U2 is a DDR_Memory, not a LaneTap probe";
    struct Row {
        QStringList arguments;
        int exitCode;
        QString help;            // the command whose help is printed ("COMMAND": the program's)
        QString error;           // or what the one error line holds
        QByteArray stdOut = {};  // or what is printed
        QByteArray file = {};    // what `out` holds afterwards; empty: as it was
        int blocks = 0;          // a limit on the size of a written file, in blocks of 512 bytes
    };
    const Row rows[] = {
        {{"-h"}, 0, "COMMAND", ""},
        {{"netlist", "-h"}, 0, "netlist", ""},
        {{"check", "-h"}, 0, "check", ""},
        {{"get", "-h"}, 0, "get", ""},
        {{"set", "-h"}, 0, "set", ""},
        {{"export", "-h"}, 0, "export", ""},
        {{"apply", "-h"}, 0, "apply", ""},
        {{"setup", "-h"}, 0, "setup", ""},
        {{"signals", "-h"}, 0, "signals", ""},
        {{"catalogue", "-h"}, 0, "catalogue", ""},
        {{"generate", "-h"}, 0, "generate", ""},
        {{"netlist", design, "--probe", "X1", "-o", out}, 0, "", "", "", block},
        {{"netlist", design, "--probe", "X1", "-o", out}, 2, "", out + ": cannot write", "", {}, 1},
        {{"export", design, "--probe", "X1", "-o", out}, 2, "", out + ": cannot write", "", {}, 1},
        {{"netlist", design, "--probe", "X1", "--probe", "X2"}, 2, "", "--probe given twice"},
        {{"catalogue", "--type", "dq"}, 0, "", "", dqRows},
        {{"catalogue", "--type", "dm_n"}, 0, "", "", dmRows},
        {{"netlist", design, "--probe", "U2"}, 2, "", notAProbe},
        {{"check", design, "--probe", "U2"}, 2, "", notAProbe},
        {{"setup", design, "--probe", "U2", "--screenshot", out}, 2, "", notAProbe},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.arguments.join(' ').toStdString());
        workspace.write("out.net", before);
        const ProgramRun run = row.blocks > 0 ? lanetap_test::runProgramWithFileLimit(
                                                    row.arguments, row.blocks, environment)
                                              : runProgram(row.arguments, environment);
        EXPECT_EQ(run.exitCode, row.exitCode) << run.err.toStdString();
        if (!row.help.isEmpty()) {
            EXPECT_TRUE(run.err.isEmpty()) << run.err.toStdString();
            EXPECT_TRUE(run.out.startsWith(("usage: lanetap " + row.help + " ").toUtf8()))
                << run.out.toStdString();
            for (const QByteArray& line : run.out.split('\n')) {
                EXPECT_LE(line.size(), 79) << line.toStdString();
            }
        } else if (!row.error.isEmpty()) {
            expectOneErrorLine(run, row.error.toUtf8());
        } else {
            EXPECT_TRUE(run.err.isEmpty()) << run.err.toStdString();
            EXPECT_EQ(run.out, row.stdOut);
        }
        EXPECT_EQ(readBytes(out), row.file.isEmpty() ? before : row.file);
    }
}

using lanetap_test::designText;

// The loader's message for a file, or "<loaded>" when it loads.
std::string loadMessage(const QString& path) {
    try {
        standin::readDesignFile(path);
    } catch (const standin::DesignError& error) {
        return error.what();
    }
    return "<loaded>";
}

// What the program does with the file when asked to change it.
void expectProgramRefuses(const QString& path) {
    const QByteArray before = lanetap_test::readBytes(path);
    const lanetap_test::ProgramRun run =
        lanetap_test::runProgram({"set", path, "--probe", "U1", "DataRate=3200"});
    EXPECT_EQ(run.exitCode, 2);
    expectOneErrorLine(run, ("lanetap: error: " + path + ":").toUtf8());
    EXPECT_EQ(lanetap_test::readBytes(path), before);
}

TEST(DesignFile, SyntaxErrorsGiveTheLineAndColumnOfTheFault) {
    // "@" marks the first character that no valid document could have there; it is taken out.
    const QString head = "{\n  \"format\": \"lanetap-design-1\",\n  \"instances\": [\n";
    const QString texts[] = {
        head + "    {\"name\": \"U1\", \"cell\": \"DDR_Memory\",@}\n  ]\n}\n",
        head + "    {\"name\": \"U1\" @\"cell\": \"DDR_Memory\"}\n  ]\n}\n",
        head + "    {\"name\": \"U1\", \"cell\": \"c\", \"x\": tru@}\n  ]\n}\n",
        head + "    {\"name\": \"Uµ€1\", \"cell\": \"DDR_Memory\" @\"model\": \"none\"}\n  ]\n}\n",
        head + "  ]\n}\n  @x\n",
        head + "@",
        "@x" + head,
        "\n@x" + head};
    Workspace workspace;
    for (const QString& text : texts) {
        SCOPED_TRACE(text.toStdString());
        const QString before = text.left(text.indexOf('@'));
        const QString path = workspace.write("syntax.json", QString(text).remove('@').toUtf8());
        const int column = before.mid(before.lastIndexOf('\n') + 1).toUcs4().size() + 1;
        const QString line = QString::number(before.count('\n') + 1);
        const std::string place = QString("%1: line %2, column %3: ")
                                      .arg(path, line, QString::number(column))
                                      .toStdString();
        EXPECT_EQ(loadMessage(path).substr(0, place.size()), place);
        expectProgramRefuses(path);
    }
}

TEST(DesignFile, MalformedDesignsAreRefusedWithTheirFault) {
    const auto one = [](const QString& fields) {
        return designText({"{\"name\": \"U1\", " + fields + "}"});
    };
    const auto port = [&](const QString& fields) {
        return one(R"("cell": "c", "ddrPorts": [{"port": "P", "pin": "P", "refDes": "U1")" +
                   fields + "}]");
    };
    const std::string u1 = "instance 'U1': field ",
                      status = u1 + "'status' must be an integer from 0 to 3";
    const std::string control = u1 + "'parameters.DataRate' holds a control character";
    const std::string badName =
        u1 + "'parameters' holds a parameter with an empty name or a control character in its name";
    // clang-format off
    const std::pair<QByteArray, std::string> cases[] = {
        {"[]\n", "the file must hold one JSON object"},
        {R"({"instances": []})", "field 'format' must be \"lanetap-design-1\""},
        {R"({"format": "lanetap-design-2", "instances": []})", "field 'format' must be \"lanetap-design-1\""},
        {R"({"format": "lanetap-design-1", "name": 5, "instances": []})", "field 'name' must be a string"},
        {R"({"format": "lanetap-design-1"})", "field 'instances' must be an array"},
        {R"({"format": "lanetap-design-1", "instances": {}})", "field 'instances' must be an array"},
        {designText({"7"}), "instance 0 must be an object"},
        {designText({R"({"cell": "c"})"}), "instance 0: field 'name' must be a string"},
        {designText({R"({"name": 1, "cell": "c"})"}), "instance 0: field 'name' must be a string"},
        {one(R"("model": "none")"), u1 + "'cell' must be a string"},
        {one(R"("cell": "")"), u1 + "'cell' is empty"},
        {one(R"("cell": "c", "library": [])"), u1 + "'library' must be a string"},
        {one(R"("cell": "c", "model": "passive")"), u1 + "'model' must be \"active\", \"inactive\" or \"none\""},
        {one(R"("cell": "c", "status": 4)"), status},
        {one(R"("cell": "c", "status": -1)"), status},
        {one(R"("cell": "c", "status": 1.5)"), status},
        {one(R"("cell": "c", "status": 1e300)"), status},
        {one(R"("cell": "c", "status": "1")"), status},
        {one(R"("cell": "c", "status": true)"), status},
        {one(R"("cell": "c", "parameters": [])"), u1 + "'parameters' must be an object"},
        {one(R"("cell": "c", "parameters": {"DataRate": 3200})"), u1 + "'parameters.DataRate' must be a string"},
        {one(R"("cell": "c", "parameters": {"DataRate": "32\u000700"})"), control},
        {one(R"("cell": "c", "parameters": {"DataRate": "3200\n"})"), control},
        {one(R"("cell": "c", "parameters": {"Data\nRate": "3200"})"), badName},
        {one(R"("cell": "c", "parameters": {"": "1"})"), badName},
        {one(R"("cell": "c", "terminals": {})"), u1 + "'terminals' must be an array"},
        {one(R"("cell": "c", "terminals": ["DQ0"])"), u1 + "'terminals[0]' must be an object"},
        {one(R"("cell": "c", "terminals": [{"name": "DQ", "bits": []}])"), u1 + "'terminals[0].bits' must be a non-empty array"},
        {one(R"("cell": "c", "terminals": [{"name": "DQ0", "net": 3}])"), u1 + "'terminals[0].net' must be a string"},
        {port(""), u1 + "'ddrPorts[0].signal' is missing"},
        {port(R"(, "signal": "DQX")"), u1 + "'ddrPorts[0].signal' is not a known signal family"},
        {port(R"(, "signal": "DQ", "channel": -1)"), u1 + "'ddrPorts[0].channel' must be an integer from 0 to 4294967295"},
        {designText({R"({"name": "U1", "cell": "c"})", R"({"name": "U1", "cell": "d"})"}), u1 + "'name' another instance has this name"},
        // A board node, up to its first dot, becomes part of signal keys.
        {one(R"("cell": "c", "parameters": {"IbisPinSelEbdNodesName": "a.1  D\"1,x\\.2 c"})"),
         u1 + "'parameters.IbisPinSelEbdNodesName' names board node 'D\"1,x\\.2', which holds the character \""},
        {one(R"("cell": "c", "parameters": {"IbisPinSelEbdNodesName": "a.1 .. b"})"),
         u1 + "'parameters.IbisPinSelEbdNodesName' names board node '..', which is empty"},
        // Quoted text stops after sixty characters.
        {designText({"{\"name\": \"" + QString(70, 'U') + "\", \"cell\": \"\"}"}),
         "instance '" + std::string(60, 'U') + "…': field 'cell' is empty"},
        {one("\"cell\": \"c\", \"parameters\": {\"" + QString(70, 'k') + "\": 1}"),
         u1 + "'parameters." + std::string(49, 'k') + "…' must be a string"},
    };
    // clang-format on
    Workspace workspace;
    for (const auto& [text, fault] : cases) {
        SCOPED_TRACE(fault);
        const QString path = workspace.write("bad.json", text);
        EXPECT_EQ(loadMessage(path), path.toStdString() + ": " + fault);
        expectProgramRefuses(path);
    }
}

TEST(DesignFile, NamesMustBePlain) {
    // Kinds of name in a file, with the place the loader names for it; then names and their fault.
    // clang-format off
    const std::pair<const char*, std::string> places[] = {
        {R"({"name": "%1", "cell": "c"})", "instance 0: field 'name'"},
        {R"({"name": "U1", "cell": "c", "terminals": [{"name": "A", "bits": [{"name": "A0"}, {"name": "A1", "net": "%1"}]}]})",
         "instance 'U1': field 'terminals[0].bits[1].net'"},
        {R"({"name": "U1", "cell": "c", "ddrPorts": [{"port": "P", "pin": "P", "refDes": "%1", "signal": "DQ"}]})",
         "instance 'U1': field 'ddrPorts[0].refDes'"}};
    // The block carries names unescaped: = and ; break its lines, bidirectional marks reorder
    // what a reader sees, and names have a length limit.
    const std::pair<QString, std::string> names[] = {
        {"", "is empty"}, {"U 1", "holds white space"}, {"U\\u00a01", "holds white space"},
        {"U\\\"1", "holds the character \""}, {"U\\\\1", "holds the character \\"}, {"U,1", "holds the character ,"},
        {"U\\t1", "holds a control character"}, {"U\\u007f1", "holds a control character"},
        {"U\\u00851", "holds a control character"}, {"n_a<1>.µ", ""},
        {"U=1", "holds the character ="}, {"U;1", "holds the character ;"},
        {"U\\u202e1", "holds a bidirectional-format character"},
        {"U\\u20661", "holds a bidirectional-format character"},
        {"U\\u200f1", "holds a bidirectional-format character"},
        {QString(1024, 'U'), ""}, {QString(1023, 'U') + "€", ""},
        {QString(1025, 'U'), "is longer than 1024 characters"},
        {QString(1024, 'U') + "€", "is longer than 1024 characters"}};
    // clang-format on
    Workspace workspace;
    for (const auto& [instance, where] : places) {
        for (const auto& [name, problem] : names) {
            const QString path =
                workspace.write("names.json", designText({QString(instance).arg(name)}));
            EXPECT_EQ(loadMessage(path), problem.empty()
                                             ? "<loaded>"
                                             : path.toStdString() + ": " + where + " " + problem);
        }
    }
    // A file that isn't there.
    const QString path = workspace.path("absent.json");
    EXPECT_EQ(loadMessage(path).rfind(path.toStdString() + ": cannot read: ", 0), 0u);
    const lanetap_test::ProgramRun run = lanetap_test::runProgram({"get", path, "--probe", "U1"});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_TRUE(run.err.startsWith(("lanetap: error: " + path + ": cannot read: ").toUtf8()));
}

}  // namespace
