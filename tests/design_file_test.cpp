// Design files that cannot be used: each is refused by the loader with a message that names the
// file, the place and the fault, and by the lanetap program with exit code 2, one line on stderr,
// and the file left exactly as it was.

#include <gtest/gtest.h>

#include "standin/DesignFile.h"
#include "standin/Host.h"
#include "support/TestSupport.h"

namespace {

using lanetap_test::designText;
using lanetap_test::Workspace;

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
    EXPECT_TRUE(run.out.isEmpty()) << run.out.toStdString();
    EXPECT_TRUE(run.err.startsWith(("lanetap: error: " + path + ":").toUtf8()))
        << run.err.toStdString();
    EXPECT_EQ(run.err.count('\n'), 1) << run.err.toStdString();
    EXPECT_TRUE(run.err.endsWith('\n')) << run.err.toStdString();
    EXPECT_EQ(lanetap_test::readBytes(path), before);
}

// The line and column, in characters and counted from 1, of a character offset into a text.
QString lineAndColumn(const QString& text, int offset) {
    const QString before = text.left(offset);
    const int lineStart = before.lastIndexOf('\n') + 1;
    return QString("line %1, column %2")
        .arg(before.count('\n') + 1)
        .arg(before.mid(lineStart).toUcs4().size() + 1);
}

TEST(DesignFile, SyntaxErrorsGiveTheLineAndColumnOfTheFault) {
    struct Case {
        const char* label;
        QString text;
        // The first character that no valid document could have there: the first occurrence of
        // `marker`, moved on by `step` characters; no marker means the end of the file.
        QString marker;
        int step;
    };
    const QString head = "{\n  \"format\": \"lanetap-design-1\",\n  \"instances\": [\n";
    const Case cases[] = {
        {"comma before a closing brace",
         head + "    {\"name\": \"U1\", \"cell\": \"DDR_Memory\",}\n  ]\n}\n", ",}", 1},
        {"missing comma between members",
         head + "    {\"name\": \"U1\" \"cell\": \"DDR_Memory\"}\n  ]\n}\n", "\"cell", 0},
        {"misspelt literal", head + "    {\"name\": \"U1\", \"cell\": \"c\", \"x\": tru}\n  ]\n}\n",
         "tru}", 3},
        {"characters beyond ASCII before the fault",
         head + "    {\"name\": \"Uµ€1\", \"cell\": \"DDR_Memory\" \"model\": \"none\"}\n  ]\n}\n",
         "\"model", 0},
        {"text after the object", head + "  ]\n}\n  x\n", "x\n", 0},
        {"end of file inside the array", head, QString(), 0},
        {"a fault at the first character", "x" + head, "x", 0},
    };
    Workspace workspace;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        const QString path = workspace.write("syntax.json", c.text.toUtf8());
        const int offset = c.marker.isEmpty() ? c.text.size() : c.text.indexOf(c.marker) + c.step;
        const std::string message = loadMessage(path);
        const std::string expected =
            (path + ": " + lineAndColumn(c.text, offset) + ": ").toStdString();
        EXPECT_EQ(message.substr(0, expected.size()), expected) << message;
        expectProgramRefuses(path);
    }
}

