#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

// The pieces between the delimiters, ignoring the delimiter's case. An empty text has no piece at all, an
// empty delimiter leaves the text whole. The pieces are views into the text.
std::vector<std::u16string_view> Split(std::u16string_view text, std::u16string_view delimiter);

// One piece, from 0. Raises 9 for a piece that is not there.
std::u16string_view Element(const std::vector<std::u16string_view>& pieces, std::size_t index);

// The text without the blanks (U+0020 alone) at both ends.
std::u16string_view Trim(std::u16string_view text);

}  // namespace tessaly
