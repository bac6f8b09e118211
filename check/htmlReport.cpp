#include "check/htmlReport.h"

#include <algorithm>

#include "check/htmlPage.h"
#include "check/printable.h"
#include "check/textReport.h"
#include "platform/charset.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "text/numbers.h"

namespace tessaly {

namespace {

constexpr Grade kGrades[] = {Grade::kEndsRun, Grade::kLoses, Grade::kWorthKnowing};

// The name of a grade in the page's style and script.
std::string ClassOf(Grade grade) {
    switch (grade) {
        case Grade::kEndsRun:
            return "ends";
        case Grade::kLoses:
            return "loses";
        default:
            return "worth";
    }
}

// A text of whatever origin, such that nothing in it is markup. In the page it is set apart from the
// direction of the writing around it by <bdi>, where it comes from the board.
std::string Escaped(std::u16string_view text) {
    std::string escaped;
    for (const char byte : platform::ToUtf8(Printable(text))) {
        switch (byte) {
            case '&':
                escaped += "&amp;";
                break;
            case '<':
                escaped += "&lt;";
                break;
            case '>':
                escaped += "&gt;";
                break;
            case '"':
                escaped += "&quot;";
                break;
            case '\'':
                escaped += "&#39;";
                break;
            default:
                escaped += byte;
        }
    }
    return escaped;
}

std::string OfBoard(std::u16string_view text) {
    return "<bdi>" + Escaped(text) + "</bdi>";
}

// 1234567 as 1,234,567.
std::string Grouped(std::int64_t number) {
    std::string text = std::to_string(number);
    for (auto at = static_cast<std::ptrdiff_t>(text.size()) - 3; at > 0; at -= 3) {
        text.insert(static_cast<std::size_t>(at), ",");
    }
    return text;
}

std::string Tile(const std::string& name, const std::string& value, const std::string& style = {}) {
    return "<div" + (style.empty() ? style : " class=\"" + style + "\"") + "><dt>" + name + "</dt><dd>" +
           value + "</dd></div>\n";
}

std::string Verdict(const BoardCheck& check) {
    const Findings& found = check.Found();
    if (const auto& first = check.FirstEnd()) {
        return "<div class=\"verdict ends\"><strong>A run would end early.</strong><p>It would end here "
               "first: "
               "<span class=\"path\">" +
               OfBoard(PlaceText(*first)) + "</span></p><p class=\"faint\">" + OfBoard(first->label) +
               "</p></div>\n";
    }
    if (found.CountOf(Grade::kLoses) > 0) {
        return "<div class=\"verdict loses\"><strong>A run would come to its end, and lose "
               "something.</strong>"
               "<p>What it loses stands below. It may well be nothing that matters.</p></div>\n";
    }
    return "<div class=\"verdict\"><strong>A run would come to its end and lose nothing that is known "
           "of.</strong></div>\n";
}

std::string Head(const BoardCheck& check) {
    const ConversionState& state = check.State();
    std::string text =
        "<header>\n<h1>Check of a message board</h1>\n<p class=\"faint\"><span class=\"path\">" +
        OfBoard(platform::WithNativeSeparators(state.DiscusRootFolder)) + "</span>";
    if (!state.Charset.empty()) text += ", charset " + OfBoard(state.Charset);
    text += "</p>\n";
    if (check.IsCancelled()) {
        text +=
            "<div class=\"verdict ends\"><strong>The check was cancelled:</strong> the rest of the board was "
            "not "
            "looked at.</div>\n";
    }
    if (!check.WasBoardRead()) {
        text += "<div class=\"verdict ends\"><strong>" + Escaped(kNotLookedAt) + "</strong></div>\n";
    }
    return text + Verdict(check) + "</header>\n";
}

std::string Totals(const BoardCheck& check) {
    const BoardTally& tally = check.Tally();
    const ConversionState& state = check.State();
    std::string text =
        "<section aria-labelledby=\"totals\"><h2 id=\"totals\">Totals</h2>\n<dl class=\"tiles\">\n";
    text += Tile("Pages", Grouped(tally.pages)) + Tile("Posts", Grouped(tally.posts)) +
            Tile("Announcements", Grouped(state.AnnouncementCounter)) +
            Tile("Members", Grouped(tally.members)) + Tile("User groups", Grouped(tally.groups)) +
            Tile("Attachments", Grouped(tally.attachments)) +
            Tile("Size of attachments", Escaped(BytesText(tally.attachmentBytes)));
    for (const Grade grade : kGrades) {
        text += Tile(Escaped(NameOf(grade)), Grouped(check.Found().CountOf(grade)), ClassOf(grade));
    }
    return text + "</dl></section>\n";
}

// The years between the first and the last, those without posts too; a board with a wild time has its own
// ones alone.
std::vector<std::pair<int, std::int64_t>> Years(const BoardTally& tally) {
    constexpr int kMostYears = 60;
    std::vector<std::pair<int, std::int64_t>> years(tally.postsByYear.begin(), tally.postsByYear.end());
    if (years.empty() || years.back().first - years.front().first >= kMostYears) return years;
    std::vector<std::pair<int, std::int64_t>> all;
    for (int year = years.front().first; year <= years.back().first; ++year) {
        const auto found = tally.postsByYear.find(year);
        all.emplace_back(year, found == tally.postsByYear.end() ? 0 : found->second);
    }
    return all;
}

std::string YearsTable(const std::vector<std::pair<int, std::int64_t>>& years) {
    std::string text =
        "<details><summary>The numbers</summary><table><thead><tr><th scope=\"col\">Year</th>"
        "<th scope=\"col\">Posts</th></tr></thead><tbody>\n";
    for (const auto& [year, posts] : years) {
        text += "<tr><th scope=\"row\">" + std::to_string(year) + "</th><td class=\"number\">" +
                Grouped(posts) + "</td></tr>\n";
    }
    return text + "</tbody></table></details>\n";
}

std::string Bar(int left, int width, std::int64_t height, int year, std::int64_t posts) {
    constexpr int kBottom = 180;
    const std::string middle = std::to_string(left + width / 2);
    return "<g><title>" + std::to_string(year) + ": " + Grouped(posts) + " posts</title><rect x=\"" +
           std::to_string(left) + "\" y=\"" + std::to_string(kBottom - height) + "\" width=\"" +
           std::to_string(width) + "\" height=\"" + std::to_string(height) + "\" rx=\"2\"/><text x=\"" +
           middle + "\" y=\"" + std::to_string(kBottom - height - 5) + "\" text-anchor=\"middle\">" +
           Grouped(posts) + "</text><text x=\"" + middle + "\" y=\"" + std::to_string(kBottom + 16) +
           "\" text-anchor=\"middle\">" + std::to_string(year) + "</text></g>\n";
}

std::string Chart(const BoardTally& tally) {
    constexpr int kStep = 52;
    constexpr std::int64_t kHighest = 150;
    const auto years = Years(tally);
    if (years.empty()) return {};
    const auto byPosts = [](const auto& one, const auto& other) { return one.second < other.second; };
    const auto most = std::ranges::max_element(years, byPosts);
    const int width = std::max(static_cast<int>(years.size()) * kStep, 320);
    std::string text =
        "<section aria-labelledby=\"years\"><h2 id=\"years\">Posts a year</h2>\n<figure><svg viewBox=\"0 0 " +
        std::to_string(width) + " 204\" width=\"" + std::to_string(width) +
        "\" height=\"204\" role=\"img\" aria-labelledby=\"chart-title chart-text\">"
        "<title id=\"chart-title\">Posts a year</title><desc id=\"chart-text\">A bar for each year from " +
        std::to_string(years.front().first) + " to " + std::to_string(years.back().first) + ". Most posts, " +
        Grouped(most->second) + ", are of " + std::to_string(most->first) +
        ".</desc>\n<line x1=\"0\" y1=\"180\" x2=\"" + std::to_string(width) + "\" y2=\"180\"/>\n";
    int left = 6;
    for (const auto& [year, posts] : years) {
        text += Bar(left, kStep - 12, posts * kHighest / most->second, year, posts);
        left += kStep;
    }
    return text + "</svg>\n" + YearsTable(years) + "</figure></section>\n";
}

std::string FindingText(const Finding& finding) {
    std::string text = "<li><span class=\"path\">" + OfBoard(PlaceText(finding)) + "</span>";
    if (finding.count > 1) text += " <span class=\"faint\">" + Grouped(finding.count) + " times</span>";
    if (!finding.label.empty()) text += "<br>Message: " + OfBoard(finding.label);
    if (!finding.detail.empty()) text += "<br>" + OfBoard(finding.detail);
    if (!finding.words.empty())
        text += "<blockquote><code>" + OfBoard(finding.words) + "</code></blockquote>";
    return text + "</li>\n";
}

std::string KindText(const Findings& findings, const KindTexts& texts) {
    const std::string style = ClassOf(texts.grade);
    const auto& kept = findings.KeptOf(texts.kind);
    const bool isOpen = texts.grade == Grade::kEndsRun;
    std::string text = "<details class=\"kind\" id=\"" + Escaped(texts.id) + "\" data-grade=\"" + style +
                       "\"" + (isOpen ? " open" : "") + "><summary><h3>" + Escaped(texts.title) +
                       "</h3><span class=\"badge " + style + "\">" + Escaped(NameOf(texts.grade)) +
                       "</span><span class=\"number\">" + Grouped(findings.CountOf(texts.kind)) +
                       "</span></summary>\n<div class=\"inside\"><dl><dt>The "
                       "run</dt><dd>" +
                       Escaped(texts.run) + "</dd><dt>To change</dt><dd>" + Escaped(texts.remedy) +
                       "</dd></dl>\n<ol class=\"findings\">\n";
    for (const Finding& finding : kept) text += FindingText(finding);
    text += "</ol>";
    if (const auto others = findings.LeftOutOf(texts.kind); others > 0) {
        text += "<p class=\"faint\">These are the first " + Grouped(static_cast<std::int64_t>(kept.size())) +
                " of " + Grouped(static_cast<std::int64_t>(kept.size()) + others) + " places.</p>";
    }
    return text + "</div></details>\n";
}

std::string Filter() {
    std::string text =
        "<div class=\"filter\" id=\"filter\" role=\"search\" hidden>\n<label for=\"words\">Show findings "
        "with</label> <input type=\"search\" id=\"words\" placeholder=\"a word, a page, a post number\">\n";
    for (const Grade grade : kGrades) {
        const std::string style = ClassOf(grade);
        text += "<label><input type=\"checkbox\" name=\"grade\" value=\"" + style + "\" checked> " +
                Escaped(NameOf(grade)) + "</label>\n";
    }
    return text +
           "<button type=\"button\" id=\"unfold\">Unfold all</button> <button type=\"button\" "
           "id=\"fold\">Fold "
           "all</button>\n<span id=\"status\" class=\"faint\" role=\"status\" "
           "aria-live=\"polite\"></span></div>\n";
}

// All pages below a node are counted with it.
struct Subtree {
    std::int64_t pages = 0;
    std::int64_t posts = 0;
    std::int64_t files = 0;
    std::vector<std::size_t> children;
};

std::vector<Subtree> SubtreesOf(const std::vector<BoardNode>& nodes) {
    std::vector<Subtree> subtrees(nodes.size());
    for (std::size_t at = nodes.size(); at-- > 0;) {
        const BoardNode& node = nodes[at];
        Subtree& own = subtrees[at];
        own.posts += node.posts;
        own.files += node.files;
        own.pages += node.page.empty() ? 0 : 1;
        std::ranges::reverse(own.children);
        if (node.parent == at) continue;
        Subtree& above = subtrees[node.parent];
        above.posts += own.posts;
        above.files += own.files;
        above.pages += own.pages;
        above.children.push_back(at);
    }
    return subtrees;
}

std::string Counts(const Subtree& subtree) {
    std::string text = Grouped(subtree.posts) + (subtree.posts == 1 ? " post" : " posts");
    if (subtree.pages > 1) text += ", " + Grouped(subtree.pages) + " pages";
    if (subtree.files > 0) text += ", " + Grouped(subtree.files) + (subtree.files == 1 ? " file" : " files");
    return " <span class=\"faint\">" + text + "</span>";
}

// The first so many nodes, those nearest to the top before all others.
std::vector<bool> ShownOf(const std::vector<BoardNode>& nodes) {
    constexpr std::size_t kMostShown = 2000;
    constexpr std::size_t kDeepest = 40;
    std::vector<std::vector<std::size_t>> levels;
    std::vector<std::size_t> depths(nodes.size());
    for (std::size_t at = 0; at < nodes.size(); ++at) {
        if (nodes[at].parent != at) depths[at] = depths[nodes[at].parent] + 1;
        levels.resize(std::max(levels.size(), depths[at] + 1));
        levels[depths[at]].push_back(at);
    }
    std::vector<bool> shown(nodes.size());
    std::size_t count = 0;
    for (std::size_t depth = 0; depth < std::min(levels.size(), kDeepest); ++depth) {
        for (const std::size_t at : levels[depth]) shown[at] = count++ < kMostShown;
    }
    return shown;
}

// The tree as nested lists, as far as a reader will follow: a large board is shown in part, with all counts.
class TreeWriter {
  public:
    explicit TreeWriter(const BoardTally& tally)
        : tally_(tally), subtrees_(SubtreesOf(tally.nodes)), shown_(ShownOf(tally.nodes)) {}

