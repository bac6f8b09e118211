#include "finish/FontTags.h"

#include <algorithm>
#include <optional>

#include "text/folding.h"
#include "text/search.h"
#include "text/split.h"

namespace tessaly {

namespace {

using Kind = FontTags::Kind;

constexpr std::u16string_view kSizes[] = {u"x-small", u"small",    u"medium",  u"large",
                                          u"x-large", u"xx-large", u"xx-large"};

std::u16string_view NameOf(Kind kind) {
    if (kind == Kind::kSize) return u"size";
    return kind == Kind::kFont ? u"font" : u"color";
}

bool IsLetter(char16_t unit) {
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
}

bool IsDigit(char16_t unit) {
    return unit >= u'0' && unit <= u'9';
}

bool IsHexDigit(char16_t unit) {
    return IsDigit(unit) || (unit >= u'a' && unit <= u'f') || (unit >= u'A' && unit <= u'F');
}

// The value as the forum takes it; empty when it takes none such.
std::u16string SizeOf(std::u16string_view value) {
    if (value.size() == 1 && value[0] >= u'1' && value[0] <= u'7')
        return std::u16string(kSizes[value[0] - u'1']);
    std::u16string name = InLowerCase(value);
    if (name == u"xx-small" || std::ranges::find(kSizes, name) != std::end(kSizes)) return name;
    const bool isNumber = !value.empty() && value != u"0" && std::ranges::all_of(value, IsDigit);
    return isNumber ? std::u16string(value) : std::u16string();
}

std::u16string ColorOf(std::u16string_view value) {
    if (!value.empty() && std::ranges::all_of(value, IsLetter)) return std::u16string(value);
    std::u16string_view digits = value;
    if (digits.starts_with(u'#')) digits.remove_prefix(1);
    const bool isColor =
        (digits.size() == 3 || digits.size() == 6) && std::ranges::all_of(digits, IsHexDigit);
    return isColor ? std::u16string(value) : std::u16string();
}

std::u16string FaceOf(std::u16string_view value) {
    const auto isKnown = [](char16_t unit) {
        return IsLetter(unit) || IsDigit(unit) || std::u16string_view(u" ,-_'").find(unit) < 5;
    };
    return std::ranges::all_of(value, isKnown) ? std::u16string(value) : std::u16string();
}

std::u16string ValueFor(Kind kind, std::u16string_view value) {
    if (kind == Kind::kFont) return FaceOf(value);
    value = value.substr(0, value.find(u' '));
    return kind == Kind::kSize ? SizeOf(value) : ColorOf(value);
}

// An attribute behind a blank: its name begins at the place given back.
struct Attribute {
    std::size_t at;
    std::u16string_view name;
};

std::optional<Attribute> NextAttribute(std::u16string_view inner, std::size_t from) {
    for (std::size_t equals = inner.find(u'=', from); equals != std::u16string_view::npos;
         equals = inner.find(u'=', equals + 1)) {
        std::size_t begin = equals;
        while (begin > from && IsLetter(inner[begin - 1])) --begin;
        if (begin < equals && begin > 0 && inner[begin - 1] == u' ')
            return Attribute{begin, inner.substr(begin, equals - begin)};
    }
    return {};
}

std::optional<Kind> KindOfAttribute(std::u16string_view name) {
    if (EqualIgnoringCase(name, u"size")) return Kind::kSize;
    if (EqualIgnoringCase(name, u"face")) return Kind::kFont;
    if (EqualIgnoringCase(name, u"color")) return Kind::kColor;
    return {};
}

}  // namespace

std::u16string FontTags::Open(Kind kind, std::u16string_view inner) {
    std::u16string opening;
    std::vector<Kind> names;
    std::optional<Kind> wanted = kind;
    std::size_t value = inner.find(u'=') + 1;
    while (true) {
        const auto next = NextAttribute(inner, value);
        const std::size_t end = next ? next->at : inner.size();
        const std::u16string taken =
            wanted ? ValueFor(*wanted, Trim(inner.substr(value, end - value))) : std::u16string();
        if (!taken.empty()) {
            opening += u"[" + std::u16string(NameOf(*wanted)) + u"=" + taken + u"]";
            names.push_back(*wanted);
        }
        if (!next) break;
        wanted = KindOfAttribute(next->name);
        value = next->at + next->name.size() + 1;
    }
    std::u16string closing;
    for (auto name = names.rbegin(); name != names.rend(); ++name)
        closing += u"[/" + std::u16string(NameOf(*name)) + u"]";
    opened_[static_cast<std::size_t>(kind)].push_back({++count_, std::move(closing)});
    return opening;
}

std::u16string FontTags::Close(Kind kind) {
    std::vector<Opened>* opened = &opened_[static_cast<std::size_t>(kind)];
    if (opened->empty()) opened = kind == Kind::kFont ? Innermost() : nullptr;
    if (opened == nullptr) return {};
    std::u16string closing = std::move(opened->back().closing);
    opened->pop_back();
    return closing;
}

std::u16string FontTags::CloseAll() {
    std::u16string closing;
    while (std::vector<Opened>* const opened = Innermost()) {
        closing += opened->back().closing;
        opened->pop_back();
    }
    return closing;
}

std::vector<FontTags::Opened>* FontTags::Innermost() {
    std::vector<Opened>* innermost = nullptr;
    for (std::vector<Opened>& opened : opened_) {
        if (opened.empty()) continue;
        if (innermost == nullptr || opened.back().number > innermost->back().number) innermost = &opened;
    }
    return innermost;
}

}  // namespace tessaly
