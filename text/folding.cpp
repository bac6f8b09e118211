#include "text/folding.h"

namespace tessaly {

#include "text/folding_table.inc"

std::u16string Folded(std::u16string_view text) {
    std::u16string folded(text);
    for (char16_t& unit : folded) unit = Fold(unit);
    return folded;
}

std::u16string InLowerCase(std::u16string_view text) {
    std::u16string lower(text);
    for (char16_t& unit : lower) {
        unit = static_cast<char16_t>(unit + kLowerBlocks[kLowerIndex[unit >> 8]][unit & 0xFF]);
    }
    return lower;
}

}  // namespace tessaly