    std::string Write() {
        std::vector<std::size_t> categories;
        for (std::size_t at = 0; at < tally_.nodes.size(); ++at) {
            if (tally_.nodes[at].parent == at) categories.push_back(at);
        }
        return "<ul class=\"tree\">\n" + Items(categories, true) + "</ul>\n";
    }

  private:
    std::string Item(std::size_t at, bool isOpen) {
        const BoardNode& node = tally_.nodes[at];
        const Subtree& subtree = subtrees_[at];
        std::string name = node.name.empty() ? "(without a name)" : OfBoard(node.name);
        if (!node.page.empty()) name += " <span class=\"path faint\">" + OfBoard(node.page) + "</span>";
        name += Counts(subtree);
        if (subtree.children.empty()) return "<li>" + name + "</li>\n";
        return "<li><details" + std::string(isOpen ? " open" : "") + "><summary>" + name +
               "</summary><ul>\n" + Items(subtree.children, false) + "</ul></details></li>\n";
    }

    std::string Items(const std::vector<std::size_t>& nodes, bool areOpen) {
        std::string text;
        std::size_t others = 0;
        for (const std::size_t at : nodes) {
            if (shown_[at]) {
                text += Item(at, areOpen);
            } else {
                ++others;
            }
        }
        if (others > 0) text += "<li class=\"faint\">and " + std::to_string(others) + " more</li>\n";
        return text;
    }

