#include "reader/modThreads.h"

#include "control/DisplayInfo.h"
#include "control/RoutineHandler.h"
#include "control/checking.h"
#include "members/clsMember.h"
#include "output/OutputFiles.h"
#include "output/SaveRedirectFile.h"
#include "output/clsTblThreads.h"
#include "output/mybbWriteForumsFile.h"
#include "reader/FieldEscaping.h"
#include "reader/SourceFiles.h"
#include "reader/TagScanning.h"
#include "text/numbers.h"
#include "text/split.h"
#include "translate/modAnnouncements.h"
#include "translate/modMessages.h"

namespace tessaly {

namespace {

constexpr std::int32_t kDeepest = 1000;
constexpr std::int32_t kPostFound = 1;
constexpr std::int32_t kTopFound = 2;
constexpr std::int32_t kAnnouncementFound = 4;

// The label of the walk's failures, which names the page in hand.
std::u16string LabelOf(ConversionState& state) {
    std::u16string path;
    IgnoringErrors([&] { path = CurrentIndex(state).PagePath; });
    return u" - DiscusProcessBoardTopics() - " + path;
}

std::u16string Indent(const ConversionState& state) {
    return std::u16string(static_cast<std::size_t>(state.Depth), u'\t');
}

void Tell(ConversionState& state, const std::u16string& text) {
    DisplayInfo(state, text, false, false, false);
}

// The forum numbers above the page in hand, the nearest last, each with a comma behind it.
std::u16string ParentListOf(const ConversionState& state) {
    std::u16string list;
    for (std::size_t level = 1; level < state.DataIndex.size(); ++level) {
        list += ToText(state.DataIndex[level].ParentForumId);
        list += u',';
    }
    return list;
}

// The number of the page's file: the digits of the last step of its path.
std::u16string FileNumberOf(const ConversionState& state, std::u16string_view pagePath) {
    std::u16string below(pagePath);
    RemoveAll(below, state.DiscusMessageFolder);
    const auto steps = Split(below, u"\\");
    return std::u16string(LeadingDigits(Element(steps, steps.size() - 1)));
}

void MakePaths(ConversionState& state, bool pageNameIsPath) {
    DataIndexElement& page = CurrentIndex(state);
    if (pageNameIsPath) {
        page.PagePath = page.PageName;
        page.SecurePagePath = page.PageName;
        ReplaceAll(page.SecurePagePath, state.DiscusMessageFolder, state.DiscusSecureMessageFolder);
        page.FileNumber = FileNumberOf(state, page.PageName);
    } else {
        const std::u16string below = page.PageName + u"\\" + page.PageName + u".html";
        page.PagePath = state.DiscusMessageFolder + below;
        page.SecurePagePath = state.DiscusSecureMessageFolder + below;
        page.FileNumber = page.PageName;
    }
    // A page that leads back to itself.
    if (state.Depth > kDeepest) Raise(kOutOfStackSpace);
}

void NoteLeftOut(ConversionState& state, bool isHidden) {
    NoteFinding(state, isHidden ? FindingKind::kHiddenPageLeftOut : FindingKind::kMissingPage, {},
                CurrentIndex(state).PagePath);
}

// Settles on the public page or, when the option allows, on the one in the secure folder. False when neither
// is there, which is told only with the option on.
bool ChoosePage(ConversionState& state) {
    DataIndexElement& page = CurrentIndex(state);
    const auto folders = SourceFolders(state);
    if (ToolboxLibrary::FileExistsWithin(page.PagePath, folders)) return true;
    if (!state.optCreateHiddenTopics) {
        NoteLeftOut(state, ToolboxLibrary::FileExistsWithin(page.SecurePagePath, folders));
        return false;
    }
    if (ToolboxLibrary::FileExistsWithin(page.SecurePagePath, folders)) {
        page.PagePath = page.SecurePagePath;
        state.HiddenTopic = true;
        return true;
    }
    NoteLeftOut(state, false);
    DisplayInfo(
        state,
        u"File Does Not Exist - " + page.PagePath + u" nor does \r\n    " + page.SecurePagePath + u"\r\n",
        true, true, true);
    return false;
}

std::u16string TitleOf(ConversionState& state, std::u16string_view pageData) {
    return EscapeField(
        RemoveTagInformation(state, FirstTagSection(state, pageData, u"<title>", u"</title>")));
}

// The text of the page's first link with a query behind ".html".
std::u16string SubjectOf(ConversionState& state, std::u16string_view pageData) {
    const std::u16string_view link = FirstTagSection(state, pageData, u".html?", u"</a>");
    std::u16string_view text = FirstTagSection(state, link, u">", u"</a>");
    if (text.empty()) text = FirstTagSection(state, link, u">", u"<");
    if (text.empty()) return {};
    return EscapeField(RemoveTagInformation(state, text.substr(1)));
}

void ReadPage(ConversionState& state) {
    DataIndexElement& page = CurrentIndex(state);
    GetFileDataCharset(state, page.PagePath, page.PageData, state.Charset, true);
    ++state.Progress.PagesRead;
    GetTopicInfo(state, page.PageData, page.TopicName, page.MeName, page.TopicNumber);
    page.TopicName = EscapeField(page.TopicName);
    page.MeName = EscapeField(page.MeName);
    Tell(state, u"\r\n\r\n" + Indent(state) + u"Processing Page " + page.TopicName + u" - " + page.MeName +
                    u" - " + page.PagePath + u"\r\n");
    page.PageTitle = TitleOf(state, page.PageData);
    page.PageSubject = SubjectOf(state, page.PageData);
    state.ToolboxA.KeepResponsive();
    state.txtMsgCount.SetText(ToText(state.PostCounter));
}

// The kinds of section that a page has no more of. Looking again would find the same nothing, and take the
// whole page each time.
struct Exhausted {
    bool tops = false;
    bool announcements = false;
    bool posts = false;
};

void FindSection(ConversionState& state, std::u16string_view pageData, std::u16string_view openMarker,
                 std::u16string_view closeMarker, std::u16string& section, Position& position, Position& next,
                 bool& isExhausted) {
    section.clear();
    if (isExhausted) return;
    section = ExtractTagSection(state, pageData, openMarker, closeMarker, position, next);
    isExhausted = section.empty();
}

void FindSections(ConversionState& state, Exhausted& exhausted) {
    DataIndexElement& page = CurrentIndex(state);
    FindSection(state, page.PageData, u"<!--Top: ", u"<!--/Top-->", page.TopSection, page.TopPos,
                page.TopNext, exhausted.tops);
    FindSection(state, page.PageData, u"<!--Announcement-->", u"<!--/Announcement-->",
                page.AnnouncementSection, page.AnnouncementPos, page.AnnouncementNext,
                exhausted.announcements);
    FindSection(state, page.PageData, u"<!--Post: ", u"<!--/Post: ", page.PostSection, page.PostPos,
                page.PostNext, exhausted.posts);
    page.SectionFlags = 0;
    if (!page.PostSection.empty()) page.SectionFlags += kPostFound;
    if (!page.TopSection.empty()) page.SectionFlags += kTopFound;
    if (!page.AnnouncementSection.empty()) page.SectionFlags += kAnnouncementFound;
}

void WriteForumRow(ConversionState& state) {
    DataIndexElement& page = CurrentIndex(state);
    mybbWriteForumsFile(state, page.MeName, state.ForumCounter, state.ForumOrder, page.ParentList, u"f", u"");
    if (state.Note.IsWanted) state.Note.ForumPages.emplace_back(state.ForumCounter, page.PagePath);
}

// The address of the sub-topic, up to its query.
std::u16string LinkOf(ConversionState& state, std::u16string_view topSection) {
    constexpr std::u16string_view kLink = u"<a href=";
    std::u16string link(FirstTagSection(state, topSection, kLink, u"?"));
    RemoveAll(link, kLink);
    RemoveAll(link, u"?");
    RemoveAll(link, u"\"");
    return link;
}

void ProcessTop(ConversionState& state, std::u16string_view categoryName) {
    DataIndexElement& page = CurrentIndex(state);
    if (page.PageSubject.empty()) {
        NoteFinding(state, FindingKind::kNoSubject, page.TopSection);
        return Tell(state, u"\r\nEncountered Topic with no Subject on - " + page.PagePath + u"\r\n");
    }
    std::u16string fileName;
    std::u16string folderNumber;
    page.PageName = LinkOf(state, page.TopSection);
    page.SubPagePath = BuildTopicFilePath(state, page.PageName, fileName, folderNumber);
    SaveRedirectFile(state, page.SubPagePath, page.ParentForumId, page.TopicName, page.PageSubject,
                     page.PageTitle);
    Tell(state, Indent(state) + u"Processing Topic - " + page.MeName + u"\r\n");
    const std::int32_t forumId = ForumIdOf(state, page.MeName);
    DiscusProcessBoardTopics(state, page.SubPagePath, categoryName, forumId, true);
    state.ToolboxA.KeepResponsive();
}

// The posts carry the number that the page's thread would have had when the page was entered.
void NoteOtherThread(const ConversionState& state, const DataIndexElement& page) {
    if (!IsCheck(state) || state.ThreadCounter == page.ThreadBase + 1) return;
    NoteFinding(state, FindingKind::kOtherThread, {},
                u"tid " + ToText(page.ThreadBase + 1) + u" in the posts, " + ToText(state.ThreadCounter) +
                    u" in the row of their thread",
                page.LastPostId - page.FirstPostId + 1);
}

// All posts of the page at once; no further Post section is looked for behind it.
void ProcessPosts(ConversionState& state) {
    const DataIndexElement& before = CurrentIndex(state);
    DiscusProcessPostsOnPage(state, before.PagePath, before.PageTitle, before.TopicName, before.MeName,
                             before.PageSubject, ForumIdOf(state, before.MeName), before.FirstPosterId,
                             before.LastPosterId, before.PageData);
    DataIndexElement& page = CurrentIndex(state);
    mybbWriteThreadsFile(state, page.MeName, ForumIdOf(state, page.MeName), page.FirstPostId, page.LastPostId,
                         page.FirstPosterId, page.LastPosterId, false);
    NoteOtherThread(state, page);
    page.PostPos = Length(page.PageData) - 1;
    page.PostNext = page.PostPos;
}

bool HasFound(ConversionState& state, std::int32_t kind) {
    return (CurrentIndex(state).SectionFlags & kind) != 0;
}

// One pass of the section loop: at most one Top section, one Announcement section and the posts. False when
// the page holds nothing more.
bool ProcessSections(ConversionState& state, std::u16string_view categoryName, Exhausted& exhausted) {
    FindSections(state, exhausted);
    DataIndexElement& page = CurrentIndex(state);
    if (page.SectionFlags == 0) {
        if (page.PageLoopCount == 0) WriteForumRow(state);
        return false;
    }
    state.HiddenTopic = false;
    if (Contains(page.TopSection, u"<!-- Topic Hidden -->")) {
        state.HiddenTopic = true;
        Tell(state, u"\r\nEncountered Hidden Topic - " + page.PagePath + u"\r\n");
    }
    page.TopPos = page.TopNext;
    page.AnnouncementPos = page.AnnouncementNext;
    page.PostPos = page.PostNext;
    if (page.PageLoopCount == 0) WriteForumRow(state);
    // A sub-topic that was left by a cancel leaves its own element in hand: each step asks for it anew.
    if (HasFound(state, kTopFound)) {
        const std::u16string label = IsCheck(state) ? LabelOf(state) : std::u16string();
        InSection(state, label, CurrentIndex(state).TopSection, [&] { ProcessTop(state, categoryName); });
    }
    if (HasFound(state, kPostFound)) {
        ProcessPosts(state);
        exhausted.posts = true;
    }
    if (HasFound(state, kAnnouncementFound)) {
        const DataIndexElement& now = CurrentIndex(state);
        InSection(state, {}, now.AnnouncementSection, [&] {
            mybbWriteAnnouncementMsg(state, now.AnnouncementSection, now.ParentForumId, now.FirstPosterId,
                                     now.MeName);
        });
    }
    return true;
}

void EnterPage(ConversionState& state, std::u16string_view pageName, std::u16string_view categoryName,
               std::int32_t parentForumId) {
    // The entry that leads here is no longer in hand.
    if (IsCheck(state)) state.Check->Section = {};
    state.HiddenTopic = false;
    ++state.Depth;
    ResetDataIndex(state, state.Depth);
    DataIndexElement& page = CurrentIndex(state);
    page.ParentForumId = parentForumId;
    page.ParentList = ParentListOf(state);
    page.ThreadBase = state.ThreadCounter;
    if (state.Depth == 1) state.DataIndex[0].MeName = categoryName;
    page.PageName = pageName;
}

void WalkPage(ConversionState& state, std::u16string_view pageName, std::u16string_view categoryName,
              std::int32_t parentForumId, bool pageNameIsPath) {
    EnterPage(state, pageName, categoryName, parentForumId);
    MakePaths(state, pageNameIsPath);
    if (!ChoosePage(state)) return;
    if (IsCheck(state) && !state.Check->MayEnterPage()) return;
    ReadPage(state);
    CurrentIndex(state).PageLoopCount = 0;
    Exhausted exhausted;
    while (ProcessSections(state, categoryName, exhausted)) {
        if (state.CancelRequested) return;
        if (IsCheck(state) && state.Check->MustLeavePage()) return;
        state.ToolboxA.KeepResponsive();
        ++CurrentIndex(state).PageLoopCount;
    }
}

// The finished page's element goes, and with it the page's text. After a cancel all stays as it is.
void LeavePage(ConversionState& state) {
    if (state.CancelRequested) return;
    InitDataIndex(state, state.Depth);
    --state.Depth;
    state.PreviousDepth = state.Depth;
    ResetDataIndex(state, state.Depth);
}

const clsMember& MemberOf(ConversionState& state, std::int32_t posterId) {
    return *state.MembersById.Get(ToText(posterId));
}

}  // namespace

void DiscusProcessBoardTopics(ConversionState& state, std::u16string_view pageName,
                              std::u16string_view categoryName, std::int32_t parentForumId,
                              bool pageNameIsPath) {
    if (state.CancelRequested) return;
    try {
        WalkPage(state, pageName, categoryName, parentForumId, pageNameIsPath);
    } catch (...) {
        RoutineHandler(state, LabelOf(state), CurrentError());
    }
    LeavePage(state);
}

void ResetDataIndex(ConversionState& state, std::int32_t depth) try {
    if (depth < 0) Raise(kSubscriptOutOfRange);
    state.DataIndex.resize(static_cast<std::size_t>(depth) + 1);
    state.ToolboxA.KeepResponsive();
} catch (...) {
    RoutineHandler(state, u" - ResetDataIndex()", CurrentError());
}

void InitDataIndex(ConversionState& state, std::int32_t depth) try {
    if (depth < 0 || static_cast<std::size_t>(depth) >= state.DataIndex.size()) Raise(kSubscriptOutOfRange);
    DataIndexElement& element = state.DataIndex[static_cast<std::size_t>(depth)];
    const Position topPos = element.TopPos;
    element = {};
    element.TopPos = topPos;
    element.TopicNumber = u"0";
    state.ToolboxA.KeepResponsive();
} catch (...) {
    RoutineHandler(state, u" - InitDataIndex()", CurrentError());
}

// The label is a neighbour's.
void mybbWriteThreadsFile(ConversionState& state, std::u16string_view subject, std::int32_t forumId,
                          std::int32_t firstPostId, std::int32_t lastPostId, std::int32_t firstPosterId,
                          std::int32_t lastPosterId, bool /*spare*/) try {
    if (state.CancelRequested) return;
    state.ThreadPostCount = Add(Subtract(lastPostId, firstPostId), 1);
    if (lastPostId < firstPostId) {
        lastPostId = firstPostId;
        state.ThreadPostCount = 0;
        CurrentIndex(state).LastPostId = lastPostId;
    }
    if (firstPosterId == 0) firstPosterId = 1;
    if (lastPosterId == 0) lastPosterId = 1;
    state.ThreadCounter = Add(state.ThreadCounter, 1);

    clsTblThreads row;
    row.tid = state.ThreadCounter;
    row.fid = forumId;
    row.subject = subject;
    const clsMember& first = MemberOf(state, firstPosterId);
    row.username = first.username;
    row.dateline = state.FirstPostTime;
    row.firstpost = CurrentIndex(state).FirstPostId;
    row.uid = first.ID;
    const clsMember& last = MemberOf(state, lastPosterId);
    row.lastpost = state.LastPostTime;
    row.lastposter = last.username;
    row.lastposteruid = last.ID;
    row.views = Add(Subtract(lastPostId, firstPostId), 1);
    row.replies = Subtract(row.views, 1);
    row.visible = 1;
    std::u16string text;
    row.BuildString(text);
    WriteFileLine(state, text, state.ThreadsFile, u"mybb_threads", false);
    ++state.ThreadRowCount;
    // The place asked for does not exist in an empty map, so the thread is never entered.
    if (state.ThreadCounter <= state.ThreadIdsByFile.Count()) {
        IgnoringErrors([&state] {
            state.ThreadIdsByFile.AddBefore(CurrentIndex(state).FileNumber, ToText(state.ThreadCounter),
                                            state.ThreadCounter);
        });
    }
    state.ToolboxA.KeepResponsive();
} catch (...) {
    RoutineHandler(state, u" - InitDataIndex()", CurrentError());
}

}  // namespace tessaly
