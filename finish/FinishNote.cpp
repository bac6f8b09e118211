#include "finish/FinishNote.h"

#include "platform/LineReader.h"
#include "platform/charset.h"
#include "platform/files.h"
#include "text/numbers.h"
#include "text/split.h"

namespace tessaly {

namespace {

constexpr std::u16string_view kNoteName = u"FinishNote.txt";
constexpr std::u16string_view kCharset = u"charset";
constexpr std::u16string_view kForum = u"forum";
constexpr std::u16string_view kAttachment = u"attachment";
constexpr std::u16string_view kPage = u"page";
constexpr std::u16string_view kWithoutGroup = u"nogroup";

// The folder on the old site in which the board's own folder "discus" lies: the path of the site's address
// without that folder.
std::u16string SitePrefix(std::u16string_view website) {
    const Position scheme = Find(website, u"://");
    const std::u16string_view behind = scheme == 0 ? website : From(website, scheme + 3);
    const Position slash = Find(behind, u"/");
    if (slash == 0) return {};
    std::u16string prefix(From(behind, slash));
    while (prefix.ends_with(u'/')) prefix.pop_back();
    constexpr std::u16string_view kBoard = u"/discus";
    const std::size_t kept = prefix.size() < kBoard.size() ? 0 : prefix.size() - kBoard.size();
    if (EqualIgnoringCase(std::u16string_view(prefix).substr(kept), kBoard)) prefix.resize(kept);
    return prefix;
}

// Where operators type "/" between the steps of a folder, "\" is added at its end all the same.
std::u16string WithSlashes(std::u16string_view path) {
    std::u16string text(path);
    ReplaceAll(text, u"\\", u"/");
    ReplaceAll(text, u"//", u"/");
    return text;
}

// The path below the root of the copy, as the old site's visitors know it.
std::u16string PathOnSite(const ConversionState& state, std::u16string_view page) {
    std::u16string path = WithSlashes(page);
    const std::u16string root = WithSlashes(state.DiscusRootFolder);
    if (!root.empty() && StandsAt(path, 1, root)) {
        path.erase(0, root.size());
    } else {
        ReplaceAll(path, WithSlashes(state.DiscusMessageFolder), u"discus/messages/");
        ReplaceAll(path, WithSlashes(state.DiscusSecureMessageFolder), u"discus/messages/");
    }
    return SitePrefix(state.DiscusWebsite) + u"/" + path;
}

// A hidden page is led to from the folder of the open pages too, where its redirection page may lie.
std::u16string OpenPathOnSite(const ConversionState& state, std::u16string page) {
    ReplaceAll(page, state.DiscusSecureMessageFolder, state.DiscusMessageFolder);
    return PathOnSite(state, page);
}

void AddLine(std::string& text, std::u16string_view word, std::u16string_view rest) {
    text += platform::ToUtf8(word) + "," + platform::ToUtf8(rest) + "\r\n";
}

FinishNote::Attachment AttachmentOf(std::u16string_view line) {
    constexpr std::size_t kBeforeName = 4;
    const auto fields = Split(line, u",");
    FinishNote::Attachment attachment;
    attachment.pid = ToInteger(fields.front());
    if (fields.size() <= kBeforeName) return attachment;
    attachment.uid = ToInteger(fields[1]);
    attachment.size = ToInteger(fields[2]);
    attachment.hash = fields[3];
    // A name may hold commas.
    attachment.name = line.substr(static_cast<std::size_t>(fields[kBeforeName].data() - line.data()));
    return attachment;
}

void TakeLine(FinishNote& note, std::u16string_view line) {
    const Position comma = Find(line, u",");
    if (comma == 0) return;
    const std::u16string_view word = Between(line, 1, comma);
    const std::u16string_view rest = From(line, comma + 1);
    if (word == kCharset) note.charset = rest;
    if (word == kForum) note.forumAddress = rest;
    if (word == kWithoutGroup) note.membersWithoutGroup.insert(ToInteger(rest));
    const Position second = Find(rest, u",");
    if (second == 0) return;
    const std::u16string_view first = Between(rest, 1, second);
    const std::u16string_view last = From(rest, second + 1);
    if (word == kAttachment) note.attachments[ToInteger(first)] = AttachmentOf(last);
    if (word == kPage) note.pages.push_back({ToInteger(first), std::u16string(last)});
}

}  // namespace

void WriteFinishNote(const ConversionState& state) {
    std::string text;
    AddLine(text, kCharset, state.Charset);
    AddLine(text, kForum, state.mybbForumAddr);
    AddLine(text, kPage, u"0," + PathOnSite(state, state.DiscusMessageFolder + u"board-topics.html"));
    for (const auto& [fid, page] : state.Note.ForumPages) {
        const std::u16string path = PathOnSite(state, page);
        AddLine(text, kPage, ToText(fid) + u"," + path);
        const std::u16string openPath = OpenPathOnSite(state, page);
        if (openPath != path) AddLine(text, kPage, ToText(fid) + u"," + openPath);
    }
    for (const RunNote::TakenFile& file : state.Note.Attachments)
        AddLine(text, kAttachment,
                ToText(file.aid) + u"," + ToText(file.pid) + u"," + ToText(file.uid) + u"," +
                    ToText(file.size) + u"," + file.hash + u"," + file.name);
    for (const std::int32_t number : state.Note.MembersWithoutGroup)
        AddLine(text, kWithoutGroup, ToText(number));
    platform::WriteWholeFile(state.mybbOutputFolder + std::u16string(kNoteName), {text});
}

std::optional<FinishNote> ReadFinishNote(std::u16string_view folder) {
    const std::u16string path = std::u16string(folder) + std::u16string(kNoteName);
    if (!platform::FileExists(path)) return {};
    FinishNote note;
    platform::LineReader lines(path, u"utf-8");
    for (std::u16string_view line; lines.Next(line);) TakeLine(note, line);
    return note;
}

}  // namespace tessaly
