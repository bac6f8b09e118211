#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tessaly {

// A decimal number is an optional sign, digits with at most one "." among or around them, and optionally an
// exponent behind "e" or "E".

// The longest beginning, behind blanks, tabs and line ends, that is a decimal number; 0 where there is none.
double LeadingNumber(std::u16string_view text);

// Whether the text, blanks trimmed, is as a whole a decimal number.
bool IsNumeric(std::u16string_view text);

// The number that the trimmed text is, rounded. Raises 13 when it is none, 6 when it does not fit.
std::int32_t ToInteger(std::u16string_view text);

// Rounds half to even. Raises 6 outside 32 bits signed.
std::int32_t RoundToInteger(double number);

// Sum of two 32-bit integers; raises 6 outside 32 bits signed.
std::int32_t Add(std::int32_t one, std::int32_t other);

// Difference of two 32-bit integers; raises 6 outside 32 bits signed.
std::int32_t Subtract(std::int32_t one, std::int32_t other);

std::u16string ToText(std::int64_t number);

}  // namespace tessaly
