// What a save keeps of a design file: every byte it did not change, the file's mode, and every
// update of another writer. A file is loaded and saved through the stand-in's own functions, and
// changed by runs of the lanetap program at the same time.

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QLockFile>
#include <QProcess>
#include <QSysInfo>
#include <functional>
#include <memory>

#include "standin/DesignFile.h"
#include "support/TestSupport.h"

namespace {

using lanetap_test::readBytes;
using lanetap_test::runProgram;
using lanetap_test::Workspace;

// Loads `path`, saves it and gives the bytes saved.
QByteArray loadAndSave(const QString& path,
                       const std::function<void(db::Design&)>& change = nullptr) {
    std::unique_ptr<db::Design> design = standin::readDesignFile(path);
    if (change) {
        change(*design);
    }
    standin::writeDesignFile(*design);
    return readBytes(path);
}

void writeFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        throw std::runtime_error("cannot write " + path.toStdString());
    }
}

standin::Instance& instance(db::Design& design, const char* name) {
    standin::Instance* found = design.findInstance(name);
    if (!found) {
        throw std::runtime_error(std::string("no instance ") + name);
    }
    return *found;
}

// Designs whose text no serializer would write back as it is: numbers past a double's
// precision, negative zero and exponents, keys in no order, escapes, tabs, CRLF line ends, no
// white space at all, empty and absent parameters.
const char* const oddDesigns[] = {
    R"({"format": "lanetap-design-1", "name": "odd", "big": 9007199254740993,
  "huge": 12345678901234567890, "zero": -0.0, "exp": 1E+2, "small": 5e-324,
  "instances": [{"status": 1.0, "name": "U1", "cell": "c", "parameters": {"z": "1", "a": "2"},
                 "ddrPorts": [{"signal": 0, "index": 3.0e0, "channel": 0, "pin": "DQ3",
                               "port": "DQ3", "refDes": "U1"}]}], "tail": [1, 2.50, -0]}
)",
    "{\"format\":\"lanetap-design-1\",\"instances\":[{\"name\":\"U\\u0031\",\"cell\":\"c\\/d\","
    "\"parameters\":{\"k\":\"v\\u00e9\\/\"}}]}",
    "{\r\n\t\"instances\" : [ { \"cell\" : \"c\" , \"name\" : \"U1\" , \"parameters\" : { } } ] "
    ",\r\n"
    "\t\"format\" : \"lanetap-design-1\"\r\n}\r\n",
    "  {\"format\": \"lanetap-design-1\", \"instances\": [{\"name\": \"é€𝄞\", \"cell\": \"c\"}]}  ",
};

// Every example, generated boards of each kind and odd texts: loaded and saved with no change,
// each file keeps every byte and its mode.
TEST(DesignSave, WithoutAChangeEveryByteAndTheModeStay) {
    Workspace workspace;
    std::vector<std::pair<QString, QByteArray>> designs;
    const QDir examples(LANETAP_SOURCE_DIR "/examples");
    for (const QString& name : examples.entryList({"*.json"}, QDir::Files, QDir::Name)) {
        if (name.endsWith(".setup.json")) {
            continue;  // a setup document, not a design
        }
        designs.emplace_back(name, readBytes(examples.filePath(name)));
    }
    const QStringList generated[] = {
        {},
        {"--dram", "lpddr4", "--channels", "2", "--devices", "2", "--die"},
        {"--width", "x4", "--read", "--ebd-nodes", "2", "--ddr-simulation"}};
    for (const QStringList& options : generated) {
        const lanetap_test::ProgramRun run = runProgram(QStringList{"generate"} + options);
        ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
        designs.emplace_back("generate " + options.join(' '), run.out);
    }
    for (const char* text : oddDesigns) {
        designs.emplace_back(QString::fromUtf8(text).left(40), QByteArray(text));
    }
    const QFileDevice::Permissions modes[] = {
        QFileDevice::ReadOwner | QFileDevice::ReadGroup | QFileDevice::ReadOther,
        QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadGroup};
    int n = 0;
    for (const auto& [name, bytes] : designs) {
        SCOPED_TRACE(name.toStdString());
        const QFileDevice::Permissions mode = modes[n++ % 2];
        const QString path = workspace.write("design.json", bytes);
        ASSERT_TRUE(QFile::setPermissions(path, mode));
        EXPECT_EQ(loadAndSave(path), bytes);
        // The owner's, group's and others' bits; Qt adds the bits of the user who asks.
        EXPECT_EQ(QFile::permissions(path) & 0x7077, mode);
        QFile::setPermissions(path, modes[1]);
    }
    EXPECT_EQ(workspace.files(), QStringList{"design.json"});
}

