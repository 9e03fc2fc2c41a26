#pragma once

#include <functional>

#include "host/Database.h"

namespace LaneTapUI {

// An instance counts unless one of its two lowest status bits is set, it has no model definition,
// or its model definition is switched off.
bool passesInstanceFilter(const db::Instance* instance);

// Visits, in the host's order, every instance of the design as the netlist sees it that passes
// the filter. The visitor returns false to stop the walk.
void walkInstances(db::Design* design, const std::function<bool(db::Instance*)>& visit);

}  // namespace LaneTapUI
