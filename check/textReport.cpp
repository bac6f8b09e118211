#include "check/textReport.h"

#include <algorithm>

#include "check/printable.h"
#include "platform/paths.h"
#include "text/numbers.h"

namespace tessaly {

namespace {

constexpr Grade kGrades[] = {Grade::kEndsRun, Grade::kLoses, Grade::kWorthKnowing};

std::u16string Padded(std::u16string_view text, std::size_t width) {
    std::u16string padded(text);
    if (padded.size() < width) padded.append(width - padded.size(), u' ');
    return padded;
}

std::u16string AtRight(std::int64_t number, std::size_t width) {
    const std::u16string text = ToText(number);
    return std::u16string(text.size() < width ? width - text.size() : 0, u' ') + text;
}

std::u16string Line(std::u16string_view name, std::int64_t count) {
    return u"  " + Padded(name, 16) + AtRight(count, 12) + u"\n";
}

// It is not known when nothing was read.
std::u16string CharsetText(const ConversionState& state) {
    return state.Charset.empty() ? std::u16string() : u", charset " + Printable(state.Charset);
}

std::u16string Summary(const BoardCheck& check) {
    const BoardTally& tally = check.Tally();
    const ConversionState& state = check.State();
    std::u16string text = u"Board " + Printable(platform::WithNativeSeparators(state.DiscusRootFolder)) +
                          CharsetText(state) +
                          u".\nNothing was written, created or deleted in the output folder or anywhere else "
                          u"but the reports asked for.\n";
    if (!check.WasBoardRead()) text += std::u16string(kNotLookedAt) + u"\n";
    if (check.IsCancelled()) text += u"CANCELLED: the rest of the board was not looked at.\n";
    text += u'\n' + Line(u"Pages", tally.pages) + Line(u"Posts", tally.posts) +
            Line(u"Announcements", state.AnnouncementCounter) + Line(u"Members", tally.members) +
            Line(u"User groups", tally.groups) + Line(u"Attachments", tally.attachments);
    text.insert(text.size() - 1, u"  (" + BytesText(tally.attachmentBytes) + u")");
    text += u'\n';
    for (const Grade grade : kGrades) text += Line(NameOf(grade), check.Found().CountOf(grade));
    const auto& first = check.FirstEnd();
    if (first)
        text += u"\nThe run would end here first: " + PlaceText(*first) + u"\n  " + Printable(first->label) +
                u"\n";
    return text;
}

// The kinds of a grade with their counts alone.
std::u16string KindsOf(const Findings& findings, Grade grade) {
    std::u16string text;
    for (const KindTexts& texts : AllKinds()) {
        const std::int64_t count = findings.CountOf(texts.kind);
        if (texts.grade == grade && count > 0)
            text += AtRight(count, 10) + u"  " + std::u16string(texts.title) + u"\n";
    }
    return text;
}

std::u16string FindingText(const Finding& finding) {
    std::u16string text = u"  - " + PlaceText(finding);
    if (finding.count > 1) text += u" (" + ToText(finding.count) + u" times)";
    text += u'\n';
    if (!finding.label.empty()) text += u"      Message: " + Printable(finding.label) + u"\n";
    if (!finding.detail.empty()) text += u"      " + finding.detail + u"\n";
    if (!finding.words.empty()) text += u"      > " + finding.words + u"\n";
    return text;
}

std::u16string FurtherText(const Findings& findings, FindingKind kind) {
    const auto kept = static_cast<std::int64_t>(findings.KeptOf(kind).size());
    const std::u16string which =
        findings.LeftOutOf(kind) > 0 ? u"The first " + ToText(kept) + u" stand" : u"The others stand";
    return u"  " + which + u" in the reports: --report FILE.json, --html FILE.html.\n";
}

std::u16string KindText(const Findings& findings, const KindTexts& texts) {
    constexpr std::size_t kMostShown = 20;
    const auto& kept = findings.KeptOf(texts.kind);
    const std::int64_t count = findings.CountOf(texts.kind);
    std::u16string text = u"\n" + std::u16string(texts.title) + u": " + ToText(count) + u"\n  The run: " +
                          std::u16string(texts.run) + u"\n  Change:  " + std::u16string(texts.remedy) + u"\n";
    for (std::size_t at = 0; at < std::min(kept.size(), kMostShown); ++at) text += FindingText(kept[at]);
    if (kept.size() > kMostShown) text += FurtherText(findings, texts.kind);
    return text;
}

}  // namespace

std::u16string_view NameOf(Grade grade) {
    switch (grade) {
        case Grade::kEndsRun:
            return u"Ends the run";
        case Grade::kLoses:
            return u"Loses something";
        default:
            return u"Worth knowing";
    }
}

std::u16string PlaceText(const Finding& finding) {
    std::u16string text = Printable(platform::WithNativeSeparators(finding.page));
    if (text.empty()) text = u"No file";
    if (!finding.post.empty()) text += u", post " + finding.post;
    if (finding.line > 0) text += u", line " + ToText(finding.line);
    if (finding.position > 0) text += u", position " + ToText(finding.position);
    return text;
}

std::u16string BytesText(std::int64_t bytes) {
    constexpr std::int64_t kMegabyte = 1048576;
    if (bytes < kMegabyte) return ToText(bytes) + u" bytes";
    return ToText(bytes / kMegabyte) + u"." + ToText(bytes % kMegabyte * 10 / kMegabyte) + u" MB";
}

std::u16string TextReport(const BoardCheck& check) {
    std::u16string text = Summary(check);
    for (const Grade grade : kGrades) {
        if (check.Found().CountOf(grade) == 0) continue;
        text += u"\n" + std::u16string(NameOf(grade)) + u":\n" + KindsOf(check.Found(), grade);
    }
    for (const KindTexts& texts : AllKinds()) {
        if (check.Found().CountOf(texts.kind) > 0) text += KindText(check.Found(), texts);
    }
    return text;
}

}  // namespace tessaly
