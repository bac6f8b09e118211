#pragma once

#include <string_view>

#include "check/BoardCheck.h"

namespace tessaly {

// Writes what a check found as one page that needs nothing else. Raises 3004 when it cannot be written.
void WriteHtmlReport(const BoardCheck& check, std::u16string_view path);

}  // namespace tessaly
