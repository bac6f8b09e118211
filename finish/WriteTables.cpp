#include "finish/WriteTables.h"

#include <algorithm>
#include <random>

#include "finish/FieldTokens.h"
#include "finish/MessageText.h"
#include "finish/NumberBoard.h"
#include "finish/ReadBoard.h"
#include "members/clsTblUserGroups.h"
#include "members/clsTblUsers.h"
#include "output/clsTblForums.h"
#include "output/clsTblPosts.h"
#include "output/clsTblThreads.h"
#include "text/folding.h"
#include "text/numbers.h"
#include "text/search.h"
#include "translate/clsTblAnnouncements.h"
#include "translate/clsTblAttachments.h"

namespace tessaly {

namespace {

constexpr std::size_t kLongestTitle = 120;
constexpr std::size_t kLongestName = 80;
constexpr std::size_t kLongestMail = 220;
constexpr std::size_t kLongestFileName = 255;

// Columns of the forum's tables. All that is named here every version of the 1.8 line has; what is not named
// takes its default there.

constexpr std::u16string_view kForumColumns[] = {u"fid",
                                                 u"name",
                                                 u"description",
                                                 u"type",
                                                 u"pid",
                                                 u"parentlist",
                                                 u"disporder",
                                                 u"active",
                                                 u"open",
                                                 u"threads",
                                                 u"posts",
                                                 u"lastpost",
                                                 u"lastposter",
                                                 u"lastposteruid",
                                                 u"lastposttid",
                                                 u"lastpostsubject",
                                                 u"allowhtml",
                                                 u"allowmycode",
                                                 u"allowsmilies",
                                                 u"allowimgcode",
                                                 u"allowvideocode",
                                                 u"allowpicons",
                                                 u"allowtratings",
                                                 u"usepostcounts",
                                                 u"usethreadcounts",
                                                 u"showinjump"};
constexpr Constant kForumConstants[] = {{u"rules", u"''"}};

constexpr std::u16string_view kThreadColumns[] = {
    u"tid",      u"fid",        u"subject",       u"uid",   u"username", u"dateline",       u"firstpost",
    u"lastpost", u"lastposter", u"lastposteruid", u"views", u"replies",  u"attachmentcount"};
constexpr Constant kThreadConstants[] = {{u"closed", u"''"}, {u"notes", u"''"}, {u"visible", u"1"}};

constexpr std::u16string_view kPostColumns[] = {u"pid",      u"tid",      u"fid",     u"subject",   u"uid",
                                                u"username", u"dateline", u"message", u"editreason"};
constexpr Constant kPostConstants[] = {{u"ipaddress", u"''"}, {u"visible", u"1"}};

constexpr std::u16string_view kUserColumns[] = {u"uid",       u"username", u"password", u"salt",
                                                u"loginkey",  u"email",    u"postnum",  u"threadnum",
                                                u"usergroup", u"regdate",  u"lastpost"};
constexpr Constant kUserConstants[] = {{u"lastactive", u"0"},      {u"birthdayprivacy", u"'all'"},
                                       {u"allownotices", u"1"},    {u"receivepms", u"1"},
                                       {u"pmnotice", u"1"},        {u"pmnotify", u"1"},
                                       {u"buddyrequestspm", u"1"}, {u"showimages", u"1"},
                                       {u"showvideos", u"1"},      {u"showsigs", u"1"},
                                       {u"showavatars", u"1"},     {u"showquickreply", u"1"},
                                       {u"showredirect", u"1"},    {u"showcodebuttons", u"1"},
                                       {u"timezone", u"'0'"},      {u"regip", u"''"},
                                       {u"lastip", u"''"},         {u"signature", u"''"},
                                       {u"buddylist", u"''"},      {u"ignorelist", u"''"},
                                       {u"pmfolders", u"''"},      {u"notepad", u"''"},
                                       {u"usernotes", u"''"}};

constexpr std::u16string_view kGroupColumns[] = {u"gid",
                                                 u"title",
                                                 u"namestyle",
                                                 u"starimage",
                                                 u"canview",
                                                 u"canviewthreads",
                                                 u"canviewprofiles",
                                                 u"candlattachments",
                                                 u"canpostthreads",
                                                 u"canpostreplys",
                                                 u"canpostattachments",
                                                 u"canratethreads",
                                                 u"caneditposts",
                                                 u"candeleteposts",
                                                 u"candeletethreads",
                                                 u"caneditattachments"};
// A group of the board's own, beside those of the forum.
constexpr Constant kGroupConstants[] = {{u"type", u"2"}, {u"description", u"''"}};

constexpr std::u16string_view kAttachmentColumns[] = {u"aid",      u"pid",      u"posthash", u"uid",
                                                      u"filename", u"filetype", u"filesize", u"attachname"};
constexpr Constant kAttachmentConstants[] = {
    {u"downloads", u"0"}, {u"dateuploaded", u"0"}, {u"visible", u"1"}, {u"thumbnail", u"''"}};

constexpr std::u16string_view kAnnouncementColumns[] = {
    u"aid",       u"fid",     u"uid",       u"subject",     u"message",
    u"startdate", u"enddate", u"allowhtml", u"allowmycode", u"allowsmilies"};

struct MimeType {
    std::u16string_view ending;
    std::u16string_view type;
};

constexpr MimeType kMimeTypes[] = {
    {u"avi", u"video/x-msvideo"},
    {u"bmp", u"image/bmp"},
    {u"csv", u"text/csv"},
    {u"doc", u"application/msword"},
    {u"docx", u"application/vnd.openxmlformats-officedocument.wordprocessingml.document"},
    {u"gif", u"image/gif"},
    {u"gz", u"application/gzip"},
    {u"htm", u"text/html"},
    {u"html", u"text/html"},
    {u"ico", u"image/x-icon"},
    {u"jpe", u"image/jpeg"},
    {u"jpeg", u"image/jpeg"},
    {u"jpg", u"image/jpeg"},
    {u"mid", u"audio/midi"},
    {u"mov", u"video/quicktime"},
    {u"mp3", u"audio/mpeg"},
    {u"mp4", u"video/mp4"},
    {u"mpeg", u"video/mpeg"},
    {u"mpg", u"video/mpeg"},
    {u"odt", u"application/vnd.oasis.opendocument.text"},
    {u"pdf", u"application/pdf"},
    {u"png", u"image/png"},
    {u"pps", u"application/vnd.ms-powerpoint"},
    {u"ppt", u"application/vnd.ms-powerpoint"},
    {u"ps", u"application/postscript"},
    {u"rar", u"application/vnd.rar"},
    {u"rtf", u"application/rtf"},
    {u"svg", u"image/svg+xml"},
    {u"swf", u"application/x-shockwave-flash"},
    {u"tar", u"application/x-tar"},
    {u"tif", u"image/tiff"},
    {u"tiff", u"image/tiff"},
    {u"txt", u"text/plain"},
    {u"wav", u"audio/x-wav"},
    {u"wmv", u"video/x-ms-wmv"},
    {u"xls", u"application/vnd.ms-excel"},
    {u"xlsx", u"application/vnd.openxmlformats-officedocument.spreadsheetml.sheet"},
    {u"xml", u"text/xml"},
    {u"zip", u"application/zip"},
};

std::u16string_view MimeTypeOf(std::u16string_view ending) {
    for (const MimeType& known : kMimeTypes) {
        if (EqualIgnoringCase(known.ending, ending)) return known.type;
    }
    return u"application/octet-stream";
}

std::u16string Title(std::u16string_view text) {
    return CutTo(TurnBackTokens(text), kLongestTitle);
}

// Letters and digits that nobody can guess.
std::u16string RandomText(std::size_t length) {
    constexpr std::u16string_view kLetters =
        u"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
    static std::random_device random;
    std::uniform_int_distribution<std::size_t> place(0, kLetters.size() - 1);
    std::u16string text;
    while (text.size() < length) text += kLetters[place(random)];
    return text;
}

// No hash of a password begins with "!": nothing that is typed fits.
std::u16string UnusablePassword() {
    return u"!" + RandomText(40);
}

MessagePieces FinishedPieces(const Board& board, std::u16string_view message, const NewAddress& newAddress,
                             std::size_t room) {
    std::u16string text = LeadLinks(FinishMarkup(message), newAddress);
    const bool isSurelyShort = text.size() * 3 + room <= kMostMessageBytes;
    if (isSurelyShort || BytesInUtf8(text) + room <= kMostMessageBytes) return {{std::move(text)}};
    MessagePieces pieces = PiecesOfMessage(board, message, room);
    for (std::u16string& piece : pieces.texts) piece = LeadLinks(std::move(piece), newAddress);
    return pieces;
}

// What the operator is told of a message in several pieces.
void TellPieces(Board& board, const MessagePieces& pieces, std::u16string words) {
    if (pieces.isTorn) words += u", and a link, a picture or another tag is cut in two there";
    board.leftOver.longMessages.push_back(std::move(words));
}

class PostsWriter {
  public:
    PostsWriter(Board& board, std::u16string_view folder)
        : board_(board),
          file_(folder, u"posts", kPostColumns, kPostConstants),
          newAddress_([&board](std::u16string_view old) { return NewAddressOf(board, old); }) {}

