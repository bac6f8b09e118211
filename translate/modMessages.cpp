#include "translate/modMessages.h"

#include "control/DisplayInfo.h"
#include "control/RoutineHandler.h"
#include "control/checking.h"
#include "members/clsMember.h"
#include "members/modMembers.h"
#include "output/OutputFiles.h"
#include "output/SaveRedirectFile.h"
#include "output/clsTblPosts.h"
#include "reader/FieldEscaping.h"
#include "reader/TagScanning.h"
#include "text/folding.h"
#include "text/numbers.h"
#include "text/split.h"
#include "translate/DiscusProcessFormatting.h"
#include "translate/DiscusProcessLinks.h"
#include "translate/modAttachments.h"
#include "translate/modImages.h"

namespace tessaly {

namespace {

constexpr std::u16string_view kPost = u"<!--Post: ";
constexpr std::u16string_view kLabel = u" - DiscusProcessPostsOnPage()";

// What is gathered while the posts of a page are read.
struct PageOfPosts {
    std::u16string indent;
    std::u16string_view subject;
    std::int32_t forumId = 0;
    std::int32_t postCount = 0;
    std::int32_t firstTime = 0;
    std::int32_t firstPoster = 0;
    std::int32_t lastPosterRead = 0;
    // First time of the page minus the first time that differs; above 0 on a page that stands newest first.
    std::int32_t orderDifference = 0;
    // The source of each row, in the order of the rows.
    std::vector<std::u16string_view> sections;
};

struct Poster {
    std::u16string name;
    std::int32_t number = 0;
};

void Tell(ConversionState& state, const std::u16string& text) {
    DisplayInfo(state, text, false, false, false);
}

std::u16string NameOf(ConversionState& state, std::u16string_view section) {
    const std::u16string bare =
        RemoveTagInformation(state, FirstTagSection(state, section, u"<!--name-->", u"<!--/name-->"));
    std::u16string name = RemoveFieldTokens(EscapeField(Trim(bare)));
    return name.empty() ? u"Anonymous" : name;
}

// An unknown poster becomes a member with a name alone, so that his next post finds him.
Poster AddPoster(ConversionState& state, const PageOfPosts& page, std::u16string name) {
    Tell(state, u"\r\n\r\n" + page.indent +
                    u"***** Posters User Name / Real Name Not Found - Adding ***** - " + name + u"\r\n");
    NoteFinding(state, FindingKind::kUnknownPoster, u"<!--name-->", name);
    std::vector<std::u16string_view> fields(11);
    fields[0] = name;
    const std::int32_t number = DiscusAddMember(state, fields);
    return {std::move(name), number};
}

// As a real name first, then as a user name.
Poster ResolvePoster(ConversionState& state, const PageOfPosts& page, std::u16string_view section) {
    std::u16string name = NameOf(state, section);
    if (const auto* const member = state.MembersByRealName.Find(name))
        return {(*member)->RealName, (*member)->ID};
    if (const auto* const member = state.MembersByUserName.Find(name))
        return {(*member)->username, (*member)->ID};
    return AddPoster(state, page, std::move(name));
}

// The digits at the head of what stands behind the opening tag. Each further opening tag counts as not there.
std::u16string PostNumberOf(std::u16string_view section) {
    std::u16string head;
    Position at = 1;
    while (at <= Length(section)) {
        if (StandsAt(section, at, kPost)) {
            at += Length(kPost);
            continue;
        }
        const char16_t unit = section[static_cast<std::size_t>(at) - 1];
        const bool isDigit = unit >= u'0' && unit <= u'9';
        if (!isDigit && unit != u' ') break;
        head += unit;
        ++at;
    }
    return std::u16string(LeadingDigits(head));
}

std::int32_t TimeOf(ConversionState& state, std::u16string_view section) {
    std::u16string value(FirstTagSection(state, section, u"<!--Time: ", u"-->"));
    RemoveAll(value, u"<!--Time:");
    value = Trim(value);
    RemoveAll(value, u"-->");
    return ToInteger(value);
}

// A check goes on behind a time that is no number.
std::int32_t ReadTime(ConversionState& state, std::u16string_view section) {
    std::optional<std::int32_t> time;
    GoingOnInCheck(state, kLabel, [&] { time = TimeOf(state, section); });
    if (IsCheck(state)) state.Check->PostRead(time);
    return time.value_or(0);
}

// Whether a body holds a tag that the steps on files, links and images are for. Most hold no such tag, and
// the character behind a "<" tells nearly all others.
bool HoldsFileLinkOrImage(std::u16string_view body) {
    constexpr std::u16string_view kTags[] = {u"<!--attachment:", u"<a href=", u"<img "};
    for (Position at = Find(body, u"<"); at != 0 && at < Length(body); at = Find(body, u"<", at + 1)) {
        const char16_t behind = Fold(body[static_cast<std::size_t>(at)]);
        for (const std::u16string_view tag : kTags) {
            if (behind == tag[1] && StandsAt(body, at, tag)) return true;
        }
    }
    return false;
}

std::u16string TranslateFilesLinksAndImages(ConversionState& state, std::u16string body, const Poster& poster,
                                            std::int32_t forumId) {
    state.ToolboxA.KeepResponsive();
    // A cancel empties the text.
    if (!state.CancelRequested && !HoldsFileLinkOrImage(body)) return body;
    ProcessAttachments(state, body, poster.number);
    return TranslateImages(state, kLabel, DiscusProcessLinks(state, body, state.PageSerial, forumId));
}

std::u16string TranslateBody(ConversionState& state, std::u16string_view section, const Poster& poster,
                             std::int32_t forumId) {
    std::u16string body(FirstTagSection(state, section, u"<!--Text-->", u"<!--/Text-->"));
    if (body.empty()) NoteFinding(state, FindingKind::kPostWithoutText, section);
    state.PostCounter = Add(state.PostCounter, 1);
    std::u16string text = TranslateFilesLinksAndImages(state, std::move(body), poster, forumId);
    text = DiscusProcessFormatting(state, std::move(text));
    text = RemoveTagInformation(state, text);
    return EscapeField(text);
}

void CountPoster(ConversionState& state, std::int32_t number) {
    state.CurrentPosterId = number;
    const auto index = static_cast<std::size_t>(number);
    if (index >= state.MemberPostCounts.size()) state.MemberPostCounts.resize(index + 101, 0);
}

// The first post whose time differs from that of the page's first one settles the order.
void NoteOrder(PageOfPosts& page, std::int32_t time, std::int32_t posterNumber) {
    if (page.orderDifference != 0) return;
    if (page.postCount == 1) {
        page.firstTime = time;
        page.firstPoster = posterNumber;
    }
    page.orderDifference = Subtract(page.firstTime, time);
}

void ProcessPost(ConversionState& state, PageOfPosts& page, std::u16string_view section) {
    const std::u16string postNumber = PostNumberOf(section);
    const Poster poster = ResolvePoster(state, page, section);
    CountPoster(state, poster.number);
    const std::int32_t time = ReadTime(state, section);
    (page.postCount == 0 ? state.FirstPostTime : state.LastPostTime) = time;
    ++page.postCount;
    NoteOrder(page, time, poster.number);
    page.lastPosterRead = poster.number;

    clsTblPosts row;
    row.message = TranslateBody(state, section, poster, page.forumId);
    ++state.MemberPostCounts[static_cast<std::size_t>(poster.number)];
    const DataIndexElement& index = CurrentIndex(state);
    row.pid = state.PostCounter;
    row.tid = Add(index.ThreadBase, 1);
    row.fid = page.forumId;
    row.subject = page.subject;
    row.uid = poster.number;
    row.username = poster.name;
    row.dateline = time;
    row.editreason = index.TopicNumber + u"^" + index.FileNumber + u"^" + postNumber;
    row.visible = 1;
    std::u16string text;
    row.BuildString(text);
    page.sections.push_back(section);
    state.PageRows.Add(ToText(page.postCount), std::move(text));
}

// The posts up to one without its exact closing tag; what stands behind that is ignored.
void ReadPosts(ConversionState& state, PageOfPosts& page, std::u16string_view pageData) {
    std::u16string openTag;
    std::u16string closeTag;
    Position position = 1;
    while (true) {
        const Position open = Find(pageData, kPost, position);
        if (open == 0) return;
        const auto readTags = [&] { GetPostTags(open, pageData, openTag, closeTag); };
        if (!GoingOnInCheck(state, kLabel, readTags)) return;
        const Position close = Find(pageData, closeTag, open);
        if (close == 0) return NoteFinding(state, FindingKind::kPostsBehindUnclosed, From(pageData, open));
        position = close + Length(closeTag);
        const std::u16string_view section = Between(pageData, open, position);
        InSection(state, kLabel, section, [&] { ProcessPost(state, page, section); });
        // In a check a post that failed counts as not there.
        page.postCount = state.PageRows.Count();
        page.sections.resize(static_cast<std::size_t>(page.postCount));
        if (state.CancelRequested) return;
        state.ToolboxA.KeepResponsive();
    }
}

// The attachment row goes by the count of rows written, whichever post it came from.
void WriteRow(ConversionState& state, std::int32_t position, std::int32_t writeCount) {
    WriteFileLine(state, state.PageRows.Get(ToText(position)), state.PostsFile, u"mybb_posts", false);
    if (const std::u16string* const found = state.PageAttachmentRows.Find(ToText(writeCount))) {
        std::u16string row = *found;
        ReplaceAll(row, u"KvMsgNo", ToText(position));
        WriteFileLine(state, row, state.AttachmentsFile, u"mybb_attachments", false);
    }
    state.ToolboxA.KeepResponsive();
}

void NoteSurplus(const ConversionState& state, std::int32_t posts) {
    const std::int32_t files = state.PageAttachmentRows.Count();
    if (files <= posts) return;
    NoteFinding(state, FindingKind::kSurplusAttachment, {},
                ToText(files) + u" files in " + ToText(posts) + u" posts of the page", files - posts);
}

// The first poster is the one of the newest post and the last poster the one of the oldest, in both orders.
void WritePosts(ConversionState& state, const PageOfPosts& page) {
    const bool isReversed = page.orderDifference > 0;
    const std::int32_t count = state.PageRows.Count();
    DataIndexElement& index = CurrentIndex(state);
    index.FirstPosterId = isReversed ? page.firstPoster : page.lastPosterRead;
    index.LastPosterId = isReversed ? page.lastPosterRead : page.firstPoster;
    if (isReversed) std::swap(state.FirstPostTime, state.LastPostTime);
    index.LastPostId = state.PostCounter;
    Tell(state, page.indent + u"Re-ordering Posts - " + ToText(isReversed ? 1 : count) + u" - " +
                    ToText(index.FirstPostId) + u" to " + ToText(index.LastPostId) + u"\r\n");
    for (std::int32_t written = 1; written <= count; ++written) {
        const std::int32_t position = isReversed ? count + 1 - written : written;
        InSection(state, kLabel, page.sections[static_cast<std::size_t>(position) - 1],
                  [&] { WriteRow(state, position, written); });
    }
    NoteSurplus(state, count);
    Tell(state, page.indent + u"Done\r\n\r\n");
}

std::u16string PageLink(const ConversionState& state, std::u16string_view pagePath) {
    std::u16string fileName;
    std::u16string folderNumber;
    if (Contains(pagePath, u"http://")) return BuildTopicFilePath(state, pagePath, fileName, folderNumber);
    return std::u16string(pagePath);
}

}  // namespace

void DiscusProcessPostsOnPage(ConversionState& state, std::u16string_view pagePath,
                              std::u16string_view pageTitle, std::u16string_view /*topicName*/,
                              std::u16string_view meName, std::u16string_view subject, std::int32_t forumId,
                              std::int32_t /*firstPoster*/, std::int32_t /*lastPoster*/,
                              std::u16string_view pageData) try {
    if (state.CancelRequested) return;
    state.PageRows = {};
    state.PageAttachmentRows = {};
    PageOfPosts page;
    page.indent.assign(static_cast<std::size_t>(state.Depth) + 1, u'\t');
    page.subject = subject;
    page.forumId = forumId;
    const std::u16string link = PageLink(state, pagePath);
    state.PageSerial = Add(state.PageSerial, 1);
    CurrentIndex(state).FirstPostId = Add(state.PostCounter, 1);
    Tell(state, page.indent + u"Processing Post for - " + std::u16string(meName) + u" - " + link +
                    u" - Record # " + ToText(CurrentIndex(state).FirstPostId) + u"\r\n");
    SaveRedirectFile(state, link, state.PageSerial, subject, meName, pageTitle);
    state.FirstPostTime = 0;
    state.LastPostTime = 0;
    ReadPosts(state, page, pageData);
    WritePosts(state, page);
    state.PageRows = {};
    state.PageAttachmentRows = {};
} catch (...) {
    RoutineHandler(state, kLabel, CurrentError());
}

}  // namespace tessaly