// A save writes the values that changed and nothing else. Each case: the file, the change, and
// the file after the save; a second save of the same change, or of none, writes nothing new.
TEST(DesignSave, ChangesOnlyTheValuesSetAndKeepsTheFormOfTheRest) {
    const QByteArray pretty =
        "{\n  \"format\": \"lanetap-design-1\",\n  \"instances\": [\n"
        "    {\n      \"name\": \"X1\",\n      \"cell\": \"LaneTap\",\n"
        "      \"parameters\": {\n        \"vdd\": \"1.2 V\",\n        \"b\": \"2\",\n"
        "        \"a\": \"1\"\n      },\n      \"n\": 1.50\n    },\n"
        "    {\"name\": \"U1\", \"cell\": \"c\",\"x\":[1]}\n  ]\n}\n";
    const auto set = [](const char* who, const char* key, const char* value) {
        return [=](db::Design& design) { instance(design, who).parameters.values[key] = value; };
    };
    const auto erase = [](const char* who, const char* key) {
        return [=](db::Design& design) { instance(design, who).parameters.values.erase(key); };
    };
    const auto replaced = [&](const char* from, const char* to) {
        return QByteArray(pretty).replace(from, to);
    };
    // clang-format off
    const struct {
        const char* what;
        QByteArray file;
        std::function<void(db::Design&)> change;
        QByteArray saved;
    } cases[] = {
        {"a value", pretty, set("X1", "b", "two"), replaced("\"b\": \"2\"", "\"b\": \"two\"")},
        {"a value needing escapes", pretty, set("X1", "a", "q\"\\é/"),
         replaced("\"a\": \"1\"", "\"a\": \"q\\\"\\\\é/\"")},
        {"a new key, in the form of the others", pretty, set("X1", "c", "3"),
         replaced("\"a\": \"1\"\n", "\"a\": \"1\",\n        \"c\": \"3\"\n")},
        {"the first key removed", pretty, erase("X1", "vdd"),
         replaced("\"vdd\": \"1.2 V\",\n        ", "")},
        {"the last key removed", pretty, erase("X1", "a"), replaced(",\n        \"a\": \"1\"", "")},
        {"a middle key removed and one added",  pretty,
         [&](db::Design& d) { erase("X1", "b")(d); set("X1", "0", "z")(d); },
         replaced("\"b\": \"2\",\n        \"a\": \"1\"\n", "\"a\": \"1\",\n        \"0\": \"z\"\n")},
        {"parameters for an instance without them", pretty, set("U1", "k", "v"),
         replaced("\"x\":[1]}", "\"x\":[1],\"parameters\":{\"k\":\"v\"}}")},
        {"a rename", pretty, [](db::Design& d) { instance(d, "U1").name = "U9"; },
         replaced("\"U1\"", "\"U9\"")},
        {"into an empty object", R"({"format":"lanetap-design-1","instances":[{"name":"U1","cell":"c","parameters":{ }}]})",
         set("U1", "k", "v"),
         R"({"format":"lanetap-design-1","instances":[{"name":"U1","cell":"c","parameters":{"k": "v" }}]})"},
        {"the only key removed and two added", R"({"format":"lanetap-design-1","instances":[{"name":"U1","cell":"c","parameters":{"a" :"1"}}]})",
         [&](db::Design& d) { erase("U1", "a")(d); set("U1", "b", "2")(d); set("U1", "c", "3")(d); },
         R"({"format":"lanetap-design-1","instances":[{"name":"U1","cell":"c","parameters":{"b" :"2", "c" :"3"}}]})"},
    };
    // clang-format on
    Workspace workspace;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const QString path = workspace.write("design.json", c.file);
        std::unique_ptr<db::Design> design = standin::readDesignFile(path);
        c.change(*design);
        standin::writeDesignFile(*design);
        EXPECT_EQ(readBytes(path).toStdString(), c.saved.toStdString());
        // The places of the saved text are those of the new file: saved again, nothing moves,
        // and a change after the first save lands where it should.
        standin::writeDesignFile(*design);
        EXPECT_EQ(readBytes(path), c.saved);
        for (const auto& each : design->instances) {
            each->parameters.values["later"] = "L";
        }
        standin::writeDesignFile(*design);
        std::unique_ptr<db::Design> again = standin::readDesignFile(path);
        ASSERT_EQ(again->instances.size(), design->instances.size());
        for (std::size_t i = 0; i < design->instances.size(); ++i) {
            EXPECT_EQ(again->instances[i]->name, design->instances[i]->name);
            EXPECT_EQ(again->instances[i]->parameters.values,
                      design->instances[i]->parameters.values);
        }
    }
}

