#include "standin/Host.h"

#include <dlfcn.h>

#include <QFileInfo>
#include <cstring>

#include "standin/DesignFile.h"
#include "standin/ScriptValues.h"
#include "standin/Warnings.h"

// The interfaces' key functions live with the host.
HostInterface::~HostInterface() = default;
ORLInterface::~ORLInterface() = default;
ItemParametersEditInterface::~ItemParametersEditInterface() = default;
ItemParameterSession::~ItemParameterSession() = default;
InterfaceRegistry::~InterfaceRegistry() = default;

namespace db {
// Points an iterator at a parameter set; only the host can do that.
struct ParamIterAccess {
    static void attach(ParamIterConst& iterator, standin::ParameterStore* store) {
        iterator.parameterSet = store;
    }
};
}  // namespace db

namespace standin {

namespace {

class OrlEngine : public ORLInterface {
public:
    explicit OrlEngine(std::int32_t engineVersion) : engineVersion(engineVersion) {}
    std::int32_t version() const override { return engineVersion; }
    std::uint8_t registerVocabulary(int, int, int, int descriptorCount,
                                    const VocabularyDescriptor* descriptors) override {
        if (descriptorCount < 1 || !descriptors) {
            return 0;
        }
        vocabulary = descriptors;
        ++registrations;
        return 1;
    }

    std::int32_t engineVersion;
    const VocabularyDescriptor* vocabulary = nullptr;
    int registrations = 0;
};

}  // namespace

// ---- item parameter sessions ---------------------------------------------------------------

class Host::Session : public ItemParameterSession {
public:
    Session(Host& host, Instance& instance)
        : host(host), instance(instance), edited(instance.parameters), name(instance.name) {}

    bool passesEditOn() const override { return true; }
    const char* instanceName() const override { return name.c_str(); }
    void setInstanceName(const char* newName) override { name = newName ? newName : ""; }
    db::Design* design() const override { return instance.design; }
    void fillParamIter(db::ParamIter* iterator) override {
        db::ParamIterAccess::attach(*iterator, &edited);
    }
    void commit() override { host.commitSession(*this); }
    void libraryName(std::string& result) const override { result = instance.library; }
    const std::string& cellName() const override { return instance.cell; }

    Host& host;
    Instance& instance;
    ParameterStore edited;
    std::string name;
};

class Host::ItemParametersEdit : public ItemParametersEditInterface {
public:
    ItemParametersEdit(Host& host, std::int32_t editorVersion)
        : host(host), editorVersion(editorVersion) {}
    std::int32_t version() const override { return editorVersion; }
    void openItemSession(std::shared_ptr<ItemParameterSession>& result, int) override {
        if (!host.item) {
            throw ScriptError("no item is being edited");
        }
        result = std::make_shared<Session>(host, *host.item);
    }
    VALUE_HEADER* sessionValue(const std::shared_ptr<ItemParameterSession>* session) override {
        return oval_create_raw_ptr(sessionType(), session ? session->get() : nullptr);
    }

    Host& host;
    std::int32_t editorVersion;
};

class Host::Registry : public InterfaceRegistry {
public:
    Registry(Host& host, const RegistryConfig& config) : host(host) { configure(config); }
    void configure(const RegistryConfig& config) {
        engine = config.orlVersion ? std::make_unique<OrlEngine>(*config.orlVersion) : nullptr;
        editor = config.itemParametersVersion
                     ? std::make_unique<ItemParametersEdit>(host, *config.itemParametersVersion)
                     : nullptr;
    }
    HostInterface* getInterface(const char* name) override {
        lookups.emplace_back(name);
        if (std::strcmp(name, "ORL") == 0) {
            return engine.get();
        }
        if (std::strcmp(name, "ItemParametersEdit") == 0) {
            return editor.get();
        }
        return nullptr;
    }
    void reportFailure(const char* message) override { failures.emplace_back(message); }

