#include "translate/UpdateInternalLinks.h"

#include "control/DisplayInfo.h"
#include "control/RoutineHandler.h"
#include "control/checking.h"
#include "output/OutputFiles.h"
#include "reader/SourceFiles.h"
#include "reader/TagScanning.h"
#include "text/split.h"
#include "translate/BuildmybbLink.h"

namespace tessaly {

namespace {

std::u16string LinkTextOf(ConversionState& state, std::u16string link) {
    RemoveAll(link, u"\"");
    std::u16string text(FirstTagSection(state, link, u"]", u"[/url]"));
    RemoveAll(text, u"[/url]");
    text = Trim(text);
    RemoveAll(text, u"]");
    return std::u16string(Trim(text));
}

std::u16string NewLink(ConversionState& state, std::u16string_view oldLink, std::u16string_view item) {
    const auto parts = Split(item, u",");
    const std::u16string address = NewTopicAddress(state, {parts.begin(), parts.end()});
    std::u16string link = u"[url=" + address + u"]" + LinkTextOf(state, std::u16string(oldLink)) + u"[/url]";
    RemoveAll(link, u"\"");
    return link;
}

std::u16string Join(const std::vector<std::u16string_view>& fields) {
    std::u16string line;
    for (const std::u16string_view field : fields) {
        line += field;
        line += u'^';
    }
    line.pop_back();
    return line;
}

// The line as it goes out. Field 1 is filled when the topic of field 7 is known.
std::u16string UpdatedLine(ConversionState& state, std::u16string_view line) {
    auto fields = Split(line, u"^");
    if (fields.size() < 2 || !fields[1].empty()) return std::u16string(line);
    std::u16string link;
    if (const std::u16string* const item = state.ThreadIdsByFile.Find(Trim(Element(fields, 7)))) {
        link = NewLink(state, fields[0], *item);
        fields[1] = link;
    }
    state.ToolboxA.KeepResponsive();
    return Join(fields);
}

}  // namespace

void UpdateInternalLinks(ConversionState& state) try {
    DisplayInfo(state, u"Writing Updated Internal Links File - Please Wait...\r\n", true, true, false);
    const std::u16string& path = state.InternalLinksFile.Name;
    if (IsCheck(state) || path.empty() || !ToolboxLibrary::FileExists(path)) return;
    std::u16string data;
    GetFileDataCharset(state, path, data, state.Charset, false);
    for (const std::u16string_view line : Split(data, u"\r\n")) {
        if (line.empty()) continue;
        WriteFileLine(state, UpdatedLine(state, line), state.InternalLinksUpdateFile, u"", false);
    }
    FinishOutputFile(state, state.InternalLinksUpdateFile, u"");
} catch (...) {
    RoutineHandler(state, u" - UpdateInternalLinks()", CurrentError());
}

}  // namespace tessaly
