#pragma once

#include <string>

#include "check/BoardCheck.h"

namespace tessaly {

// Writes the outcome of a check as JSON. Raises 3004 when the file cannot be written.
void WriteCheckReport(const BoardCheck& check, const std::string& file);

}  // namespace tessaly
