#include "plugin/Vocabulary.h"

namespace LaneTapPlugin {
namespace {

std::uint64_t functionWord(ScriptFunction function) {
    return reinterpret_cast<std::uint64_t>(function);
}

const VocabularyEntry entries[] = {
    {"LaneTap_pluginLoaded", VocabularyConstant, 1, {0, 0, 0, 0}},
    {"LaneTap_show_dialog", VocabularyFunction, functionWord(&LaneTap_show_dialog), {0, 0, 0, 0}},
    {"LaneTap_netlist_probe",
     VocabularyFunction,
     functionWord(&LaneTap_netlist_probe),
     {0, 0, 0, 0}},
};

const VocabularyDescriptor descriptor = {"CmdOp", "ORL", entries, 3, {0, 0, 0, 0}};

}  // namespace

const VocabularyDescriptor* vocabularyDescriptor() {
    return &descriptor;
}

}  // namespace LaneTapPlugin
