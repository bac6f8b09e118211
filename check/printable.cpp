#include "check/printable.h"

namespace tessaly {

namespace {

struct Range {
    char16_t first;
    char16_t last;
};

// Control characters, marks without a width, marks that change the direction of writing, and noncharacters.
constexpr Range kUnseen[] = {
    {0x0000, 0x001F}, {0x007F, 0x009F}, {0x00AD, 0x00AD}, {0x061C, 0x061C},
    {0x180E, 0x180E}, {0x200B, 0x200F}, {0x2028, 0x202E}, {0x2060, 0x206F},
    {0xFDD0, 0xFDEF}, {0xFEFF, 0xFEFF}, {0xFFF0, 0xFFFB}, {0xFFFE, 0xFFFF},
};

bool IsUnseen(char16_t unit) {
    for (const Range& range : kUnseen) {
        if (unit >= range.first && unit <= range.last) return true;
    }
    return false;
}

bool IsBlank(char16_t unit) {
    return unit == u' ' || unit == u'\t' || unit == u'\r' || unit == u'\n';
}

bool IsHigh(char16_t unit) {
    return (unit & 0xFC00) == 0xD800;
}

bool IsLow(char16_t unit) {
    return (unit & 0xFC00) == 0xDC00;
}

// Of the characters that two units make, those of the planes 14 to 16 are tags and of private use.
bool IsSeenPair(char16_t high, char16_t low) {
    return IsHigh(high) && IsLow(low) && high < 0xDB40;
}

}  // namespace

std::u16string Printable(std::u16string_view text) {
    std::u16string line;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char16_t unit = text[at];
        if (IsBlank(unit)) {
            if (!line.empty() && line.back() != u' ') line += u' ';
        } else if (IsHigh(unit) && at + 1 < text.size() && IsLow(text[at + 1])) {
            ++at;
            if (IsSeenPair(unit, text[at])) {
                line += unit;
                line += text[at];
            } else {
                line += u'?';
            }
        } else {
            line += IsUnseen(unit) || IsHigh(unit) || IsLow(unit) ? u'?' : unit;
        }
    }
    if (!line.empty() && line.back() == u' ') line.pop_back();
    return line;
}

}  // namespace tessaly