TEST(DesignFile, MalformedDesignsAreRefusedWithTheirFault) {
    struct Case {
        const char* label;
        QByteArray text;
        std::string fault;
    };
    const auto one = [](const QString& instance) { return designText({instance}); };
    const std::string status = "instance 'U1': field 'status' must be an integer from 0 to 3";
    const Case cases[] = {
        // The file as a whole.
        {"an array at the top", "[]\n", "the file must hold one JSON object"},
        {"format missing", R"({"instances": []})", "field 'format' must be \"lanetap-design-1\""},
        {"another format", R"({"format": "lanetap-design-2", "instances": []})",
         "field 'format' must be \"lanetap-design-1\""},
        {"design name a number", R"({"format": "lanetap-design-1", "name": 5, "instances": []})",
         "field 'name' must be a string"},
        {"instances missing", R"({"format": "lanetap-design-1"})",
         "field 'instances' must be an array"},
        {"instances an object", R"({"format": "lanetap-design-1", "instances": {}})",
         "field 'instances' must be an array"},
        {"instance a number", one("7"), "instance 0 must be an object"},
        // Fields of an instance.
        {"name missing", one(R"({"cell": "DDR_Memory"})"),
         "instance 0: field 'name' must be a string"},
        {"name a number", one(R"({"name": 1, "cell": "DDR_Memory"})"),
         "instance 0: field 'name' must be a string"},
        {"cell missing", one(R"({"name": "U1"})"), "instance 'U1': field 'cell' must be a string"},
        {"cell empty", one(R"({"name": "U1", "cell": ""})"),
         "instance 'U1': field 'cell' is empty"},
        {"library a list", one(R"({"name": "U1", "cell": "c", "library": []})"),
         "instance 'U1': field 'library' must be a string"},
        {"unknown model", one(R"({"name": "U1", "cell": "c", "model": "passive"})"),
         "instance 'U1': field 'model' must be \"active\", \"inactive\" or \"none\""},
        {"status 4", one(R"({"name": "U1", "cell": "c", "status": 4})"), status},
        {"status -1", one(R"({"name": "U1", "cell": "c", "status": -1})"), status},
        {"status 1.5", one(R"({"name": "U1", "cell": "c", "status": 1.5})"), status},
        {"status far out of range", one(R"({"name": "U1", "cell": "c", "status": 1e300})"), status},
        {"status as text", one(R"({"name": "U1", "cell": "c", "status": "1"})"), status},
        {"status as boolean", one(R"({"name": "U1", "cell": "c", "status": true})"), status},
        {"parameters a list", one(R"({"name": "U1", "cell": "c", "parameters": []})"),
         "instance 'U1': field 'parameters' must be an object"},
        {"parameter value a number",
         one(R"({"name": "U1", "cell": "c", "parameters": {"DataRate": 3200}})"),
         "instance 'U1': field 'parameters.DataRate' must be a string"},
        {"bell in a parameter value",
         one(R"({"name": "U1", "cell": "c", "parameters": {"DataRate": "32\u000700"}})"),
         "instance 'U1': field 'parameters.DataRate' holds a control character"},
        {"line end in a parameter value",
         one(R"({"name": "U1", "cell": "c", "parameters": {"DataRate": "3200\n"}})"),
         "instance 'U1': field 'parameters.DataRate' holds a control character"},
        {"line end in a parameter name",
         one(R"({"name": "U1", "cell": "c", "parameters": {"Data\nRate": "3200"}})"),
         "instance 'U1': field 'parameters' holds a parameter with an empty name or a control "
         "character in its name"},
        {"empty parameter name", one(R"({"name": "U1", "cell": "c", "parameters": {"": "1"}})"),
         "instance 'U1': field 'parameters' holds a parameter with an empty name or a control "
         "character in its name"},
        {"terminals an object", one(R"({"name": "U1", "cell": "c", "terminals": {}})"),
         "instance 'U1': field 'terminals' must be an array"},
        {"terminal a text", one(R"({"name": "U1", "cell": "c", "terminals": ["DQ0"]})"),
         "instance 'U1': field 'terminals[0]' must be an object"},
        {"bus without bits",
         one(R"({"name": "U1", "cell": "c", "terminals": [{"name": "DQ", "bits": []}]})"),
         "instance 'U1': field 'terminals[0].bits' must be a non-empty array"},
        {"net a number",
         one(R"({"name": "U1", "cell": "c", "terminals": [{"name": "DQ0", "net": 3}]})"),
         "instance 'U1': field 'terminals[0].net' must be a string"},
        {"port without signal",
         one(R"({"name": "U1", "cell": "c", "ddrPorts": [{"port": "P", "pin": "P", "refDes": "U1"}]})"),
         "instance 'U1': field 'ddrPorts[0].signal' is missing"},
        {"unknown signal family", one(R"({"name": "U1", "cell": "c", "ddrPorts": [
             {"port": "P", "pin": "P", "refDes": "U1", "signal": "DQX"}]})"),
         "instance 'U1': field 'ddrPorts[0].signal' is not a known signal family"},
        {"negative channel", one(R"({"name": "U1", "cell": "c", "ddrPorts": [
             {"port": "P", "pin": "P", "refDes": "U1", "signal": "DQ", "channel": -1}]})"),
         "instance 'U1': field 'ddrPorts[0].channel' must be an integer from 0 to 4294967295"},
        {"duplicate instance names",
         designText({R"({"name": "U1", "cell": "c"})", R"({"name": "U1", "cell": "d"})"}),
         "instance 'U1': field 'name' another instance has this name"},
    };
    Workspace workspace;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        const QString path = workspace.write("bad.json", c.text);
        EXPECT_EQ(loadMessage(path), path.toStdString() + ": " + c.fault);
        expectProgramRefuses(path);
    }
}

