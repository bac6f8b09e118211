#pragma once

#include <string>

namespace tessaly {

// Removes all tags in place: finds the first "<" and the next ">", removes that tag wherever it stands,
// ignoring case, and begins again from the start, until no "<" is left that a ">" follows. Takes time in
// proportion to the text, but for tags that stand once more inside others.
void RemoveTags(std::u16string& text);

}  // namespace tessaly
