#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "control/modDefinitions.h"

namespace tessaly {

// The address of a topic on the new forum, from the comma-separated parts of its item. Raises 9 when part 0
// or part 2 is missing.
std::u16string NewTopicAddress(const ConversionState& state, const std::vector<std::u16string>& item);

// The BBCode link with its old address replaced by the new one; empty on a failure. `list` receives the
// item's comma-separated parts.
std::u16string BuildmybbLink(ConversionState& state, std::u16string_view link, std::u16string_view item,
                             std::vector<std::u16string>& list);

}  // namespace tessaly
