// Registration of the plug-in with the host: which interface versions it takes, what it reports,
// and what a repeated RegisterLibraryContents does; then the script functions called with
// arguments of the wrong kind, and the libraries the plug-in needs. Every test loads its own copy
// of the library, so that the registered state of one test does not leak into the next.

#include <gtest/gtest.h>

#include <QProcess>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "standin/Host.h"
#include "standin/ScriptValues.h"
#include "support/TestSupport.h"

namespace {

using lanetap_test::PluginCopy;
using standin::Host;
using standin::RegistryConfig;
using Texts = std::vector<std::string>;

const std::string orlMissing = "LaneTapPlugin failed to get ORL interface";
const std::string orlIncompatible = "LaneTapPlugin found an incompatible ORL interface";
const std::string editorMissing = "LaneTapPlugin failed to get ParameterDialogIFC interface";
const std::string editorIncompatible =
    "LaneTapPlugin found an incompatible ParameterDialogIFC interface";
const Texts orlOnly = {"ORL"};
const Texts both = {"ORL", "ItemParametersEdit"};

// Each offer is registered, then registered again with a fresh registry that offers both
// interfaces: a failed registration starts again from the first lookup, a successful one stops
// at once.
TEST(Registration, AcceptsExactlyTheSupportedInterfaceVersionsAndRetriesAfterAFailure) {
    // ORL and editor versions offered (none: absent), the failures and the lookups; the
    // vocabulary goes in as soon as "ORL" is accepted, before the editor is looked at.
    const std::optional<std::int32_t> none;
    // clang-format off
    const std::tuple<std::optional<std::int32_t>, std::optional<std::int32_t>, Texts, Texts> cases[] = {
        {1002, 2500, {}, both},                   {1999, 2500, {}, both},
        {1001, 2500, {orlIncompatible}, orlOnly}, {2000, 2500, {orlIncompatible}, orlOnly},
        {none, 2500, {orlMissing}, orlOnly},      {none, none, {orlMissing}, orlOnly},
        {1500, 2000, {}, both},                   {1500, 2999, {}, both},
        {1500, 1999, {editorIncompatible}, both}, {1500, 3000, {editorIncompatible}, both},
        {1500, none, {editorMissing}, both}};
    // clang-format on
    for (const auto& [orl, editor, failures, lookups] : cases) {
        SCOPED_TRACE(::testing::Message() << orl.value_or(-1) << " " << editor.value_or(-1));
        PluginCopy copy;
        Host host(RegistryConfig{orl, editor});
        EXPECT_EQ(host.loadPlugin(copy.path()), failures);
        EXPECT_EQ(host.interfaceLookups(), lookups);
        EXPECT_EQ(host.vocabulary() != nullptr, lookups == both);
        EXPECT_EQ(host.pluginVersion(), 100);
        host.reconfigureRegistry(RegistryConfig());
        host.runRegistration();
        EXPECT_EQ(host.registrationFailures(), Texts{});
        Texts again = lookups;
        again.insert(again.end(), both.begin(), both.end());
        EXPECT_EQ(host.interfaceLookups(), failures.empty() ? lookups : again);
        EXPECT_EQ(host.vocabulary() != nullptr, !failures.empty());
    }
}

TEST(ScriptFunctions, BadArgumentsAndAMissingEditorRaiseTheScriptErrorAndMakeNothing) {
    const QByteArray design =
        lanetap_test::designText({R"({"name": "X1", "cell": "LaneTap", "library": "lanetap"})"});
    lanetap_test::HostWithPlugin loaded(design);
    ASSERT_TRUE(loaded.registrationFailures.empty());
    lanetap_test::HostWithPlugin noEditor(design, RegistryConfig{1500, std::nullopt});
    ASSERT_EQ(noEditor.registrationFailures, Texts{editorMissing});
    standin::Instance* probe = loaded.host.design()->findInstance("X1");
    ASSERT_NE(probe, nullptr);
    db::ParamIter parameters(probe);
    loaded.host.takeWarnings();
    const long valuesBefore = standin::liveValueCount();

    using standin::ScriptArgument;
    // The host, the function, its arguments and the script error they raise.
    const std::tuple<Host*, const char*, std::vector<ScriptArgument>, std::string> cases[] = {
        {&loaded.host,
         "LaneTap_netlist_probe",
         {ScriptArgument::paramIter(nullptr), ScriptArgument::instance(probe)},
         "parameter 0 of type ParamIter is a null pointer"},
        {&loaded.host,
         "LaneTap_netlist_probe",
         {ScriptArgument::paramIter(&parameters), ScriptArgument::instance(nullptr)},
         "parameter 1 of type DbInstance is a null pointer"},
        // The iterator's value is freed before the instance argument is found missing.
        {&loaded.host,
         "LaneTap_netlist_probe",
         {ScriptArgument::paramIter(&parameters)},
         "missing script argument 1"},
        {&loaded.host,
         "LaneTap_netlist_probe",
         {ScriptArgument::instance(probe), ScriptArgument::instance(probe)},
         "argument 0 is not of type ParamIter"},
        {&loaded.host,
         "LaneTap_show_dialog",
         {ScriptArgument::windowInstance(nullptr)},
         "parameter 0 of type WinInstance is a null pointer"},
        {&noEditor.host,
         "LaneTap_show_dialog",
         {ScriptArgument::windowInstance(nullptr)},
         "LaneTap_show_dialog: the host offers no \"ItemParametersEdit\" interface"}};
    for (const auto& [host, function, arguments, error] : cases) {
        SCOPED_TRACE(error);
        const standin::CallResult result = host->call(function, arguments);
        EXPECT_FALSE(result.ok);
        EXPECT_EQ(result.error, error);
        EXPECT_TRUE(result.text.empty());
        EXPECT_EQ(result.pointer, nullptr);
        EXPECT_EQ(host->takeWarnings(), std::vector<std::string>{});
        EXPECT_EQ(standin::liveValueCount(), valuesBefore);
    }
    // Without the editor the netlist still comes.
    EXPECT_TRUE(noEditor.host.netlistProbe("X1").ok);
}

// A real host provides the host's functions itself: the plug-in needs no library of ours.
TEST(PluginLibrary, NeedsNoHostLibrary) {
    QProcess readelf;
    readelf.start("readelf", {"-d", lanetap_test::builtPluginPath()});
    ASSERT_TRUE(readelf.waitForFinished()) << "readelf did not run";
    QStringList needed;
    for (const QString& line : QString::fromUtf8(readelf.readAllStandardOutput()).split('\n')) {
        if (line.contains("(NEEDED)")) {
            needed << line.section('[', 1).section(']', 0, 0);
        }
    }
    EXPECT_EQ(needed.filter("libQt5Widgets").size(), 1) << needed.join(' ').toStdString();
    EXPECT_EQ(needed.filter("lanetap"), QStringList()) << needed.join(' ').toStdString();
}

}  // namespace
