#include "finish/FieldTokens.h"

#include <algorithm>

#include "text/search.h"
#include "text/split.h"

namespace tessaly {

namespace {

constexpr char16_t kNone = 0;

// What a token of three characters stands for, told by the one in the middle.
char16_t CharacterOf(char16_t middle) {
    switch (middle) {
        case u'[':
            return u',';
        case u';':
            return u'\u201E';
        case u'}':
            return u'"';
        case u']':
            return u'\u201D';
        case u'|':
            return u'\u201C';
        case u'{':
            return u'\'';
        case u':':
            return u'\n';
        case u'<':
            return u'`';
        case u'>':
            return u'\\';
        default:
            return kNone;
    }
}

char16_t TokenAt(std::u16string_view text, std::size_t at) {
    if (text.size() - at < 3 || text[at + 2] != u')') return kNone;
    return CharacterOf(text[at + 1]);
}

}  // namespace

std::u16string TurnBackTokens(std::u16string_view text) {
    std::u16string plain;
    plain.reserve(text.size());
    Position from = 1;
    for (Position at = FindExactly(text, u"("); at != 0; at = FindExactly(text, u"(", at + 1)) {
        if (at < from) continue;
        const char16_t character = TokenAt(text, static_cast<std::size_t>(at) - 1);
        if (character == kNone) continue;
        plain += Between(text, from, at);
        plain += character;
        from = at + 3;
    }
    plain += From(text, from);
    return plain;
}

std::u16string TurnBackName(std::u16string_view text) {
    std::u16string name = TurnBackTokens(text);
    std::ranges::replace(name, u'\n', u' ');
    std::ranges::replace(name, u'\r', u' ');
    return std::u16string(Trim(name));
}

}  // namespace tessaly
