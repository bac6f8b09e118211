#pragma once

#include "control/modDefinitions.h"

namespace tessaly {

// Reads the board file: a forum row for each category, and the walk of each of its tops. Gives false when it
// stopped before it could finish the forums', the posts' and the links' files.
bool DiscusProcessDiscusMainBoardFile(ConversionState& state);

}  // namespace tessaly
