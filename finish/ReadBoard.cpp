#include "finish/ReadBoard.h"

#include <algorithm>
#include <limits>

#include "finish/FieldTokens.h"
#include "finish/FinishError.h"
#include "members/clsTblUsers.h"
#include "output/clsTblForums.h"
#include "output/clsTblPosts.h"
#include "output/clsTblThreads.h"
#include "text/folding.h"
#include "text/numbers.h"
#include "text/search.h"
#include "text/split.h"
#include "translate/clsTblAttachments.h"

namespace tessaly {

namespace {

constexpr std::size_t kLongestName = 120;
constexpr std::int32_t kAdministrator = 1;

bool IsDigit(char16_t unit) {
    return unit >= u'0' && unit <= u'9';
}

// The same for an address in a message and in a link line: markup and line ends went out of the one and the
// signs behind a "=" out of the other.
std::uint64_t HashOfAddress(std::u16string_view address) {
    std::uint64_t hash = 0xCBF29CE484222325;
    char16_t last = 0;
    for (const char16_t unit : address) {
        if (unit == u'"' || unit == u'\n') continue;
        if (last == u'=' && (unit == u'-' || unit == u'+')) continue;
        hash = (hash ^ unit) * 0x100000001B3;
        last = unit;
    }
    return hash;
}

// The number behind "#POST", 0 when the address names no post.
std::uint64_t PostNamedBy(std::u16string_view address) {
    constexpr std::u16string_view kAnchor = u"#POST";
    const Position at = Find(address, kAnchor);
    return at == 0 ? 0 : LeadingDigitsOf(From(address, at + Length(kAnchor)));
}

struct LinkLine {
    std::u16string_view address;
    std::int32_t pid;
    bool isInAnnouncement;
    PageKey page;
};

// The fields are counted from the line's end, since the link's text may hold the "^" that divides them.
std::optional<LinkLine> ParseLinkLine(std::u16string_view line) {
    constexpr std::size_t kFieldsBehind = 7;
    const auto fields = Split(line, u"^");
    if (fields.size() < kFieldsBehind + 1) return {};
    const auto behind = [&fields](std::size_t fromEnd) { return fields[fields.size() - fromEnd]; };
    const Position open = Find(line, u"[url=");
    const Position end = Find(line, u"]");
    if (open != 1 || end == 0 || !IsNumeric(behind(4)) || !IsNumeric(behind(6))) return {};
    return LinkLine{Between(line, Length(u"[url=") + 1, end),
                    ToInteger(behind(4)),
                    behind(6) == u"0",
                    {LeadingDigitsOf(behind(2)), LeadingDigitsOf(behind(1))}};
}

template <typename Step>
void ForEachLinkLine(const Board& board, Step step) {
    for (const std::u16string& file : FilesOfFamily(board.import.path, u"InternalLinks")) {
        platform::LineReader lines(file, board.import.charset);
        for (std::u16string_view line; lines.Next(line);) {
            if (const auto link = ParseLinkLine(line)) step(*link);
        }
    }
}

void AddToSpan(Thread& thread, std::int32_t uid, std::int64_t pid, std::int64_t time) {
    const bool isFirst = thread.posts == 0;
    if (isFirst || time < thread.firstTime) {
        thread.firstTime = time;
        thread.firstUid = uid;
        thread.firstPost = pid;
    }
    if (isFirst || time >= thread.lastTime) {
        thread.lastTime = time;
        thread.lastUid = uid;
    }
    ++thread.posts;
}

void RegisterPage(Board& board, std::size_t thread, const PageKey& page) {
    board.threads[thread].page = page;
    if (!board.threadsByPage.try_emplace(page, thread).second) return;
    const auto [file, isNew] = board.threadsByFile.try_emplace(page.file, thread);
    if (!isNew) file->second = kNone;
}

// A run that was cancelled in the middle of a page has written posts of it and no thread.
std::size_t MakeThreadWithoutRow(Board& board, std::int32_t fid, const PageKey& page,
                                 std::u16string_view subject) {
    const auto forum = board.forumsByFid.find(fid);
    if (forum == board.forumsByFid.end())
        throw FinishError{u"A post is in forum " + ToText(fid) +
                          u", which has no row. Convert the board again."};
    Thread thread;
    thread.oldFid = fid;
    thread.forum = forum->second;
    thread.hasRow = false;
    board.threads.push_back(thread);
    board.threadsWithoutRow[page] = board.threads.size() - 1;
    board.subjectsWithoutRow.push_back(TurnBackTokens(subject));
    return board.threads.size() - 1;
}

// How many bytes the longest address takes that a link is led to.
std::size_t LongestAddress(const Board& board) {
    constexpr std::size_t kBehindTheForums = 70;
    return BytesInUtf8(board.options.forumAddress) + kBehindTheForums;
}

// A unit becomes four bytes at most, those of a font tag that is spelled out too, and each bracket may be a
// link's.
bool IsSurelyShort(const Board& board, std::u16string_view message, std::size_t tags) {
    const auto brackets = static_cast<std::size_t>(std::ranges::count(message, u'['));
    return message.size() * 4 + brackets * LongestAddress(board) + tags <= kMostMessageBytes;
}

// How many numbers to keep for a post: one more for each further post that its message may go on in. One is
// left over where a message fits into one post with its new addresses alone.
std::int64_t NumbersFor(const Board& board, std::int32_t oldPid, std::u16string_view message) {
    const std::size_t tags = AttachmentTags(board, oldPid).size();
    if (IsSurelyShort(board, message, tags)) return 1;
    return static_cast<std::int64_t>(PiecesOfMessage(board, message, tags).texts.size());
}

void NotePid(Board& board, std::int32_t oldPid, std::int64_t pid) {
    constexpr std::int32_t kMostPosts = 500000000;
    if (oldPid < 1 || oldPid > kMostPosts)
        throw FinishError{u"There is a post with the number " + ToText(oldPid) +
                          u". Convert the board again."};
    if (pid > std::numeric_limits<std::uint32_t>::max())
        throw FinishError{u"The numbers of the posts go beyond 4294967295. Take a smaller --first-post."};
    const auto at = static_cast<std::size_t>(oldPid);
    if (at >= board.pids.size()) board.pids.resize(std::max(at + 1, board.pids.size() * 2));
    board.pids[at] = static_cast<std::uint32_t>(pid);
}

std::int64_t NewAid(const Board& board, std::int32_t aid) {
    return board.options.firstPost - 1 + aid;
}

// A page with more files than posts writes a row for each post alone.
void TakeAttachmentWithoutRow(Board& board, std::int32_t aid, const FinishNote::Attachment& noted) {
    if (noted.name.empty()) {
        board.leftOver.attachments.push_back(u"the copy that begins with " + ToText(aid) +
                                             u"_, which has no row");
    } else if (noted.pid == 0) {
        board.leftOver.announced.push_back(ToText(aid) + u"_" + noted.hash + u", " + noted.name);
    } else {
        board.attachments[aid] = {NewAid(board, aid), noted.pid, false};
    }
}

// The page of such an attachment was not written to its end.
void LeaveOutAttachmentsWithoutPost(Board& board) {
    std::erase_if(board.attachments, [&board](const auto& entry) {
        const auto pid = static_cast<std::size_t>(entry.second.oldPid);
        const bool hasPost = pid < board.pids.size() && board.pids[pid] != 0;
        if (!hasPost)
            board.leftOver.attachments.push_back(u"the copy that begins with " + ToText(entry.first) +
                                                 u"_, whose post was not converted");
        return !hasPost;
    });
}

}  // namespace

std::uint64_t LeadingDigitsOf(std::u16string_view text) {
    constexpr std::size_t kMostDigits = 18;
    std::uint64_t number = 0;
    for (std::size_t at = 0; at < text.size() && at < kMostDigits && IsDigit(text[at]); ++at) {
        number = number * 10 + (text[at] - u'0');
    }
    return number;
}

PageKey PageAtPath(std::u16string_view path) {
    const auto steps = Split(path, u"/");
    if (steps.size() < 2) return {};
    return {LeadingDigitsOf(steps[steps.size() - 2]), LeadingDigitsOf(steps.back())};
}

std::size_t ThreadOfPost(const Board& board, std::int32_t pid) {
    const auto end = board.threads.begin() + static_cast<std::ptrdiff_t>(board.threadRows);
    // A page on which no post was found counts one all the same, the first of the next page: the later row
    // has it.
    const auto behind =
        std::upper_bound(board.threads.begin(), end, pid,
                         [](std::int32_t number, const Thread& thread) { return number < thread.firstPid; });
    if (behind == board.threads.begin()) return kNone;
    const Thread& thread = *std::prev(behind);
    if (pid >= thread.firstPid + thread.pidCount) return kNone;
    return static_cast<std::size_t>(std::prev(behind) - board.threads.begin());
}

std::size_t ThreadOfPage(const Board& board, const PageKey& page) {
    const auto exact = board.threadsByPage.find(page);
    if (exact != board.threadsByPage.end()) return exact->second;
    const auto file = board.threadsByFile.find(page.file);
    return file == board.threadsByFile.end() ? kNone : file->second;
}

std::size_t ThreadOfRow(const Board& board, std::int32_t pid, const PageKey& page) {
    const std::size_t thread = ThreadOfPost(board, pid);
    if (thread != kNone) return thread;
    const auto other = board.threadsWithoutRow.find(page);
    return other == board.threadsWithoutRow.end() ? kNone : other->second;
}

Poster PosterOf(const Board& board, std::int32_t uid) {
    const auto member = board.members.find(uid);
    if (member != board.members.end()) return {uid, member->second.name};
    const auto stranger = board.strangers.find(uid);
    const std::u16string name = stranger == board.strangers.end() ? std::u16string() : stranger->second;
    return {uid == kAdministrator ? uid : 0, name};
}

Origin OriginOf(std::u16string_view editreason) {
    Origin origin;
    const Position first = Find(editreason, u"^");
    if (first == 0) return origin;
    const Position second = Find(editreason, u"^", first + 1);
    origin.page.folder = LeadingDigitsOf(editreason);
    origin.page.file = LeadingDigitsOf(From(editreason, first + 1));
    if (second != 0) origin.post = LeadingDigitsOf(From(editreason, second + 1));
    return origin;
}

std::u16string AttachmentTags(const Board& board, std::int32_t oldPid) {
    std::u16string tags;
    const auto found = board.aidsByPid.find(oldPid);
    if (found == board.aidsByPid.end()) return tags;
    for (const std::int64_t aid : found->second) tags += u"\n[attachment=" + ToText(aid) + u"]";
    return tags;
}

void ReadMembers(Board& board) {
    using Row = clsTblUsers;
    constexpr std::size_t kUid = ColumnAt<Row>(u"uid");
    constexpr std::size_t kUsername = ColumnAt<Row>(u"username");
    constexpr FreeColumns kFree{ColumnAt<Row>(u"password"), ColumnAt<Row>(u"email")};
    UniqueNames names;
    ImportRows rows(board.import, u"mybb_users", Row::kColumns, kFree);
    while (rows.Next()) {
        const std::int32_t uid = rows.Int(kUid);
        std::u16string name = TurnBackName(rows.Text(kUsername));
        if (name.empty()) name = u"Member";
        Member member;
        member.name = names.Take(name, kLongestName, uid);
        if (member.name != name) board.leftOver.members.push_back(name + u" is now " + member.name);
        board.members[uid] = std::move(member);
    }
}

void ReadForums(Board& board) {
    using Row = clsTblForums;
    constexpr std::size_t kFid = ColumnAt<Row>(u"fid");
    constexpr std::size_t kStype = ColumnAt<Row>(u"stype");
    constexpr std::size_t kPid = ColumnAt<Row>(u"pid");
    ImportRows rows(board.import, u"mybb_forums", Row::kColumns);
    while (rows.Next()) {
        Forum forum;
        forum.oldFid = rows.Int(kFid);
        forum.isCategory = rows.Text(kStype) == u"c";
        const auto parent = board.forumsByFid.find(rows.Int(kPid));
        if (parent != board.forumsByFid.end()) {
            forum.parent = parent->second;
            board.forums[forum.parent].hasSubForum = true;
        }
        board.forumsByFid[forum.oldFid] = board.forums.size();
        board.forums.push_back(std::move(forum));
    }
    for (const FinishNote::Page& page : board.note.pages) {
        const auto forum = board.forumsByFid.find(page.fid);
        if (forum != board.forumsByFid.end())
            board.forumsByPage.try_emplace(PageAtPath(page.path), forum->second);
    }
}

void ReadThreads(Board& board) {
    using Row = clsTblThreads;
    constexpr std::size_t kFid = ColumnAt<Row>(u"fid");
    constexpr std::size_t kFirstpost = ColumnAt<Row>(u"firstpost");
    constexpr std::size_t kViews = ColumnAt<Row>(u"views");
    ImportRows rows(board.import, u"mybb_threads", Row::kColumns);
    while (rows.Next()) {
        Thread thread;
        thread.oldFid = rows.Int(kFid);
        thread.firstPid = rows.Int(kFirstpost);
        thread.pidCount = rows.Int(kViews);
        const auto forum = board.forumsByFid.find(thread.oldFid);
        const bool isInOrder = board.threads.empty() || board.threads.back().firstPid <= thread.firstPid;
        if (forum == board.forumsByFid.end() || !isInOrder)
            throw FinishError{
                u"The rows of threads and forums do not fit together. Convert the board again."};
        thread.forum = forum->second;
        board.threads.push_back(thread);
    }
    board.threadRows = board.threads.size();
}

void ReadAttachments(Board& board) {
    using Row = clsTblAttachments;
    constexpr std::size_t kAid = ColumnAt<Row>(u"aid");
    constexpr std::size_t kPosthash = ColumnAt<Row>(u"posthash");
    constexpr FreeColumns kFree{ColumnAt<Row>(u"filename"), ColumnAt<Row>(u"filetype")};
    ImportRows rows(board.import, u"mybb_attachments", Row::kColumns, kFree);
    while (rows.Next()) {
        const std::int32_t aid = rows.Int(kAid);
        const auto noted = board.note.attachments.find(aid);
        if (noted == board.note.attachments.end()) {
            board.leftOver.attachments.push_back(ToText(aid) + u"_" + std::u16string(rows.Text(kPosthash)) +
                                                 u", " + std::u16string(rows.Text(kFree.first)));
            continue;
        }
        board.attachments[aid] = {NewAid(board, aid), noted->second.pid};
    }
    for (const auto& [aid, noted] : board.note.attachments) {
        if (!board.attachments.contains(aid)) TakeAttachmentWithoutRow(board, aid, noted);
    }
    std::vector<std::int32_t> aids;
    for (const auto& [aid, attachment] : board.attachments) aids.push_back(aid);
    std::ranges::sort(aids);
    for (const std::int32_t aid : aids) {
        const Attachment& attachment = board.attachments[aid];
        board.aidsByPid[attachment.oldPid].push_back(attachment.aid);
    }
}

void ReadLinks(Board& board) {
    ForEachLinkLine(board, [&board](const LinkLine& link) {
        const std::uint64_t post = PostNamedBy(link.address);
        board.links[HashOfAddress(link.address)] = {link.page, post};
        if (post != 0) board.linkedPosts[{link.page.file, post}] = 0;
    });
}

void ReadPosts(Board& board) {
    using Row = clsTblPosts;
    constexpr std::size_t kPid = ColumnAt<Row>(u"pid");
    constexpr std::size_t kFid = ColumnAt<Row>(u"fid");
    constexpr std::size_t kSubject = ColumnAt<Row>(u"subject");
    constexpr std::size_t kUid = ColumnAt<Row>(u"uid");
    constexpr std::size_t kUsername = ColumnAt<Row>(u"username");
    constexpr std::size_t kDateline = ColumnAt<Row>(u"dateline");
    constexpr std::size_t kMessage = ColumnAt<Row>(u"message");
    constexpr std::size_t kEditreason = ColumnAt<Row>(u"editreason");
    ImportRows rows(board.import, u"mybb_posts", Row::kColumns);
    std::int64_t next = board.options.firstPost;
    while (rows.Next()) {
        const std::int32_t oldPid = rows.Int(kPid);
        const std::int32_t uid = rows.Int(kUid);
        const Origin origin = OriginOf(rows.Text(kEditreason));
        std::size_t thread = ThreadOfRow(board, oldPid, origin.page);
        if (thread == kNone)
            thread = MakeThreadWithoutRow(board, rows.Int(kFid), origin.page, rows.Text(kSubject));
        if (board.threads[thread].posts == 0) RegisterPage(board, thread, origin.page);
        if (!board.members.contains(uid)) {
            board.strangers.try_emplace(uid, TurnBackName(rows.Text(kUsername)));
            if (uid != kAdministrator) ++board.guestPosts;
        }
        NotePid(board, oldPid, next);
        const auto linked = board.linkedPosts.find({origin.page.file, origin.post});
        if (linked != board.linkedPosts.end() && linked->second == 0) linked->second = next;
        AddToSpan(board.threads[thread], uid, next, std::max(rows.Int(kDateline), 0));
        next += NumbersFor(board, oldPid, rows.Text(kMessage));
    }
    board.lastPid = next - 1;
    LeaveOutAttachmentsWithoutPost(board);
}

// A page that only lists others has become a forum.
std::optional<std::u16string> AddressOfPage(const Board& board, const PageKey& page) {
    const std::u16string& base = board.options.forumAddress;
    const std::size_t thread = ThreadOfPage(board, page);
    if (thread != kNone) return base + u"showthread.php?tid=" + ToText(board.threads[thread].tid);
    const auto forum = board.forumsByPage.find(page);
    if (forum == board.forumsByPage.end()) return {};
    return base + u"forumdisplay.php?fid=" + ToText(board.forums[forum->second].fid);
}

std::optional<std::u16string> NewAddressOf(const Board& board, std::u16string_view oldAddress) {
    const auto link = board.links.find(HashOfAddress(oldAddress));
    if (link == board.links.end()) return {};
    const LinkTarget& target = link->second;
    auto address = AddressOfPage(board, target.page);
    const auto post = board.linkedPosts.find({target.page.file, target.post});
    if (address && post != board.linkedPosts.end() && post->second != 0)
        *address += u"&pid=" + ToText(post->second) + u"#pid" + ToText(post->second);
    return address;
}

MessagePieces PiecesOfMessage(const Board& board, std::u16string_view message, std::size_t room) {
    return SplitMessage(
        FinishMarkup(message),
        {.most = kMostMessageBytes, .roomInFirst = room, .shortestAddress = LongestAddress(board)});
}

void ListDeadLinks(Board& board) {
    ForEachLinkLine(board, [&board](const LinkLine& link) {
        if (NewAddressOf(board, link.address)) return;
        const auto at = static_cast<std::size_t>(std::max(link.pid, 0));
        const std::u16string place = link.isInAnnouncement || at >= board.pids.size()
                                         ? u"an announcement"
                                         : u"post " + ToText(board.pids[at]);
        board.leftOver.links.push_back(std::u16string(link.address) + u" in " + place);
    });
}

}  // namespace tessaly
