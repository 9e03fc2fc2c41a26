#pragma once

#include "host/Interfaces.h"

// The interfaces that registration obtained from the host. Each holder is made on first use and
// lives until the library is unloaded.
namespace LaneTapPlugin {

ORLInterface*& orlInterface();
ItemParametersEditInterface*& itemParametersInterface();

}  // namespace LaneTapPlugin