    TableSummary Write() {
        for (Thread& thread : board_.threads) thread.posts = 0;
        ImportRows rows(board_.import, u"mybb_posts", clsTblPosts::kColumns);
        while (rows.Next()) WriteRow(rows);
        return file_.Close();
    }

  private:
    using Row = clsTblPosts;

    void WriteRow(const ImportRows& rows) {
        constexpr std::size_t kPid = ColumnAt<Row>(u"pid");
        constexpr std::size_t kMessage = ColumnAt<Row>(u"message");
        constexpr std::size_t kEditreason = ColumnAt<Row>(u"editreason");
        const std::int32_t oldPid = rows.Int(kPid);
        const std::size_t place = ThreadOfRow(board_, oldPid, OriginOf(rows.Text(kEditreason)).page);
        const std::int64_t pid = board_.pids[static_cast<std::size_t>(oldPid)];
        std::u16string tags = AttachmentTags(board_, oldPid);
        MessagePieces pieces = FinishedPieces(board_, rows.Text(kMessage), newAddress_, tags.size());
        std::u16string& first = pieces.texts.front();
        if (first.empty() || first.ends_with(u'\n')) tags.erase(0, tags.empty() ? 0 : 1);
        first += tags;
        Thread& thread = board_.threads[place];
        const auto attachments = board_.aidsByPid.find(oldPid);
        if (attachments != board_.aidsByPid.end())
            thread.attachments += static_cast<std::int64_t>(attachments->second.size());
        std::int64_t next = pid;
        for (const std::u16string& piece : pieces.texts) WritePiece(rows, thread, next++, piece);
        if (pieces.texts.size() > 1)
            TellPieces(board_, pieces, u"post " + ToText(pid) + u" goes on up to post " + ToText(next - 1));
    }

