#include "translate/DiscusProcessLinks.h"

#include "control/DisplayInfo.h"
#include "control/RoutineHandler.h"
#include "control/checking.h"
#include "output/OutputFiles.h"
#include "reader/TagScanning.h"
#include "text/numbers.h"
#include "text/split.h"
#include "translate/BuildmybbLink.h"
#include "translate/modAttachments.h"

namespace tessaly {

namespace {

constexpr std::u16string_view kLink = u"<a href=";
constexpr std::u16string_view kLabel = u" - DiscusProcessLinks()";

// The working text while its links are gone through: what stands before the start position, and the rest.
// Behind a splice the start position is the one measured before it, so links within the shortening are
// skipped.
class WorkingText {
  public:
    explicit WorkingText(std::u16string_view text) : rest_(text) {}

    // The next link and all up to its "</a>"; empty when there is none.
    std::u16string_view NextLink(ConversionState& state) {
        link_ = 1;
        return ExtractTagSection(state, rest_, kLink, u"</a>", link_, behindLink_);
    }

    void Skip() {
        done_ += Between(rest_, 1, behindLink_);
        rest_ = From(rest_, behindLink_);
    }

    // The link that the search for the next one found, and no "</a>" behind it; empty when it found none.
    std::u16string_view OpenLink() const { return link_ == 0 ? std::u16string_view() : From(rest_, link_); }

    // A link that opens the text becomes the whole text. Gives what is skipped behind the link, with as much
    // of what follows as a link that begins in it reaches beyond.
    std::u16string_view Splice(std::u16string_view replacement) {
        if (done_.empty() && link_ == 1) {
            done_ = Between(rest_, 1, behindLink_);
            rest_ = {};
            return {};
        }
        const std::u16string_view behind = From(rest_, behindLink_);
        done_ += Between(rest_, 1, link_);
        const Position shortening = behindLink_ - link_ - Length(replacement);
        if (shortening >= 0) {
            const std::u16string_view skipped = behind.substr(0, static_cast<std::size_t>(shortening));
            done_ += replacement;
            done_ += skipped;
            rest_ = behind.substr(skipped.size());
            return behind.substr(0, skipped.size() + kLink.size() - 1);
        }
        // The start position lies within the replacement, where another link can only begin with a "<".
        const auto kept = static_cast<std::size_t>(behindLink_ - link_);
        if (replacement.find(u'<', kept) == std::u16string_view::npos) {
            done_ += replacement;
            rest_ = behind;
            return {};
        }
        std::u16string rest(replacement.substr(kept));
        rest += behind;
        done_ += replacement.substr(0, kept);
        held_ = std::move(rest);
        rest_ = held_;
        return {};
    }

    std::u16string Whole() && {
        done_ += rest_;
        return std::move(done_);
    }

