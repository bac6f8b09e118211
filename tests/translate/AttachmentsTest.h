#pragma once

#include <string>
#include <string_view>

#include "tests/translate/TranslateTest.h"
#include "translate/modAttachments.h"

namespace tessaly::testing {

inline constexpr std::u16string_view kHello = u"5D41402ABC4B2A76B9719D911017C592";
inline constexpr std::u16string_view kFile = u"http://old.example/discus/messages/12/a.txt";

inline std::u16string Section(std::u16string_view address) {
    return u"<!--attachment: 1--><b>File</b> <a href=\"" + std::u16string(address) +
           u"\" target=\"_blank\">a</a> (1 k)<!--/attachment-->";
}

class ProcessAttachmentsTest : public TranslateTest {
  protected:
    ProcessAttachmentsTest() { state.PostCounter = 77; }

    // The marker for member 5.
    std::u16string Process(std::u16string_view text) {
        body = text;
        return ProcessAttachments(state, body, 5);
    }

    std::u16string Messages(std::string_view below) const { return state.DiscusMessageFolder + Wide(below); }
    std::u16string Secure(std::string_view below) const {
        return state.DiscusSecureMessageFolder + Wide(below);
    }

    static std::u16string Row(std::u16string_view aid, std::u16string_view hash, std::u16string_view path,
                              std::u16string_view type, std::u16string_view size) {
        return std::u16string(aid) + u",5,\"" + std::u16string(hash) + u"\",5,\"" + std::u16string(path) +
               u"\",\"" + std::u16string(type) + u"\"," + std::u16string(size) + u",\"\",0,0,1,\"\"";
    }

    void ExpectTaken(std::u16string_view address, std::u16string_view path) {
        const std::u16string section = Section(address);
        EXPECT_EQ(Process(section), u"clip");
        EXPECT_EQ(body, u"");
        ASSERT_EQ(state.PageAttachmentRows.Count(), 1);
        EXPECT_EQ(state.PageAttachmentRows.Get(u"1"), Row(u"1", kHello, path, u"txt", u"5"));
        EXPECT_EQ(board.Output("attachments/1_5D41402ABC4B2A76B9719D911017C592"), "hello");
    }

    void ExpectNothingTaken(const std::u16string& text) {
        EXPECT_EQ(Process(text), u"xx");
        EXPECT_EQ(body, text);
        EXPECT_EQ(state.AttachmentCounter, 0);
        EXPECT_EQ(state.PageAttachmentRows.Count(), 0);
        EXPECT_TRUE(board.folder.Files("output/attachments").empty());
    }

    // The section stays, and the line is shown and stands in both logs.
    void ExpectRefusal(std::u16string_view address, const std::u16string& line) {
        ExpectNothingTaken(Section(address));
        EXPECT_EQ(state.txtArea.Text, line);
        EXPECT_EQ(Wide(ErrorLog()), line + u"\r\n");
        EXPECT_FALSE(state.CancelRequested);
        mybbCloseOutputFiles(state);
        EXPECT_TRUE(board.Log().ends_with(line + u"\r\n"));
    }

    void ExpectNotThere(std::u16string_view address, const std::u16string& first,
                        const std::u16string& second, std::u16string_view original) {
        ExpectRefusal(address, u"Attachment File Does Not Exist (mybb #Rec 77) - " + first +
                                   u"\r\n   nor does " + second + u" - Original - " +
                                   std::u16string(original) + u"\r\n");
    }

    void ExpectSilence(std::u16string_view address) {
        ExpectNothingTaken(Section(address));
        EXPECT_EQ(state.txtArea.Text, u"");
        EXPECT_EQ(ErrorLog(), "");
        EXPECT_TRUE(board.messages.empty());
    }

    void ExpectEndOfRun(const std::u16string& text, std::u16string_view failure) {
        EXPECT_EQ(Process(text), u"xx");
        EXPECT_EQ(body, text);
        EXPECT_EQ(board.messages, (std::vector<std::u16string>{std::u16string(failure)}));
        EXPECT_EQ(state.ToolboxA.RecordedErrors, board.messages);
        EXPECT_TRUE(state.CancelRequested);
    }

    std::u16string body;
};

inline constexpr std::u16string_view kSubscript = u"9 - ProcessAttachments()\r\n\r\nSubscript out of range";

}  // namespace tessaly::testing
