#include "members/modMembers.h"

#include "control/DisplayInfo.h"
#include "control/RoutineHandler.h"
#include "control/checking.h"
#include "members/clsGroup.h"
#include "members/clsMember.h"
#include "reader/FieldEscaping.h"
#include "reader/SourceFiles.h"
#include "text/folding.h"
#include "text/numbers.h"
#include "text/split.h"

namespace tessaly {

namespace {

using Fields = std::vector<std::u16string_view>;

constexpr std::size_t kFieldCount = 10;
constexpr std::u16string_view kLabel = u" - DiscusAddMember()";
constexpr std::u16string_view kPlaceholderAddress = u"admin@example.com";

std::u16string CleanName(std::u16string_view name) {
    return std::u16string(Trim(RemoveFieldTokens(EscapeField(name))));
}

// A field that is no number is the time 0.
std::int32_t TimeOf(ConversionState& state, std::u16string_view field) {
    std::int32_t time = 0;
    InMemberValue(state, kLabel, field, [&] {
        if (IsNumeric(field)) time = ToInteger(field);
    });
    return time;
}

std::shared_ptr<clsMember> MakeMember(ConversionState& state, const Fields& fields) {
    auto member = std::make_shared<clsMember>();
    member->username = CleanName(Element(fields, 0));
    member->password = Element(fields, 1);
    member->email = InLowerCase(Element(fields, 2));
    const bool hasRealName = !Trim(Element(fields, 3)).empty();
    member->RealName = CleanName(fields[hasRealName ? 3 : 0]);
    member->RegisteredDate = TimeOf(state, Element(fields, 6));
    member->IPAddr = Element(fields, 7);
    member->lastpost = TimeOf(state, Element(fields, 8));
    member->ID = Add(Add(state.MembersByRealName.Count(), 1), state.DefaultUserCount);
    member->Groups = Element(fields, 9);
    return member;
}

// Failures are ignored here: a changed name that is taken as well goes without its entry.
void EnterMember(ConversionState& state, const std::shared_ptr<clsMember>& member) {
    const std::u16string number = ToText(member->ID);
    if (IgnoringErrors([&] { state.RealNames.Add(member->RealName, member->RealName); }) != kNoError) {
        NoteFinding(state, FindingKind::kMemberRenamed, {},
                    member->RealName + u" becomes " + member->RealName + u" " + number);
        member->RealName += u" " + number;
    }
    if (IgnoringErrors([&] { state.MembersByUserName.Add(member->username, member); }) != kNoError) {
        NoteFinding(state, FindingKind::kMemberRenamed, {},
                    member->username + u" becomes " + member->username + u"_" + number);
        member->username += u"_" + number;
        IgnoringErrors([&] { state.MembersByUserName.Add(member->username, member); });
    }
    IgnoringErrors([&] { state.MembersByRealName.Add(member->RealName, member); });
    IgnoringErrors([&] { state.MembersById.Add(number, member); });
}

std::u16string ReadMemberFile(ConversionState& state) {
    const std::u16string& path =
        ToolboxLibrary::FileExists(state.UserFile) ? state.UserFile : state.UsersFile;
    DisplayInfo(state, u"Processing Discus Member File, Please wait...\r\n", true, true, false);
    std::u16string text;
    if (!ToolboxLibrary::FileExists(path)) {
        NoteFinding(state, FindingKind::kNoMemberFile, {}, path);
        return text;
    }
    GetFileDataCharset(state, path, text, u"utf-8", true);
    return text;
}

// Number 1, whoever else is in the file.
void AddAdministrator(ConversionState& state) {
    state.DefaultUserCount = 0;
    const std::u16string line = state.DefaultAdmin + u",," + std::u16string(kPlaceholderAddress) + u"," +
                                state.DefaultAdmin + u",,,,0,,,";
    IgnoringErrors([&] { DiscusAddMember(state, Split(line, u",")); });
}

void NoteLine(const ConversionState& state, std::u16string_view text, std::u16string_view line) {
    if (!IsCheck(state)) return;
    SourcePlace& place = state.Check->MemberLine;
    ++place.line;
    if (!line.empty()) place.position = static_cast<Position>(line.data() - text.data()) + 1;
}

void GrowPostCounts(ConversionState& state, std::int32_t counter) {
    const std::size_t size = state.MemberPostCounts.size();
    if (counter == static_cast<std::int64_t>(size) - 1) state.MemberPostCounts.resize(size + 100, 0);
}

}  // namespace

void DiscusReadUserFile(ConversionState& state) {
    if (state.CancelRequested) return;
    const std::u16string text = ReadMemberFile(state);
    const auto lines = Split(text, Contains(text, u"\r") ? u"\r\n" : u"\n");
    const std::int32_t defaultUsers = state.DefaultUserCount;
    AddAdministrator(state);
    state.DefaultUserCount = defaultUsers > 1 ? defaultUsers - 1 : 0;
    state.MemberPostCounts.assign(101, 0);
    std::int32_t counter = defaultUsers;
    std::vector<std::u16string> groups;
    for (const std::u16string_view line : lines) {
        NoteLine(state, text, line);
        if (!line.empty()) {
            const Fields fields = Split(line, u":");
            if (IsCheck(state)) state.Check->MemberFields = &fields;
            // A line without groups leaves the names of the line before in place, in their changed form.
            if (fields.size() > 9) {
                const Fields names = Split(fields[9], u"/");
                groups.assign(names.begin(), names.end());
            }
            DiscusAddGroups(state, groups);
            if (!Trim(Element(fields, 0)).empty()) {
                IgnoringErrors([&counter] { counter = Add(counter, 1); });
                const std::int32_t number = DiscusAddMember(state, fields);
                if (IsCheck(state)) state.Check->LinesOfMembers[number] = state.Check->MemberLine;
                GrowPostCounts(state, counter);
            }
            if (IsCheck(state)) state.Check->MemberFields = nullptr;
        }
        state.ToolboxA.KeepResponsive();
    }
    if (IsCheck(state)) state.Check->MemberLine = {};
}

std::int32_t DiscusAddMember(ConversionState& state, const std::vector<std::u16string_view>& fields) {
    std::shared_ptr<clsMember> member;
    try {
        member = MakeMember(state, fields);
    } catch (...) {
        RoutineHandler(state, kLabel, CurrentError());
        if (!IsCheck(state) || fields.size() >= kFieldCount) return 0;
        // A check goes on as though the line had all its fields, with the groups of one who is in none and
        // takes none over.
        Fields filled = fields;
        filled.resize(kFieldCount);
        filled.back() = u"/";
        return DiscusAddMember(state, filled);
    }
    EnterMember(state, member);
    return member->ID;
}

void DiscusAddGroups(ConversionState& state, std::vector<std::u16string>& names) {
    for (std::u16string& name : names) {
        if (name.empty()) continue;
        IgnoringErrors([&] {
            name = CleanName(name);
            if (state.GroupsByName.Find(name) != nullptr) return;
            auto group = std::make_shared<clsGroup>();
            group->name = name;
            group->ID = Add(Add(state.GroupsByName.Count(), 1), state.DefaultGroupCount);
            state.GroupsByName.Add(name, std::move(group));
        });
        state.ToolboxA.KeepResponsive();
    }
}

}  // namespace tessaly
