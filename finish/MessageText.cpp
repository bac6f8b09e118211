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
        // No address of the old board is longer.
        constexpr std::size_t kLongestAddress = 4096;
        const std::size_t end = rest_.substr(0, kLink.size() + kLongestAddress).find(u']');
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

constexpr std::u16string_view kPaired[] = {u"b", u"center", u"size", u"font", u"color", u"url"};
constexpr std::u16string_view kWhole[] = {u"url", u"img"};

bool IsTag(std::u16string_view text) {
    return text.size() > 2 && text.front() == u'[';
}

// What stands behind the bracket and the slash, up to a value.
std::u16string_view NameOfTag(std::u16string_view tag) {
    tag = tag.substr(1, tag.size() - 2);
    if (tag.starts_with(u'/')) tag.remove_prefix(1);
    return tag.substr(0, tag.find(u'='));
}

template <typename Names>
bool IsAmong(std::u16string_view name, const Names& names) {
    return std::ranges::any_of(names,
                               [name](std::u16string_view known) { return EqualIgnoringCase(name, known); });
}

std::u16string ClosingOf(std::u16string_view opening) {
    return u"[/" + std::u16string(NameOfTag(opening)) + u"]";
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
        const std::size_t cut = FindCut(most - kMostOfTags, kSearched);
        NoteTags(cut);
        std::u16string piece = opened + std::u16string(rest_.substr(0, cut));
        const std::u16string closings = ClosingsOf(open_);
        if (BytesInUtf8(closings) <= kMostOfTags) piece += closings;
        rest_.remove_prefix(cut);
        return piece;
    }

  private:
    struct Place {
        std::size_t at = 0;
        std::size_t bytes = 0;
    };

    // Behind the last blank or line end outside of a link or picture, or before the link or picture, when
    // that is near enough to the most.
    std::size_t FindCut(std::size_t most, std::size_t searched) const {
        constexpr std::size_t kLongestWhole = 3000;
        std::size_t at = 0;
        std::size_t bytes = 0;
        Place blank;
        Place whole;
        bool isWhole = false;
        while (at < rest_.size()) {
            const std::u16string_view next = rest_.substr(at, LengthAt(at));
            const std::size_t nextBytes = BytesInUtf8(next);
            if (bytes + nextBytes > most) break;
            if (IsTag(next) && IsAmong(NameOfTag(next), kWhole)) {
                isWhole = !next.starts_with(u"[/");
                whole = {at, bytes};
            }
            at += next.size();
            bytes += nextBytes;
            if (!isWhole && (next == u" " || next == u"\n")) blank = {at, bytes};
        }
        if (blank.bytes + searched >= most) return blank.at;
        return isWhole && whole.at > 0 && whole.bytes + kLongestWhole >= most ? whole.at : at;
    }

    // The tags that are open where the message is cut. So many are never opened again that more are not
    // noted.
    void NoteTags(std::size_t cut) {
        constexpr std::size_t kMostOpen = 200;
        for (std::size_t at = 0; at < cut; at += LengthAt(at)) {
            const std::u16string_view tag = rest_.substr(at, LengthAt(at));
            if (!IsTag(tag) || !IsAmong(NameOfTag(tag), kPaired)) continue;
            if (!tag.starts_with(u"[/")) {
                if (open_.size() < kMostOpen) open_.emplace_back(tag);
                continue;
            }
            const std::u16string_view name = NameOfTag(tag);
            const auto found = std::find_if(
                open_.rbegin(), open_.rend(),
                [name](const std::u16string& opened) { return EqualIgnoringCase(NameOfTag(opened), name); });
            if (found != open_.rend()) open_.erase(std::next(found).base());
        }
    }

    // A tag counts as one, and so does a pair of surrogates.
    std::size_t LengthAt(std::size_t at) const {
        constexpr std::size_t kLongestTag = 300;
        constexpr std::size_t kLongestLink = 1000;
        if (rest_[at] == u'[') {
            const std::size_t longest = BeginsWith(rest_.substr(at), kLink) ? kLongestLink : kLongestTag;
            const std::size_t end = rest_.substr(at, longest).find(u']');
            if (end != kNowhere && end > 1) return end + 1;
        }
        const bool isPair = (rest_[at] & 0xFC00) == 0xD800 && at + 1 < rest_.size();
        return isPair ? 2 : 1;
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
