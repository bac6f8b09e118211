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
    std::u16string escaped;
    escaped.reserve(text.size() + text.size() / 4);
    std::size_t from = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const std::u16string_view token = TokenOf(text[at]);
        if (token.empty()) continue;
        escaped.append(text.substr(from, at - from));
        const bool isLineEnd = text[at] == u'\n' && at > from && text[at - 1] == u'\r';
        if (isLineEnd) escaped.pop_back();
        escaped.append(token);
        from = at + 1;
    }
    return escaped.append(text.substr(from));
}

std::u16string RemoveFieldTokens(std::u16string_view text) {
    static constexpr std::u16string_view kRemoved[] = {u"([)", u"(;)",  u"(})", u"(])", u"(|)",
                                                       u"({)", u"\r\n", u"\n",  u"(<)", u"?",
                                                       u"^",   u" .",   u"...", u"(>)"};
    std::u16string name(text);
    for (const std::u16string_view removed : kRemoved) RemoveAll(name, removed);
    return name;
}

}  // namespace tessaly
