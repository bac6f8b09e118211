#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tessaly {

// A place in a text, in 16-bit units from 1; 0 means not found.
using Position = std::int32_t;

// The length of a text as a position; raises 6 for a text that positions cannot tell.
Position Length(std::u16string_view text);

// The first place at or behind `start` where `what` stands, ignoring case; 0 when there is none, also when
// `start` lies behind the end. Raises 5 for a start below 1.
Position Find(std::u16string_view text, std::u16string_view what, Position start = 1);

// The same, telling upper from lower case.
Position FindExactly(std::u16string_view text, std::u16string_view what, Position start = 1);

// The first place at or behind `start` where one of these units stands, told by case; 0 when there is none.
// Raises 5 for a start below 1 and for more than a dozen units.
Position FindFirstOf(std::u16string_view text, std::u16string_view units, Position start = 1);

// The last place where `what` stands and ends at or before `start`, ignoring case; 0 when there is none, also
// when `start` lies behind the end. A start of -1 is the end of the text. Raises 5 for a start of 0 or below
// -1.
Position FindBackward(std::u16string_view text, std::u16string_view what, Position start = -1);

bool Contains(std::u16string_view text, std::u16string_view what);

// Whether `what` stands at `at`, ignoring case.
bool StandsAt(std::u16string_view text, Position at, std::u16string_view what);

bool EqualIgnoringCase(std::u16string_view one, std::u16string_view other);

// The text from `from` up to but not including `to`. Raises 5 for a negative length or a start below 1; what
// lies behind the end is left out.
std::u16string_view Between(std::u16string_view text, Position from, Position to);

// The text from `from` to the end; empty when that lies behind the end. Raises 5 for a start below 1.
std::u16string_view From(std::u16string_view text, Position from);

// Replaces all occurrences in place, ignoring case, from left to right. Touches and allocates nothing when
// there is none.
void ReplaceAll(std::u16string& text, std::u16string_view what, std::u16string_view with);

// The same, telling upper from lower case.
void ReplaceAllExactly(std::u16string& text, std::u16string_view what, std::u16string_view with);

// Deletes all occurrences in place, ignoring case.
void RemoveAll(std::u16string& text, std::u16string_view what);

}  // namespace tessaly
