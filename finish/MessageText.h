#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

// Gives the new address for an old one, none for a link that stays.
using NewAddress = std::function<std::optional<std::u16string>(std::u16string_view)>;

// A message of the import files as the forum shows it: tokens turned back and font tags in the forum's own
// terms. Its links keep their addresses.
std::u16string FinishMarkup(std::u16string_view message);

// The text with the links to the old board's pages led to the new ones.
std::u16string LeadLinks(std::u16string text, const NewAddress& newAddress);

struct MessagePieces {
    std::vector<std::u16string> texts;
    // A tag or picture is longer than a piece, or so many tags are open at a cut that not all are closed
    // there and opened again.
    bool isTorn = false;
};

// What a message is cut by: how many bytes of UTF-8 a piece takes, how many of them the first leaves for what
// is put behind it, and how many an address counts at least, so that each fits when it is led elsewhere.
struct PieceSizes {
    std::size_t most;
    std::size_t roomInFirst = 0;
    std::size_t shortestAddress = 0;
};

// The message in pieces; each ends behind a word or a line where it can, and none within a tag or picture
// that a piece can hold. Tags that are open at a piece's end are closed there and opened again in the next.
MessagePieces SplitMessage(std::u16string_view message, const PieceSizes& sizes);

// How many bytes a text takes in UTF-8.
std::size_t BytesInUtf8(std::u16string_view text);

}  // namespace tessaly
