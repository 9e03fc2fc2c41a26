#pragma once

#include "host/Interfaces.h"

// The script vocabulary "CmdOp" that the plug-in registers with the script engine.
namespace LaneTapPlugin {

const VocabularyDescriptor* vocabularyDescriptor();

}  // namespace LaneTapPlugin

VALUE_HEADER* LaneTap_show_dialog();
VALUE_HEADER* LaneTap_netlist_probe();
