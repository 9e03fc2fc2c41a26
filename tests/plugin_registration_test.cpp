// Registration of the plug-in with the host: which interface versions it takes, what it reports,
// and what a repeated RegisterLibraryContents does. Every test loads its own copy of the library,
// so that the registered state of one test does not leak into the next.

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "standin/Host.h"
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
const std::string vocabularyRefused = "LaneTapPlugin could not register ORL vocabulary";

const Texts orlOnly = {"ORL"};
const Texts bothInterfaces = {"ORL", "ItemParametersEdit"};

TEST(Registration, AcceptsExactlyTheSupportedInterfaceVersions) {
    struct Case {
        const char* label;
        std::optional<std::int32_t> orl;
        std::optional<std::int32_t> editor;
        Texts failures;
        Texts lookups;
        bool vocabularyRegistered;
    };
    const Case cases[] = {
        {"ORL at its lowest", 1002, 2500, {}, bothInterfaces, true},
        {"ORL at its highest", 1999, 2500, {}, bothInterfaces, true},
        {"ORL one too old", 1001, 2500, {orlIncompatible}, orlOnly, false},
        {"ORL one too new", 2000, 2500, {orlIncompatible}, orlOnly, false},
        {"ORL absent", std::nullopt, 2500, {orlMissing}, orlOnly, false},
        {"both absent", std::nullopt, std::nullopt, {orlMissing}, orlOnly, false},
        {"editor at its lowest", 1500, 2000, {}, bothInterfaces, true},
        {"editor at its highest", 1500, 2999, {}, bothInterfaces, true},
        {"editor one too old", 1500, 1999, {editorIncompatible}, bothInterfaces, true},
        {"editor one too new", 1500, 3000, {editorIncompatible}, bothInterfaces, true},
        {"editor absent", 1500, std::nullopt, {editorMissing}, bothInterfaces, true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        PluginCopy copy;
        Host host(RegistryConfig{c.orl, c.editor});
        EXPECT_EQ(host.loadPlugin(copy.path()), c.failures);
        EXPECT_EQ(host.interfaceLookups(), c.lookups);
        // The vocabulary goes in as soon as "ORL" is accepted, before the editor is looked at.
        EXPECT_EQ(host.vocabulary() != nullptr, c.vocabularyRegistered);
        EXPECT_EQ(host.pluginVersion(), 100);
    }
}

TEST(Registration, RetryAfterFailureStartsAgainAndRegistersTheVocabularyAgain) {
    struct Case {
        const char* label;
        RegistryConfig failing;
        std::string failure;
        Texts lookupsAfterFailure;
    };
    const Case cases[] = {
        {"editor absent", {1500, std::nullopt}, editorMissing, bothInterfaces},
        {"editor too new", {1500, 3000}, editorIncompatible, bothInterfaces},
        {"ORL too old", {1001, 2500}, orlIncompatible, orlOnly},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        PluginCopy copy;
        Host host(c.failing);
        ASSERT_EQ(host.loadPlugin(copy.path()), Texts{c.failure});
        ASSERT_EQ(host.interfaceLookups(), c.lookupsAfterFailure);

        // A fresh script engine knows no vocabulary until the plug-in registers with it.
        host.reconfigureRegistry(RegistryConfig());
        ASSERT_EQ(host.vocabulary(), nullptr);
        host.runRegistration();
        EXPECT_EQ(host.registrationFailures(), Texts{});
        Texts lookups = c.lookupsAfterFailure;
        lookups.insert(lookups.end(), bothInterfaces.begin(), bothInterfaces.end());
        EXPECT_EQ(host.interfaceLookups(), lookups);
        EXPECT_NE(host.vocabulary(), nullptr);

        // Now registered: a further call stops at once.
        host.runRegistration();
        EXPECT_EQ(host.interfaceLookups(), lookups);
    }
}

// A registry of the test's own, for what the stand-in's registry cannot do: refuse a vocabulary,
// and record the arguments of every registration.
class RecordingOrl : public ORLInterface {
public:
    std::int32_t version() const override { return 1500; }
    std::uint8_t registerVocabulary(int reserved1, int reserved2, int reserved3,
                                    int descriptorCount,
                                    const VocabularyDescriptor* descriptors) override {
        calls.push_back({reserved1, reserved2, reserved3, descriptorCount});
        registered.push_back(descriptors);
        return answer;
    }

    std::uint8_t answer = 1;
    std::vector<std::vector<int>> calls;
    std::vector<const VocabularyDescriptor*> registered;
};

class NeverUsedEditor : public ItemParametersEditInterface {
public:
    explicit NeverUsedEditor(std::int32_t editorVersion) : editorVersion(editorVersion) {}
    std::int32_t version() const override { return editorVersion; }
    void openItemSession(std::shared_ptr<ItemParameterSession>&, int) override {
        ADD_FAILURE() << "registration opened an item session";
    }
    VALUE_HEADER* sessionValue(const std::shared_ptr<ItemParameterSession>*) override {
        ADD_FAILURE() << "registration asked for a session value";
        return nullptr;
    }

    std::int32_t editorVersion;
};

class RecordingRegistry : public InterfaceRegistry {
public:
    HostInterface* getInterface(const char* name) override {
        lookups.emplace_back(name);
        if (std::string(name) == "ORL") {
            return &orl;
        }
        return std::string(name) == "ItemParametersEdit" ? &editor : nullptr;
    }
    void reportFailure(const char* message) override { failures.emplace_back(message); }

    RecordingOrl orl;
    NeverUsedEditor editor{2500};
    Texts lookups;
    Texts failures;
};

TEST(Registration, RefusedVocabularyIsReportedAndStopsBeforeTheEditor) {
    PluginCopy copy;
    const PluginCopy::RegisterFunction registerContents = copy.openRegistration();
    RecordingRegistry registry;
    registry.orl.answer = 0;

    registerContents(&registry);
    EXPECT_EQ(registry.failures, Texts{vocabularyRefused});
    EXPECT_EQ(registry.lookups, orlOnly);
    // Three zero words, then one descriptor.
    const std::vector<std::vector<int>> oneRegistration = {{0, 0, 0, 1}};
    EXPECT_EQ(registry.orl.calls, oneRegistration);
    ASSERT_EQ(registry.orl.registered.size(), 1u);
    ASSERT_NE(registry.orl.registered[0], nullptr);

    // The engine takes it the second time; the same table is offered again.
    registry.orl.answer = 1;
    registry.failures.clear();
    registerContents(&registry);
    EXPECT_EQ(registry.failures, Texts{});
    EXPECT_EQ(registry.lookups, (Texts{"ORL", "ORL", "ItemParametersEdit"}));
    ASSERT_EQ(registry.orl.registered.size(), 2u);
    EXPECT_EQ(registry.orl.registered[1], registry.orl.registered[0]);

    registerContents(&registry);
    EXPECT_EQ(registry.orl.registered.size(), 2u);
    EXPECT_EQ(registry.lookups.size(), 3u);
}

}  // namespace
