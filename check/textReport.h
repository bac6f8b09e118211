#pragma once

#include <string>

#include "check/BoardCheck.h"

namespace tessaly {

std::u16string_view NameOf(Grade grade);

// What every report says when a check had no board to look at.
inline constexpr std::u16string_view kNotLookedAt =
    u"The board was not looked at. Mend what ends the run first, then check again.";

// Where a finding stands: file, post, line and position, as far as they are known.
std::u16string PlaceText(const Finding& finding);

// A number of bytes as people read it: 12.3 MB.
std::u16string BytesText(std::int64_t bytes);

// What a check found, to be read on a screen: a summary first, then the findings by kind, the first twenty of
// each.
std::u16string TextReport(const BoardCheck& check);

}  // namespace tessaly
