#include "finish/MessageText.h"

#include <algorithm>

#include "finish/FieldTokens.h"
#include "finish/FontTags.h"
#include "text/search.h"

namespace tessaly {

namespace {

using Kind = FontTags::Kind;

constexpr std::size_t kNowhere = std::u16string_view::npos;

struct FontTag {
    std::u16string_view opening;
    std::u16string_view closing;
    Kind kind;
};

constexpr FontTag kFontTags[] = {
    {u"[size=", u"[/size]", Kind::kSize},
    {u"[font=", u"[/font]", Kind::kFont},
    {u"[color=", u"[/color]", Kind::kColor},
};

constexpr std::u16string_view kLink = u"[url=";

bool BeginsWith(std::u16string_view text, std::u16string_view what) {
    return EqualIgnoringCase(text.substr(0, what.size()), what);
}

// One message while its tags are gone through.
class Translation {
  public:
    Translation(std::u16string_view message, const NewAddress& newAddress)
        : rest_(message), newAddress_(newAddress) {
        done_.reserve(message.size() + message.size() / 8);
    }

    std::u16string Whole() && {
        for (std::size_t at = rest_.find(u'['); at != kNowhere; at = rest_.find(u'[')) {
            done_ += rest_.substr(0, at);
            rest_.remove_prefix(at);
            if (!TakeFontTag() && !TakeLink()) Keep(1);
        }
        done_ += rest_;
        done_ += fonts_.CloseAll();
        return std::move(done_);
    }

  private:
    void Keep(std::size_t length) {
        done_ += rest_.substr(0, length);
        rest_.remove_prefix(length);
    }

    bool TakeFontTag() {
        for (const FontTag& tag : kFontTags) {
            if (BeginsWith(rest_, tag.closing)) {
                done_ += fonts_.Close(tag.kind);
                rest_.remove_prefix(tag.closing.size());
                return true;
            }
            if (!BeginsWith(rest_, tag.opening)) continue;
            const std::size_t end = rest_.find_first_of(u"[]\n", 1);
            if (end == kNowhere || rest_[end] != u']') return false;
            done_ += fonts_.Open(tag.kind, rest_.substr(1, end - 1));
            rest_.remove_prefix(end + 1);
            return true;
        }
        return false;
    }

    bool TakeLink() {
        if (!BeginsWith(rest_, kLink)) return false;
        const std::size_t end = rest_.find(u']');
        if (end == kNowhere) return false;
        const auto address = newAddress_(rest_.substr(kLink.size(), end - kLink.size()));
        if (!address) return false;
        done_ += kLink;
        done_ += *address;
        rest_.remove_prefix(end);
        return true;
    }

    std::u16string_view rest_;
    std::u16string done_;
    FontTags fonts_;
    const NewAddress& newAddress_;
};

std::size_t BytesOfUnit(char16_t unit) {
    if (unit < 0x80) return 1;
    if (unit < 0x800) return 2;
    // Each half of a pair counts two of the pair's four bytes.
    return (unit & 0xF800) == 0xD800 ? 2 : 3;
}

constexpr std::u16string_view kPaired[] = {u"b", u"center", u"size", u"font", u"color"};
constexpr std::u16string_view kWhole[] = {u"url", u"img"};

// What stands between a bracket and the tag's value or end, without the slash.
std::u16string_view TagName(std::u16string_view inner) {
    if (inner.starts_with(u'/')) inner.remove_prefix(1);
    return inner.substr(0, inner.find(u'='));
}

template <typename Names>
bool IsAmong(std::u16string_view name, const Names& names) {
    return std::ranges::any_of(names,
                               [name](std::u16string_view known) { return EqualIgnoringCase(name, known); });
}

std::u16string ClosingOf(std::u16string_view opening) {
    return u"[/" + std::u16string(TagName(opening.substr(1, opening.size() - 2))) + u"]";
}

// The tags that are open at a place of a message.
using OpenTags = std::vector<std::u16string>;

std::u16string OpeningsOf(const OpenTags& open) {
    std::u16string text;
    for (const std::u16string& tag : open) text += tag;
    return text;
}

std::u16string ClosingsOf(const OpenTags& open) {
    std::u16string text;
    for (auto tag = open.rbegin(); tag != open.rend(); ++tag) text += ClosingOf(*tag);
    return text;
}

// Goes through a message and remembers the last place at which it may be cut.
class Cutter {
  public:
    Cutter(std::u16string_view message, std::size_t mostBytes) : rest_(message), mostBytes_(mostBytes) {}

