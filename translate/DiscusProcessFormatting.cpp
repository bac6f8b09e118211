#include "translate/DiscusProcessFormatting.h"

#include <algorithm>

#include "control/RoutineHandler.h"
#include "control/checking.h"
#include "text/folding.h"

namespace tessaly {

namespace {

constexpr std::u16string_view kSize = u"<font size=";
constexpr std::u16string_view kFace = u"<font face=";
constexpr std::u16string_view kColor = u"<font color=";

std::vector<Position> FindAll(ConversionState& state, std::u16string_view text, std::u16string_view tag) {
    std::vector<Position> positions;
    for (Position at = Find(text, tag); at != 0; at = Find(text, tag, at + 1)) {
        positions.push_back(at);
        state.ToolboxA.KeepResponsive();
    }
    return positions;
}

// Seven characters each, as long as "</font>", so that all positions stay valid; "[/colo]" gets its last
// letter behind all other replacements. Empty for an opening of another form.
std::u16string_view ClosingFor(std::u16string_view text, Position opening) {
    if (StandsAt(text, opening, kSize)) return u"[/size]";
    if (StandsAt(text, opening, kFace)) return u"[/font]";
    if (StandsAt(text, opening, kColor)) return u"[/colo]";
    return {};
}

// A pair that was never set cannot be taken apart: an unbalanced body ends the run, and stays as it was.
void RewriteClosings(ConversionState& state, std::u16string& text, const std::vector<TagPair>& pairs) {
    if (std::ranges::count(pairs, 0, &TagPair::opening) > 0) Raise(kSubscriptOutOfRange);
    for (const TagPair& pair : pairs) {
        const std::u16string_view closing = ClosingFor(text, pair.opening);
        text.replace(static_cast<std::size_t>(pair.closing) - 1, closing.size(), closing);
        state.ToolboxA.KeepResponsive();
    }
}

struct Tag {
    std::u16string_view html;
    std::u16string_view bbcode;
};

constexpr Tag kTags[] = {
    {u"<b>", u"[b]"},         {u"<center>", u"[center]"},
    {kFace, u"[font="},       {kSize, u"[size="},
    {kColor, u"[color="},     {u"</b>", u"[/b]"},
    {u"</font>", u"[/font]"}, {u"</color>", u"[/color]"},
    {u"</size>", u"[/size]"}, {u"</center>", u"[/center]"},
};

// The tag that stands at a "<"; none for another one. Its second character tells nearly all others.
const Tag* TagAt(std::u16string_view text, Position at) {
    const std::u16string_view inner = From(text, at + 1);
    if (inner.empty()) return nullptr;
    for (const Tag& tag : kTags) {
        if (Fold(tag.html[1]) == Fold(inner.front()) && StandsAt(text, at, tag.html)) return &tag;
    }
    return nullptr;
}

// Each tag begins with the only "<" it has and none becomes one, so that one pass does what replacing them
// one after the other would.
void ReplaceTags(std::u16string& text) {
    std::u16string replaced;
    Position from = 1;
    for (Position at = Find(text, u"<"); at != 0; at = Find(text, u"<", at + 1)) {
        const Tag* const tag = TagAt(text, at);
        if (tag == nullptr) continue;
        replaced += Between(text, from, at);
        replaced += tag->bbcode;
        from = at + Length(tag->html);
    }
    if (from == 1) return;
    replaced += From(text, from);
    text = std::move(replaced);
}

void CloseOpenings(ConversionState& state, std::u16string& text) {
    if (!Contains(text, u"<font ")) return;
    for (const std::u16string_view opening : {kSize, kFace, kColor}) {
        CloseFontTagOpenings(state, text, opening);
    }
}

}  // namespace

// The order of the steps decides; those that have nothing to replace are left out.
std::u16string DiscusProcessFormatting(ConversionState& state, std::u16string text) try {
    std::vector<TagPair> pairs;
    if (PairFontTags(state, text, u"<font ", u"</font>", pairs)) RewriteClosings(state, text, pairs);
    RemoveAll(text, u"\"");
    const bool holdsEqualsSign = Contains(text, u"=");
    if (holdsEqualsSign) {
        ReplaceAll(text, u"=-", u"=");
        ReplaceAll(text, u"=+", u"=");
        CloseOpenings(state, text);
        ReplaceAll(text, u"size= ", u"size=");
    }
    ReplaceTags(text);
    if (holdsEqualsSign) {
        ReplaceAll(text, u"color=ff0000]", u"color=red]");
        ReplaceAll(text, u"color=000000]", u"color=black]");
    }
    ReplaceAll(text, u"[/colo]", u"[/color]");
    state.ToolboxA.KeepResponsive();
    return text;
} catch (...) {
    RoutineHandler(state, u" - DiscusProcessFormatting()", CurrentError());
    // A check goes on with the text as it was.
    if (!IsCheck(state)) text.clear();
    return text;
}

bool PairFontTags(ConversionState& state, std::u16string_view text, std::u16string_view openingTag,
                  std::u16string_view closingTag, std::vector<TagPair>& pairs) {
    const std::vector<Position> openings = FindAll(state, text, openingTag);
    if (openings.empty()) return false;
    const std::vector<Position> closings = FindAll(state, text, closingTag);
    if (closings.empty()) return false;
    std::vector<TagPair> made(openings.size());
    std::vector<Position> stillOpen;
    auto nextOpening = openings.begin();
    for (std::size_t index = 0; index < closings.size(); ++index) {
        while (nextOpening != openings.end() && *nextOpening < closings[index])
            stillOpen.push_back(*nextOpening++);
        state.ToolboxA.KeepResponsive();
        if (stillOpen.empty()) continue;
        if (index >= made.size()) return false;
        made[index] = {stillOpen.back(), closings[index]};
        stillOpen.pop_back();
    }
    pairs = std::move(made);
    return true;
}

void CloseFontTagOpenings(ConversionState& state, std::u16string& text, std::u16string_view opening) {
    Position position = 1;
    while (true) {
        const Position found = Find(text, opening, position);
        if (found == 0) return;
        position = Find(text, u">", found);
        if (position == 0) return;
        text[static_cast<std::size_t>(position) - 1] = u']';
        state.ToolboxA.KeepResponsive();
    }
}

}  // namespace tessaly
