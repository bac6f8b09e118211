#include "cli/checkReport.h"

#include <nlohmann/json.hpp>

#include "check/printable.h"
#include "platform/charset.h"
#include "platform/files.h"
#include "platform/paths.h"

namespace tessaly {

namespace {

using Json = nlohmann::ordered_json;

std::string Utf8(std::u16string_view text) {
    return platform::ToUtf8(text);
}

const char* NameOf(Grade grade) {
    switch (grade) {
        case Grade::kEndsRun:
            return "ends the run";
        case Grade::kLoses:
            return "loses something";
        default:
            return "worth knowing";
    }
}

Json FindingAsJson(const Finding& finding) {
    Json json;
    json["file"] = Utf8(Printable(platform::WithNativeSeparators(finding.page)));
    json["post"] = Utf8(finding.post);
    json["position"] = finding.position;
    json["line"] = finding.line;
    json["words"] = Utf8(finding.words);
    json["detail"] = Utf8(finding.detail);
    json["count"] = finding.count;
    if (finding.label.empty()) return json;
    json["message"] = Utf8(finding.label);
    json["reason"] = Utf8(finding.reason);
    return json;
}

Json KindAsJson(const Findings& findings, const KindTexts& texts) {
    Json json;
    json["kind"] = Utf8(texts.id);
    json["grade"] = NameOf(texts.grade);
    json["title"] = Utf8(texts.title);
    json["run"] = Utf8(texts.run);
    json["remedy"] = Utf8(texts.remedy);
    json["count"] = findings.CountOf(texts.kind);
    json["unlisted"] = findings.LeftOutOf(texts.kind);
    json["findings"] = Json::array();
    for (const Finding& finding : findings.KeptOf(texts.kind)) {
        json["findings"].push_back(FindingAsJson(finding));
    }
    return json;
}

Json TotalsAsJson(const BoardCheck& check) {
    const BoardTally& tally = check.Tally();
    const ConversionState& state = check.State();
    Json totals;
    totals["pages"] = tally.pages;
    totals["forums"] = state.ForumCounter;
    totals["threads"] = state.ThreadCounter;
    totals["posts"] = tally.posts;
    totals["announcements"] = state.AnnouncementCounter;
    totals["members"] = tally.members;
    totals["groups"] = tally.groups;
    totals["attachments"] = tally.attachments;
    totals["attachmentBytes"] = tally.attachmentBytes;
    return totals;
}

// All but the kinds, each of which is made as text by itself.
Json HeadAsJson(const BoardCheck& check) {
    const Findings& findings = check.Found();
    Json head;
    head["wroteNothing"] = true;
    head["cancelled"] = check.IsCancelled();
    head["charset"] = Utf8(Printable(check.State().Charset));
    head["totals"] = TotalsAsJson(check);
    head["postsByYear"] = Json::object();
    for (const auto& [year, posts] : check.Tally().postsByYear) {
        head["postsByYear"][std::to_string(year)] = posts;
    }
    for (const Grade grade : {Grade::kEndsRun, Grade::kLoses, Grade::kWorthKnowing}) {
        head["grades"][NameOf(grade)] = findings.CountOf(grade);
    }
    const auto& first = check.FirstEnd();
    head["endsFirst"] = first ? FindingAsJson(*first) : Json(nullptr);
    head["keptOfEachKind"] = Findings::kMostKept;
    return head;
}

}  // namespace

void WriteCheckReport(const BoardCheck& check, const std::string& file) {
    std::string head = HeadAsJson(check).dump(1);
    head.resize(head.rfind('\n'));
    std::vector<std::string> pieces = {head + ",\n \"kinds\": ["};
    for (const KindTexts& texts : AllKinds()) {
        if (check.Found().CountOf(texts.kind) == 0) continue;
        const char* const before = pieces.size() == 1 ? "\n" : ",\n";
        pieces.push_back(before + KindAsJson(check.Found(), texts).dump(1));
    }
    pieces.emplace_back("\n ]\n}\n");
    const std::u16string path = platform::AbsolutePathText(platform::ToNative(platform::FromUtf8(file)));
    platform::WriteWholeFile(path, pieces);
}

}  // namespace tessaly