// What happens to the file between a long-lived writer's read and its save. Each case: what
// another program does meanwhile, whether the save goes through, and what the file then holds.
TEST(DesignSave, NeverWritesOverAnotherWritersChange) {
    const QByteArray text = lanetap_test::designText(
        {R"({"name": "X1", "cell": "LaneTap", "parameters": {"vdd": "1.2 V"}})"});
    const auto deadProcess = [] {
        QProcess process;
        process.start("/bin/true", QStringList());
        process.waitForStarted();
        const qint64 pid = process.processId();
        process.waitForFinished();
        return pid;
    };
    const struct {
        const char* what;
        std::function<void(const QString& path)> meanwhile;
        bool saved;
    } cases[] = {
        {"nothing", [](const QString&) {}, true},
        {"a set of another key",
         [](const QString& path) {
             EXPECT_EQ(runProgram({"set", path, "--probe", "X1", "vddq=1.1 V"}).exitCode, 0);
         },
         false},
        {"the file rewritten with the same bytes",
         [&](const QString& path) {
             QFile::remove(path);
             writeFile(path, text);
         },
         true},
        {"the file removed", [](const QString& path) { QFile::remove(path); }, false},
        {"a lock left behind by a process that is gone",
         [&](const QString& path) {
             // The lock file as Qt writes it, with the number of a process that has ended.
             QLockFile real(path + ".real.lock");
             ASSERT_TRUE(real.lock());
             QByteArray lock = readBytes(path + ".real.lock");
             real.unlock();
             lock.replace(0, lock.indexOf('\n'), QByteArray::number(deadProcess()));
             writeFile(path + ".lock", lock);
         },
         true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        Workspace workspace;
        const QString path = workspace.write("design.json", text);
        standin::Host host;
        host.loadDesign(path);
        c.meanwhile(path);
        const QByteArray before = QFile::exists(path) ? readBytes(path) : QByteArray();
        host.design()->findInstance("X1")->parameters.values["vdd"] = "1.3 V";
        std::string error;
        try {
            host.saveDesign();
        } catch (const standin::DesignError& refused) {
            error = refused.what();
        }
        if (c.saved) {
            EXPECT_EQ(error, "");
            EXPECT_EQ(readBytes(path), QByteArray(text).replace("1.2 V", "1.3 V"));
        } else {
            EXPECT_EQ(error.rfind(path.toStdString() + ": cannot save: ", 0), 0u) << error;
            EXPECT_NE(error.find("nothing was written"), std::string::npos) << error;
            EXPECT_EQ(QFile::exists(path) ? readBytes(path) : QByteArray(), before);
        }
        EXPECT_FALSE(QFile::exists(path + ".lock"));
    }
}

// Two set on one design at once, a hundred times: each update lands, or its writer is refused
// and says so in one line; none is lost while its writer reports success.
TEST(DesignSave, TwoWritersAtOnceLoseNoUpdate) {
    Workspace workspace;
    const QString path = workspace.write(
        "design.json", lanetap_test::designText({R"({"name": "X1", "cell": "LaneTap"})"}));
    int refused = 0;
    for (int round = 0; round < 100; ++round) {
        const QString values[2] = {QString("a%1").arg(round), QString("b%1").arg(round)};
        QProcess writers[2];
        for (int w = 0; w < 2; ++w) {
            writers[w].start(
                lanetap_test::programPath(),
                {"set", path, "--probe", "X1", "--raw", QString("Key%1=%2").arg(w).arg(values[w])});
        }
        for (QProcess& writer : writers) {
            ASSERT_TRUE(writer.waitForFinished(60000));
        }
        const lanetap_test::ProgramRun stored =
            runProgram({"get", path, "--probe", "X1", "Key0", "Key1"});
        for (int w = 0; w < 2; ++w) {
            SCOPED_TRACE(QString("round %1, writer %2").arg(round).arg(w).toStdString());
            const QByteArray err = writers[w].readAllStandardError();
            const QByteArray line = QString("Key%1=%2\n").arg(w).arg(values[w]).toUtf8();
            if (writers[w].exitCode() == 0) {
                EXPECT_TRUE(stored.out.contains(line)) << stored.out.toStdString();
                EXPECT_TRUE(err.isEmpty()) << err.toStdString();
            } else {
                ++refused;
                EXPECT_EQ(writers[w].exitCode(), 2);
                EXPECT_TRUE(err.startsWith("lanetap: error: ")) << err.toStdString();
                EXPECT_EQ(err.count('\n'), 1) << err.toStdString();
            }
        }
    }
    // Each waits for the other's lock: none needs to be refused.
    EXPECT_EQ(refused, 0);
    EXPECT_EQ(workspace.files(), QStringList{"design.json"});
}

// What is no design file is refused unread, in one line with exit code 2: a device that never
// ends, a FIFO that nobody writes, a folder, and a file over 256 MB.
TEST(DesignLoad, WhatIsNoDesignFileIsRefusedUnread) {
    Workspace workspace;
    const QString fifo = workspace.path("fifo.json");
    ASSERT_EQ(QProcess::execute("mkfifo", {fifo}), 0);
    const QString folder = workspace.path("folder.json");
    ASSERT_TRUE(QDir().mkdir(folder));
    const QString large = workspace.path("large.json");
    {
        QFile file(large);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.resize((qint64(256) << 20) + 1));
    }
    const std::pair<QString, const char*> cases[] = {
        {"/dev/zero", "it is not a regular file"},
        {fifo, "it is not a regular file"},
        {folder, "it is a folder"},
        {large, "it is larger than 256 MB"},
    };
    for (const auto& [path, fault] : cases) {
        SCOPED_TRACE(path.toStdString());
        const std::string line =
            "lanetap: error: " + path.toStdString() + ": cannot read: " + fault + "\n";
        for (const char* command : {"get", "set"}) {
            const lanetap_test::ProgramRun run =
                runProgram({command, path, "--probe", "X1", "vdd=1 V"});
            EXPECT_EQ(run.exitCode, 2);
            EXPECT_EQ(run.err.toStdString(), line);
        }
    }
}

