#include "plugin/HostInterfaces.h"
#include "plugin/Vocabulary.h"

#define LANETAP_EXPORT extern "C" __attribute__((visibility("default")))

namespace {

unsigned char registered = 0;

// Asks the registry for an interface and checks its version against [lowest, limit).
template <class Interface>
bool acceptInterface(InterfaceRegistry* registry, const char* name, Interface*& slot,
                     std::int32_t lowest, std::int32_t limit, const char* missingMessage,
                     const char* incompatibleMessage) {
    slot = static_cast<Interface*>(registry->getInterface(name));
    if (!slot) {
        registry->reportFailure(missingMessage);
        return false;
    }
    const std::int32_t version = slot->version();
    if (version < lowest || version >= limit) {
        registry->reportFailure(incompatibleMessage);
        return false;
    }
    return true;
}

}  // namespace

LANETAP_EXPORT int GetLibraryVersion() {
    return 100;
}

LANETAP_EXPORT void RegisterLibraryContents(InterfaceRegistry* registry) {
    using namespace LaneTapPlugin;
    if (registered) {
        return;
    }
    if (!acceptInterface(registry, "ORL", orlInterface(), 1002, 2000,
                         "LaneTapPlugin failed to get ORL interface",
                         "LaneTapPlugin found an incompatible ORL interface")) {
        return;
    }
    if (!orlInterface()->registerVocabulary(0, 0, 0, 1, vocabularyDescriptor())) {
        registry->reportFailure("LaneTapPlugin could not register ORL vocabulary");
        return;
    }
    // The messages name the interface by its older name; they stand as the host's users know them.
    if (!acceptInterface(registry, "ItemParametersEdit", itemParametersInterface(), 2000, 3000,
                         "LaneTapPlugin failed to get ParameterDialogIFC interface",
                         "LaneTapPlugin found an incompatible ParameterDialogIFC interface")) {
        return;
    }
    registered = 1;
}