    Host& host;
    std::unique_ptr<OrlEngine> engine;
    std::unique_ptr<ItemParametersEdit> editor;
    std::vector<std::string> lookups;
    std::vector<std::string> failures;
};

// ---- the host ------------------------------------------------------------------------------

ScriptArgument ScriptArgument::paramIter(db::ParamIter* iterator) {
    return {oval_find_type("ParamIter"), iterator};
}
ScriptArgument ScriptArgument::instance(db::Instance* instance) {
    return {instanceType(), instance};
}
ScriptArgument ScriptArgument::windowInstance(WinInstanceC* windowInstance) {
    return {windowInstanceType(), windowInstance};
}

WindowInstance::WindowInstance(QWidget* parent) {
    hostHeader[0] = hostHeader[1] = nullptr;
    parentWidget = parent;
}

Host::Host(RegistryConfig config) {
    theRegistry = std::make_unique<Registry>(*this, config);
    defineHostFunctions();
    takeRecordedWarnings();
}

Host::~Host() {
    for (const char* name :
         {"de_workspace_directory", "de_end_one_lapi_command_in_all_context_windows",
          "de_post_help_cb", "de_iteminfo_edit_instance"}) {
        removeHostFunction(name);
    }
}

void Host::loadDesign(const QString& path) {
    std::unique_ptr<db::Design> loaded = readDesignFile(path);
    item = nullptr;
    currentDesign = std::move(loaded);
}

void Host::adoptDesign(std::unique_ptr<db::Design> design) {
    item = nullptr;
    currentDesign = std::move(design);
}

void Host::saveDesign() {
    if (!currentDesign) {
        throw DesignError("no design is loaded");
    }
    writeDesignFile(*currentDesign);
}

bool Host::setEditedItem(const std::string& instanceName) {
    item = currentDesign ? currentDesign->findInstance(instanceName) : nullptr;
    return item != nullptr;
}

std::vector<std::string> Host::loadPlugin(const QString& path) {
    library = dlopen(path.toLocal8Bit().constData(), RTLD_NOW | RTLD_LOCAL);
    if (!library) {
        throw DesignError(std::string("cannot load plug-in: ") + dlerror());
    }
    auto version = reinterpret_cast<int (*)()>(dlsym(library, "GetLibraryVersion"));
    registerContents =
        reinterpret_cast<void (*)(InterfaceRegistry*)>(dlsym(library, "RegisterLibraryContents"));
    if (!version || !registerContents) {
        throw DesignError(path.toStdString() + " is not a plug-in library");
    }
    libraryVersion = version();
    runRegistration();
    return registrationFailures();
}

void Host::reconfigureRegistry(const RegistryConfig& config) {
    theRegistry->configure(config);
}

void Host::runRegistration() {
    theRegistry->failures.clear();
    registerContents(theRegistry.get());
}

const VocabularyDescriptor* Host::vocabulary() const {
    return theRegistry->engine ? theRegistry->engine->vocabulary : nullptr;
}

InterfaceRegistry* Host::registry() const {
    return theRegistry.get();
}

const std::vector<std::string>& Host::registrationFailures() const {
    return theRegistry->failures;
}

const std::vector<std::string>& Host::interfaceLookups() const {
    return theRegistry->lookups;
}

CallResult Host::call(const std::string& functionName,
                      const std::vector<ScriptArgument>& arguments) {
    CallResult result;
    ScriptFunction function = nullptr;
    const VocabularyDescriptor* words = vocabulary();
    for (std::uint64_t i = 0; words && i < words->count; ++i) {
        const VocabularyEntry& entry = words->entries[i];
        if (entry.kind == VocabularyFunction && functionName == entry.name) {
            function = reinterpret_cast<ScriptFunction>(entry.payload);
        }
    }
    if (!function) {
        result.error = "no script function named " + functionName;
        return result;
    }
    std::vector<VALUE_HEADER*> values;
    for (const ScriptArgument& argument : arguments) {
        values.push_back(oval_create_raw_ptr(argument.type, argument.pointer));
    }
    CallFrame frame(std::move(values));
    try {
        ORLValue value(function());
        // A block is megabytes long: it is moved out, not copied.
        if (!takeText(value.get(), result.text) && value.get()) {
            result.pointer = *static_cast<void**>(oval_value_data(value.get()));
        }
        result.ok = true;
    } catch (const std::exception& error) {
        result.error = error.what();
    } catch (...) {
        result.error = "an unknown exception";
    }
    return result;
}

CallResult Host::netlistProbe(const std::string& instanceName) {
    Instance* probe = currentDesign ? currentDesign->findInstance(instanceName) : nullptr;
    if (!probe) {
        CallResult missing;
        missing.error = "no instance named " + instanceName;
        return missing;
    }
    db::ParamIter parameters(probe);
    return call("LaneTap_netlist_probe",
                {ScriptArgument::paramIter(&parameters), ScriptArgument::instance(probe)});
}

std::vector<std::string> Host::takeWarnings() {
    return takeRecordedWarnings();
}

void Host::commitSession(Session& session) {
    Instance& instance = session.instance;
    instance.parameters.values = session.edited.values;
    if (session.name != instance.name) {
        renameInstance(instance, session.name);
    }
    ++commits;
    if (onCommit) {
        onCommit();
    }
}

void Host::defineHostFunctions() {
    defineHostFunction("de_workspace_directory", [this](const std::vector<const VALUE_HEADER*>&) {
        const QString folder =
            currentDesign ? QFileInfo(currentDesign->filePath).absolutePath() : QString(".");
        return oval_create_string(folder.toLocal8Bit().constData());
    });
    defineHostFunction("de_end_one_lapi_command_in_all_context_windows",
                       [this](const std::vector<const VALUE_HEADER*>&) -> VALUE_HEADER* {
                           ++commandsEnded;
                           if (onEndCommand) {
                               onEndCommand();
                           }
                           return nullptr;
                       });
    defineHostFunction("de_post_help_cb",
                       [this](const std::vector<const VALUE_HEADER*>& arguments) -> VALUE_HEADER* {
                           const char* key = arguments.size() > 1 ? textOf(arguments[1]) : nullptr;
                           if (!key) {
                               throw ScriptError("de_post_help_cb needs a help key");
                           }
                           auto* window =
                               arguments.size() > 2
                                   ? static_cast<WinInstanceC*>(*static_cast<void**>(
                                         oval_value_data(const_cast<VALUE_HEADER*>(arguments[2]))))
                                   : nullptr;
                           helpRequests.emplace_back(key);
                           if (onHelp) {
                               onHelp(key, window);
                           }
                           return nullptr;
                       });
    defineHostFunction("de_iteminfo_edit_instance",
                       [this](const std::vector<const VALUE_HEADER*>& arguments) -> VALUE_HEADER* {
                           const char* name = arguments.size() > 1 ? textOf(arguments[1]) : nullptr;
                           editedInstanceNotices.emplace_back(name ? name : "");
                           return nullptr;
                       });
}

}  // namespace standin
