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
    EXPECT_TRUE(run.err.startsWith(("lanetap: error: " + path + ":").toUtf8()));
    EXPECT_EQ(run.err.count('\n'), 1) << run.err.toStdString();
    EXPECT_TRUE(run.err.endsWith('\n'));
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
        "@x" + head};
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
    const std::pair<const char*, std::string> names[] = {
        {"", "is empty"}, {"U 1", "holds white space"}, {"U\\u00a01", "holds white space"},
        {"U\\\"1", "holds the character \""}, {"U\\\\1", "holds the character \\"}, {"U,1", "holds the character ,"},
        {"U\\t1", "holds a control character"}, {"U\\u007f1", "holds a control character"},
        {"U\\u00851", "holds a control character"}, {"n_a<1>.µ", ""}};
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
