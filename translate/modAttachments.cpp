#include "translate/modAttachments.h"

#include <limits>

#include "control/DisplayInfo.h"
#include "control/RoutineHandler.h"
#include "control/checking.h"
#include "control/troubledFiles.h"
#include "platform/files.h"
#include "reader/TagScanning.h"
#include "text/numbers.h"
#include "text/split.h"
#include "translate/clsTblAttachments.h"
#include "translate/modMD5Hash.h"

namespace tessaly {

namespace {

constexpr std::u16string_view kTaken = u"clip";
constexpr std::u16string_view kNotTaken = u"xx";

void Report(ConversionState& state, const std::u16string& trouble) {
    DisplayInfo(state, trouble + u"\r\n", true, true, true);
}

// What stands between href=" and " target=, with backslashes.
std::u16string AddressOf(ConversionState& state, std::u16string_view section) {
    constexpr std::u16string_view kOpen = u"href=\"";
    std::u16string address(FirstTagSection(state, section, kOpen, u"\" target="));
    ReplaceAll(address, u"/", u"\\");
    RemoveAll(address, kOpen);
    const Position target = Find(address, u"target=");
    if (target != 0) address.resize(static_cast<std::size_t>(target) - 1);
    RemoveAll(address, u"\"");
    return std::u16string(Trim(address));
}

bool IsPageAddress(std::u16string_view address) {
    return Contains(address, u"show.cgi") || Contains(address, u"showpage.html") ||
           Contains(address, u".html?") || Contains(address, u".php");
}

std::u16string_view LastStep(std::u16string_view address) {
    return From(address, FindBackward(address, u"\\") + 1);
}

// Path of the uploaded file in one of the two message folders.
std::u16string UploadPath(std::u16string_view messageFolder, std::u16string_view below) {
    std::u16string path = ToolboxLibrary::AddBackslash(messageFolder) + std::u16string(below);
    ReplaceAll(path, u"\\\\", u"\\");
    return path;
}

// The file that an address on the old board's host leads to; empty, with a report where one is due, when it
// leads to none.
std::u16string SourceOf(ConversionState& state, const std::u16string& address) {
    if (IsPageAddress(address)) {
        NoteFinding(state, FindingKind::kNoAttachment, LastStep(address), address);
        Report(state, u"Attachment is not a valid type - " + address);
        return {};
    }
    const auto parts = Split(address, u"\\");
    const auto siteParts = Split(state.DiscusWebsite, u"/");
    if (!EqualIgnoringCase(Element(parts, 2), Element(siteParts, 2))) {
        NoteFinding(state, FindingKind::kAttachmentElsewhere, LastStep(address), address);
        return {};
    }
    const std::u16string_view fileName = Element(parts, parts.size() - 1);
    if (fileName.empty()) {
        NoteFinding(state, FindingKind::kNoAttachment, {}, address);
        Report(state, u"Attachment is not a valid file - " + address);
        return {};
    }
    std::u16string_view folder = Element(parts, parts.size() - 2);
    if (EqualIgnoringCase(folder, u"secure") || EqualIgnoringCase(folder, u"messages")) folder = {};
    const std::u16string below = std::u16string(folder) + u"\\" + std::u16string(fileName);
    std::u16string first = UploadPath(state.DiscusMessageFolder, below);
    std::u16string second = UploadPath(state.DiscusSecureMessageFolder, below);
    const auto folders = SourceFolders(state);
    if (ToolboxLibrary::FileExistsWithin(first, folders)) return first;
    if (ToolboxLibrary::FileExistsWithin(second, folders)) return second;
    NoteFinding(state, FindingKind::kMissingAttachment, fileName, first);
    Report(state, u"Attachment File Does Not Exist (mybb #Rec " + ToText(state.PostCounter) + u") - " +
                      first + u"\r\n   nor does " + second + u" - Original - " + address);
    return {};
}

std::int32_t LengthOf(std::u16string_view path) {
    const std::int64_t length = platform::FileLength(path);
    if (length > std::numeric_limits<std::int32_t>::max()) Raise(kOverflow);
    return static_cast<std::int32_t>(length);
}

void TakeFile(ConversionState& state, const std::u16string& source, std::int32_t memberNumber) {
    clsTblAttachments row;
    WithFile(state, source, [&] {
        row.filesize = LengthOf(source);
        row.posthash = MD5HashString(source);
    });
    row.filetype = From(source, FindBackward(source, u".") + 1);
    state.AttachmentCounter = Add(state.AttachmentCounter, 1);
    row.aid = state.AttachmentCounter;
    row.pid = memberNumber;
    row.uid = memberNumber;
    row.filename = source;
    row.visible = 1;
    std::u16string text;
    row.BuildString(text);
    state.PageAttachmentRows.Add(ToText(state.PageAttachmentRows.Count() + 1), text);
    if (IsCheck(state)) return state.Check->FileTaken(source, row.filesize);
    const std::u16string copy = state.mybbAttachmentsFolder + u"\\" + ToText(row.aid) + u"_" + row.posthash;
    // Either may be what failed.
    WithFile(state, source, [&] { WithFile(state, copy, [&] { platform::CopyFile(source, copy); }); });
    if (!state.Note.IsWanted) return;
    state.Note.Attachments.push_back({row.aid, state.PostCounter, memberNumber, row.filesize, row.posthash,
                                      std::u16string(LastStep(source))});
}

}  // namespace

std::u16string ProcessAttachments(ConversionState& state, std::u16string& body, std::int32_t memberNumber) {
    std::u16string marker(kNotTaken);
    std::u16string section;
    try {
        if (!state.optCreateAttachments) return marker;
        section = FirstTagSection(state, body, u"<!--attachment:", u"<!--/attachment-->");
        if (section.empty()) return marker;
        const std::u16string source = SourceOf(state, AddressOf(state, section));
        if (source.empty()) return marker;
        TakeFile(state, source, memberNumber);
        marker = kTaken;
        RemoveAll(body, section);
    } catch (...) {
        RoutineHandler(state, u" - ProcessAttachments()", CurrentError());
        // A check goes on as though the file had been taken.
        if (IsCheck(state)) RemoveAll(body, section);
    }
    return marker;
}

}  // namespace tessaly
