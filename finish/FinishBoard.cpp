#include "finish/FinishBoard.h"

#include "finish/FinishError.h"
#include "finish/Guide.h"
#include "finish/NumberBoard.h"
#include "finish/ReadBoard.h"
#include "finish/RedirectMap.h"
#include "finish/Scripts.h"
#include "finish/WriteTables.h"
#include "platform/charset.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "text/numbers.h"
#include "text/search.h"
#include "text/split.h"

namespace tessaly {

namespace {

constexpr std::u16string_view kFamilies[] = {u"mybb_usergroups",   u"mybb_users", u"mybb_forums",
                                             u"mybb_threads",      u"mybb_posts", u"mybb_attachments",
                                             u"mybb_announcements"};

void RequireImportFiles(const FinishOptions& options) {
    const bool hasForums =
        platform::FolderExists(options.folder) && !FilesOfFamily(options.folder, u"mybb_forums").empty();
    if (!hasForums)
        throw FinishError{u"There are no import files in " + platform::WithNativeSeparators(options.folder) +
                          u". Name the output folder of a conversion."};
}

// A charset that no one tells: UTF-8 is known by its looks; what can be iso-8859-1 is taken for it, and told.
std::u16string GuessCharset(const FinishOptions& options, std::vector<std::u16string>& warnings) {
    constexpr std::u16string_view kAsk = u"say by --charset which one the old board's pages have.";
    platform::ByteLook all;
    for (const std::u16string_view family : kFamilies) {
        for (const std::u16string& file : FilesOfFamily(options.folder, family)) {
            const platform::ByteLook look = platform::LookAtBytes(file);
            all.isUtf8 = all.isUtf8 && look.isUtf8;
            all.hasControls = all.hasControls || look.hasControls;
        }
    }
    if (all.isUtf8) return u"utf-8";
    if (all.hasControls)
        throw FinishError{u"The charset of the import files is not known: " + std::u16string(kAsk)};
    warnings.push_back(
        u"The import files are read as iso-8859-1, since no note tells their charset. Where that is "
        u"wrong, " +
        std::u16string(kAsk));
    return u"iso-8859-1";
}

void SettleCharset(Board& board, std::vector<std::u16string>& warnings) {
    board.import.path = board.options.folder;
    board.import.charset = board.options.charset.empty() ? board.note.charset : board.options.charset;
    if (board.import.charset.empty()) board.import.charset = GuessCharset(board.options, warnings);
    const int error = IgnoringErrors([&board] { platform::Encoder encoder(board.import.charset); });
    if (error != kNoError) throw FinishError{u"There is no charset named " + board.import.charset + u"."};
}

void SettleForumAddress(Board& board, std::vector<std::u16string>& warnings) {
    constexpr std::size_t kLongestAddress = 500;
    std::u16string& address = board.options.forumAddress;
    if (address.empty()) address = board.note.forumAddress;
    address = Trim(address);
    if (address.empty()) {
        warnings.push_back(
            u"Links and the redirect map have no host, since no note tells the new forum's address. Say it "
            u"by "
            u"--forum.");
        return;
    }
    if (address.size() > kLongestAddress || address.find_first_of(u" \"<>[]\t\r\n") != std::u16string::npos)
        throw FinishError{u"The address of the new forum cannot be " + address};
    if (!address.ends_with(u'/')) address += u'/';
}

void CheckPrefix(const FinishOptions& options) {
    constexpr std::u16string_view kAllowed =
        u"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_$";
    constexpr std::size_t kLongestPrefix = 40;
    const bool isName = options.prefix.find_first_not_of(kAllowed) == std::u16string::npos;
    if (!isName || options.prefix.size() > kLongestPrefix)
        throw FinishError{u"A prefix of table names has letters, digits and \"_\" alone: " + options.prefix};
}

void DeleteOld(const FinishOptions& options, const std::u16string& folder) {
    if (!platform::FolderExists(folder)) return;
    platform::Protected kept;
    kept.homeFolder = platform::HomeFolder();
    kept.programFolder = options.programFolder;
    kept.sourceFolders = options.sourceFolders;
    kept.showMessage = [](std::u16string_view reason) { throw FinishError{std::u16string(reason)}; };
    platform::DeleteFolder(folder, kept);
}

void ReadAll(Board& board) {
    ReadMembers(board);
    ReadForums(board);
    ReadThreads(board);
    ReadAttachments(board);
    ReadLinks(board);
    ReadPosts(board);
    NumberBoard(board);
    ListDeadLinks(board);
}

void NoteWhatIsMissing(Board& board) {
    if (!board.hasNote)
        board.leftOver.notes.push_back(
            u"There is no FinishNote.txt, which \"convert --finish\" leaves. So attachments have no post, "
            u"pages that "
            u"only list others are not in the redirect map, links to them keep their old addresses, and "
            u"members "
            u"who were in no group may stand in that of the member before them.");
    if (board.guestPosts > 0)
        board.leftOver.notes.push_back(
            ToText(board.guestPosts) +
            u" posts are by members that have no row; they are guests' posts now.");
}

// A page that the run did not go through to its end has posts and no row.
void TellCutOffRun(Board& board, std::vector<std::u16string>& warnings) {
    if (board.threadsWithoutRow.empty()) return;
    const std::size_t pages = board.threadsWithoutRow.size();
    warnings.push_back(u"The conversion was cut off: the posts of " +
                       ToText(static_cast<std::int64_t>(pages)) + (pages == 1 ? u" page" : u" pages") +
                       u" have no thread row. Convert the board again.");
    board.leftOver.notes.push_back(warnings.back());
}

// The pages that lay in the secure folder, away from the front page.
void ListHiddenPages(Board& board) {
    std::u16string openFolder;
    for (const FinishNote::Page& page : board.note.pages) {
        if (page.fid == 0) openFolder = page.path.substr(0, page.path.rfind(u'/') + 1);
    }
    for (const FinishNote::Page& page : board.note.pages) {
        if (page.path.starts_with(openFolder)) continue;
        if (const auto address = AddressOfPage(board, PageAtPath(page.path)))
            board.leftOver.hiddenPages.push_back(page.path + u" is " + *address);
    }
}

// Gives what to tell the operator.
std::u16string WriteFolder(Board& board, const std::u16string& folder) {
    platform::MakeFolders(folder);
    const std::u16string into = folder + u"\\";
    const std::vector<TableSummary> tables = WriteTables(board, into);
    WriteScripts(into, board.options.prefix, tables, MemberNames(board));
    const std::int64_t pages = WriteRedirectMap(board, into);
    WriteGuide(board, tables, pages, into);
    return FinishSummary(board, tables);
}

Finished Finish(const FinishOptions& options) {
    CheckPrefix(options);
    RequireImportFiles(options);
    Finished finished;
    Board board;
    board.options = options;
    if (auto note = ReadFinishNote(options.folder)) {
        board.note = std::move(*note);
        board.hasNote = true;
    }
    SettleCharset(board, finished.warnings);
    SettleForumAddress(board, finished.warnings);
    ReadAll(board);
    TellCutOffRun(board, finished.warnings);
    NoteWhatIsMissing(board);
    ListHiddenPages(board);

    const std::u16string beside = options.folder + u"finish.part";
    try {
        DeleteOld(options, beside);
        finished.summary = WriteFolder(board, beside);
        const std::u16string folder = options.folder + u"finish";
        DeleteOld(options, folder);
        platform::RenameFolder(beside, folder);
    } catch (...) {
        IgnoringErrors([&] { DeleteOld(options, beside); });
        throw;
    }
    return finished;
}

}  // namespace

Finished FinishBoard(const FinishOptions& options) {
    try {
        return Finish(options);
    } catch (const RunTimeError& error) {
        throw FinishError{u"The board could not be finished in " +
                          platform::WithNativeSeparators(options.folder) + u": " + ToText(error.number) +
                          u" - " + error.description};
    }
}

}  // namespace tessaly
