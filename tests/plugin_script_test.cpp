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
