#include <algorithm>

#include "check/BoardCheck.h"
#include "members/clsMember.h"
#include "reader/TagScanning.h"
#include "text/split.h"

namespace tessaly {

namespace {

using enum FindingKind;

// What is translated of a post or an announcement.
std::u16string_view BodyOf(std::u16string_view section) {
    if (!StandsAt(section, 1, u"<!--Post: ")) return section;
    const Position open = Find(section, u"<!--Text-->");
    if (open == 0) return section;
    const Position close = Find(section, u"<!--/Text-->", open);
    return close == 0 ? From(section, open) : Between(section, open, close);
}

// The font tag of a text that has no counterpart: an opening that stays open, else the first closing.
std::u16string_view OddFontTag(std::u16string_view text) {
    constexpr std::u16string_view kOpening = u"<font ";
    constexpr std::u16string_view kClosing = u"</font>";
    std::vector<Position> open;
    Position closing = Find(text, kClosing);
    const Position firstClosing = closing;
    for (Position at = Find(text, kOpening); at != 0; at = Find(text, kOpening, at + 1)) {
        for (; closing != 0 && closing < at; closing = Find(text, kClosing, closing + 1)) {
            if (!open.empty()) open.pop_back();
        }
        open.push_back(at);
    }
    for (; closing != 0; closing = Find(text, kClosing, closing + 1)) {
        if (!open.empty()) open.pop_back();
    }
    if (!open.empty()) return From(text, open.front());
    return firstClosing == 0 ? text : From(text, firstClosing);
}

// The link of a text that is taken for one of the board and has no "/" in its address.
std::u16string_view OddLink(std::u16string_view text) {
    constexpr std::u16string_view kLink = u"<a href=";
    for (Position at = Find(text, kLink); at != 0; at = Find(text, kLink, at + 1)) {
        const Position end = Find(text, u">", at);
        const Position close = Find(text, u"</a>", at);
        if (end == 0 || close == 0) return text;
        const std::u16string_view link = Between(text, at, close);
        const bool isLocal = Contains(link, u"/discus/messages/") || Contains(link, u"/secure/");
        if (isLocal && !Contains(Between(text, at, end), u"/")) return From(text, at);
    }
    return text;
}

std::u16string_view PlaceIn(std::u16string_view text, std::u16string_view what) {
    const Position at = Find(text, what);
    return at == 0 ? text : From(text, at);
}

std::u16string_view LastPostTag(std::u16string_view page) {
    const Position at = FindBackward(page, u"<!--Post: ");
    return at == 0 ? page : From(page, at);
}

bool IsGroupUnknown(ConversionState& state, const clsMember& member) {
    const auto names = Split(member.Groups, u"/");
    return std::ranges::any_of(names, [&state](std::u16string_view name) {
        return !name.empty() && state.GroupsByName.Find(name) == nullptr;
    });
}

bool IsFullAddress(std::u16string_view website) {
    return Split(website, u"/").size() > 2;
}

bool IsReadingFailure(int number) {
    return number == kFileNotOpened || number == kDeviceError || number == kFileNotFound ||
           number == kPermissionDenied || number == kPathAccessError || number == kPathNotFound;
}

}  // namespace

FindingKind BoardCheck::KindOf(std::u16string_view label, const RunTimeError& error,
                               std::u16string_view& words) {
    const std::u16string_view section = listener_.Section;
    const auto isOf = [label](std::u16string_view routine) { return Contains(label, routine); };
    const int number = error.number;
    if (number == kOutOfStackSpace) return kPageLoop;
    if (isOf(u"SaveRedirectFile()") || isOf(u"WriteFileData()")) return kRedirectPath;
    if (isOf(u"SetupFolderLocations()")) return kOtherFailure;
    if (IsReadingFailure(number)) return kFileNotRead;
    if (isOf(u"DiscusGetReplaceableCharacterArray()")) return kCharacterFile;
    if (isOf(u"GetFileDataCharset()") || isOf(u"WriteFileLine()")) {
        return number == kInvalidCall ? kCharset : kOtherFailure;
    }
    if (isOf(u"DiscusProcessBoardTopics()")) {
        words = CurrentIndex(state_).TopSection;
        return kSubtopicLink;
    }
    if (isOf(u"DiscusProcessFormatting()")) {
        words = OddFontTag(BodyOf(section));
        return kFontTags;
    }
    if (isOf(u"DiscusProcessLinks()")) {
        words = OddLink(BodyOf(section));
        return kLinkAddress;
    }
    if (isOf(u"ProcessAttachments()")) {
        words = PlaceIn(BodyOf(section), u"<!--attachment:");
        return IsFullAddress(state_.DiscusWebsite) ? kAttachmentAddress : kWebsite;
    }
    if (isOf(u"DiscusProcessPostsOnPage()") || isOf(u"mybbWriteAnnouncementMsg()")) {
        if (number == kTypeMismatch || number == kOverflow) {
            words = PlaceIn(section, u"<!--Time: ");
            return kPostTime;
        }
        if (number != kInvalidCall) return kOtherFailure;
        words = section.empty() ? LastPostTag(CurrentIndex(state_).PageData)
                                : PlaceIn(BodyOf(section), u"<img src=");
        return section.empty() ? kPostTag : kImageQuotes;
    }
    if (isOf(u"DiscusAddMember()")) return number == kOverflow ? kMemberNumber : kMemberFields;
    if (isOf(u"mybbWriteUserFile()") && listener_.Member != nullptr) {
        return IsGroupUnknown(state_, *listener_.Member) ? kGroupName : kMemberAddress;
    }
    return kOtherFailure;
}

}  // namespace tessaly
