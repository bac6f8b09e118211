#pragma once

#include <string_view>

namespace tessaly {

// What is the same in every report: the page's style and its script.
extern const std::string_view kReportStyle;
extern const std::string_view kReportScript;

}  // namespace tessaly
