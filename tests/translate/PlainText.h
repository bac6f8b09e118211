#pragma once

#include <string>
#include <string_view>

#include "text/folding.h"
#include "text/search.h"

// Searching and replacing in their plainest form, unit by unit, for the transcriptions that the fast ways of
// the program are held against.
namespace tessaly::testing {

inline bool PlainlyStandsAt(std::u16string_view text, std::size_t at, std::u16string_view what) {
    if (at + what.size() > text.size()) return false;
    for (std::size_t unit = 0; unit < what.size(); ++unit) {
        if (Fold(text[at + unit]) != Fold(what[unit])) return false;
    }
    return true;
}

inline Position PlainFind(std::u16string_view text, std::u16string_view what, Position start = 1) {
    for (std::size_t at = static_cast<std::size_t>(start) - 1; at < text.size(); ++at) {
        if (PlainlyStandsAt(text, at, what)) return static_cast<Position>(at) + 1;
    }
    return 0;
}

inline std::u16string PlainReplace(std::u16string_view text, std::u16string_view what,
                                   std::u16string_view with) {
    std::u16string replaced;
    std::size_t at = 0;
    while (at < text.size()) {
        if (PlainlyStandsAt(text, at, what)) {
            replaced += with;
            at += what.size();
        } else {
            replaced += text[at++];
        }
    }
    return replaced;
}

// The section from the first open marker through the next close marker; empty when either is missing.
inline std::u16string PlainSection(std::u16string_view text, std::u16string_view open,
                                   std::u16string_view close) {
    const Position from = PlainFind(text, open);
    if (from == 0) return {};
    const Position end = PlainFind(text, close, from + static_cast<Position>(open.size()));
    if (end == 0) return {};
    const auto offset = static_cast<std::size_t>(from) - 1;
    return std::u16string(text.substr(offset, static_cast<std::size_t>(end - from) + close.size()));
}

}  // namespace tessaly::testing
