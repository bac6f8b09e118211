#include "finish/FinishNote.h"

#include <gtest/gtest.h>

#include "tests/support/CommandLineBoard.h"
#include "tests/support/TestBoard.h"
#include "text/search.h"

namespace tessaly {
namespace {

using testing::CommandLineBoard;
using testing::PageHead;
using testing::Post;
using testing::ProgramRun;
using testing::RunProgram;
using testing::TestBoard;
using testing::Top;

// A board with a list page, a page below it, a hidden page, two members and an attachment.
class NotedBoard : public TestBoard {
  public:
    NotedBoard() {
        state.Note.IsWanted = true;
        state.txtDiscusWebsite.SetText(u"http://old.example/boards/discus");
        WriteBoardFile(testing::BoardFile("Main", {12, 40}));
        WritePage("12/12.html", PageHead("12/Radios", "12/Radios", "Radios", "Radios") +
                                    Top(34, "http://old.example/discus/messages/12/34.html?1", "Tubes"));
        WritePage("12/34.html",
                  PageHead("12/Radios", "34/Tubes", "Tubes", "Tubes") + Post(5, "Anna", "100", "Hello") +
                      Post(6, "Bert", "200",
                           "Here<!--attachment: --><a href=\"http://old.example/discus/messages/12/a-1.txt\" "
                           "target=_blank>a</a><!--/attachment-->"));
        WritePage("12/a-1.txt", "text");
        WriteSecurePage("40/40.html", PageHead("40/Secret", "40/Secret", "Secret", "Secret") +
                                          Post(7, "Anna", "300", "Psst"));
        WriteMembers("anna:x:a@b:Anna:::1:1.2.3.4:2:Editors\nbert:x:b@b:Bert:::1:1.2.3.4:2:\n");
    }
};

TEST(FinishNote, TellsCharsetForumPagesAttachmentsAndMembersWithoutGroup) {
    NotedBoard board;
    board.Convert();
    WriteFinishNote(board.state);
    const std::string hash = board.folder.Files("output/attachments").at(0).substr(2);
    EXPECT_EQ(board.Output("FinishNote.txt"),
              "charset,utf-8\r\n"
              "forum,http://new.example/\r\n"
              "page,0,/boards/discus/messages/board-topics.html\r\n"
              "page,2,/boards/discus/messages/12/12.html\r\n"
              "page,3,/boards/discus/messages/12/34.html\r\n"
              "page,4,/boards/discus_admin_1/secure/40/40.html\r\n"
              "page,4,/boards/discus/messages/40/40.html\r\n"
              "attachment,1,2,3,4," +
                  hash +
                  ",a-1.txt\r\n"
                  "nogroup,3\r\n");
}

// As a settings file has them into which an operator wrote the folders with "/", one at each end.
TEST(FinishNote, KnowsThePagesBelowTheRootHoweverTheStepsAreDivided) {
    NotedBoard board;
    for (TextField* const folder :
         {&board.state.txtDiscusMessageFolder, &board.state.txtDiscusSecureMessageFolder}) {
        std::u16string text = folder->Text;
        ReplaceAll(text, u"\\", u"/");
        folder->SetText(text + u"\\");
    }
    board.Convert();
    WriteFinishNote(board.state);
    const std::string note = board.Output("FinishNote.txt");
    EXPECT_NE(note.find("page,0,/boards/discus/messages/board-topics.html\r\n"
                        "page,2,/boards/discus/messages/12/12.html\r\n"
                        "page,3,/boards/discus/messages/12/34.html\r\n"
                        "page,4,/boards/discus_admin_1/secure/40/40.html\r\n"),
              std::string::npos)
        << note;
}

TEST(FinishNote, IsReadAsItWasWritten) {
    NotedBoard board;
    board.Convert();
    WriteFinishNote(board.state);
    const auto note = ReadFinishNote(board.folder.Path("output") + u"\\");
    ASSERT_TRUE(note);
    EXPECT_EQ(note->charset, u"utf-8");
    EXPECT_EQ(note->forumAddress, u"http://new.example/");
    ASSERT_EQ(note->pages.size(), 5u);
    EXPECT_EQ(note->pages[2].fid, 3);
    EXPECT_EQ(note->pages[2].path, u"/boards/discus/messages/12/34.html");
    ASSERT_EQ(note->attachments.size(), 1u);
    EXPECT_EQ(note->attachments.at(1).pid, 2);
    EXPECT_EQ(note->attachments.at(1).uid, 3);
    EXPECT_EQ(note->attachments.at(1).size, 4);
    EXPECT_EQ(note->attachments.at(1).hash.size(), 32u);
    EXPECT_EQ(note->attachments.at(1).name, u"a-1.txt");
    EXPECT_EQ(note->membersWithoutGroup, std::unordered_set<std::int32_t>{3});
}

TEST(FinishNote, IsNoneWhereThereIsNoFile) {
    const testing::TemporaryFolder folder;
    EXPECT_FALSE(ReadFinishNote(folder.Path() + u"\\"));
}

TEST(FinishNote, TellsTheFileOfAnAnnouncementWithoutAPost) {
    TestBoard board;
    board.state.Note.IsWanted = true;
    board.WriteBoardFile(testing::BoardFile("Main", {12}));
    board.WritePage("12/12.html", PageHead("12/Radios", "12/Radios", "Radios", "Radios") +
                                      Post(5, "Anna", "100", "Hello") +
                                      "<!--Announcement-->See <a "
                                      "href=\"http://old.example/discus/messages/12/a-1.txt\">a</a>"
                                      "<!--/Announcement-->");
    board.WritePage("12/a-1.txt", "text");
    board.Convert();
    ASSERT_EQ(board.state.Note.Attachments.size(), 1u);
    EXPECT_EQ(board.state.Note.Attachments[0].pid, 0);
    EXPECT_EQ(board.state.Note.Attachments[0].name, u"a-1.txt");
}

TEST(FinishNote, GathersNothingThatIsNotWanted) {
    NotedBoard board;
    board.state.Note.IsWanted = false;
    board.Convert();
    EXPECT_TRUE(board.state.Note.Attachments.empty());
    EXPECT_TRUE(board.state.Note.ForumPages.empty());
    EXPECT_TRUE(board.state.Note.MembersWithoutGroup.empty());
}

// The path of the front page, for a website's address.
std::string FrontPageAt(std::u16string website) {
    TestBoard board;
    board.state.DiscusWebsite = std::move(website);
    board.folder.MakeFolder("output");
    WriteFinishNote(board.state);
    const std::string note = board.Output("FinishNote.txt");
    const std::size_t begin = note.find("page,0,") + 7;
    return note.substr(begin, note.find("\r\n", begin) - begin);
}

TEST(FinishNote, PutsTheFolderOfTheOldSiteBeforeItsPaths) {
    EXPECT_EQ(FrontPageAt(u"http://old.example"), "/discus/messages/board-topics.html");
    EXPECT_EQ(FrontPageAt(u"http://old.example/discus/"), "/discus/messages/board-topics.html");
    EXPECT_EQ(FrontPageAt(u"http://old.example/a/b/discus"), "/a/b/discus/messages/board-topics.html");
    EXPECT_EQ(FrontPageAt(u"http://old.example/boards/"), "/boards/discus/messages/board-topics.html");
}

// The program

class Program : public CommandLineBoard {
  public:
    Program() : CommandLineBoard(TESSALY_CLI) {}

