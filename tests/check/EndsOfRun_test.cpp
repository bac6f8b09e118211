#include <gtest/gtest.h>

#include <functional>
#include <ostream>

#include "tests/support/CheckedBoard.h"

namespace tessaly {
namespace {

using testing::BoardFile;
using testing::CheckedBoard;
using testing::PageHead;
using testing::Post;
using testing::Top;

using enum FindingKind;

std::string Head() {
    return PageHead("12/Radios", "12/Radios", "Radios", "Old radios");
}

// Nine fields behind the name: password, address, real name, two unread, registration, computer, last post,
// groups.
std::string MemberLine(const std::string& name, const std::string& computer, const std::string& groups) {
    return name + ":pw:" + name + "@host.example:" + name + ":::1012345678:" + computer +
           ":1043846797:" + groups + "\n";
}

// A board that holds one thing that ends a run.
struct EndOfRun {
    const char* name;
    FindingKind kind;
    std::u16string label;
    std::function<void(CheckedBoard&)> make;
};

void PrintTo(const EndOfRun& end, std::ostream* out) {
    *out << end.name;
}

void WritePosts(CheckedBoard& board, const std::string& body) {
    board.WritePage("12/12.html", Head() + Post(5, "Anna", "1043846797", "Hello") +
                                      Post(6, "Anna", "1043846798", body) +
                                      Post(7, "Anna", "1043846799", "Bye"));
}

const std::vector<EndOfRun>& AllEnds() {
    static const std::vector<EndOfRun> ends = {
        {"MoreFontTagsThanClosings", kFontTags, u"9 - DiscusProcessFormatting()",
         [](CheckedBoard& board) { WritePosts(board, "<font size=2><font color=red>x</font>"); }},
        {"ATimeThatIsNoNumber", kPostTime, u"13 - DiscusProcessPostsOnPage()",
         [](CheckedBoard& board) {
             board.WritePage("12/12.html", Head() + Post(5, "Anna", "yesterday", "Hello"));
         }},
        {"ATimeThatIsTooLarge", kPostTime, u"6 - DiscusProcessPostsOnPage()",
         [](CheckedBoard& board) {
             board.WritePage("12/12.html", Head() + Post(5, "Anna", "2147483648", "Hello"));
         }},
        {"APostTagWithoutEnd", kPostTag, u"5 - DiscusProcessPostsOnPage()",
         [](CheckedBoard& board) {
             board.WritePage("12/12.html", Head() + Post(5, "Anna", "1043846797", "Hello") + "<!--Post: 6");
         }},
        {"ALocalImageWithoutQuotes", kImageQuotes, u"5 - DiscusProcessPostsOnPage()",
         [](CheckedBoard& board) {
             WritePosts(board, "<img src=http://old.example/discus/messages/12/a-1.jpg alt=Dial>");
         }},
        {"ALocalImageWithoutQuotesInAnAnnouncement", kImageQuotes, u"5 - mybbWriteAnnouncementMsg()",
         [](CheckedBoard& board) {
             board.WritePage("12/12.html",
                             Head() +
                                 "<!--Announcement--><img src=http://old.example/discus/messages/12/a-1.jpg "
                                 "alt=Dial><!--/Announcement-->\n");
         }},
        {"AnAttachmentWithABareName", kAttachmentAddress, u"9 - ProcessAttachments()",
         [](CheckedBoard& board) {
             WritePosts(board,
                        "<!--attachment: x--><a href=\"a-1.pdf\" target=_blank>a</a><!--/attachment-->");
         }},
        {"AnUploadOfMoreThan2GB", kAttachmentSize, u"6 - ProcessAttachments()",
         [](CheckedBoard& board) {
             board.WritePage("12/a-1.pdf", "x");
             std::filesystem::resize_file(board.folder.Native("source/discus/messages/12/a-1.pdf"),
                                          2147483648);
             WritePosts(board, "<a href=\"http://old.example/discus/messages/12/a-1.pdf\">a</a>");
         }},
        {"AWebsiteWithoutItsScheme", kWebsite, u"9 - ProcessAttachments()",
         [](CheckedBoard& board) {
             board.state.txtDiscusWebsite.SetText(u"old.example");
             WritePosts(board,
                        "<!--attachment: x--><a href=\"http://old.example/discus/messages/12/a-1.pdf\" "
                        "target=_blank>a</a><!--/attachment-->");
         }},
        {"ALinkThatNamesTheBoardInItsText", kLinkAddress, u"9 - DiscusProcessLinks()",
         [](CheckedBoard& board) { WritePosts(board, "<a href=\"page\">see /discus/messages/12</a>"); }},
        {"ASubtopicLinkWhoseOnlySlashIsItsFirstCharacter", kSubtopicLink,
         u"5 - DiscusProcessBoardTopics() - ",
         [](CheckedBoard& board) { board.WritePage("12/12.html", Head() + Top(13, "/13.html", "Valves")); }},
        {"ASubtopicLinkWithoutAFileName", kRedirectPath, u"3004 - WriteFileData()",
         [](CheckedBoard& board) {
             board.WritePage("12/12.html",
                             Head() + Top(13, "http://old.example/discus/messages/12/", "Valves"));
         }},
        {"ARedirectFileInTheWayOfAFolder", kRedirectPath, u"76 - SaveRedirectFile()",
         [](CheckedBoard& board) {
             board.WritePage("12/12.html", Head() + Top(12, "http://old.example/discus/messages/12", "x") +
                                               Top(13, "http://old.example/discus/messages/12/13.html", "y"));
             board.WriteBoardFile(BoardFile("Main", {12, 14}));
             board.WritePage("14/14.html", PageHead("14/Tapes", "14/Tapes", "Tapes", "Tapes") +
                                               Post(9, "Anna", "1043846797", "Hello"));
         }},
        {"ARedirectFolderWithTooLongAName", kRedirectPath, u"75 - SaveRedirectFile()",
         [](CheckedBoard& board) {
             board.WritePage(
                 "12/12.html",
                 Head() + Top(13, "http://old.example/discus/messages/" + std::string(300, '7') + "/13.html",
                              "Valves"));
         }},
        {"ARedirectFileCalledLikeAFolder", kRedirectPath, u"3004 - WriteFileData()",
         [](CheckedBoard& board) {
             board.WriteBoardFile(BoardFile("Main", {12, 13}));
             board.WritePage("13/13.html", PageHead("13/Tapes", "13/Tapes", "Tapes", "Tapes") +
                                               Top(14, "http://old.example/discus/messages/../12", "x"));
         }},
        {"AnOutputFolderThatIsAFile", kOutputFolder, u"76 - SetupFolderLocations()",
         [](CheckedBoard& board) { board.folder.Write("output", "x"); }},
        {"AnOutputFolderBelowAFile", kOutputFolder, u"76 - SetupFolderLocations()",
         [](CheckedBoard& board) {
             board.folder.Write("file", "x");
             board.state.txtmybbOutputFolder.SetText(board.folder.Path("file/below/output"));
         }},
        {"NoOutputFolder", kMessage, u"mybb Output Folder Must Be Filled In",
         [](CheckedBoard& board) { board.state.txtmybbOutputFolder.SetText(u""); }},
        {"ACategoryNameWhoseTokensMakeATag", kForumName, u"5 - DiscusProcessDiscusMainBoardFile() - ",
         [](CheckedBoard& board) {
             board.WriteBoardFile(BoardFile("a`b\\c", {12, 12}));
         }},
        {"APageNameWhoseTokensMakeATag", kForumName, u"5 - DiscusProcessBoardTopics() - ",
         [](CheckedBoard& board) {
             board.WritePage("12/12.html", PageHead("12/Radios", "12/a`b\\c", "Radios", "Old radios") +
                                               Post(5, "Anna", "1043846797", "Hello"));
         }},
        {"APageThatLeadsToItself", kPageLoop, u"28 - DiscusProcessBoardTopics() - ",
         [](CheckedBoard& board) {
             board.WritePage("12/12.html",
                             Head() + Top(12, "http://old.example/discus/messages/12/12.html", "Radios"));
         }},
        {"AMemberLineWithNineFields", kMemberFields, u"9 - DiscusAddMember()",
         [](CheckedBoard& board) {
             board.WriteMembers("bert:pw:b@host.example:Bert:::1012345678:10.0.0.1:0\n");
         }},
        {"AMemberWithARegistrationTooLarge", kMemberNumber, u"6 - DiscusAddMember()",
         [](CheckedBoard& board) {
             board.WriteMembers("bert:pw:b@host.example:Bert:::2147483648:10.0.0.1:0:Editors\n");
         }},
        {"AGroupNameThatEscapingChanges", kGroupName, u"5 - mybbWriteUserFile()",
         [](CheckedBoard& board) { board.WriteMembers(MemberLine("bert", "10.0.0.1", "Bread, cakes")); }},
        {"AnAddressWithThreeParts", kMemberAddress, u"9 - mybbWriteUserFile()",
         [](CheckedBoard& board) { board.WriteMembers(MemberLine("bert", "10.0.1", "Editors")); }},
        {"AnAddressWithAnEmptyPart", kMemberAddress, u"5 - mybbWriteUserFile()",
         [](CheckedBoard& board) { board.WriteMembers(MemberLine("bert", "10..0.1", "Editors")); }},
        {"AnAddressOfLetters", kMemberAddress, u"6 - mybbWriteUserFile()",
         [](CheckedBoard& board) { board.WriteMembers(MemberLine("bert", "host.at.the.end", "Editors")); }},
        {"ACharsetThatNoOneKnows", kCharset, u"5 - GetFileDataCharset() - ",
         [](CheckedBoard& board) {
             board.state.Charset = u"ebcdic-nowhere";
             board.state.cboCharset.SetText(u"ebcdic-nowhere");
             board.folder.Write("program/Docs/ebcdic-nowhere.txt", "&auml;\ta\r\n");
             board.WriteBoardFile("");
             board.WriteMembers("");
         }},
        {"ALineOfTheCharacterFileWithoutATab", kCharacterFile, u"9 - DiscusGetReplaceableCharacterArray()",
         [](CheckedBoard& board) {
             board.folder.Write("program/Docs/utf-8.txt", "&auml;\ta\r\n&ouml;\r\n");
         }},
        {"NoBoardFile", kMessage, u"Missing File - ",
         [](CheckedBoard& board) {
             std::filesystem::remove(board.folder.Native("source/discus/messages/board-topics.html"));
         }},
        {"NoRedirectTemplate", kMessage, u"Source Redirect file not found - ",
         [](CheckedBoard& board) {
             std::filesystem::remove(board.folder.Native("program/Docs/Redirect.html"));
         }},
        {"NoAdministrator", kMessage, u"Default Admin of your mybb database must be filled in",
         [](CheckedBoard& board) { board.state.txtDefaultAdmin.SetText(u" "); }},
        {"NoForumAddress", kMessage, u"mybb Forum Address must be filled in",
         [](CheckedBoard& board) { board.state.txtmybbForumAddr.SetText(u""); }},
        {"NoSecureFolder", kMessage, u"",
         [](CheckedBoard& board) {
             std::filesystem::remove(board.folder.Native("source/discus_admin_1/secure"));
         }},
        {"AnOutputFolderThatHoldsTheSource", kMessage, u"The folder ",
         [](CheckedBoard& board) { board.state.txtmybbOutputFolder.SetText(board.folder.Path("source")); }},
    };
    return ends;
}

class EndsOfRun : public ::testing::TestWithParam<EndOfRun> {};

// The board is sound but for the one thing.
void MakeBoard(CheckedBoard& board, const EndOfRun& end) {
    board.WriteBoardFile(BoardFile("Main", {12}));
    board.WritePage("12/12.html", Head() + Post(5, "Anna", "1043846797", "Hello"));
    board.WriteMembers(MemberLine("anna", "192.168.1.5", "Editors"));
    end.make(board);
}

TEST_P(EndsOfRun, AreFoundAloneWithTheMessageThatTheRunShows) {
    CheckedBoard board;
    MakeBoard(board, GetParam());
    const BoardCheck& check = board.Check();
    EXPECT_EQ(board.CountOf(GetParam().kind), 1);
    EXPECT_EQ(testing::EndsOf(check), 1);
    ASSERT_TRUE(check.FirstEnd().has_value());
    EXPECT_EQ(check.FirstEnd()->label.substr(0, GetParam().label.size()), GetParam().label);

    board.Convert();
    ASSERT_FALSE(board.messages.empty());
    EXPECT_EQ(board.messages.front(), testing::MessageOf(*check.FirstEnd()));
}

INSTANTIATE_TEST_SUITE_P(Board, EndsOfRun, ::testing::ValuesIn(AllEnds()),
                         [](const auto& parameter) { return std::string(parameter.param.name); });

TEST(EndsOfRunTogether, AreFoundInOneCheckEachAtItsPlace) {
    CheckedBoard board;
    board.WriteBoardFile(BoardFile("Main", {12, 13}));
    board.WriteMembers(MemberLine("anna", "10.0.1", "Editors") + "bert:too:short\n" +
                       MemberLine("carla", "10.0.0.1", "Bread, cakes"));
    board.WritePage("12/12.html", Head() + Post(5, "Anna", "never", "Hello") +
                                      Post(6, "Anna", "1043846798", "<font size=2>x") +
                                      Post(7, "Anna", "1043846799", "<font size=2>x<font size=3>y</font>"));
    board.WritePage("13/13.html", PageHead("13/Tapes", "13/Tapes", "Tapes", "Tapes") +
                                      Post(8, "Anna", "1043846797",
                                           "<img src=http://old.example/discus/messages/13/a.jpg alt=x>"));
    board.Check();
    ASSERT_EQ(board.CountOf(kPostTime), 1);
    EXPECT_EQ(board.Of(kPostTime).front().post, u"5");
    // A font tag that no closing follows in the whole post is no failure of the run.
    ASSERT_EQ(board.CountOf(kFontTags), 1);
    EXPECT_EQ(board.Of(kFontTags).front().post, u"7");
    ASSERT_EQ(board.CountOf(kImageQuotes), 1);
    EXPECT_TRUE(board.Of(kImageQuotes).front().page.ends_with(u"\\13\\13.html"));
    ASSERT_EQ(board.CountOf(kMemberAddress), 1);
    EXPECT_EQ(board.Of(kMemberAddress).front().line, 1);
    EXPECT_EQ(board.Of(kMemberAddress).front().words, u"anna");
    ASSERT_EQ(board.CountOf(kMemberFields), 1);
    EXPECT_EQ(board.Of(kMemberFields).front().line, 2);
    ASSERT_EQ(board.CountOf(kGroupName), 1);
    EXPECT_EQ(board.Of(kGroupName).front().line, 3);
}

TEST(EndsOfRunTogether, OfOnePostAreAllFound) {
    CheckedBoard board;
    board.WriteBoardFile(BoardFile("Main", {12}));
    board.WritePage("12/12.html",
                    Head() + Post(5, "Anna", "never",
                                  "<!--attachment: x--><a href=\"a.pdf\" target=_blank>a</a>"
                                  "<!--/attachment--> <a href=\"x\">/secure/</a> <a href=\"x\">/secure/</a> "
                                  "<img src=http://old.example/discus/messages/12/a.jpg alt=Dial> "
                                  "<font size=2>x<font size=3>y</font>"));
    const BoardCheck& check = board.Check();
    EXPECT_EQ(board.CountOf(kPostTime), 1);
    EXPECT_EQ(board.CountOf(kAttachmentAddress), 1);
    EXPECT_EQ(board.CountOf(kLinkAddress), 2);
    EXPECT_EQ(board.CountOf(kImageQuotes), 1);
    EXPECT_EQ(board.CountOf(kFontTags), 1);
    EXPECT_EQ(testing::EndsOf(check), 6);
    // Nothing is told of the attachment's link a second time.
    EXPECT_EQ(board.CountOf(kLinkElsewhere), 0);
    EXPECT_EQ(check.Tally().posts, 1);
    EXPECT_TRUE(check.Tally().postsByYear.empty());
}

TEST(EndsOfRunTogether, OfOneAnnouncementAreAllFound) {
    CheckedBoard board;
    board.WriteBoardFile(BoardFile("Main", {12}));
    board.WritePage("12/12.html", Head() +
                                      "<!--Announcement--><a href=\"x\">/secure/</a> "
                                      "<img src=http://old.example/discus/messages/12/a.jpg alt=Dial>"
                                      "<!--/Announcement-->\n");
    board.Check();
    EXPECT_EQ(board.CountOf(kLinkAddress), 1);
    EXPECT_EQ(board.CountOf(kImageQuotes), 1);
    EXPECT_EQ(board.CountOf(kFurtherImage), 0);
}

TEST(EndsOfRunTogether, APictureThatEndsTheRunIsNoFurtherOne) {
    CheckedBoard board;
    board.WriteBoardFile(BoardFile("Main", {12}));
    const std::string picture = "<img src=http://old.example/discus/messages/12/a.jpg alt=Dial>";
    const std::string page = Head() + Post(5, "Anna", "1043846797", picture + "\n" + picture);
    board.WritePage("12/12.html", page);
    board.Check();
    ASSERT_EQ(board.CountOf(kImageQuotes), 1);
    EXPECT_EQ(board.Of(kImageQuotes).front().position, static_cast<Position>(page.find("<img") + 1));
    ASSERT_EQ(board.CountOf(kFurtherImage), 1);
    EXPECT_EQ(board.Of(kFurtherImage).front().position, static_cast<Position>(page.rfind("<img") + 1));
}

TEST(EndsOfRunTogether, OfOneMemberAreAllFound) {
    CheckedBoard board;
    board.WriteBoardFile(BoardFile("Main", {12}));
    board.WritePage("12/12.html", Head() + Post(5, "Anna", "1043846797", "Hello"));
    board.WriteMembers("anna:pw:a@host.example:Anna:::2147483648:10.0.1:2147483649:Bread, cakes/A?\n");
    const BoardCheck& check = board.Check();
    ASSERT_EQ(board.CountOf(kMemberNumber), 2);
    EXPECT_EQ(board.Of(kMemberNumber).front().detail, u"2147483648");
    EXPECT_EQ(board.Of(kMemberNumber).back().detail, u"2147483649");
    ASSERT_EQ(board.CountOf(kGroupName), 2);
    EXPECT_EQ(board.Of(kGroupName).front().detail, u"Bread, cakes");
    EXPECT_EQ(board.Of(kGroupName).back().detail, u"A?");
    ASSERT_EQ(board.CountOf(kMemberAddress), 1);
    EXPECT_EQ(board.Of(kMemberAddress).front().detail, u"10.0.1");
    EXPECT_EQ(testing::EndsOf(check), 5);
}

// As far as the fields go that are there.
TEST(EndsOfRunTogether, OfAMemberWithTooFewFieldsAreAllFound) {
    CheckedBoard board;
    board.WriteBoardFile(BoardFile("Main", {12}));
    board.WritePage("12/12.html", Head() + Post(5, "Anna", "1043846797", "Hello"));
    board.WriteMembers(
        "bert:pw:b@host.example:Bert:::0:10.0.0.1:0:Editors\n"
        "anna:pw:a@host.example:Anna:::2147483648:10.0.1:0\n");
    const BoardCheck& check = board.Check();
    EXPECT_EQ(board.CountOf(kInheritedGroup), 0);
    ASSERT_EQ(board.CountOf(kMemberFields), 1);
    const Finding& finding = board.Of(kMemberFields).front();
    EXPECT_EQ(finding.detail, u"9 fields");
    EXPECT_EQ(finding.words, u"anna");
    EXPECT_EQ(finding.line, 2);
    // The first line has 51 characters with its end.
    EXPECT_EQ(finding.position, 52);
    EXPECT_EQ(board.CountOf(kMemberAddress), 1);
    EXPECT_GE(board.CountOf(kMemberNumber), 1);
    EXPECT_EQ(board.CountOf(kUnknownPoster), 0);
    board.Convert();
    EXPECT_EQ(board.messages.front(), testing::MessageOf(*check.FirstEnd()));
}

TEST(EndsOfRunTogether, APostTagWithoutEndDoesNotHideWhatThePostsBeforeItHold) {
    CheckedBoard board;
    board.state.Charset = u"iso-8859-1";
    board.state.cboCharset.SetText(u"iso-8859-1");
    board.folder.Write("program/Docs/iso-8859-1.txt", "&Omega;\t\xCE\xA9\r\n");
    board.WriteBoardFile(BoardFile("Main", {12}));
    board.WritePage("12/12.html", Head() + Post(5, "Anna", "1043846797", "50 &Omega;") + "<!--Post: 6");
    board.Check();
    EXPECT_EQ(board.CountOf(kPostTag), 1);
    EXPECT_EQ(board.CountOf(kLackedCharacter), 1);
}

TEST(EndsOfRunTogether, AreFoundBesideASecureFolderThatIsNotThere) {
    CheckedBoard board;
    board.WriteBoardFile(BoardFile("Main", {12}));
    board.WritePage("12/12.html", Head() + Post(5, "Anna", "never", "Hello"));
    std::filesystem::remove(board.folder.Native("source/discus_admin_1/secure"));
    EXPECT_TRUE(board.Check().WasBoardRead());
    EXPECT_EQ(board.CountOf(kMessage), 1);
    EXPECT_EQ(board.CountOf(kPostTime), 1);
}

TEST(EndsOfRunTogether, WithoutAMessageFolderTheBoardIsNotLookedAt) {
    CheckedBoard board;
    board.WriteMembers(MemberLine("bert", "10.0.1", "Editors"));
    board.state.txtDiscusMessageFolder.SetText(board.folder.Path("nowhere"));
    const BoardCheck& check = board.Check();
    EXPECT_FALSE(check.WasBoardRead());
    EXPECT_FALSE(check.IsCancelled());
    EXPECT_EQ(board.CountOf(kMessage), 1);
    EXPECT_EQ(board.CountOf(kMemberAddress), 0);
}

TEST(EndsOfRunTogether, ANameThatIsNotFoundAgainIsToldWhereItStands) {
    CheckedBoard board;
    board.WriteBoardFile("\n" + BoardFile("a`b\\c", {12}));
    board.WritePage("12/12.html", PageHead("12/Radios", "12/d`e\\f", "Radios", "Old radios") +
                                      Post(5, "Anna", "1043846797", "Hello"));
    board.Check();
    ASSERT_EQ(board.CountOf(kForumName), 2);
    const Finding& category = board.Of(kForumName).front();
    EXPECT_TRUE(category.page.ends_with(u"\\board-topics.html"));
    EXPECT_EQ(category.line, 2);
    EXPECT_EQ(category.position, 2);
    const Finding& page = board.Of(kForumName).back();
    EXPECT_TRUE(page.page.ends_with(u"\\12\\12.html"));
    EXPECT_EQ(page.line, 3);
    EXPECT_EQ(page.words.substr(page.words.find(u"<!--Me: "), 16), u"<!--Me: 12/d`e\\f");
}

TEST(EndsOfRunTogether, ARedirectPathIsToldAtTheEntryThatLeadsThere) {
    CheckedBoard board;
    board.WriteBoardFile(BoardFile("Main", {12}));
    board.WritePage("12/12.html", Head() + Top(13, "http://old.example/discus/messages/12/13.html", "x") +
                                      Top(14, "http://old.example/discus/messages/12/", "Valves"));
    board.WritePage("12/13.html", PageHead("12/Radios", "13/One", "One", "One"));
    board.Check();
    ASSERT_EQ(board.CountOf(kRedirectPath), 1);
    const Finding& finding = board.Of(kRedirectPath).front();
    EXPECT_TRUE(finding.page.ends_with(u"\\12\\12.html"));
    EXPECT_EQ(finding.line, 6);
}

TEST(EndsOfRunTogether, LinksThatAreSpelledAlikeAreToldEachAtItsPlace) {
    CheckedBoard board;
    board.WriteBoardFile(BoardFile("Main", {12}));
    const std::string page =
        Head() + Post(5, "Anna", "1043846797", "<a href=\"x\">/secure/</a>\n<a href=\"x\">/secure/</a>");
    board.WritePage("12/12.html", page);
    board.Check();
    ASSERT_EQ(board.CountOf(kLinkAddress), 2);
    EXPECT_EQ(board.Of(kLinkAddress).front().position, static_cast<Position>(page.find("<a href=\"x") + 1));
    EXPECT_EQ(board.Of(kLinkAddress).back().position, static_cast<Position>(page.rfind("<a href=\"x") + 1));
    EXPECT_EQ(board.Of(kLinkAddress).back().line, board.Of(kLinkAddress).front().line + 1);
}

void WriteTopWithALongName(CheckedBoard& board, std::size_t length) {
    board.WriteBoardFile(BoardFile("Main", {12}));
    board.state.optCreateRedirectionFiles = true;
    const std::string name = "13" + std::string(length - 7, 'x') + ".html";
    board.WritePage("12/12.html",
                    Head() + Top(13, "http://old.example/discus/messages/12/" + name, "Valves"));
    board.WritePage("12/" + name, PageHead("12/Radios", "13/Valves", "Valves", "Valves"));
}

TEST(EndsOfRunTogether, ARedirectPageOfTheLongestNameThatAFileCanHaveIsNone) {
    CheckedBoard board;
    WriteTopWithALongName(board, 255);
    EXPECT_EQ(testing::EndsOf(board.Check()), 0);
    board.Convert();
    EXPECT_FALSE(board.state.Progress.WasCancelled);
}

TEST(EndsOfRunTogether, TellThePositionAndTheWordsOfTheTagThatIsOdd) {
    CheckedBoard board;
    board.WriteBoardFile(BoardFile("Main", {12}));
    const std::string page =
        Head() + Post(5, "Anna", "1043846797", "one\ntwo <font size=2>x</font> <font face=Arial>y");
    board.WritePage("12/12.html", page);
    board.Check();
    ASSERT_EQ(board.CountOf(kFontTags), 1);
    const Finding& finding = board.Of(kFontTags).front();
    // The page's head has four lines, and the post's text begins on its third.
    EXPECT_EQ(finding.position, static_cast<Position>(page.find("<font face") + 1));
    EXPECT_EQ(finding.line, 8);
    EXPECT_EQ(finding.label, u"9 - DiscusProcessFormatting()");
    EXPECT_EQ(finding.words, u"one two <font size=2>x</font> <font face=Arial>y<!--/Text--> <!--/Post: 5-->");
}

// A post's head may hold a picture and a link to the poster's address.
std::string PostWithAHead(const std::string& body) {
    return Head() +
           "<!--Post: 5--><img src=\"http://old.example/p.gif\" alt=p>"
           "<!--name--><a href=\"mailto:anna@host.example\">Anna</a><!--/name-->"
           "<!--Time: 1043846797--><!--Text-->" +
           body + "<!--/Text--><!--/Post: 5-->\n";
}

TEST(EndsOfRunTogether, TellTheLinkOfThePostsTextNotThatOfItsHead) {
    CheckedBoard board;
    board.WriteBoardFile(BoardFile("Main", {12}));
    const std::string page = PostWithAHead("<a href=\"y\">z</a> <a href=\"x\">/secure/</a>");
    board.WritePage("12/12.html", page);
    board.Check();
    ASSERT_EQ(board.CountOf(kLinkAddress), 1);
    EXPECT_EQ(board.Of(kLinkAddress).front().position, static_cast<Position>(page.find("<a href=\"x\"") + 1));
}

TEST(EndsOfRunTogether, TellThePictureOfThePostsTextNotThatOfItsHead) {
    CheckedBoard board;
    board.WriteBoardFile(BoardFile("Main", {12}));
    const std::string page =
        PostWithAHead("<img src=http://old.example/discus/messages/12/a-1.jpg alt=Dial>");
    board.WritePage("12/12.html", page);
    board.Check();
    ASSERT_EQ(board.CountOf(kImageQuotes), 1);
    EXPECT_EQ(board.Of(kImageQuotes).front().position,
              static_cast<Position>(page.find("<img src=http:") + 1));
}

TEST(EndsOfRunTogether, NameThePageAtWhichALoopOfThreeEndsTheRun) {
    CheckedBoard board;
    board.WriteBoardFile(BoardFile("Main", {12}));
    const auto way = [](int number) {
        return "http://old.example/discus/messages/12/" + std::to_string(number) + ".html";
    };
    board.WritePage("12/12.html", Head() + Top(13, way(13), "a") + Top(14, way(14), "b"));
    board.WritePage("12/13.html", PageHead("12/Radios", "13/One", "One", "One") + Top(14, way(14), "b"));
    board.WritePage("12/14.html", PageHead("12/Radios", "14/Two", "Two", "Two") + Top(13, way(13), "a") +
                                      Top(12, way(12), "c"));
    const BoardCheck& check = board.Check();
    ASSERT_TRUE(check.FirstEnd().has_value());
    board.Convert();
    EXPECT_EQ(board.messages.front(), testing::MessageOf(*check.FirstEnd()));
}

// 24 pages of which each leads to all others: the ways through them are too many to be walked.
TEST(EndsOfRunTogether, PagesThatAllLeadToOneAnotherAreGoneThroughOnce) {
    CheckedBoard board;
    board.WriteBoardFile(BoardFile("Main", {12}));
    std::string tops;
    for (int page = 12; page < 36; ++page) {
        tops += Top(page, "http://old.example/discus/messages/12/" + std::to_string(page) + ".html", "x");
    }
    for (int page = 12; page < 36; ++page) {
        const std::string number = std::to_string(page);
        board.WritePage("12/" + number + ".html",
                        PageHead("12/Radios", number + "/" + number, "x", "x") + tops);
    }
    board.Check();
    EXPECT_GT(board.CountOf(kPageLoop), 0);
    EXPECT_EQ(board.CountOf(kUnreachedPage), 0);
}

}  // namespace
}  // namespace tessaly