TEST(DesignFile, NamesMustBePlain) {
    // Every kind of name in a file, with the place the loader names for it.
    struct Place {
        const char* label;
        const char* instance;
        std::string where;
    };
    const Place places[] = {
        {"instance", R"({"name": "%1", "cell": "c"})", "instance 0: field 'name'"},
        {"terminal", R"({"name": "U1", "cell": "c", "terminals": [{"name": "%1"}]})",
         "instance 'U1': field 'terminals[0].name'"},
        {"bit net",
         R"({"name": "U1", "cell": "c", "terminals": [
             {"name": "A", "bits": [{"name": "A0"}, {"name": "A1", "net": "%1"}]}]})",
         "instance 'U1': field 'terminals[0].bits[1].net'"},
        {"reference designator",
         R"({"name": "U1", "cell": "c", "ddrPorts": [
             {"port": "P", "pin": "P", "refDes": "%1", "signal": "DQ"}]})",
         "instance 'U1': field 'ddrPorts[0].refDes'"},
    };
    struct Bad {
        const char* label;
        const char* jsonText;
        std::string problem;
    };
    const Bad bads[] = {
        {"empty", "", "is empty"},
        {"blank", "U 1", "holds white space"},
        {"non-breaking space", "U\\u00a01", "holds white space"},
        {"quote", "U\\\"1", "holds the character \""},
        {"backslash", "U\\\\1", "holds the character \\"},
        {"comma", "U,1", "holds the character ,"},
        {"tab", "U\\t1", "holds a control character"},
        {"escape", "U\\u001b1", "holds a control character"},
        {"delete", "U\\u007f1", "holds a control character"},
        {"C1 control", "U\\u00851", "holds a control character"},
    };
    Workspace workspace;
    for (const Place& place : places) {
        for (const Bad& bad : bads) {
            SCOPED_TRACE(std::string(place.label) + " name, " + bad.label);
            const QString path = workspace.write(
                "names.json", designText({QString(place.instance).arg(bad.jsonText)}));
            EXPECT_EQ(loadMessage(path),
                      path.toStdString() + ": " + place.where + " " + bad.problem);
            expectProgramRefuses(path);
        }
    }
    // The same names with nothing wrong load.
    const QString path =
        workspace.write("names.json", designText({QString(places[2].instance).arg("n_a<1>.µ")}));
    EXPECT_EQ(loadMessage(path), "<loaded>");
}

TEST(DesignFile, MissingFileIsRefused) {
    Workspace workspace;
    const QString path = workspace.path("absent.json");
    EXPECT_EQ(loadMessage(path).rfind(path.toStdString() + ": cannot read: ", 0), 0u);
    const lanetap_test::ProgramRun run = lanetap_test::runProgram({"get", path, "--probe", "U1"});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_TRUE(run.err.startsWith(("lanetap: error: " + path + ": cannot read: ").toUtf8()))
        << run.err.toStdString();
    EXPECT_EQ(run.err.count('\n'), 1);
    EXPECT_EQ(workspace.files(), QStringList{});
}

}  // namespace
