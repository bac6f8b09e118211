#include "reader/FieldEscaping.h"

#include "text/search.h"

namespace tessaly {

namespace {

// Empty for a character that stays.
std::u16string_view TokenOf(char16_t unit) {
    switch (unit) {
        case u',':
            return u"([)";
        case u'\u201E':
            return u"(;)";
        case u'"':
            return u"(})";
        case u'\u201D':
            return u"(])";
        case u'\u201C':
            return u"(|)";
        case u'\'':
            return u"({)";
        case u'\n':
            return u"(:)";
        case u'`':
            return u"(<)";
        case u'\\':
            return u"(>)";
        default:
            return {};
    }
}

}  // namespace

// No token holds a replaced character, so one pass does what ten replacements in a row would.
std::u16string EscapeField(std::u16string_view text) {
    constexpr std::u16string_view kEscaped = u",\u201E\"\u201D\u201C'\n`\\";
    std::u16string escaped;
    escaped.reserve(text.size() + text.size() / 8);
    Position from = 1;
    for (Position at = FindFirstOf(text, kEscaped); at != 0; at = FindFirstOf(text, kEscaped, from)) {
        const char16_t unit = text[static_cast<std::size_t>(at) - 1];
        escaped += Between(text, from, at);
        const bool isWholeLineEnd = unit == u'\n' && at > from && escaped.back() == u'\r';
        if (isWholeLineEnd) escaped.pop_back();
        escaped += TokenOf(unit);
        from = at + 1;
    }
    escaped += From(text, from);
    return escaped;
}

// Every removed text holds one of a few characters, which most names are without.
std::u16string RemoveFieldTokens(std::u16string_view text) {
    static constexpr std::u16string_view kRemoved[] = {u"([)", u"(;)",  u"(})", u"(])", u"(|)",
                                                       u"({)", u"\r\n", u"\n",  u"(<)", u"?",
                                                       u"^",   u" .",   u"...", u"(>)"};
    std::u16string name(text);
    if (FindFirstOf(text, u"(\n?^.") == 0) return name;
    for (const std::u16string_view removed : kRemoved) RemoveAll(name, removed);
    return name;
}

}  // namespace tessaly
