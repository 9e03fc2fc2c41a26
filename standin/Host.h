#pragma once

#include <QString>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "host/Interfaces.h"
#include "standin/Design.h"
#include "standin/DesignFile.h"
#include "standin/ItemDefinition.h"

class QWidget;

// The stand-in host: what a program needs to load a design, load the LaneTap plug-in through its
// exported entry points and call its script functions the way the real host would.
namespace standin {

// Which interfaces the registry offers, and at which versions. An absent interface answers null.
struct RegistryConfig {
    std::optional<std::int32_t> orlVersion = 1500;
    std::optional<std::int32_t> itemParametersVersion = 2500;
};

// One argument of a script call made by the host.
struct ScriptArgument {
    static ScriptArgument paramIter(db::ParamIter* iterator);
    static ScriptArgument instance(db::Instance* instance);
    static ScriptArgument windowInstance(WinInstanceC* windowInstance);

    TYPE_DEFINITION* type;
    void* pointer;
};

// The outcome of a script call. On failure `error` holds the message of what left the function.
struct CallResult {
    bool ok = false;
    std::string error;
    std::string text;
    void* pointer = nullptr;
};

// A window instance as the host gives it to a script call.
class WindowInstance : public WinInstanceC {
public:
    explicit WindowInstance(QWidget* parent);
};

class Host {
public:
    explicit Host(RegistryConfig config = RegistryConfig());
    ~Host();
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    // Loads a design file; throws DesignError. The previous design goes away.
    void loadDesign(const QString& path);
    // Takes over a design built in memory (tests build their own).
    void adoptDesign(std::unique_ptr<db::Design> design);
    db::Design* design() const { return currentDesign.get(); }
    // Writes what changed in the design back to its file, atomically, under the design's lock;
    // throws DesignError, also when the file changed on disk since it was read (see
    // writeDesignFile and DesignLock).
    void saveDesign();

    // Chooses the probe instance that "ItemParametersEdit" sessions edit; false if there is none.
    bool setEditedItem(const std::string& instanceName);
    Instance* editedItem() const { return item; }

    // Loads a plug-in library and runs its registration. Returns the registration failures; an
    // empty list means the plug-in registered. A library that cannot be loaded throws DesignError.
    std::vector<std::string> loadPlugin(const QString& path);
    int pluginVersion() const { return libraryVersion; }
    // The vocabulary the plug-in registered, null before registration.
    const VocabularyDescriptor* vocabulary() const;
    // The registry, for calling RegisterLibraryContents again.
    InterfaceRegistry* registry() const;
    void runRegistration();
    // Changes what the registry answers from now on.
    void reconfigureRegistry(const RegistryConfig& config);
    const std::vector<std::string>& registrationFailures() const;
    // Names the registry was asked for, in order.
    const std::vector<std::string>& interfaceLookups() const;

    // Calls a vocabulary function by name with its arguments. An exception that leaves the
    // function is caught here and reported in the result.
    CallResult call(const std::string& functionName, const std::vector<ScriptArgument>& arguments);
    // The netlist call the host makes for one probe instance.
    CallResult netlistProbe(const std::string& instanceName);

    // Warnings reported through meridian_report_warning since the last take.
    std::vector<std::string> takeWarnings();

    // Host script functions record what they were asked; a program can act on them.
    std::function<void()> onCommit;
    std::function<void()> onEndCommand;
    std::function<void(const std::string& key, WinInstanceC* window)> onHelp;
    int commandsEnded = 0;
    std::vector<std::string> helpRequests;
    std::vector<std::string> editedInstanceNotices;
    int commits = 0;

private:
    class Registry;
    class ItemParametersEdit;
    class Session;

    void defineHostFunctions();
    void commitSession(Session& session);

    std::unique_ptr<db::Design> currentDesign;
    Instance* item = nullptr;
    std::unique_ptr<Registry> theRegistry;
    void* library = nullptr;
    int libraryVersion = 0;
    void (*registerContents)(InterfaceRegistry*) = nullptr;
};

}  // namespace standin
