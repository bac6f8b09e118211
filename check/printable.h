#pragma once

#include <string>
#include <string_view>

namespace tessaly {

// A text of a board as it can be shown on a line of a terminal or a page: blanks and line ends in a row
// become one blank, and what is no character to be seen, or would turn the writing around it, a "?".
std::u16string Printable(std::u16string_view text);

}  // namespace tessaly
