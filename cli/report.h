#pragma once

#include <optional>
#include <string>
#include <vector>

#include "control/modDefinitions.h"

namespace tessaly {

// Writes the outcome of a run as JSON. Raises 3004 when the file cannot be written.
void WriteReport(const ConversionState& state, const std::vector<std::u16string>& messages,
                 const std::optional<std::u16string>& untrapped, const std::string& file);

}  // namespace tessaly
