#pragma once

#include <cstdint>
#include <string_view>

#include "control/modDefinitions.h"

namespace tessaly {

// Writes the row of one Announcement section. Unlike a post it keeps no formatting.
void mybbWriteAnnouncementMsg(ConversionState& state, std::u16string_view section, std::int32_t forumId,
                              std::int32_t poster, std::u16string_view subject);

}  // namespace tessaly
