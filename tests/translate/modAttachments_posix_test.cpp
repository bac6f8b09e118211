#include <filesystem>

#include "tests/translate/AttachmentsTest.h"
#include "translate/modAttachments.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;

using testing::kFile;
using testing::kHello;
using testing::Section;

using AttachmentsOnDiskTest = testing::ProcessAttachmentsTest;

TEST_F(AttachmentsOnDiskTest, LettersBeyondAsciiArePartOfTheName) {
    board.WritePage(
        "12/gr\xC3\xB6\xC3\x9F"
        "e.txt",
        "hello");
    ExpectTaken(u"http://old.example/discus/messages/12/gr\u00F6\u00DFe.txt",
                state.DiscusMessageFolder + u"12\\gr\u00F6\u00DFe.txt");
}

TEST_F(AttachmentsOnDiskTest, AFileThatALinkReachesOutsideTheSourceDoesNotExist) {
    board.folder.Write("outside.txt", "hello");
    board.folder.MakeFolder("source/discus/messages/12");
    fs::create_symlink(board.folder.Native("outside.txt"),
                       board.folder.Native("source/discus/messages/12/a.txt"));
    ExpectNotThere(kFile, Messages("12\\a.txt"), Secure("12\\a.txt"),
                   u"http:\\\\old.example\\discus\\messages\\12\\a.txt");
}

TEST_F(AttachmentsOnDiskTest, AFileBelowALinkedFolderOutsideTheSourceDoesNotExist) {
    board.folder.Write("outside/a.txt", "hello");
    fs::create_directory_symlink(board.folder.Native("outside"),
                                 board.folder.Native("source/discus/messages/12"));
    ExpectNotThere(kFile, Messages("12\\a.txt"), Secure("12\\a.txt"),
                   u"http:\\\\old.example\\discus\\messages\\12\\a.txt");
}

TEST_F(AttachmentsOnDiskTest, ALinkThatStaysInsideTheSourceIsFollowed) {
    board.folder.Write("source/files/b.txt", "hello");
    board.folder.MakeFolder("source/discus/messages/12");
    fs::create_symlink(board.folder.Native("source/files/b.txt"),
                       board.folder.Native("source/discus/messages/12/a.txt"));
    ExpectTaken(kFile, Messages("12\\a.txt"));
}

TEST_F(AttachmentsOnDiskTest, AFileThatCannotBeReadEndsTheRunBeforeTheCounterRises) {
    if (!fs::is_regular_file("/proc/self/mem")) GTEST_SKIP() << "no such file on this system";
    state.DiscusMessageFolder = u"\\proc\\self\\";
    ExpectEndOfRun(Section(u"http://old.example/discus/messages/mem"),
                   u"57 - ProcessAttachments()\r\n\r\nDevice I/O error");
    EXPECT_EQ(state.AttachmentCounter, 0);
    EXPECT_EQ(state.PageAttachmentRows.Count(), 0);
}

TEST_F(AttachmentsOnDiskTest, AFailedCopyEndsTheRunAndLeavesTheRowAndTheRaisedCounter) {
    board.WritePage("12/a.txt", "hello");
    board.folder.Write("output/attachments/1_5D41402ABC4B2A76B9719D911017C592/in the way", "x");
    ExpectEndOfRun(Section(kFile), u"75 - ProcessAttachments()\r\n\r\nPath/File access error");
    EXPECT_EQ(state.AttachmentCounter, 1);
    EXPECT_EQ(state.PageAttachmentRows.Get(u"1"), Row(u"1", kHello, Messages("12\\a.txt"), u"txt", u"5"));
    EXPECT_EQ(board.folder.Files("output/attachments"),
              (std::vector<std::string>{"1_5D41402ABC4B2A76B9719D911017C592/in the way"}));
}

}  // namespace
}  // namespace tessaly
