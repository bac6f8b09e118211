#pragma once

#include <cstdint>

#include "control/modDefinitions.h"

namespace tessaly {

// How many pages lie in the folders that the fields name, hidden ones where the option takes them too. A run
// reads as many at most, but for a page that is reached twice.
std::int64_t CountPages(const ConversionState& state);

}  // namespace tessaly
