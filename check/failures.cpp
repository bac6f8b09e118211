#include "check/BoardCheck.h"
#include "members/clsMember.h"
#include "platform/paths.h"
#include "reader/TagScanning.h"
#include "text/numbers.h"
#include "text/split.h"

namespace tessaly {

namespace {

using enum FindingKind;

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

std::u16string_view PlaceIn(std::u16string_view text, std::u16string_view what) {
    const Position at = Find(text, what);
    return at == 0 ? text : From(text, at);
}

std::u16string_view LastPostTag(std::u16string_view page) {
    const Position at = FindBackward(page, u"<!--Post: ");
    return at == 0 ? page : From(page, at);
}

// The link to the file of a text's first attachment.
std::u16string_view AttachmentIn(std::u16string_view text) {
    return PlaceIn(PlaceIn(text, u"<!--attachment:"), u"<a href=");
}

bool IsFullAddress(std::u16string_view website) {
    return Split(website, u"/").size() > 2;
}

bool IsReadingFailure(int number) {
    return number == kFileNotOpened || number == kDeviceError || number == kFileNotFound ||
           number == kPermissionDenied || number == kPathAccessError || number == kPathNotFound;
}

}  // namespace

// What is translated of a post or an announcement.
std::u16string_view BoardCheck::BodyOf(std::u16string_view section) {
    if (!StandsAt(section, 1, u"<!--Post: ")) return section;
    const Position open = Find(section, u"<!--Text-->");
    if (open == 0) return section;
    const Position close = Find(section, u"<!--/Text-->", open);
    return close == 0 ? From(section, open) : Between(section, open, close);
}

FindingKind BoardCheck::KindOf(std::u16string_view label, const RunTimeError& error) {
    const auto isOf = [label](std::u16string_view routine) { return Contains(label, routine); };
    const int number = error.number;
    if (number == kOutOfStackSpace) return kPageLoop;
    if (isOf(u"SaveRedirectFile()") || isOf(u"WriteFileData()")) return kRedirectPath;
    if (isOf(u"SetupFolderLocations()")) return kOutputFolder;
    if (IsReadingFailure(number)) return kFileNotRead;
    if (isOf(u"DiscusGetReplaceableCharacterArray()")) return kCharacterFile;
    if (isOf(u"GetFileDataCharset()") || isOf(u"WriteFileLine()")) {
        return number == kInvalidCall ? kCharset : kOtherFailure;
    }
    if (isOf(u"DiscusProcessBoardTopics()")) return kSubtopicLink;
    if (isOf(u"DiscusProcessFormatting()")) return kFontTags;
    if (isOf(u"DiscusProcessLinks()")) return kLinkAddress;
    if (isOf(u"ProcessAttachments()")) {
        if (number == kOverflow) return kAttachmentSize;
        return IsFullAddress(state_.DiscusWebsite) ? kAttachmentAddress : kWebsite;
    }
    if (isOf(u"DiscusProcessPostsOnPage()") || isOf(u"mybbWriteAnnouncementMsg()")) {
        if (number == kTypeMismatch || number == kOverflow) return kPostTime;
        if (number != kInvalidCall) return kOtherFailure;
        return listener_.Section.empty() ? kPostTag : kImageQuotes;
    }
    if (isOf(u"DiscusAddMember()")) {
        if (!listener_.MemberValue.empty()) return kMemberNumber;
        return listener_.MemberFields != nullptr && number == kSubscriptOutOfRange ? kMemberFields
                                                                                   : kOtherFailure;
    }
    if (isOf(u"mybbWriteUserFile()") && listener_.Member != nullptr) {
        return listener_.MemberValue.empty() ? kMemberAddress : kGroupName;
    }
    return kOtherFailure;
}

// The words of the source at which a finding stands, if not at the beginning of what is in hand.
std::u16string_view BoardCheck::WordsOf(FindingKind kind) {
    const std::u16string_view section = listener_.Section;
    switch (kind) {
        case kFontTags:
            return OddFontTag(BodyOf(section));
        case kAttachmentAddress:
        case kAttachmentSize:
        case kWebsite:
        case kFileNotRead:
        case kMissingAttachment:
        case kAttachmentElsewhere:
        case kNoAttachment:
            return AttachmentIn(BodyOf(section));
        case kPostTime:
            return PlaceIn(section, u"<!--Time: ");
        case kPostTag:
            return LastPostTag(CurrentIndex(state_).PageData);
        case kImageQuotes:
            return PlaceIn(BodyOf(section), u"<img src=");
        default:
            return {};
    }
}

std::u16string BoardCheck::DetailOf(FindingKind kind) {
    const auto& troubled = state_.Progress.TroubledFiles;
    switch (kind) {
        case kMemberFields:
            return ToText(static_cast<std::int64_t>(listener_.MemberFields->size())) + u" fields";
        case kMemberNumber:
        case kGroupName:
            return std::u16string(listener_.MemberValue);
        case kMemberAddress:
            return listener_.Member->IPAddr;
        case kOutputFolder:
            return platform::WithNativeSeparators(state_.mybbOutputFolder);
        case kAttachmentSize:
        case kFileNotRead:
            // Only of a file that a post refers to; of others the label tells.
            if (listener_.Section.empty()) return {};
            return troubled.empty() ? std::u16string() : platform::WithNativeSeparators(troubled.back());
        default:
            return {};
    }
}

}  // namespace tessaly