    bool IsAtEnd() const { return rest_.empty(); }

    std::u16string Next(std::size_t room) {
        constexpr std::size_t kMostOfTags = 400;
        constexpr std::size_t kSearched = 1000;
        std::u16string opened = OpeningsOf(open_);
        if (BytesInUtf8(opened) > kMostOfTags) {
            opened.clear();
            open_.clear();
        }
        const std::size_t most = mostBytes_ - std::min(room, mostBytes_ / 2) - BytesInUtf8(opened);
        if (BytesInUtf8(rest_) <= most) {
            opened += rest_;
            rest_ = {};
            return opened;
        }
        const Place cut = FindCut(most - kMostOfTags, kSearched);
        std::u16string piece = opened + std::u16string(rest_.substr(0, cut.at));
        const std::u16string closings = ClosingsOf(cut.open);
        if (BytesInUtf8(closings) <= kMostOfTags) piece += closings;
        rest_.remove_prefix(cut.at);
        open_ = cut.open;
        return piece;
    }

  private:
    struct Place {
        std::size_t at = 0;
        std::size_t bytes = 0;
        OpenTags open;
    };

    Place FindCut(std::size_t most, std::size_t searched) const {
        Place here;
        here.open = open_;
        Place best;
        bool isWhole = false;
        while (here.at < rest_.size()) {
            const std::size_t length = LengthAt(here.at);
            const std::u16string_view next = rest_.substr(here.at, length);
            const std::size_t bytes = BytesInUtf8(next);
            if (here.bytes + bytes > most) break;
            here.at += length;
            here.bytes += bytes;
            if (length > 2) NoteTag(next, here.open, isWhole);
            if (!isWhole && (next == u" " || next == u"\n")) best = here;
        }
        return best.bytes + searched >= here.bytes ? best : here;
    }

    // A tag counts as one, and so does a pair of surrogates.
    std::size_t LengthAt(std::size_t at) const {
        constexpr std::size_t kLongestTag = 300;
        if (rest_[at] == u'[') {
            const std::size_t end = rest_.substr(at, kLongestTag).find(u']');
            if (end != kNowhere && end > 1) return end + 1;
        }
        const bool isPair = (rest_[at] & 0xFC00) == 0xD800 && at + 1 < rest_.size();
        return isPair ? 2 : 1;
    }

    static void NoteTag(std::u16string_view tag, OpenTags& open, bool& isWhole) {
        const std::u16string_view inner = tag.substr(1, tag.size() - 2);
        const std::u16string_view name = TagName(inner);
        const bool isClosing = inner.starts_with(u'/');
        if (IsAmong(name, kWhole)) isWhole = !isClosing;
        if (!IsAmong(name, kPaired)) return;
        if (!isClosing) {
            open.emplace_back(tag);
            return;
        }
        const auto found = std::find_if(open.rbegin(), open.rend(), [name](const std::u16string& opened) {
            return BeginsWith(std::u16string_view(opened).substr(1), name);
        });
        if (found != open.rend()) open.erase(std::next(found).base());
    }

    std::u16string_view rest_;
    std::size_t mostBytes_;
    OpenTags open_;
};

}  // namespace

std::u16string FinishMessage(std::u16string_view message, const NewAddress& newAddress) {
    const std::u16string plain = TurnBackTokens(message);
    return Translation(plain, newAddress).Whole();
}

std::size_t BytesInUtf8(std::u16string_view text) {
    std::size_t bytes = 0;
    for (const char16_t unit : text) bytes += BytesOfUnit(unit);
    return bytes;
}

std::vector<std::u16string> SplitMessage(std::u16string_view message, std::size_t mostBytes,
                                         std::size_t roomInFirst) {
    std::vector<std::u16string> pieces;
    Cutter cutter(message, mostBytes);
    do {
        pieces.push_back(cutter.Next(pieces.empty() ? roomInFirst : 0));
    } while (!cutter.IsAtEnd());
    return pieces;
}

}  // namespace tessaly
