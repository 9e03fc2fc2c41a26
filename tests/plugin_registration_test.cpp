// Registration of the plug-in with the host: which interface versions it takes, what it reports,
// and what a repeated RegisterLibraryContents does; then the netlist function called with
// arguments of the wrong kind. Every test loads its own copy of the library,
// so that the registered state of one test does not leak into the next.

#include <gtest/gtest.h>

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

TEST(Registration, AcceptsExactlyTheSupportedInterfaceVersions) {
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
    }
}

TEST(Registration, RetryAfterFailureStartsAgainAndRegistersTheVocabularyAgain) {
    const std::pair<RegistryConfig, Texts> cases[] = {{{1500, std::nullopt}, {editorMissing}},
                                                      {{1500, 3000}, {editorIncompatible}},
                                                      {{1001, 2500}, {orlIncompatible}}};
    for (const auto& [failing, failure] : cases) {
        SCOPED_TRACE(failure[0]);
        PluginCopy copy;
        Host host(failing);
        ASSERT_EQ(host.loadPlugin(copy.path()), failure);
        Texts lookups = host.interfaceLookups();
        // A fresh script engine knows no vocabulary until the plug-in registers with it.
        host.reconfigureRegistry(RegistryConfig());
        ASSERT_EQ(host.vocabulary(), nullptr);
        host.runRegistration();
        EXPECT_EQ(host.registrationFailures(), Texts{});
        lookups.insert(lookups.end(), both.begin(), both.end());
        EXPECT_EQ(host.interfaceLookups(), lookups);
        EXPECT_NE(host.vocabulary(), nullptr);
        host.runRegistration();  // now registered: a further call stops at once
        EXPECT_EQ(host.interfaceLookups(), lookups);
    }
}

// A registry of the test's own, for what the stand-in's cannot do: refuse a vocabulary, and
// record the arguments of every registration. It has no editor.
class RecordingRegistry : public InterfaceRegistry, public ORLInterface {
public:
    HostInterface* getInterface(const char* name) override {
        lookups.emplace_back(name);
        return std::string(name) == "ORL" ? static_cast<ORLInterface*>(this) : nullptr;
    }
    void reportFailure(const char* message) override { failures.emplace_back(message); }
    std::int32_t version() const override { return 1500; }
    std::uint8_t registerVocabulary(int reserved1, int reserved2, int reserved3, int count,
                                    const VocabularyDescriptor* descriptors) override {
        calls.push_back({reserved1, reserved2, reserved3, count});
        registered.push_back(descriptors);
        return answer;
    }

    std::uint8_t answer = 0;
    std::vector<std::vector<int>> calls;
    std::vector<const VocabularyDescriptor*> registered;
    Texts lookups;
    Texts failures;
};

TEST(Registration, RefusedVocabularyIsReportedAndStopsBeforeTheEditor) {
    const PluginCopy copy;
    const PluginCopy::RegisterFunction registerContents = copy.openRegistration();
    RecordingRegistry registry;
    registerContents(&registry);
    EXPECT_EQ(registry.failures, Texts{"LaneTapPlugin could not register ORL vocabulary"});
    EXPECT_EQ(registry.lookups, orlOnly);
    EXPECT_EQ(registry.calls, (std::vector<std::vector<int>>{{0, 0, 0, 1}}));
    // Taken the second time, the same table is offered again; then the editor is missing.
    registry.answer = 1;
    registerContents(&registry);
    EXPECT_EQ(registry.failures, (Texts{registry.failures[0], editorMissing}));
    EXPECT_EQ(registry.lookups, (Texts{"ORL", "ORL", "ItemParametersEdit"}));
    ASSERT_EQ(registry.registered.size(), 2u);
    EXPECT_NE(registry.registered[0], nullptr);
    EXPECT_EQ(registry.registered[1], registry.registered[0]);
}

TEST(NetlistProbe, BadArgumentsRaiseTheScriptErrorAndWriteNoBlock) {
    lanetap_test::HostWithPlugin loaded(
        lanetap_test::designText({R"({"name": "X1", "cell": "LaneTap", "library": "lanetap"})"}));
    ASSERT_TRUE(loaded.registrationFailures.empty());
    standin::Instance* probe = loaded.host.design()->findInstance("X1");
    ASSERT_NE(probe, nullptr);
    db::ParamIter parameters(probe);
    loaded.host.takeWarnings();
    const long valuesBefore = standin::liveValueCount();

    // The arguments and the script error they raise.
    const std::pair<std::vector<standin::ScriptArgument>, std::string> cases[] = {
        {{standin::ScriptArgument::paramIter(nullptr), standin::ScriptArgument::instance(probe)},
         "parameter 0 of type ParamIter is a null pointer"},
        // The iterator's value is freed before the instance argument is found missing.
        {{standin::ScriptArgument::paramIter(&parameters)}, "missing script argument 1"},
        {{standin::ScriptArgument::instance(probe), standin::ScriptArgument::instance(probe)},
         "argument 0 is not of type ParamIter"}};
    for (const auto& [arguments, error] : cases) {
        const standin::CallResult result = loaded.host.call("LaneTap_netlist_probe", arguments);
        EXPECT_FALSE(result.ok);
        EXPECT_EQ(result.error, error);
        EXPECT_TRUE(result.text.empty());
        EXPECT_EQ(loaded.host.takeWarnings(), std::vector<std::string>{});
        EXPECT_EQ(standin::liveValueCount(), valuesBefore);
    }
}

}  // namespace
