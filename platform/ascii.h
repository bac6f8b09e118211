#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tessaly::platform {

// Texts of boards are ASCII for the most part, and every charset of single bytes and utf-8 write it as it is.
// Blocks of this many units are looked at as one.
constexpr std::size_t kAsciiBlock = 32;

// Whether all units of a block are ASCII. The loops have no exits, so that compilers make vector code of
// them.
template <typename Unit>
bool IsAsciiBlock(const Unit* units) {
    unsigned all = 0;
    for (std::size_t at = 0; at < kAsciiBlock; ++at) all |= static_cast<unsigned>(units[at]);
    return (all & ~0x7Fu) == 0;
}

template <typename From, typename To>
void CopyAsciiBlock(const From* from, To* to) {
    for (std::size_t at = 0; at < kAsciiBlock; ++at) to[at] = static_cast<To>(from[at]);
}

}  // namespace tessaly::platform