  private:
    std::u16string done_;
    std::u16string_view rest_;
    std::u16string held_;
    Position link_ = 1;
    Position behindLink_ = 1;
};

// Where the link stands, as the links file notes it.
struct Place {
    std::int32_t pageSerial;
    std::int32_t forumId;
};

struct Target {
    std::u16string folder;
    std::u16string number;
};

// Everything behind "href=" stays in the address, such as a target attribute.
std::u16string AddressOf(ConversionState& state, std::u16string_view link) {
    std::u16string address(FirstTagSection(state, link, kLink, u">"));
    RemoveAll(address, kLink);
    RemoveAll(address, u">");
    return address;
}

std::u16string BBCodeLink(ConversionState& state, const std::u16string& address, std::u16string_view link) {
    std::u16string bbcode = u"[url=" + address + u"]" + RemoveTagInformation(state, link) + u"[/url]";
    RemoveAll(bbcode, u"\"");
    RemoveAll(bbcode, u"<");
    return bbcode;
}

Target TargetOf(std::u16string_view address) {
    const auto parts = Split(address, u"/");
    const std::u16string_view folder = Element(parts, parts.size() - 2);
    std::u16string page(Element(parts, parts.size() - 1));
    RemoveAll(page, u".html");
    return {std::u16string(LeadingDigits(folder)), std::u16string(LeadingDigits(page))};
}

void TakeLinkedFile(ConversionState& state, std::u16string& body, const std::u16string& address) {
    body = u"<!--attachment: <a href=\"" + address + u"\" target= <!--/attachment-->";
    ProcessAttachments(state, body, state.CurrentPosterId);
}

void ReportMissingPage(ConversionState& state, const Target& target) {
    const std::u16string below = target.folder + u"\\" + target.number + u".html";
    const std::u16string first = state.DiscusMessageFolder + below;
    const std::u16string second = state.DiscusSecureMessageFolder + below;
    const auto folders = SourceFolders(state);
    if (ToolboxLibrary::FileExistsWithin(first, folders)) return;
    if (ToolboxLibrary::FileExistsWithin(second, folders)) return;
    NoteFinding(state, FindingKind::kMissingTopic, target.number, first);
    DisplayInfo(state,
                u"Message linked file does not exist (mybb Rec# " + ToText(state.PostCounter) + u") - " +
                    first + u"\r\n      nor does " + second + u"\r\n",
                true, true, true);
}

void NoteLink(ConversionState& state, const std::u16string& bbcode, const Place& place,
              const Target& target) {
    std::u16string line = bbcode + u"^^" + ToText(place.forumId) + u"^" + ToText(place.pageSerial) + u"^" +
                          ToText(state.PostCounter) + u"^" + CurrentIndex(state).FileNumber + u"^" +
                          target.folder + u"^" + target.number;
    RemoveAll(line, u"\r\n");
    RemoveAll(line, u"\n");
    WriteFileLine(state, line, state.InternalLinksFile, u"", true);
}

std::u16string TopicLink(ConversionState& state, const std::u16string& bbcode, const Place& place,
                         const Target& target) {
    const std::u16string* const item = state.ThreadIdsByFile.Find(target.number);
    ReportMissingPage(state, target);
    if (item != nullptr) {
        std::vector<std::u16string> list;
        return BuildmybbLink(state, bbcode, *item, list);
    }
    NoteLink(state, bbcode, place, target);
    return bbcode;
}

bool IsScript(std::u16string_view link) {
    return Contains(link, u"show.cgi") || Contains(link, u"showpage.html");
}

bool IsLocal(std::u16string_view link) {
    return Contains(link, u"/discus/messages/") || Contains(link, u"/secure/");
}

// The last link may be one that no "</a>" follows.
void NoteEnd(const ConversionState& state, std::u16string_view openLink) {
    if (!openLink.empty()) {
        NotePart(state, openLink);
        NoteFinding(state, FindingKind::kUnclosedLink, openLink);
    }
    NotePart(state, {});
}

void NoteSkipped(const ConversionState& state, std::u16string_view skipped) {
    if (!IsCheck(state)) return;
    for (Position at = Find(skipped, kLink); at != 0; at = Find(skipped, kLink, at + 1)) {
        NotePart(state, From(skipped, at));
        NoteFinding(state, FindingKind::kSkippedLink, From(skipped, at));
    }
}

// A link to a topic gives the replacement; one to a file is taken as an attachment and leaves the replacement
// be.
void FollowLink(ConversionState& state, std::u16string& body, std::u16string link, const Place& place,
                std::u16string& replacement) {
    RemoveAll(link, u"\"");
    const std::u16string address = AddressOf(state, link);
    if (address.empty()) return;
    const std::u16string bbcode = BBCodeLink(state, address, link);
    const Target target = TargetOf(address);
    if (target.number.empty()) return TakeLinkedFile(state, body, address);
    if (!Contains(address, u".html")) NoteFinding(state, FindingKind::kFileTakenForTopic, address, address);
    replacement = TopicLink(state, bbcode, place, target);
}

}  // namespace

std::u16string DiscusProcessLinks(ConversionState& state, std::u16string& body, std::int32_t pageSerial,
                                  std::int32_t forumId) try {
    if (state.CancelRequested) return {};
    const std::u16string whole = body;
    WorkingText working(whole);
    // Set by a topic link alone and never cleared: any other link that goes leaves a copy of the last one.
    std::u16string replacement;
    while (true) {
        const std::u16string link(working.NextLink(state));
        if (link.empty()) {
            NoteEnd(state, working.OpenLink());
            return std::move(working).Whole();
        }
        NotePart(state, link);
        if (IsScript(link)) NoteFinding(state, FindingKind::kScriptLink, link);
        if (!IsScript(link) && !IsLocal(link)) {
            NoteFinding(state, FindingKind::kLinkElsewhere, link);
            working.Skip();
            state.ToolboxA.KeepResponsive();
            continue;
        }
        const auto follow = [&] { FollowLink(state, body, link, {pageSerial, forumId}, replacement); };
        if (!IsScript(link) && !GoingOnInCheck(state, kLabel, follow)) {
            working.Skip();
            continue;
        }
        NoteSkipped(state, working.Splice(replacement));
        state.ToolboxA.KeepResponsive();
    }
} catch (...) {
    RoutineHandler(state, kLabel, CurrentError());
    return {};
}

}  // namespace tessaly
