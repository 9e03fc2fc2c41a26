#pragma once

#include "standin/Design.h"

namespace standin {

// The item definition of the probe cell: what a newly placed probe carries.
const ParameterValues& probeItemDefinition();
extern const char* const probeCellName;

}  // namespace standin
