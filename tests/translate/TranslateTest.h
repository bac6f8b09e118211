#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "control/modDefinitions.h"
#include "members/modMembers.h"
#include "output/OutputFiles.h"
#include "tests/support/TestBoard.h"

namespace tessaly::testing {

// ASCII alone.
inline std::u16string Wide(std::string_view text) {
    return {text.begin(), text.end()};
}

// A state as the walk leaves it in front of a page at depth 1: logs open, output named, the administrator
// read as member 1, routine progress neither shown nor logged. The page is the file 34 of topic 12.
class TranslateTest : public ::testing::Test {
  protected:
    TranslateTest() {
        const std::u16string& folder = state.mybbOutputFolder;
        board.folder.MakeFolder("output");
        state.Charset = u"utf-8";
        state.LogFileName = folder + u"Log.txt";
        state.LogErrorFileName = folder + u"LogError.txt";
        BeginOutputFile(state.PostsFile, folder + u"mybb_postsXXX.txt");
        BeginOutputFile(state.AttachmentsFile, folder + u"mybb_attachmentsXXX.txt");
        BeginOutputFile(state.AnnouncementsFile, folder + u"mybb_announcementsXXX.txt");
        BeginOutputFile(state.InternalLinksFile, folder + u"InternalLinksXXX.txt");
        BeginOutputFile(state.InternalLinksUpdateFile, folder + u"InternalLinksUpdateXXX.txt");
        mybbOpenOutputFiles(state);
        state.SplitMBSize = 0;
        state.DefaultUserCount = 0;
        DiscusReadUserFile(state);
        state.optDisplay = false;
        state.optLog = false;
        state.txtArea.SetText(u"");
        state.Depth = 1;
        state.DataIndex.resize(2);
        state.DataIndex[1].TopicNumber = u"12";
        state.DataIndex[1].FileNumber = u"34";
    }

    // The rows of a family so far; saves and ends it. No rows when it was never begun.
    std::vector<std::string> Rows(OutputFile& file) {
        if (file.Stream == nullptr) return {};
        FinishOutputFile(state, file, u"");
        const std::u16string name = file.Name.substr(state.mybbOutputFolder.size());
        return board.Rows(std::string(name.begin(), name.end()));
    }

    // What the error log holds behind its first line, which is in UTF-16.
    std::string ErrorLog() const { return board.Output("LogError.txt").substr(10); }

    TestBoard board;
    ConversionState& state = board.state;
};

}  // namespace tessaly::testing
