#include "members/mybbWriteGroupsFile.h"

#include "control/DisplayInfo.h"
#include "control/RoutineHandler.h"
#include "members/clsGroup.h"
#include "members/clsTblUserGroups.h"
#include "output/OutputFiles.h"

namespace tessaly {

namespace {

clsTblUserGroups MakeRow(const clsGroup& group) {
    clsTblUserGroups row;
    row.gid = group.ID;
    row.title = group.name;
    row.namestyle = u"{username}";
    row.starimage = u"images/star.png";
    row.canview = 1;
    row.canviewthreads = 1;
    row.canviewprofiles = 1;
    row.candlattachments = 1;
    row.canpostthreads = 1;
    row.canpostreplys = 1;
    row.canpostattachments = 1;
    row.canratethreads = 1;
    row.caneditposts = 1;
    row.candeleteposts = 1;
    row.candeletethreads = 1;
    row.caneditattachments = 1;
    return row;
}

}  // namespace

void mybbWriteGroupsFile(ConversionState& state) try {
    if (state.CancelRequested) return;
    DisplayInfo(state, u"\r\nWriting mybb Groups Import File, Please Wait...\r\n", true, true, false);
    for (const auto& [name, group] : state.GroupsByName) {
        std::u16string text;
        MakeRow(*group).BuildString(text);
        WriteFileLine(state, text, state.UserGroupsFile, u"mybb_usergroups", false);
        state.ToolboxA.KeepResponsive();
    }
    FinishOutputFile(state, state.UserGroupsFile, u"mybb_usergroups");
} catch (...) {
    RoutineHandler(state, u" - mybbWriteGroupsFile()", CurrentError());
}

}  // namespace tessaly
