#pragma once

#include <cstdint>
#include <string>

#include "control/modDefinitions.h"

namespace tessaly {

// Decides what becomes of each link of a body: a link to a topic of the old board becomes a BBCode link and
// is noted in the internal links file, a link to one of its files becomes an attachment and goes, all others
// stay. `body` may be overwritten on the way. Gives the new body, the empty text after a cancel or a failure.
std::u16string DiscusProcessLinks(ConversionState& state, std::u16string& body, std::int32_t pageSerial,
                                  std::int32_t forumId);

}  // namespace tessaly