    ProgramRun Finish(const std::vector<std::string>& more = {}) const {
        std::vector<std::string> words = {TESSALY_CLI, "finish", "--output", Native("output")};
        words.insert(words.end(), more.begin(), more.end());
        return RunProgram(words);
    }

    ProgramRun ConvertAndFinish(std::vector<std::string> more = {}) const {
        more.insert(more.begin(), "--finish");
        const std::vector<std::string> usual = Options();
        more.insert(more.end(), usual.begin(), usual.end());
        return ConvertWith(more);
    }
};

bool Holds(const std::string& text, const std::string& what) {
    return text.find(what) != std::string::npos;
}

TEST(FinishCommand, IsPartOfAConversionThatAsksForIt) {
    const Program board;
    const ProgramRun run = board.ConvertAndFinish();
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(run.errors, "");
    EXPECT_TRUE(Holds(run.output, "Finished: 0 usergroups, 1 users, 2 forums, 1 threads, 1 posts"));
    EXPECT_TRUE(board.folder.Exists("output/FinishNote.txt"));
    EXPECT_TRUE(board.folder.Exists("output/finish/2 Load.sql"));
}

TEST(FinishCommand, LeavesNothingInAConversionThatDoesNotAskForIt) {
    const Program board;
    board.Convert();
    EXPECT_FALSE(board.folder.Exists("output/FinishNote.txt"));
    EXPECT_FALSE(board.folder.Exists("output/finish"));
}

TEST(FinishCommand, ChangesNoFileOfTheConversion) {
    const Program board;
    board.Convert();
    std::vector<std::pair<std::string, std::string>> before;
    for (const std::string& name : board.folder.Files("output"))
        if (!Holds(name, "Log")) before.emplace_back(name, board.folder.Read("output/" + name));
    board.ConvertAndFinish();
    for (const auto& [name, bytes] : before) EXPECT_EQ(board.folder.Read("output/" + name), bytes) << name;
}

TEST(FinishCommand, WorksOnItsOwnWithOtherNumbers) {
    const Program board;
    board.ConvertAndFinish();
    const ProgramRun run = board.Finish({"--first-forum", "20", "--first-thread", "30", "--first-post", "40",
                                         "--prefix", "club_", "--forum", "http://other.example"});
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_TRUE(board.folder.Read("output/finish/posts.txt").starts_with("40\t30\t21\t"));
    EXPECT_TRUE(Holds(board.folder.Read("output/finish/2 Load.sql"), "`club_posts`"));
    EXPECT_TRUE(Holds(board.folder.Read("output/finish/redirect.apache.txt"),
                      "/discus/messages/12/12.html http://other.example/showthread.php?tid=30\n"));
}

TEST(FinishCommand, TakesPagesAsForumsWhenToldTo) {
    const Program board;
    EXPECT_EQ(board.ConvertAndFinish({"--keep-pages-as-forums"}).status, 0);
    EXPECT_TRUE(board.folder.Exists("output/finish/forums.txt"));
}

TEST(FinishCommand, SaysNothingOnAQuietConversion) {
    const Program board;
    EXPECT_EQ(board.ConvertAndFinish({"--quiet"}).output, "");
}

TEST(FinishCommand, EndsWith1WhereThereIsNothingToFinish) {
    const Program board;
    const ProgramRun run = board.Finish();
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(run.errors.starts_with("There are no import files in ")) << run.errors;
}

TEST(FinishCommand, DoesNotFinishAConversionThatWasStopped) {
    const Program board;
    board.folder.Write("output/finish/old.txt", "x");
    const ProgramRun run = RunProgram(
        {TESSALY_CLI, "convert", "--finish", "--program-folder", board.Native("program"), "--root",
         board.Native("source"), "--messages", board.Native("nowhere"), "--output", board.Native("output"),
         "--admin", "Admin", "--website", "http://old.example", "--forum", "http://new.example"});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(Holds(run.errors, "so the board is not finished"));
    EXPECT_TRUE(board.folder.Exists("output/finish/old.txt"));
    EXPECT_FALSE(board.folder.Exists("output/FinishNote.txt"));
}

TEST(FinishCommand, EndsWith2ForWrongUsage) {
    EXPECT_EQ(RunProgram({TESSALY_CLI, "finish"}).status, 2);
    EXPECT_EQ(RunProgram({TESSALY_CLI, "finish", "--output", "x", "--first-forum", "0"}).status, 2);
    EXPECT_EQ(RunProgram({TESSALY_CLI, "finish", "--output", "x", "--first-forum", "65536"}).status, 2);
    EXPECT_EQ(RunProgram({TESSALY_CLI, "convert", "--first-post", "7"}).status, 2);
}

}  // namespace
}  // namespace tessaly
