#include "translate/modAttachments.h"

#include "tests/translate/AttachmentsTest.h"

namespace tessaly {
namespace {

using testing::kFile;
using testing::kHello;
using testing::kSubscript;
using testing::ProcessAttachmentsTest;
using testing::Section;

TEST_F(ProcessAttachmentsTest, AFileIsCopiedGetsItsRowAndLeavesTheBody) {
    board.WritePage("12/a.txt", "hello");
    EXPECT_EQ(Process(u"before " + Section(kFile) + u" behind"), u"clip");
    EXPECT_EQ(body, u"before  behind");
    EXPECT_EQ(state.PageAttachmentRows.Get(u"1"), Row(u"1", kHello, Messages("12\\a.txt"), u"txt", u"5"));
    EXPECT_EQ(board.folder.Files("output/attachments"),
              (std::vector<std::string>{"1_5D41402ABC4B2A76B9719D911017C592"}));
    EXPECT_EQ(board.Output("attachments/1_5D41402ABC4B2A76B9719D911017C592"), "hello");
    EXPECT_EQ(state.txtArea.Text, u"");
}

TEST_F(ProcessAttachmentsTest, WithTheOptionOffSectionsStay) {
    board.WritePage("12/a.txt", "hello");
    state.optCreateAttachments = false;
    ExpectNothingTaken(Section(kFile));
}

TEST_F(ProcessAttachmentsTest, ABodyWithoutASectionStays) {
    ExpectNothingTaken(u"text <a href=\"http://old.example/discus/messages/12/a.txt\" target=_blank>a</a>");
    ExpectNothingTaken(u"<!--attachment: 1--> never ended");
}

TEST_F(ProcessAttachmentsTest, OnlyTheFirstSectionIsTaken) {
    board.WritePage("12/a.txt", "hello");
    board.WritePage("12/b.txt", "hello");
    const std::u16string second = Section(u"http://old.example/discus/messages/12/b.txt");
    EXPECT_EQ(Process(Section(kFile) + second), u"clip");
    EXPECT_EQ(body, second);
    EXPECT_EQ(state.AttachmentCounter, 1);
}

TEST_F(ProcessAttachmentsTest, ASectionThatStandsTwiceGoesTwice) {
    board.WritePage("12/a.txt", "hello");
    EXPECT_EQ(Process(Section(kFile) + u"and" + Section(kFile)), u"clip");
    EXPECT_EQ(body, u"and");
    EXPECT_EQ(state.AttachmentCounter, 1);
}

TEST_F(ProcessAttachmentsTest, UpperCaseTagsAreTheSame) {
    board.WritePage("12/a.txt", "hello");
    EXPECT_EQ(Process(u"<!--ATTACHMENT: <A HREF=\"http://old.example/discus/messages/12/a.txt\" TARGET=x>"
                      u"<!--/Attachment-->"),
              u"clip");
    EXPECT_EQ(body, u"");
}

// Why an address that leads to a page or a script is no attachment.
TEST_F(ProcessAttachmentsTest, AShowCgiAddressIsNoValidType) {
    ExpectRefusal(u"http://old.example/cgi/Show.CGI?x",
                  u"Attachment is not a valid type - http:\\\\old.example\\cgi\\Show.CGI?x\r\n");
}

TEST_F(ProcessAttachmentsTest, AShowPageAddressIsNoValidType) {
    ExpectRefusal(u"http://old.example/showpage.html",
                  u"Attachment is not a valid type - http:\\\\old.example\\showpage.html\r\n");
}

TEST_F(ProcessAttachmentsTest, APageWithAQueryIsNoValidType) {
    ExpectRefusal(
        u"http://old.example/discus/messages/12/12.html?99",
        u"Attachment is not a valid type - http:\\\\old.example\\discus\\messages\\12\\12.html?99\r\n");
}

TEST_F(ProcessAttachmentsTest, AScriptIsNoValidType) {
    ExpectRefusal(u"a.php", u"Attachment is not a valid type - a.php\r\n");
}

TEST_F(ProcessAttachmentsTest, AnAddressThatEndsInASlashIsNoValidFile) {
    ExpectRefusal(u"http://old.example/discus/messages/12/",
                  u"Attachment is not a valid file - http:\\\\old.example\\discus\\messages\\12\\\r\n");
}

TEST_F(ProcessAttachmentsTest, AMissingFileIsReportedWithBothPaths) {
    ExpectNotThere(kFile, Messages("12\\a.txt"), Secure("12\\a.txt"),
                   u"http:\\\\old.example\\discus\\messages\\12\\a.txt");
}

TEST_F(ProcessAttachmentsTest, AFileInTheSecureFolderIsTakenFromThere) {
    board.WriteSecurePage("12/a.txt", "hello");
    ExpectTaken(kFile, Secure("12\\a.txt"));
}

TEST_F(ProcessAttachmentsTest, TheMessageFolderComesFirst) {
    board.WritePage("12/a.txt", "hello");
    board.WriteSecurePage("12/a.txt", "another");
    ExpectTaken(kFile, Messages("12\\a.txt"));
}

TEST_F(ProcessAttachmentsTest, AFolderOfThatNameIsNoFile) {
    board.folder.MakeFolder("source/discus/messages/12/a.txt");
    ExpectNotThere(kFile, Messages("12\\a.txt"), Secure("12\\a.txt"),
                   u"http:\\\\old.example\\discus\\messages\\12\\a.txt");
}

TEST_F(ProcessAttachmentsTest, AnotherHostEndsInSilence) {
    board.WritePage("12/a.txt", "hello");
    ExpectSilence(u"http://elsewhere.example/discus/messages/12/a.txt");
    ExpectSilence(u"http://old.example:8080/discus/messages/12/a.txt");
}

TEST_F(ProcessAttachmentsTest, HostsAreComparedIgnoringCase) {
    board.WritePage("12/a.txt", "hello");
    ExpectTaken(u"HTTP://Old.Example/discus/messages/12/a.txt", Messages("12\\a.txt"));
}

TEST_F(ProcessAttachmentsTest, TheSchemeIsNotCompared) {
    board.WritePage("12/a.txt", "hello");
    ExpectTaken(u"https://old.example/12/a.txt", Messages("12\\a.txt"));
}

TEST_F(ProcessAttachmentsTest, AnAddressFromTheServersRootEndsInSilence) {
    board.WritePage("12/a.txt", "hello");
    ExpectSilence(u"/discus/messages/12/a.txt");
}

TEST_F(ProcessAttachmentsTest, AnAddressWithoutASchemeEndsInSilence) {
    board.WritePage("12/a.txt", "hello");
    ExpectSilence(u"old.example/discus/messages/12/a.txt");
}

TEST_F(ProcessAttachmentsTest, ABareFileNameEndsTheRun) {
    board.WritePage("12/a.txt", "hello");
    ExpectEndOfRun(Section(u"a.txt"), kSubscript);
}

TEST_F(ProcessAttachmentsTest, AnAddressOfTwoPartsEndsTheRun) {
    ExpectEndOfRun(Section(u"12/a.txt"), kSubscript);
}

TEST_F(ProcessAttachmentsTest, AnAnchorWithoutATargetEndsTheRun) {
    ExpectEndOfRun(
        u"<!--attachment: 1--><a href=\"http://old.example/discus/messages/12/a.txt\">a</a>"
        u"<!--/attachment-->",
        kSubscript);
}

TEST_F(ProcessAttachmentsTest, AWebsiteOfTwoPartsEndsTheRun) {
    board.WritePage("12/a.txt", "hello");
    state.DiscusWebsite = u"old.example/discus";
    ExpectEndOfRun(Section(kFile), kSubscript);
}

TEST_F(ProcessAttachmentsTest, AFileDirectlyBelowMessagesLiesInTheMessageFolderItself) {
    board.WritePage("a.txt", "hello");
    ExpectTaken(u"http://old.example/discus/Messages/a.txt", Messages("a.txt"));
}

TEST_F(ProcessAttachmentsTest, AFileDirectlyBelowSecureLiesInTheSecureFolderItself) {
    board.WriteSecurePage("a.txt", "hello");
    ExpectTaken(u"http://old.example/discus/SECURE/a.txt", Secure("a.txt"));
}

TEST_F(ProcessAttachmentsTest, OtherStepsBeforeTheLastTwoDoNotCount) {
    board.WritePage("12/a.txt", "hello");
    ExpectTaken(u"http://old.example/secure/x/y/12/a.txt", Messages("12\\a.txt"));
}

TEST_F(ProcessAttachmentsTest, ANetworkFolderLosesItsFirstBackslash) {
    state.DiscusMessageFolder = u"\\\\server\\share";
    ExpectNotThere(kFile, u"\\server\\share\\12\\a.txt", Secure("12\\a.txt"),
                   u"http:\\\\old.example\\discus\\messages\\12\\a.txt");
}

TEST_F(ProcessAttachmentsTest, TheAddressIsCutAtATargetWithinItAndTrimmed) {
    board.WritePage("12/a.txt", "hello");
    ExpectTaken(u"  http://old.example/discus/messages/12/a.txt   TARGET=_top x", Messages("12\\a.txt"));
}

TEST_F(ProcessAttachmentsTest, DoubleQuotesWithinTheAddressGo) {
    board.WritePage("12/a.txt", "hello");
    ExpectTaken(u"http://old.example/discus/messages/12/\"a\".txt", Messages("12\\a.txt"));
}

TEST_F(ProcessAttachmentsTest, WhatElseStandsInTheSectionIsIgnored) {
    board.WritePage("12/a.txt", "hello");
    EXPECT_EQ(
        Process(u"<!--attachment: <img src=\"x\"><a href=\"http://old.example/discus/messages/12/a.txt\" "
                u"target=x><a href=\"http://old.example/b.php\" target=y><!--/attachment-->"),
        u"clip");
}

TEST_F(ProcessAttachmentsTest, BlanksInAnAddressArePartOfTheName) {
    board.WritePage("12/my own file.txt", "hello");
    ExpectTaken(u"http://old.example/discus/messages/12/my own file.txt", Messages("12\\my own file.txt"));
}

TEST_F(ProcessAttachmentsTest, PercentSignsAreNotDecoded) {
    board.WritePage("12/my%20file.txt", "hello");
    board.WritePage("12/other file.txt", "hello");
    ExpectTaken(u"http://old.example/discus/messages/12/my%20file.txt", Messages("12\\my%20file.txt"));
    EXPECT_EQ(Process(Section(u"http://old.example/discus/messages/12/other%20file.txt")), u"xx");
}

TEST_F(ProcessAttachmentsTest, AFileWhoseCaseDiffersIsFoundAndKeepsTheSpellingOfTheAddress) {
    board.WritePage("12/A.TXT", "hello");
    ExpectTaken(kFile, Messages("12\\a.txt"));
}

TEST_F(ProcessAttachmentsTest, TwoDotsThatStayInsideTheSourceAreFollowed) {
    board.folder.Write("source/discus/a.txt", "hello");
    ExpectTaken(u"http://old.example/discus/messages/../a.txt", Messages("..\\a.txt"));
}

TEST_F(ProcessAttachmentsTest, AFileThatTwoDotsReachOutsideTheSourceDoesNotExist) {
    board.folder.Write("source/discus/a.txt", "hello");
    state.DiscusRootFolder = state.DiscusMessageFolder;
    ExpectNotThere(u"http://old.example/discus/messages/../a.txt", Messages("..\\a.txt"), Secure("..\\a.txt"),
                   u"http:\\\\old.example\\discus\\messages\\..\\a.txt");
}

TEST_F(ProcessAttachmentsTest, AFileWithoutADotHasItsWholePathAsType) {
    board.WritePage("12/readme", "hello");
    Process(Section(u"http://old.example/discus/messages/12/readme"));
    const std::u16string path = Messages("12\\readme");
    ASSERT_EQ(path.find(u'.'), std::u16string::npos);
    EXPECT_EQ(state.PageAttachmentRows.Get(u"1"), Row(u"1", kHello, path, path, u"5"));
}

TEST_F(ProcessAttachmentsTest, TheTypeIsWhatStandsBehindTheLastDotOfThePath) {
    board.WritePage("12/a.tar.gz", "hello");
    board.WritePage("1.2/readme", "hello");
    Process(Section(u"http://old.example/discus/messages/12/a.tar.gz"));
    Process(Section(u"http://old.example/discus/messages/1.2/readme"));
    EXPECT_EQ(state.PageAttachmentRows.Get(u"1"), Row(u"1", kHello, Messages("12\\a.tar.gz"), u"gz", u"5"));
    EXPECT_EQ(state.PageAttachmentRows.Get(u"2"),
              Row(u"2", kHello, Messages("1.2\\readme"), u"2\\readme", u"5"));
}

TEST_F(ProcessAttachmentsTest, AFileLinkedTwiceIsCopiedTwiceUnderTwoNumbers) {
    board.WritePage("12/a.txt", "hello");
    Process(Section(kFile));
    Process(Section(kFile));
    EXPECT_EQ(state.PageAttachmentRows.Get(u"1"), Row(u"1", kHello, Messages("12\\a.txt"), u"txt", u"5"));
    EXPECT_EQ(state.PageAttachmentRows.Get(u"2"), Row(u"2", kHello, Messages("12\\a.txt"), u"txt", u"5"));
    EXPECT_EQ(board.folder.Files("output/attachments"),
              (std::vector<std::string>{"1_5D41402ABC4B2A76B9719D911017C592",
                                        "2_5D41402ABC4B2A76B9719D911017C592"}));
}

TEST_F(ProcessAttachmentsTest, AnEmptyFileIsTaken) {
    board.WritePage("12/a.txt", "");
    Process(Section(kFile));
    EXPECT_EQ(state.PageAttachmentRows.Get(u"1"),
              Row(u"1", u"D41D8CD98F00B204E9800998ECF8427E", Messages("12\\a.txt"), u"txt", u"0"));
    EXPECT_EQ(board.Output("attachments/1_D41D8CD98F00B204E9800998ECF8427E"), "");
}

// 30 MB of the bytes 0 to 250 over and over, which line up with no power of two.
TEST_F(ProcessAttachmentsTest, ALargeFileIsHashedAndCopiedByteForByte) {
    std::string bytes(30 * 1024 * 1024, '\0');
    for (std::size_t at = 0; at < bytes.size(); ++at) bytes[at] = static_cast<char>(at % 251);
    board.WritePage("12/a.txt", bytes);
    EXPECT_EQ(Process(Section(kFile)), u"clip");
    EXPECT_EQ(state.PageAttachmentRows.Get(u"1"),
              Row(u"1", u"7960B0A37E8A99400743FBAE1C701BB7", Messages("12\\a.txt"), u"txt", u"31457280"));
    EXPECT_TRUE(board.Output("attachments/1_7960B0A37E8A99400743FBAE1C701BB7") == bytes);
}

TEST_F(ProcessAttachmentsTest, TheCopyReplacesAFileOfItsName) {
    board.WritePage("12/a.txt", "hello");
    board.folder.Write("output/attachments/1_5D41402ABC4B2A76B9719D911017C592", "an older and longer one");
    ExpectTaken(kFile, Messages("12\\a.txt"));
}

// A file that opens and fails at the first read.
TEST_F(ProcessAttachmentsTest, ACopyIntoAFolderThatIsNotThereFailsForWantOfThePath) {
    board.WritePage("12/a.txt", "hello");
    state.mybbAttachmentsFolder = board.folder.Path("nowhere");
    ExpectEndOfRun(Section(kFile), u"76 - ProcessAttachments()\r\n\r\nPath not found");
    EXPECT_EQ(state.AttachmentCounter, 1);
    EXPECT_EQ(state.PageAttachmentRows.Count(), 1);
}

TEST_F(ProcessAttachmentsTest, RowsGetTheKeyBehindThoseThatAreThere) {
    board.WritePage("12/a.txt", "hello");
    state.PageAttachmentRows.Add(u"1", u"a row");
    Process(Section(kFile));
    EXPECT_TRUE(state.PageAttachmentRows.Get(u"2").starts_with(u"1,5,"));
}

TEST_F(ProcessAttachmentsTest, AfterACancelAFileIsStillTaken) {
    board.WritePage("12/a.txt", "hello");
    state.CancelRequested = true;
    ExpectTaken(kFile, Messages("12\\a.txt"));
}

}  // namespace
}  // namespace tessaly