// Texts the loader refuses although Qt's reader took them, or that could not be saved as they
// are: each gives one line that starts with the file and names the fault, and the program
// leaves the file as it was.
TEST(DesignLoad, TextsThatCannotBeKeptAreRefusedInOneLine) {
    const auto one = [](const QString& fields) {
        return lanetap_test::designText({R"({"name": "U1", "cell": "c", )" + fields + "}"});
    };
    QByteArray nul = one(R"("parameters": {}, "note": "x")");
    nul.insert(nul.lastIndexOf('}'), '\0');
    // clang-format off
    const std::pair<QByteArray, std::string> cases[] = {
        {one(R"("parameters": {"a": "\udc00"})"), "a string holds a lone surrogate escape"},
        {one(R"("parameters": {"a": "\ud800x"})"), "the surrogate pair in string is invalid"},
        {QByteArray(one(R"("parameters": {"a": "X"})")).replace("\"X\"", "\"\xff\""),
         "invalid encoding in string"},
        {nul, "the text holds a NUL byte"},
        {one(R"("deep": )" + QByteArray(600, '[') + QByteArray(600, ']')),
         "values are nested more than 512 deep"},
        {one(R"("parameters": {"a": "1", "a": "2"})"), "instance 'U1': field 'parameters.a' appears twice"},
        {one(R"("cell": "d")"), "instance 'U1': field 'cell' appears twice"},
        {one(R"("terminals": [{"name": "A", "net": "n", "net": "m"}])"),
         "instance 'U1': field 'terminals[0].net' appears twice"},
        {R"({"format": "lanetap-design-1", "format": "lanetap-design-1", "instances": []})",
         "field 'format' appears twice"},
    };
    // clang-format on
    Workspace workspace;
    for (const auto& [text, fault] : cases) {
        SCOPED_TRACE(fault);
        const QString path = workspace.write("bad.json", text);
        std::string message;
        try {
            standin::readDesignFile(path);
        } catch (const standin::DesignError& error) {
            message = error.what();
        }
        EXPECT_EQ(message.rfind(path.toStdString() + ": ", 0), 0u) << message;
        EXPECT_NE(message.find(fault), std::string::npos) << message;
        EXPECT_EQ(message.find('\n'), std::string::npos) << message;
        const lanetap_test::ProgramRun run = runProgram({"set", path, "--probe", "U1", "a=1"});
        EXPECT_EQ(run.exitCode, 2);
        EXPECT_EQ(run.err.count('\n'), 1) << run.err.toStdString();
        EXPECT_EQ(readBytes(path), text);
    }
}

