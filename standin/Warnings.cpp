#include "standin/Warnings.h"

namespace standin {
namespace {

std::vector<std::string>& recorded() {
    static std::vector<std::string> warnings;
    return warnings;
}

}  // namespace

void recordWarning(const std::string& text) { recorded().push_back(text); }

std::vector<std::string> takeRecordedWarnings() {
    std::vector<std::string> taken;
    taken.swap(recorded());
    return taken;
}

}  // namespace standin
