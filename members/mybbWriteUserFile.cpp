#include "members/mybbWriteUserFile.h"

#include "control/DisplayInfo.h"
#include "control/RoutineHandler.h"
#include "control/checking.h"
#include "members/clsGroup.h"
#include "members/clsMember.h"
#include "members/clsTblUsers.h"
#include "output/OutputFiles.h"
#include "platform/charset.h"
#include "reader/FieldEscaping.h"
#include "text/numbers.h"
#include "text/split.h"

namespace tessaly {

namespace {

constexpr std::u16string_view kLabel = u" - mybbWriteUserFile()";

// What goes on from one member to the next.
struct Carried {
    std::int32_t primaryGroup = 0;
    std::int32_t fallbackAddress = 0;
};

void TakeGroup(ConversionState& state, std::u16string_view name, Carried& carried) {
    const std::int32_t group = state.GroupsByName.Get(name)->ID;
    if (carried.primaryGroup == 0) {
        carried.primaryGroup = group;
    } else {
        NoteFinding(state, FindingKind::kFurtherGroups, {}, name);
    }
}

// The first group found. A member without groups keeps the group of the member before.
void TakePrimaryGroup(ConversionState& state, const clsMember& member, Carried& carried) {
    if (member.Groups.empty()) {
        if (carried.primaryGroup != 0) NoteFinding(state, FindingKind::kInheritedGroup);
        return;
    }
    carried.primaryGroup = 0;
    for (const std::u16string_view name : Split(member.Groups, u"/")) {
        if (name.empty()) continue;
        InMemberValue(state, kLabel, name, [&] { TakeGroup(state, name, carried); });
    }
}

// The code of the part's first character in the system's single-byte code page.
std::u16string CharacterCode(std::u16string_view part) {
    if (part.empty()) Raise(kInvalidCall);
    std::string bytes;
    platform::Encoder(platform::SingleByteCharset()).Append(part.substr(0, 1), bytes);
    return ToText(static_cast<unsigned char>(bytes.front()));
}

// The codes of the first characters of the four parts, joined: 10.0.0.1 gives 49484849.
std::int32_t AddressNumber(std::u16string_view address) {
    if (!Contains(address, u".")) return RoundToInteger(LeadingNumber(address));
    const auto parts = Split(address, u".");
    std::u16string codes;
    for (std::size_t part = 0; part < 4; ++part) codes += CharacterCode(Element(parts, part));
    return ToInteger(codes);
}

clsTblUsers MakeRow(ConversionState& state, const clsMember& member, Carried& carried) {
    clsTblUsers row;
    row.uid = member.ID;
    row.username = EscapeField(member.username);
    row.password = member.password;
    row.email = member.email;
    // Element 0 for every user alike, not the member's own count.
    row.postnum = state.MemberPostCounts.at(0);
    row.usergroup = carried.primaryGroup;
    row.regdate = member.RegisteredDate;
    row.lastpost = member.lastpost;
    row.birthdayprivacy = u"all";
    GoingOnInCheck(state, kLabel, [&] { row.regip = AddressNumber(member.IPAddr); });
    if (row.regip == 0) row.regip = carried.fallbackAddress++;
    row.lastip = row.regip;
    row.allownotices = 1;
    row.receivepms = 1;
    row.pmnotice = 1;
    row.pmnotify = 1;
    row.buddyrequestspm = 1;
    row.showimages = 1;
    row.showvideos = 1;
    row.showsigs = 1;
    row.showavatars = 1;
    row.showquickreply = 1;
    row.showredirect = 1;
    row.showcodebuttons = 1;
    row.timezone = u"0";
    return row;
}

void WriteRow(ConversionState& state, const clsMember& member, Carried& carried) {
    TakePrimaryGroup(state, member, carried);
    std::u16string text;
    MakeRow(state, member, carried).BuildString(text);
    WriteFileLine(state, text, state.UsersImportFile, u"mybb_users", false);
    if (state.Note.IsWanted && member.Groups.empty()) state.Note.MembersWithoutGroup.push_back(member.ID);
}

}  // namespace

void mybbWriteUserFile(ConversionState& state) try {
    DisplayInfo(state, u"\r\nWriting mybb Users Import File, Please Wait...\r\n", true, true, false);
    Carried carried;
    bool isAdministrator = true;
    for (const auto& [number, member] : state.MembersById) {
        if (IsCheck(state)) state.Check->Member = member.get();
        if (!isAdministrator) {
            GoingOnInCheck(state, kLabel,
                           [&state, &carried, &written = *member] { WriteRow(state, written, carried); });
        }
        isAdministrator = false;
        state.ToolboxA.KeepResponsive();
    }
    if (IsCheck(state)) state.Check->Member = nullptr;
    FinishOutputFile(state, state.UsersImportFile, u"mybb_users");
} catch (...) {
    RoutineHandler(state, kLabel, CurrentError());
}

}  // namespace tessaly
