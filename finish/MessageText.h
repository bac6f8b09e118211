#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

// Gives the new address for an old one, none for a link that stays.
using NewAddress = std::function<std::optional<std::u16string>(std::u16string_view)>;

// A message of the import files as the forum shows it: tokens turned back, font tags in the forum's own
// terms, and links to the old board's pages led to the new ones.
std::u16string FinishMessage(std::u16string_view message, const NewAddress& newAddress);

// The message in pieces of at most so many bytes of UTF-8; each ends behind a word or a line where it can.
// Tags that are open at a piece's end are closed there and opened again in the next. Each piece but the last
// takes more than `mostBytes` minus kPieceSlack bytes of the message, and the first leaves so much room for
// what is put behind it.
std::vector<std::u16string> SplitMessage(std::u16string_view message, std::size_t mostBytes,
                                         std::size_t roomInFirst);
inline constexpr std::size_t kPieceSlack = 4096;

// How many bytes a text takes in UTF-8.
std::size_t BytesInUtf8(std::u16string_view text);

}  // namespace tessaly
