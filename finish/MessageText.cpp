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

// One message while its font tags are gone through.
class FontTranslation {
  public:
    explicit FontTranslation(std::u16string_view message) : rest_(message) {
        done_.reserve(message.size() + message.size() / 8);
    }

    std::u16string Whole() && {
        for (Position at = FindExactly(rest_, u"["); at != 0; at = FindExactly(rest_, u"[")) {
            Keep(static_cast<std::size_t>(at) - 1);
            if (!TakeFontTag()) Keep(1);
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

    std::u16string_view rest_;
    std::u16string done_;
    FontTags fonts_;
};

// The address behind the beginning of a link, none where it has no end.
std::optional<std::u16string_view> AddressAt(std::u16string_view text) {
    // No address of the old board is longer.
    constexpr std::size_t kLongestAddress = 4096;
    const std::size_t end = text.substr(0, kLongestAddress).find(u']');
    if (end == kNowhere) return {};
    return text.substr(0, end);
}

std::size_t BytesOfUnit(char16_t unit) {
    if (unit < 0x80) return 1;
    if (unit < 0x800) return 2;
    // Each half of a pair counts two of the pair's four bytes.
    return (unit & 0xF800) == 0xD800 ? 2 : 3;
}

constexpr std::u16string_view kUrl = u"url";
constexpr std::u16string_view kPaired[] = {u"b", u"center", u"size", u"font", u"color", kUrl};

// What is broken when it is cut: a link's opening, a picture, a link whose text is its address.
struct Whole {
    std::u16string_view opening;
    std::u16string_view closing;
};

constexpr Whole kWholes[] = {{kLink, u"]"}, {u"[img", u"[/img]"}, {u"[url]", u"[/url]"}};

// How long it is; 0 where it has no end, or another one or a link begins before.
std::size_t LengthOf(const Whole& whole, std::u16string_view text) {
    for (std::size_t at = text.find_first_of(u"[]", 1); at != kNowhere;
         at = text.find_first_of(u"[]", at + 1)) {
        const std::u16string_view behind = text.substr(at);
        if (BeginsWith(behind, whole.closing)) return at + whole.closing.size();
        if (BeginsWith(behind, whole.opening) || BeginsWith(behind, kLink)) return 0;
    }
    return 0;
}

std::size_t LengthOfTag(std::u16string_view text) {
    constexpr std::size_t kLongestTag = 300;
    const std::size_t end = text.substr(0, kLongestTag).find(u']');
    return end == kNowhere || end == 1 ? 0 : end + 1;
}

// What stands behind the bracket and the slash, up to a value.
std::u16string_view NameOfTag(std::u16string_view tag) {
    tag = tag.substr(1, tag.size() - 2);
    if (tag.starts_with(u'/')) tag.remove_prefix(1);
    return tag.substr(0, tag.find(u'='));
}

bool IsPaired(std::u16string_view name) {
    return std::ranges::any_of(kPaired,
                               [name](std::u16string_view known) { return EqualIgnoringCase(name, known); });
}

bool IsOpening(std::u16string_view tag) {
    return !tag.starts_with(u"[/");
}

// Goes through a message and cuts it. A piece's walk begins at what the one before has left.
class Cutter {
  public:
    Cutter(std::u16string_view message, const PieceSizes& sizes)
        : rest_(message), most_(sizes.most), shortestLink_(kLink.size() + sizes.shortestAddress + 1) {}

    bool IsAtEnd() const { return rest_.empty(); }
    bool IsTorn() const { return isTorn_; }

    std::u16string Next(std::size_t room) {
        if (BytesOfOpenings() > most_ / 2) DropOpenings();
        std::u16string piece;
        for (const std::u16string& tag : open_) piece += tag;
        const std::size_t most = most_ - std::min(room, most_ / 2) - BytesOfOpenings();
        if (RestFits(most)) {
            piece += rest_;
            rest_ = {};
            return piece;
        }
        const std::size_t cut = FindCut(most - kClosingBytes);
        NoteTags(cut, most - kClosingBytes);
        piece += rest_.substr(0, cut);
        for (auto tag = open_.rbegin(); tag != open_.rend(); ++tag)
            piece += u"[/" + std::u16string(NameOfTag(*tag)) + u"]";
        rest_.remove_prefix(cut);
        return piece;
    }

  private:
    static constexpr std::size_t kMostOpen = 200;
    static constexpr std::size_t kClosingBytes = kMostOpen * std::u16string_view(u"[/center]").size();

    // What stays together: a tag, a picture, a pair of surrogates or a unit.
    struct Element {
        std::u16string_view text;
        bool isTag = false;
        bool isTornOff = false;  // the first unit of what no piece can hold
    };

    struct Place {
        std::size_t at = 0;
        std::size_t bytes = 0;
    };

    Element ElementAt(std::size_t at) const {
        const std::u16string_view text = rest_.substr(at);
        if (text.front() != u'[') return UnitAt(at);
        for (const Whole& whole : kWholes) {
            if (!BeginsWith(text, whole.opening)) continue;
            const std::size_t length = LengthOf(whole, text);
            return length == 0 ? UnitAt(at) : Element{text.substr(0, length), whole.opening == kLink};
        }
        const std::size_t length = LengthOfTag(text);
        return length == 0 ? UnitAt(at) : Element{text.substr(0, length), true};
    }

    Element UnitAt(std::size_t at) const {
        const bool isPair = (rest_[at] & 0xFC00) == 0xD800 && at + 1 < rest_.size();
        return {rest_.substr(at, isPair ? 2 : 1)};
    }

    Element ElementOfPiece(std::size_t at, std::size_t most) const {
        const Element element = ElementAt(at);
        const std::size_t bytes = BytesOf(element.text);
        const bool isTooLong = bytes > most && (at == 0 || bytes > most_ - kClosingBytes);
        return isTooLong ? Element{.text = UnitAt(at).text, .isTornOff = true} : element;
    }

    std::size_t BytesOf(std::u16string_view element) const {
        const std::size_t bytes = BytesInUtf8(element);
        return BeginsWith(element, kLink) ? std::max(bytes, shortestLink_) : bytes;
    }

    std::size_t BytesOfOpenings() const {
        std::size_t bytes = 0;
        for (const std::u16string& tag : open_) bytes += BytesOf(tag);
        return bytes;
    }

    void DropOpenings() {
        open_.clear();
        isTorn_ = true;
    }

    bool RestFits(std::size_t most) const {
        std::size_t bytes = 0;
        for (std::size_t at = 0; at < rest_.size() && bytes <= most;) {
            const std::u16string_view next = ElementAt(at).text;
            at += next.size();
            bytes += BytesOf(next);
        }
        return bytes <= most;
    }

    // Behind the last blank or line end outside of a link, or before the link, when that is near enough to
    // the place up to which all fits.
    std::size_t FindCut(std::size_t most) {
        constexpr std::size_t kSearched = 1000;
        constexpr std::size_t kLongestLinkText = 3000;
        std::size_t at = 0;
        std::size_t bytes = 0;
        std::size_t torn = kNowhere;
        Place blank;
        Place link;
        bool isInLink = false;
        while (at < rest_.size()) {
            const Element next = ElementOfPiece(at, most);
            const std::size_t nextBytes = BytesOf(next.text);
            if (bytes + nextBytes > most) break;
            if (next.isTornOff) torn = std::min(torn, at);
            const std::size_t before = at;
            at += next.text.size();
            bytes += nextBytes;
            if (next.isTag && EqualIgnoringCase(NameOfTag(next.text), kUrl)) {
                isInLink = IsOpening(next.text);
                link = {before, bytes};
            }
            if (!isInLink && (next.text == u" " || next.text == u"\n")) blank = {at, bytes};
        }
        if (blank.at > 0 && blank.bytes + kSearched >= bytes) {
            at = blank.at;
        } else if (isInLink && link.at > 0 && link.bytes + kLongestLinkText >= bytes) {
            at = link.at;
        }
        if (torn < at) isTorn_ = true;
        return at;
    }

    // The tags that are open where the message is cut.
    void NoteTags(std::size_t cut, std::size_t most) {
        for (std::size_t at = 0; at < cut;) {
            const Element element = ElementOfPiece(at, most);
            at += element.text.size();
            if (element.isTag && IsPaired(NameOfTag(element.text))) NoteTag(element.text);
        }
    }

    void NoteTag(std::u16string_view tag) {
        if (IsOpening(tag)) {
            if (open_.size() < kMostOpen) {
                open_.emplace_back(tag);
            } else {
                isTorn_ = true;
            }
            return;
        }
        const std::u16string_view name = NameOfTag(tag);
        const auto found = std::find_if(open_.rbegin(), open_.rend(), [name](const std::u16string& opened) {
            return EqualIgnoringCase(NameOfTag(opened), name);
        });
        if (found != open_.rend()) open_.erase(std::next(found).base());
    }

    std::u16string_view rest_;
    std::size_t most_;
    std::size_t shortestLink_;
    std::vector<std::u16string> open_;
    bool isTorn_ = false;
};

}  // namespace

std::u16string FinishMarkup(std::u16string_view message) {
    const std::u16string plain = TurnBackTokens(message);
    return FontTranslation(plain).Whole();
}

std::u16string LeadLinks(std::u16string text, const NewAddress& newAddress) {
    // Most messages have none.
    if (!Contains(text, kLink)) return text;
    std::u16string led;
    led.reserve(text.size() + text.size() / 8);
    std::u16string_view rest = text;
    for (Position at = Find(rest, kLink); at != 0; at = Find(rest, kLink)) {
        const std::size_t begin = static_cast<std::size_t>(at) - 1 + kLink.size();
        led += rest.substr(0, begin);
        rest.remove_prefix(begin);
        const auto old = AddressAt(rest);
        const auto address = old ? newAddress(*old) : std::nullopt;
        if (!address) continue;
        led += *address;
        rest.remove_prefix(old->size());
    }
    led += rest;
    return led;
}

std::size_t BytesInUtf8(std::u16string_view text) {
    std::size_t bytes = 0;
    for (const char16_t unit : text) bytes += BytesOfUnit(unit);
    return bytes;
}

MessagePieces SplitMessage(std::u16string_view message, const PieceSizes& sizes) {
    MessagePieces pieces;
    Cutter cutter(message, sizes);
    do {
        pieces.texts.push_back(cutter.Next(pieces.texts.empty() ? sizes.roomInFirst : 0));
    } while (!cutter.IsAtEnd());
    pieces.isTorn = cutter.IsTorn();
    return pieces;
}

}  // namespace tessaly