// set stores only what the block's settings line, which carries stored values unescaped, can
// carry: for the probe's settings, its speed grades and the controller's data rate. Each case:
// the instance, the assignment, and the part of the error line, or none when it is stored.
TEST(DesignSave, SetRefusesWhatTheSettingsLineCannotCarry) {
    const QByteArray design = lanetap_test::designText(
        {R"({"name": "X1", "cell": "LaneTap", "parameters": {"vdd": "1.2 V"}})",
         R"({"name": "U1", "cell": "DDR_Controller", "model": "none"})",
         R"({"name": "U2", "cell": "DDR_Memory", "model": "none"})"});
    const QString refused = "which the settings line of the block cannot carry";
    // clang-format off
    const struct { const char* instance; QString assignment; QString error; } cases[] = {
        {"X1", "ResultsPDFPath=/tmp/a b", "the value of ResultsPDFPath of instance 'X1' holds white space, " + refused},
        {"X1", "ResultsPDFPath=\"/tmp/a b\"", ""},
        {"X1", "ResultsPDFPath=/tmp/a;b", "holds the character ;"},
        {"X1", "ResultsPDFPath=/tmp/a\"b", "holds the character \""},
        {"X1", "ResultsPDFPath=/tmp/a\\b", "holds the character \\"},
        {"X1", "ResultsPDFPath=\"/tmp/a\\b\"", "holds the character \\ within its double quotes"},
        {"X1", "ResultsPDFPath=/tmp/\u202eb", "holds a bidirectional-format character"},
        {"X1", "ResultsPDFPath=", ""},
        {"X1", "targetBER=1e-12 x", "the value of targetBER"},
        {"X1", "GroupDQBox=Nibble", ""},
        {"X1", "GroupDQBox=Nib\"ble", "the value of GroupDQBox"},
        {"X1", "vdd=1.1 V", ""}, {"X1", "vdd=-0.3", ""}, {"X1", "vdd=1e-3 mV", ""},
        {"X1", "vdd=1.1  V", "the value of vdd of instance 'X1' is no voltage"},
        {"X1", "vdd=1.1 volts", "is no voltage"}, {"X1", "vdd=", "is no voltage"},
        {"X1", "vdd=1.1V", "is no voltage"},
        {"X1", "speedGradeList=1600,2400,", ""},
        {"X1", "speedGradeList=1600,24 00,", "names the speed grade '24 00', which holds white space"},
        {"U1", "Note=two  blanks", ""},
        {"U1", "DataRate=3200 MT/s", "the value of DataRate of instance 'U1' holds white space"},
        {"U1", "DataRate=3200", ""},
        {"U1", "DataRateUnit=MT /s", "the value of DataRateUnit"},
        {"U2", "DataRate=3200 MT/s", ""},
    };
    // clang-format on
    Workspace workspace;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.assignment.toStdString());
        const QString path = workspace.write("design.json", design);
        const lanetap_test::ProgramRun run =
            runProgram({"set", path, "--probe", c.instance, c.assignment});
        const QString key = c.assignment.section('=', 0, 0);
        const lanetap_test::ProgramRun stored = runProgram({"get", path, "--probe", c.instance});
        if (c.error.isEmpty()) {
            EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
            EXPECT_TRUE(stored.out.contains((c.assignment + "\n").toUtf8()));
        } else {
            EXPECT_EQ(run.exitCode, 2);
            EXPECT_TRUE(run.err.startsWith("lanetap: error: ")) << run.err.toStdString();
            EXPECT_TRUE(run.err.contains(c.error.toUtf8())) << run.err.toStdString();
            EXPECT_EQ(run.err.count('\n'), 1);
            EXPECT_EQ(readBytes(path), design);
        }
    }
    // Bytes that are not UTF-8, in a value or a path, are refused before they become other text.
    const QString path = workspace.write("design.json", design);
    const std::pair<QString, const char*> raw[] = {
        {"exec \"$0\" set \"$1\" --probe X1 \"$(printf 'vdd=1 \\377V')\"",
         "lanetap: error: argument 5 is not valid UTF-8\n"},
        {"exec \"$0\" get \"$(printf '%s\\377' \"$1\")\" --probe X1",
         "lanetap: error: argument 2 is not valid UTF-8\n"}};
    for (const auto& [script, error] : raw) {
        QProcess process;
        process.start("/bin/sh", {"-c", script, lanetap_test::programPath(), path});
        ASSERT_TRUE(process.waitForFinished(60000));
        EXPECT_EQ(process.exitCode(), 2);
        EXPECT_EQ(process.readAllStandardError().toStdString(), error);
        EXPECT_EQ(readBytes(path), design);
    }
}

}  // namespace
