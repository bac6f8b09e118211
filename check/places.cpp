#include <algorithm>
#include <functional>

#include "check/BoardCheck.h"
#include "check/printable.h"
#include "members/clsMember.h"
#include "reader/TagScanning.h"

namespace tessaly {

namespace {

constexpr std::u16string_view kPost = u"<!--Post: ";
// As much of a text's beginning as has to do where the source spells the rest otherwise.
constexpr std::size_t kEnough = 12;

// The source around a place, as much as goes on a line.
std::u16string WordsAround(std::u16string_view text, Position at) {
    constexpr std::size_t kBefore = 30;
    constexpr std::size_t kAll = 110;
    const auto place = static_cast<std::size_t>(at) - 1;
    const std::size_t from = place > kBefore ? place - kBefore : 0;
    return Printable(text.substr(from, kAll));
}

std::int32_t LineOf(std::u16string_view text, Position at) {
    return static_cast<std::int32_t>(std::ranges::count(Between(text, 1, at), u'\n')) + 1;
}

// The number of the post in which a place of a page stands.
std::u16string PostAround(std::u16string_view page, Position at) {
    const Position open = FindBackward(page, kPost, std::min(at + Length(kPost) - 1, Length(page)));
    if (open == 0) return {};
    const std::u16string number(LeadingDigits(From(page, open + Length(kPost))));
    const Position close = Find(page, u"<!--/Post: " + number, open);
    return close == 0 || close > at ? number : std::u16string();
}

// The words are those of a translated text, which the source may spell otherwise.
Position PlaceOf(std::u16string_view text, Position from, std::u16string_view words) {
    if (words.empty()) return from;
    const std::less<> isBefore;
    if (!isBefore(words.data(), text.data()) && isBefore(words.data(), text.data() + text.size())) {
        return static_cast<Position>(words.data() - text.data()) + 1;
    }
    Position at = Find(text, words, from);
    if (at == 0) at = Find(text, words.substr(0, kEnough), from);
    return at == 0 ? from : at;
}

}  // namespace

BoardCheck::Source BoardCheck::InHand() {
    const bool isMember = listener_.MemberLine.line > 0 || listener_.Member != nullptr;
    if (isMember) return MemberInHand();
    const bool isPage = state_.Depth > 0 && static_cast<std::size_t>(state_.Depth) < state_.DataIndex.size();
    if (isPage) return PageInHand();
    return {boardPath_, boardText_, listener_.BoardPlace};
}

BoardCheck::Source BoardCheck::MemberInHand() {
    SourcePlace place = listener_.MemberLine;
    if (listener_.Member != nullptr) {
        const auto line = listener_.LinesOfMembers.find(listener_.Member->ID);
        // A poster who was no member has no line.
        if (line == listener_.LinesOfMembers.end()) return {};
        place = line->second;
    }
    const std::u16string& file =
        ToolboxLibrary::FileExists(state_.UserFile) ? state_.UserFile : state_.UsersFile;
    return {file, {}, place.position, place.line};
}

BoardCheck::Source BoardCheck::PageInHand() {
    const DataIndexElement& page = CurrentIndex(state_);
    Source source{page.PagePath, page.PageData};
    const std::u16string_view section = listener_.Section;
    if (section.empty()) return source;
    if (section.data() == page.AnnouncementSection.data()) {
        source.from = page.AnnouncementNext - Length(section);
    } else if (section.data() == page.TopSection.data()) {
        source.from = page.TopNext - Length(section);
    } else {
        source.from = PlaceOf(page.PageData, 1, section);
    }
    return source;
}

// The entry that leads to the page in hand, on the page above it or in the board file.
BoardCheck::Source BoardCheck::Above() {
    if (state_.Depth == 1) return {boardPath_, boardText_, listener_.BoardPlace};
    const DataIndexElement& above = state_.DataIndex[static_cast<std::size_t>(state_.Depth) - 1];
    return {above.PagePath, above.PageData, above.TopNext - Length(above.TopSection)};
}

Finding BoardCheck::FindingAt(const Source& source, std::u16string_view words) {
    Finding finding;
    finding.page = source.path;
    finding.line = source.line;
    // Of a member's line nothing but his name: his password stands behind it.
    if (listener_.Member != nullptr) finding.words = Printable(listener_.Member->username);
    if (listener_.MemberFields != nullptr) finding.words = Printable(listener_.MemberFields->front());
    finding.position = source.from;
    const bool isWholeFile = words.empty() && source.from == 0;
    if (source.text.empty() || isWholeFile) return finding;
    finding.position = PositionIn(source, words);
    finding.line = LineOf(source.text, finding.position);
    finding.words = WordsAround(source.text, finding.position);
    finding.post = PostAround(source.text, finding.position);
    return finding;
}

Position BoardCheck::PositionIn(const Source& source, std::u16string_view words) const {
    const Position from = std::max<Position>(source.from, 1);
    return part_ > 0 ? from + part_ - 1 : PlaceOf(source.text, from, words);
}

// The words are those of a text in which other things were replaced before.
void BoardCheck::TakePart(std::u16string_view words) {
    const std::u16string_view section = listener_.Section;
    if (words.empty() || section.empty()) {
        part_ = 0;
        nextPart_ = 0;
        partsMissed_ = 0;
        return;
    }
    if (nextPart_ == 0) nextPart_ = static_cast<Position>(BodyOf(section).data() - section.data()) + 1;
    const Position at = FindPart(section, words);
    if (at == 0) return;
    part_ = at;
    nextPart_ = at + 1;
}

// A text in which many are spelled otherwise is not gone through to its end for each.
Position BoardCheck::FindPart(std::u16string_view section, std::u16string_view words) {
    constexpr int kMostMissed = 20;
    constexpr std::size_t kNear = 4096;
    if (partsMissed_ > kMostMissed) {
        section = section.substr(0, static_cast<std::size_t>(nextPart_) + words.size() + kNear);
    }
    const Position at = Find(section, words, nextPart_);
    if (at != 0) return at;
    ++partsMissed_;
    return Find(section, words.substr(0, kEnough), nextPart_);
}

}  // namespace tessaly
