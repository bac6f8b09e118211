#include "finish/Names.h"

#include "platform/collation.h"
#include "text/numbers.h"
#include "text/search.h"

namespace tessaly {

namespace {

bool IsLowHalf(char16_t unit) {
    return (unit & 0xFC00) == 0xDC00;
}

// Beyond what a comparison without case and accents takes for one, many databases take all characters beyond
// 16 bits for the same one, and an i without its dot for an i.
std::u16string WithMoreAlike(std::u16string_view name) {
    std::u16string alike;
    for (const char16_t unit : name) {
        if (!IsLowHalf(unit)) alike += (unit & 0xFC00) == 0xD800 ? u'\uFFFD' : unit;
    }
    ReplaceAllExactly(alike, u"\u0131", u"i");
    return alike;
}

}  // namespace

std::u16string CutTo(std::u16string_view text, std::size_t characters) {
    if (text.size() <= characters) return std::u16string(text);
    std::size_t at = 0;
    for (std::size_t taken = 0; at < text.size(); ++at) {
        if (at > 0 && IsLowHalf(text[at])) continue;
        if (taken == characters) break;
        ++taken;
    }
    std::u16string_view cut = text.substr(0, at);
    if (at < text.size()) cut = cut.substr(0, cut.find_last_not_of(u' ') + 1);
    return std::u16string(cut);
}

std::u16string UniqueNames::Take(std::u16string_view name, std::size_t characters, std::int32_t number) {
    std::u16string taken = CutTo(name, characters);
    for (int turn = 1; !IsFree(taken); ++turn) {
        std::u16string ending = u"_" + ToText(number);
        if (turn > 1) ending += u"_" + ToText(turn);
        taken = CutTo(name, characters - ending.size()) + ending;
    }
    return taken;
}

// Some databases take the sharp s for one s, others for two.
bool UniqueNames::IsFree(std::u16string_view name) {
    const std::u16string alike = WithMoreAlike(name);
    std::u16string oneS = alike;
    ReplaceAllExactly(oneS, u"\u00DF", u"s");
    const std::string key = platform::LooseKey(alike);
    const std::string otherKey = platform::LooseKey(oneS);
    if (keys_.contains(key) || keys_.contains(otherKey)) return false;
    keys_.insert(key);
    keys_.insert(otherKey);
    return true;
}

}  // namespace tessaly
