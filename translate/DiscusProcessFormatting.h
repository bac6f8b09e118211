#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "control/modDefinitions.h"
#include "text/search.h"

namespace tessaly {

// An opening font tag and the closing tag that belongs to it; 0 and 0 where none was set.
struct TagPair {
    Position opening = 0;
    Position closing = 0;
};

// Turns bold, centring and the three kinds of font tag of a body into BBCode. Gives the empty text on a
// failure.
std::u16string DiscusProcessFormatting(ConversionState& state, std::u16string text);

// Pairs each closing tag with the nearest opening before it that is still open. The pairs stand at the index
// of the closing, as many as there are openings. Gives false, and no pairs, without an opening or a closing
// and when a closing beyond the last index finds a partner.
bool PairFontTags(ConversionState& state, std::u16string_view text, std::u16string_view openingTag,
                  std::u16string_view closingTag, std::vector<TagPair>& pairs);

// Turns the first ">" behind each opening text into "]", in place.
void CloseFontTagOpenings(ConversionState& state, std::u16string& text, std::u16string_view opening);

}  // namespace tessaly
