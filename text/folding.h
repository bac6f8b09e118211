#pragma once

#include <string>
#include <string_view>

namespace tessaly {

extern const unsigned char kFoldIndex[256];
extern const char16_t kFoldBlocks[][256];

// Simple case folding of one 16-bit unit: the one rule by which texts, searches and keys ignore case.
// Surrogates fold to themselves.
inline char16_t Fold(char16_t unit) {
    return static_cast<char16_t>(unit + kFoldBlocks[kFoldIndex[unit >> 8]][unit & 0xFF]);
}

// Each unit folded: two texts are equal ignoring case when these are equal.
std::u16string Folded(std::u16string_view text);

// The text in lower case, unit by unit.
std::u16string InLowerCase(std::u16string_view text);

}  // namespace tessaly
