#include "tests/support/ReadyBoard.h"

#include "members/modMembers.h"
#include "output/OutputFiles.h"
#include "platform/TextStream.h"
#include "platform/paths.h"
#include "reader/modThreads.h"
#include "text/split.h"

namespace tessaly::testing {

ReadyBoard::ReadyBoard() {
    folder.MakeFolder("output");
    state.Charset = u"utf-8";
    state.SplitMBSize = 52428800;
    state.BoardTopicsFile = state.DiscusMessageFolder + u"board-topics.html";
    state.DiscusCgiFile = state.DiscusMessageFolder + u"discus.cgi";
    state.UserFile = state.DiscusMainFolder + u"User.txt";
    state.UsersFile = state.DiscusMainFolder + u"Users.txt";
    state.RedirectTemplate = u"AAAAA|BBBBB|XXXXX|CCCCC|ZZZZZ";
    state.MemberPostCounts.assign(101, 0);
    BeginOutputFile(state.ThreadsFile, state.mybbOutputFolder + u"mybb_threadsXXX.txt");
    BeginOutputFile(state.PostsFile, state.mybbOutputFolder + u"mybb_postsXXX.txt");
    BeginOutputFile(state.UsersImportFile, state.mybbOutputFolder + u"mybb_usersXXX.txt");
    BeginOutputFile(state.ForumsFile, state.mybbOutputFolder + u"mybb_forumsXXX.txt");
    BeginOutputFile(state.AttachmentsFile, state.mybbOutputFolder + u"mybb_attachmentsXXX.txt");
    BeginOutputFile(state.UserGroupsFile, state.mybbOutputFolder + u"mybb_usergroupsXXX.txt");
    BeginOutputFile(state.InternalLinksFile, state.mybbOutputFolder + u"InternalLinksXXX.txt");
    BeginOutputFile(state.AnnouncementsFile, state.mybbOutputFolder + u"mybb_announcementsXXX.txt");
    ResetDataIndex(state, 0);
}

std::int32_t ReadyBoard::AddMember(std::u16string_view line) {
    return DiscusAddMember(state, Split(line, u":"));
}

std::vector<std::string> ReadyBoard::RowsOf(const OutputFile& family) const {
    if (family.Stream == nullptr) return {};
    family.Stream->SaveToFile(family.Name);
    return Rows(platform::ToNative(family.Name).filename().string());
}

std::u16string ReadyBoard::TakeArea() {
    std::u16string text = state.txtArea.Text;
    state.txtArea.SetText(u"");
    return text;
}

std::string ForumRow(int fid, std::string_view name, std::string_view stype, int pid,
                     std::string_view parentList) {
    return std::to_string(fid) + ",\"" + std::string(name) + R"(","","",")" + std::string(stype) + "\"," +
           std::to_string(pid) + ",\"" + std::string(parentList) +
           R"(",1,1,1,0,0,0,"",0,0,"",0,1,1,1,1,1,1,1,1,0,"",1,0,0,0,"","",0,0,0,0,0,"","")";
}

}  // namespace tessaly::testing