    const BoardTally& tally_;
    std::vector<Subtree> subtrees_;
    std::vector<bool> shown_;
};

std::string FindingsSection(const Findings& findings) {
    std::string text = "<section aria-labelledby=\"findings\"><h2 id=\"findings\">Findings</h2>\n";
    std::string kinds;
    for (const KindTexts& texts : AllKinds()) {
        if (findings.CountOf(texts.kind) > 0) kinds += KindText(findings, texts);
    }
    if (kinds.empty()) return text + "<p>None.</p></section>\n";
    return text + Filter() + kinds + "</section>\n";
}

}  // namespace

void WriteHtmlReport(const BoardCheck& check, std::u16string_view path) {
    const bool hasFindings =
        std::ranges::any_of(kGrades, [&check](Grade grade) { return check.Found().CountOf(grade) > 0; });
    std::vector<std::string> pieces;
    pieces.push_back(
        "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
        "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
        "<meta name=\"generator\" content=\"Tessaly " TESSALY_VERSION
        "\">\n"
        "<title>Check of a message board</title>\n<style>" +
        std::string(kReportStyle) +
        "</style>\n</head>\n<body>\n<a class=\"skip\" href=\"#findings\">To the findings</a>\n");
    pieces.push_back(Head(check) + "<main>\n" + Totals(check) + FindingsSection(check.Found()));
    pieces.push_back(Chart(check.Tally()) +
                     "<section aria-labelledby=\"board\"><h2 id=\"board\">The board</h2>\n" +
                     TreeWriter(check.Tally()).Write() + "</section>\n</main>\n");
    pieces.emplace_back(
        "<footer><p>Made by a check: nothing was written, created or deleted but this report. "
        "Positions count the characters of a page as it is read, lines those of its file.</p>"
        "</footer>\n");
    if (hasFindings) pieces.push_back("<script>" + std::string(kReportScript) + "</script>\n");
    pieces.emplace_back("</body>\n</html>\n");
    platform::WriteWholeFile(path, pieces);
}

}  // namespace tessaly
