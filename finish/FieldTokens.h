#pragma once

#include <string>
#include <string_view>

namespace tessaly {

// The text with its field tokens turned back into what they stand for, "(:)" into a line feed.
std::u16string TurnBackTokens(std::u16string_view text);

// The same for a name, which stays on one line and has no blanks at its ends.
std::u16string TurnBackName(std::u16string_view text);

}  // namespace tessaly
