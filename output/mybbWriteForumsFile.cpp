#include "output/mybbWriteForumsFile.h"

#include "control/RoutineHandler.h"
#include "control/checking.h"
#include "output/OutputFiles.h"
#include "output/clsTblForums.h"
#include "reader/FieldEscaping.h"
#include "reader/TagScanning.h"
#include "text/numbers.h"
#include "text/split.h"

namespace tessaly {

namespace {

void EnterName(ConversionState& state, std::u16string_view name, std::int32_t forumId) {
    const int error = IgnoringErrors([&] { state.ForumIdsByName.Add(name, forumId); });
    if (error == kNoError) return;
    NoteFinding(state, FindingKind::kForumNameTwice, u"<!--Me: ", name);
    IgnoringErrors([&] { state.ForumIdsByName.Remove(name); });
    IgnoringErrors([&] { state.ForumIdsByName.Add(name, forumId); });
}

std::int32_t TakeParent(std::u16string& parentList) {
    const std::int32_t first = RoundToInteger(LeadingNumber(parentList));
    if (parentList.ends_with(u',')) parentList.pop_back();
    if (!Contains(parentList, u",")) return first;
    const auto parents = Split(parentList, u",");
    return ToInteger(Element(parents, parents.size() - 1));
}

}  // namespace

void mybbWriteForumsFile(ConversionState& state, std::u16string_view name, std::int32_t& forumCounter,
                         std::int32_t /*forumOrder*/, std::u16string& parentList, std::u16string_view stype,
                         std::u16string_view description) try {
    const std::u16string cleanName = EscapeField(RemoveTagInformation(state, name));
    forumCounter = Add(forumCounter, 1);
    clsTblForums row;
    row.fid = forumCounter;
    row.name = cleanName;
    row.description = description;
    row.stype = stype;
    row.pid = TakeParent(parentList);
    row.parentlist = parentList;
    row.disporder = 1;
    row.active = 1;
    row.lopen = 1;
    row.allowmycode = 1;
    row.allowsmilies = 1;
    row.allowimgcode = 1;
    row.allowvideocode = 1;
    row.allowpicons = 1;
    row.allowtratings = 1;
    row.usepostcounts = 1;
    row.usethreadcounts = 1;
    row.showinjump = 1;
    std::u16string text;
    row.BuildString(text);
    WriteFileLine(state, text, state.ForumsFile, u"mybb_forums", false);
    EnterName(state, cleanName, forumCounter);
    if (IsCheck(state)) state.Check->ForumMade(cleanName, stype == u"c", forumCounter);
    state.ToolboxA.KeepResponsive();
} catch (...) {
    RoutineHandler(state, u" - mybbWriteForumsFile()", CurrentError());
}

std::int32_t ForumIdOf(ConversionState& state, std::u16string_view name) {
    return IsCheck(state) ? state.Check->ForumIdOf(name) : state.ForumIdsByName.Get(name);
}

}  // namespace tessaly
