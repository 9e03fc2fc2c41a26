#include "plugin/HostInterfaces.h"

namespace LaneTapPlugin {
namespace {

template <class Interface>
Interface*& holder(Interface**& slot) {
    if (!slot) {
        slot = new Interface*(nullptr);
    }
    return *slot;
}

ORLInterface** orlHolder = nullptr;
ItemParametersEditInterface** itemParametersHolder = nullptr;

}  // namespace

ORLInterface*& orlInterface() {
    return holder(orlHolder);
}

ItemParametersEditInterface*& itemParametersInterface() {
    return holder(itemParametersHolder);
}

}  // namespace LaneTapPlugin
