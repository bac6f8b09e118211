#pragma once

#include <string>
#include <string_view>

namespace tessaly {

// The text without its tags: the first "<" through the next ">" goes wherever it stands, ignoring case, and
// so on from the start, until no "<" is left that a ">" follows. Takes time in proportion to the text, but
// for tags that stand once more inside others.
std::u16string RemoveTags(std::u16string_view text);

}  // namespace tessaly
