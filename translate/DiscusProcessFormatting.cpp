#include "translate/DiscusProcessFormatting.h"

#include <algorithm>
#include <array>

#include "control/RoutineHandler.h"

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

// A pair that was never set cannot be taken apart: an unbalanced body ends the run.
void RewriteClosings(ConversionState& state, std::u16string& text, const std::vector<TagPair>& pairs) {
    for (const TagPair& pair : pairs) {
        if (pair.opening == 0) Raise(kSubscriptOutOfRange);
        const std::u16string_view closing = ClosingFor(text, pair.opening);
        text.replace(static_cast<std::size_t>(pair.closing) - 1, closing.size(), closing);
        state.ToolboxA.KeepResponsive();
    }
}

// Tells which of the tags that become BBCode a text holds at all. Most hold few, and each replacement looks
// through the whole text.
class HeldTags {
  public:
    explicit HeldTags(std::u16string_view text) {
        for (Position at = Find(text, u"<"); at != 0; at = Find(text, u"<", at + 1)) {
            if (FindFirstOf(Between(text, at, at + 2), u"fFbBcC/") == 0) continue;
            for (std::size_t tag = 0; tag < std::size(kTags); ++tag) {
                isHeld_[tag] = isHeld_[tag] || StandsAt(text, at, kTags[tag]);
            }
        }
    }

    bool Hold(std::u16string_view tag) const {
        return isHeld_[static_cast<std::size_t>(std::ranges::find(kTags, tag) - kTags)];
    }

    void Replace(std::u16string& text, std::u16string_view tag, std::u16string_view with) const {
        if (Hold(tag)) ReplaceAll(text, tag, with);
    }

  private:
    static constexpr std::u16string_view kTags[] = {kSize,       kFace,       kColor,       u"<b>",
                                                    u"</b>",     u"<center>", u"</center>", u"</font>",
                                                    u"</color>", u"</size>"};
    std::array<bool, std::size(kTags)> isHeld_{};
};

void CloseOpenings(ConversionState& state, const HeldTags& held, std::u16string& text) {
    for (const std::u16string_view opening : {kSize, kFace, kColor}) {
        if (held.Hold(opening)) CloseFontTagOpenings(state, text, opening);
    }
}

}  // namespace

// The order of the steps decides; those that have nothing to replace are left out.
std::u16string DiscusProcessFormatting(ConversionState& state, std::u16string_view body) try {
    std::u16string text(body);
    std::vector<TagPair> pairs;
    if (PairFontTags(state, text, u"<font ", u"</font>", pairs)) RewriteClosings(state, text, pairs);
    RemoveAll(text, u"\"");
    const bool holdsEqualsSign = Contains(text, u"=");
    if (holdsEqualsSign) {
        ReplaceAll(text, u"=-", u"=");
        ReplaceAll(text, u"=+", u"=");
    }
    const HeldTags held(text);
    CloseOpenings(state, held, text);
    held.Replace(text, u"<b>", u"[b]");
    if (holdsEqualsSign) ReplaceAll(text, u"size= ", u"size=");
    held.Replace(text, u"<center>", u"[center]");
    held.Replace(text, kFace, u"[font=");
    held.Replace(text, kSize, u"[size=");
    held.Replace(text, kColor, u"[color=");
    if (holdsEqualsSign) {
        ReplaceAll(text, u"color=ff0000]", u"color=red]");
        ReplaceAll(text, u"color=000000]", u"color=black]");
    }
    held.Replace(text, u"</b>", u"[/b]");
    held.Replace(text, u"</font>", u"[/font]");
    held.Replace(text, u"</color>", u"[/color]");
    held.Replace(text, u"</size>", u"[/size]");
    held.Replace(text, u"</center>", u"[/center]");
    ReplaceAll(text, u"[/colo]", u"[/color]");
    state.ToolboxA.KeepResponsive();
    return text;
} catch (...) {
    RoutineHandler(state, u" - DiscusProcessFormatting()", CurrentError());
    return {};
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