    void WritePiece(const ImportRows& rows, Thread& thread, std::int64_t pid, std::u16string_view message) {
        const std::int32_t uid = rows.Int(ColumnAt<Row>(u"uid"));
        const auto member = board_.members.find(uid);
        file_.Int(pid);
        file_.Int(thread.tid);
        file_.Int(board_.forums[thread.forum].fid);
        file_.Text(Title(rows.Text(ColumnAt<Row>(u"subject"))));
        file_.Int(PosterOf(board_, uid).uid);
        file_.Text(CutTo(TurnBackName(rows.Text(ColumnAt<Row>(u"username"))), kLongestName));
        file_.Int(std::max(rows.Int(ColumnAt<Row>(u"dateline")), 0));
        file_.Text(message);
        file_.Text(rows.Text(ColumnAt<Row>(u"editreason")));
        file_.EndRow();
        ++thread.posts;
        if (member != board_.members.end()) ++member->second.posts;
    }

    Board& board_;
    TableFile file_;
    NewAddress newAddress_;
};

void WriteThread(Board& board, TableFile& file, const Thread& thread, std::u16string_view subject) {
    const Poster first = PosterOf(board, thread.firstUid);
    const Poster last = PosterOf(board, thread.lastUid);
    file.Int(thread.tid);
    file.Int(board.forums[thread.forum].fid);
    file.Text(subject);
    file.Int(first.uid);
    file.Text(CutTo(first.name, kLongestName));
    file.Int(thread.firstTime);
    file.Int(thread.firstPost);
    file.Int(thread.lastTime);
    file.Text(CutTo(last.name, kLongestTitle));
    file.Int(last.uid);
    file.Int(thread.posts);
    file.Int(thread.posts - 1);
    file.Int(thread.attachments);
    file.EndRow();
    const auto member = board.members.find(thread.firstUid);
    if (member != board.members.end()) ++member->second.threads;
}

// The subjects of the threads that stand last in a forum, by their place.
using Subjects = std::unordered_map<std::size_t, std::u16string>;

TableSummary WriteThreads(Board& board, std::u16string_view folder, Subjects& lastSubjects) {
    constexpr std::size_t kSubject = ColumnAt<clsTblThreads>(u"subject");
    TableFile file(folder, u"threads", kThreadColumns, kThreadConstants);
    ImportRows rows(board.import, u"mybb_threads", clsTblThreads::kColumns);
    for (std::size_t at = 0; at < board.threads.size(); ++at) {
        const Thread& thread = board.threads[at];
        if (thread.hasRow) rows.Next();
        if (thread.posts == 0) continue;
        const std::u16string subject =
            thread.hasRow ? Title(rows.Text(kSubject))
                          : CutTo(board.subjectsWithoutRow[at - board.threadRows], kLongestTitle);
        WriteThread(board, file, thread, subject);
        if (board.forums[thread.forum].lastThread == at) lastSubjects[at] = subject;
    }
    return file.Close();
}

void WriteLastPost(const Board& board, TableFile& file, const Forum& forum, const Subjects& lastSubjects) {
    if (forum.lastThread == kNone) {
        file.Int(0);
        file.Text(u"");
        file.Int(0);
        file.Int(0);
        file.Text(u"");
        return;
    }
    const Thread& thread = board.threads[forum.lastThread];
    const Poster poster = PosterOf(board, thread.lastUid);
    file.Int(thread.lastTime);
    file.Text(CutTo(poster.name, kLongestTitle));
    file.Int(poster.uid);
    file.Int(thread.tid);
    file.Text(lastSubjects.at(forum.lastThread));
}

TableSummary WriteForums(const Board& board, std::u16string_view folder, const Subjects& lastSubjects) {
    using Row = clsTblForums;
    TableFile file(folder, u"forums", kForumColumns, kForumConstants);
    ImportRows rows(board.import, u"mybb_forums", Row::kColumns);
    for (const Forum& forum : board.forums) {
        rows.Next();
        if (forum.isFolded) continue;
        file.Int(forum.fid);
        file.Text(Title(rows.Text(ColumnAt<Row>(u"name"))));
        file.Text(TurnBackTokens(rows.Text(ColumnAt<Row>(u"description"))));
        file.Text(forum.isCategory ? u"c" : u"f");
        file.Int(forum.parent == kNone ? 0 : board.forums[forum.parent].fid);
        file.Text(forum.parentList);
        file.Int(forum.order);
        file.Int(rows.Int(ColumnAt<Row>(u"active")));
        file.Int(rows.Int(ColumnAt<Row>(u"lopen")));
        file.Int(forum.threads);
        file.Int(forum.posts);
        WriteLastPost(board, file, forum, lastSubjects);
        constexpr std::size_t kSwitches[] = {
            ColumnAt<Row>(u"allowhtml"),       ColumnAt<Row>(u"allowmycode"),
            ColumnAt<Row>(u"allowsmilies"),    ColumnAt<Row>(u"allowimgcode"),
            ColumnAt<Row>(u"allowvideocode"),  ColumnAt<Row>(u"allowpicons"),
            ColumnAt<Row>(u"allowtratings"),   ColumnAt<Row>(u"usepostcounts"),
            ColumnAt<Row>(u"usethreadcounts"), ColumnAt<Row>(u"showinjump")};
        for (const std::size_t column : kSwitches) file.Int(rows.Int(column));
        file.EndRow();
    }
    return file.Close();
}

// Who was added for a name under a message and is no member of the old board.
bool IsAddedPoster(const ImportRows& rows) {
    using Row = clsTblUsers;
    return rows.Text(ColumnAt<Row>(u"password")).empty() && rows.Text(ColumnAt<Row>(u"email")).empty() &&
           rows.Int(ColumnAt<Row>(u"regdate")) == 0;
}

// In the rows a member without a group has that of the member before. The note tells who has none; without it
// only added posters are known to.
std::int32_t GroupOf(const Board& board, const ImportRows& rows, std::int32_t uid) {
    constexpr std::int32_t kRegistered = 2;
    const std::int32_t group = rows.Int(ColumnAt<clsTblUsers>(u"usergroup"));
    if (group == 0 || board.note.membersWithoutGroup.contains(uid)) return kRegistered;
    return !board.hasNote && IsAddedPoster(rows) ? kRegistered : group;
}

TableSummary WriteUsers(const Board& board, std::u16string_view folder) {
    using Row = clsTblUsers;
    constexpr FreeColumns kFree{ColumnAt<Row>(u"password"), ColumnAt<Row>(u"email")};
    TableFile file(folder, u"users", kUserColumns, kUserConstants);
    ImportRows rows(board.import, u"mybb_users", Row::kColumns, kFree);
    while (rows.Next()) {
        const std::int32_t uid = rows.Int(ColumnAt<Row>(u"uid"));
        const Member& member = board.members.at(uid);
        file.Int(uid);
        file.Text(member.name);
        file.Text(UnusablePassword());
        file.Text(RandomText(8));
        file.Text(RandomText(50));
        file.Text(CutTo(rows.Text(ColumnAt<Row>(u"email")), kLongestMail));
        file.Int(member.posts);
        file.Int(member.threads);
        file.Int(GroupOf(board, rows, uid));
        file.Int(std::max(rows.Int(ColumnAt<Row>(u"regdate")), 0));
        file.Int(std::max(rows.Int(ColumnAt<Row>(u"lastpost")), 0));
        file.EndRow();
    }
    return file.Close();
}

TableSummary WriteGroups(const Board& board, std::u16string_view folder) {
    using Row = clsTblUserGroups;
    TableFile file(folder, u"usergroups", kGroupColumns, kGroupConstants);
    ImportRows rows(board.import, u"mybb_usergroups", Row::kColumns);
    while (rows.Next()) {
        file.Int(rows.Int(ColumnAt<Row>(u"gid")));
        file.Text(Title(rows.Text(ColumnAt<Row>(u"title"))));
        file.Text(rows.Text(ColumnAt<Row>(u"namestyle")));
        file.Text(rows.Text(ColumnAt<Row>(u"starimage")));
        constexpr std::size_t kPermissions[] = {ColumnAt<Row>(u"canview"),
                                                ColumnAt<Row>(u"canviewthreads"),
                                                ColumnAt<Row>(u"canviewprofiles"),
                                                ColumnAt<Row>(u"candlattachments"),
                                                ColumnAt<Row>(u"canpostthreads"),
                                                ColumnAt<Row>(u"canpostreplys"),
                                                ColumnAt<Row>(u"canpostattachments"),
                                                ColumnAt<Row>(u"canratethreads"),
                                                ColumnAt<Row>(u"caneditposts"),
                                                ColumnAt<Row>(u"candeleteposts"),
                                                ColumnAt<Row>(u"candeletethreads"),
                                                ColumnAt<Row>(u"caneditattachments")};
        for (const std::size_t column : kPermissions) file.Int(rows.Int(column));
        file.EndRow();
    }
    return file.Close();
}

// What the row of an attachment tells, or the note where it has none.
struct AttachmentRow {
    std::int32_t oldAid;
    std::u16string_view hash;
    std::int32_t uid;
    std::u16string_view name;
    std::u16string_view ending;
    std::int32_t size;
};

void WriteAttachment(const Board& board, TableFile& file, const AttachmentRow& row) {
    const Attachment& attachment = board.attachments.at(row.oldAid);
    file.Int(attachment.aid);
    file.Int(board.pids[static_cast<std::size_t>(attachment.oldPid)]);
    file.Text(row.hash);
    file.Int(PosterOf(board, row.uid).uid);
    file.Text(CutTo(row.name, kLongestFileName));
    file.Text(MimeTypeOf(row.ending));
    file.Int(row.size);
    file.Text(ToText(row.oldAid) + u"_" + std::u16string(row.hash));
    file.EndRow();
}

std::u16string_view BehindLast(std::u16string_view text, char16_t unit) {
    return text.substr(text.rfind(unit) + 1);
}

TableSummary WriteAttachments(const Board& board, std::u16string_view folder) {
    using Row = clsTblAttachments;
    constexpr FreeColumns kFree{ColumnAt<Row>(u"filename"), ColumnAt<Row>(u"filetype")};
    TableFile file(folder, u"attachments", kAttachmentColumns, kAttachmentConstants);
    ImportRows rows(board.import, u"mybb_attachments", Row::kColumns, kFree);
    while (rows.Next()) {
        const std::int32_t aid = rows.Int(ColumnAt<Row>(u"aid"));
        if (!board.attachments.contains(aid)) continue;
        WriteAttachment(board, file,
                        {aid, rows.Text(ColumnAt<Row>(u"posthash")), rows.Int(ColumnAt<Row>(u"uid")),
                         BehindLast(rows.Text(kFree.first), u'\\'), rows.Text(kFree.last),
                         rows.Int(ColumnAt<Row>(u"filesize"))});
    }
    for (const auto& [aid, noted] : board.note.attachments) {
        const auto attachment = board.attachments.find(aid);
        if (attachment == board.attachments.end() || attachment->second.hasRow) continue;
        WriteAttachment(board, file,
                        {aid, noted.hash, noted.uid, noted.name, BehindLast(noted.name, u'.'), noted.size});
    }
    return file.Close();
}

TableSummary WriteAnnouncements(Board& board, std::u16string_view folder) {
    using Row = clsTblAnnouncements;
    TableFile file(folder, u"announcements", kAnnouncementColumns, {});
    ImportRows rows(board.import, u"mybb_announcements", Row::kColumns);
    const NewAddress newAddress = [&board](std::u16string_view old) { return NewAddressOf(board, old); };
    std::int64_t aid = 0;
    while (rows.Next()) {
        const auto forum = board.forumsByFid.find(rows.Int(ColumnAt<Row>(u"fid")));
        const std::int64_t fid = forum == board.forumsByFid.end() ? 0 : board.forums[forum->second].fid;
        const std::u16string subject = Title(rows.Text(ColumnAt<Row>(u"subject")));
        const MessagePieces pieces =
            FinishedPieces(board, rows.Text(ColumnAt<Row>(u"message")), newAddress, 0);
        if (pieces.texts.size() > 1)
            TellPieces(board, pieces, u"announcement \"" + subject + u"\" goes on in those behind");
        for (const std::u16string& piece : pieces.texts) {
            file.Int(++aid);
            file.Int(fid);
            file.Int(PosterOf(board, rows.Int(ColumnAt<Row>(u"uid"))).uid);
            file.Text(subject);
            file.Text(piece);
            constexpr std::size_t kNumbers[] = {ColumnAt<Row>(u"startdate"), ColumnAt<Row>(u"enddate"),
                                                ColumnAt<Row>(u"allowhtml"), ColumnAt<Row>(u"allowmycode"),
                                                ColumnAt<Row>(u"allowsmilies")};
            for (const std::size_t column : kNumbers) file.Int(rows.Int(column));
            file.EndRow();
        }
    }
    return file.Close();
}

}  // namespace

std::vector<TableSummary> WriteTables(Board& board, std::u16string_view folder) {
    std::vector<TableSummary> tables;
    const TableSummary posts = PostsWriter(board, folder).Write();
    CountForums(board);
    Subjects lastSubjects;
    const TableSummary threads = WriteThreads(board, folder, lastSubjects);
    tables.push_back(WriteGroups(board, folder));
    tables.push_back(WriteUsers(board, folder));
    tables.push_back(WriteForums(board, folder, lastSubjects));
    tables.push_back(threads);
    tables.push_back(posts);
    tables.push_back(WriteAttachments(board, folder));
    tables.push_back(WriteAnnouncements(board, folder));
    return tables;
}

std::vector<std::u16string> MemberNames(const Board& board) {
    std::vector<std::int32_t> numbers;
    for (const auto& [number, member] : board.members) numbers.push_back(number);
    std::ranges::sort(numbers);
    std::vector<std::u16string> names;
    names.reserve(numbers.size());
    for (const std::int32_t number : numbers) names.push_back(board.members.at(number).name);
    return names;
}

}  // namespace tessaly
