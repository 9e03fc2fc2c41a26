#pragma once

#include <string>
#include <vector>

namespace standin {

// meridian_report_warning lands here; the host takes the texts when it shows them.
void recordWarning(const std::string& text);
std::vector<std::string> takeRecordedWarnings();

}  // namespace standin
