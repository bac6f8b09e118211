#pragma once

#include <string>

#include "check/BoardCheck.h"

namespace tessaly {

std::u16string_view NameOf(Grade grade);

// Where a finding stands: file, post, line and position, as far as they are known.
std::u16string PlaceText(const Finding& finding);

// A number of bytes as people read it: 12.3 MB.
std::u16string BytesText(std::int64_t bytes);

// What a check found, to be read on a screen: a summary first, then the findings by kind, the first twenty of
// each.
std::u16string TextReport(const BoardCheck& check);

}  // namespace tessaly
