#pragma once

#include <string>
#include <string_view>

namespace tessaly {

// The text with the characters that would break an import row as three-character tokens: "([)" for a comma,
// "(})" for a double quote, "(:)" for a line end, and so on. A carriage return alone stays.
std::u16string EscapeField(std::u16string_view text);

// A name without field tokens and other marks that trouble a name. No inverse of EscapeField: the token of a
// line end stays, "?", "^", " ." and "..." go.
std::u16string RemoveFieldTokens(std::u16string_view text);

}  // namespace tessaly
