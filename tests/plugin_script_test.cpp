// What the registered plug-in offers the script engine: the layout of its vocabulary table, the
// netlist function as the host calls it, and the symbols the library exports.

#include <gtest/gtest.h>

#include <QProcess>
#include <QSet>
#include <cstring>

#include "standin/Host.h"
#include "standin/ScriptValues.h"
#include "support/TestSupport.h"

namespace {

using lanetap_test::HostWithPlugin;
using standin::ScriptArgument;

QByteArray probeDesign() {
    return lanetap_test::designText({
        R"({"name": "U1", "cell": "DDR_Memory", "library": "ddr",
            "parameters": {"DDRIbisFile": "mem.ibs", "RefDesName": "U1"},
            "terminals": [{"name": "DQ0", "net": "n_dq0"}],
            "ddrPorts": [{"port": "DQ0", "pin": "DQ0", "refDes": "U1", "channel": 0,
                          "signal": "DQ", "index": 0}]})",
        R"({"name": "X1", "cell": "LaneTap", "library": "lanetap"})",
        R"({"name": "P7", "cell": "LaneTap", "library": "lanetap"})",
    });
}

// The table is read word by word from its address, the way the script engine reads it, rather
// than through the declarations the plug-in was compiled with.
std::uint64_t wordAt(const void* base, int index) {
    std::uint64_t word;
    std::memcpy(&word, static_cast<const char*>(base) + 8 * index, sizeof word);
    return word;
}

std::string textAt(std::uint64_t word) {
    return word ? std::string(reinterpret_cast<const char*>(word)) : std::string("<null>");
}

TEST(Vocabulary, TableLayoutIsWhatTheScriptEngineReads) {
    HostWithPlugin loaded(probeDesign());
    ASSERT_TRUE(loaded.registrationFailures.empty());
    const void* descriptor = loaded.host.vocabulary();
    ASSERT_NE(descriptor, nullptr);

    EXPECT_EQ(textAt(wordAt(descriptor, 0)), "CmdOp");
    EXPECT_EQ(textAt(wordAt(descriptor, 1)), "ORL");
    EXPECT_EQ(wordAt(descriptor, 3), 3u);
    for (int i = 4; i < 8; ++i) {
        EXPECT_EQ(wordAt(descriptor, i), 0u) << "descriptor word " << i;
    }

    struct Expected {
        const char* name;
        std::uint64_t kind;
        bool function;
    };
    const Expected expected[] = {
        {"LaneTap_pluginLoaded", 2, false},
        {"LaneTap_show_dialog", 0, true},
        {"LaneTap_netlist_probe", 0, true},
    };
    const auto* entries = reinterpret_cast<const char*>(wordAt(descriptor, 2));
    ASSERT_NE(entries, nullptr);
    QSet<std::uint64_t> functionWords;
    for (int e = 0; e < 3; ++e) {
        SCOPED_TRACE(expected[e].name);
        const char* entry = entries + 7 * 8 * e;
        EXPECT_EQ(textAt(wordAt(entry, 0)), expected[e].name);
        EXPECT_EQ(wordAt(entry, 1), expected[e].kind);
        if (expected[e].function) {
            EXPECT_NE(wordAt(entry, 2), 0u);
            functionWords.insert(wordAt(entry, 2));
        } else {
            EXPECT_EQ(wordAt(entry, 2), 1u);
        }
        for (int i = 3; i < 7; ++i) {
            EXPECT_EQ(wordAt(entry, i), 0u) << "entry word " << i;
        }
    }
    EXPECT_EQ(functionWords.size(), 2) << "the two functions share one address";
}

TEST(NetlistProbe, BlockFrameForEachProbe) {
    HostWithPlugin loaded(probeDesign());
    ASSERT_TRUE(loaded.registrationFailures.empty());
    const long valuesBefore = standin::liveValueCount();

    for (const std::string probe : {"X1", "P7"}) {
        SCOPED_TRACE(probe);
        const standin::CallResult result = loaded.host.netlistProbe(probe);
        ASSERT_TRUE(result.ok) << result.error;
        const QString text = QString::fromStdString(result.text);
        EXPECT_TRUE(text.startsWith("\n;Lane_Tap\n#load \"python\",\"TDM_LaneTap\"\n"))
            << result.text;
        EXPECT_TRUE(text.endsWith(" \n\n")) << result.text;
        EXPECT_TRUE(text.contains(QString("ComponentWithNodes:%1 ").arg(probe.c_str())))
            << result.text;
        // Nothing is selected on these probes, and the writer says so.
        EXPECT_FALSE(loaded.host.takeWarnings().empty());
    }
    EXPECT_EQ(standin::liveValueCount(), valuesBefore);
}

TEST(NetlistProbe, BadArgumentsRaiseTheScriptErrorAndWriteNoBlock) {
    HostWithPlugin loaded(probeDesign());
    ASSERT_TRUE(loaded.registrationFailures.empty());
    standin::Instance* probe = loaded.host.design()->findInstance("X1");
    ASSERT_NE(probe, nullptr);
    db::ParamIter parameters(probe);
    loaded.host.takeWarnings();
    const long valuesBefore = standin::liveValueCount();

    struct Case {
        const char* label;
        std::vector<ScriptArgument> arguments;
        std::string error;
    };
    const Case cases[] = {
        {"null parameter iterator",
         {ScriptArgument::paramIter(nullptr), ScriptArgument::instance(probe)},
         "parameter 0 of type ParamIter is a null pointer"},
        // The iterator's value is freed before the instance argument is found missing.
        {"no instance argument",
         {ScriptArgument::paramIter(&parameters)},
         "missing script argument 1"},
        {"instance where the iterator belongs",
         {ScriptArgument::instance(probe), ScriptArgument::instance(probe)},
         "argument 0 is not of type ParamIter"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        const standin::CallResult result = loaded.host.call("LaneTap_netlist_probe", c.arguments);
        EXPECT_FALSE(result.ok);
        EXPECT_EQ(result.error, c.error);
        EXPECT_TRUE(result.text.empty());
        EXPECT_EQ(loaded.host.takeWarnings(), std::vector<std::string>{});
        EXPECT_EQ(standin::liveValueCount(), valuesBefore);
    }
}

TEST(PluginLibrary, ExportsOnlyItsTwoEntryPoints) {
    QProcess nm;
    nm.start("nm", {"-D", "--defined-only", lanetap_test::builtPluginPath()});
    ASSERT_TRUE(nm.waitForFinished(60000));
    ASSERT_EQ(nm.exitStatus(), QProcess::NormalExit);
    ASSERT_EQ(nm.exitCode(), 0) << nm.readAllStandardError().toStdString();

    QStringList names;
    const QStringList lines =
        QString::fromUtf8(nm.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
    for (const QString& line : lines) {
        // "ADDRESS TYPE NAME"; a versioned name carries "@VERSION".
        const QStringList fields = line.split(' ', Qt::SkipEmptyParts);
        ASSERT_EQ(fields.size(), 3) << line.toStdString();
        EXPECT_EQ(fields[1], "T") << line.toStdString();
        names << fields[2].section('@', 0, 0);
    }
    names.sort();
    EXPECT_EQ(names, (QStringList{"GetLibraryVersion", "RegisterLibraryContents"}))
        << lines.join('\n').toStdString();
}

}  // namespace
