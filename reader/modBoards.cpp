#include "reader/modBoards.h"

#include "control/RoutineHandler.h"
#include "control/checking.h"
#include "output/OutputFiles.h"
#include "output/mybbWriteForumsFile.h"
#include "reader/FieldEscaping.h"
#include "reader/SourceFiles.h"
#include "reader/TagScanning.h"
#include "reader/modThreads.h"

namespace tessaly {

namespace {

constexpr std::u16string_view kCategory = u"<!--Category: ";
constexpr std::u16string_view kTop = u"<!--Top: ";

// Empty, with a message, when neither file is there.
std::u16string ChooseBoardFile(const ConversionState& state) {
    if (ToolboxLibrary::FileExists(state.BoardTopicsFile)) return state.BoardTopicsFile;
    if (ToolboxLibrary::FileExists(state.DiscusCgiFile)) return state.DiscusCgiFile;
    state.ShowMessage(u"Missing File - " + state.BoardTopicsFile + u"\r\nMissing File - " +
                      state.DiscusCgiFile + u"\r\nOne file must exist");
    return {};
}

// The digits within the ten characters behind the tag.
std::u16string_view TopNumberOf(std::u16string_view topSection) {
    constexpr std::size_t kMostDigits = 10;
    return LeadingDigits(From(topSection, Length(kTop) + 1).substr(0, kMostDigits));
}

void NoteTouching(const ConversionState& state, std::u16string_view text, Position next,
                  std::u16string_view marker) {
    if (IsCheck(state) && StandsAt(text, next, marker)) {
        NoteFinding(state, FindingKind::kTouchingSection, From(text, next));
    }
}

// A category or a top that is looked at. Both are part of the text.
void NotePlace(const ConversionState& state, std::u16string_view text, std::u16string_view entry) {
    if (IsCheck(state)) state.Check->BoardPlace = static_cast<Position>(entry.data() - text.data()) + 1;
}

void ProcessTops(ConversionState& state, std::u16string_view text, std::u16string_view categoryBody,
                 const std::u16string& name) {
    Position position = 1;
    Position nextPosition = 1;
    while (true) {
        const std::u16string_view top =
            ExtractTagSection(state, categoryBody, kTop, u"<!--/Top-->", position, nextPosition);
        if (top.empty()) return;
        NotePlace(state, text, top);
        const std::u16string topNumber(TopNumberOf(top));
        // One further on: a section that begins directly behind this one is not found.
        position = nextPosition + 1;
        NoteTouching(state, categoryBody, nextPosition, kTop);
        AddProcessedFolder(state, topNumber);
        state.Depth = 0;
        DiscusProcessBoardTopics(state, topNumber, name, ForumIdOf(state, name), false);
        if (state.CancelRequested) return;
        state.ToolboxA.KeepResponsive();
    }
}

// False when the text ends exactly with a category's header, which stops the board without finishing files.
bool ProcessCategories(ConversionState& state, std::u16string_view text) {
    Position start = 1;
    Position next = 1;
    while (true) {
        const std::u16string_view section =
            ExtractTagSection(state, text, kCategory, u"<!--/Category-->", start, next);
        if (section.empty()) return true;
        NotePlace(state, text, section);
        if (next > Length(text) || next < 0) {
            NoteFinding(state, FindingKind::kForumsNotWritten, From(text, start));
            return false;
        }
        const std::u16string name = EscapeField(
            RemoveTagInformation(state, FirstTagSection(state, section, u"<!--Text-->", u"<!--/Text-->")));
        std::u16string noParents;
        mybbWriteForumsFile(state, name, state.ForumCounter, state.ForumOrder, noParents, u"c", u"");
        NoteTouching(state, text, next, kCategory);
        next = Find(text, kCategory, next + 1);
        const bool isLast = next == 0;
        const std::u16string_view categoryBody = isLast ? From(text, start) : Between(text, start, next);
        if (categoryBody.empty()) return true;
        start = next;
        ProcessTops(state, text, categoryBody, name);
        state.ToolboxA.KeepResponsive();
        if (state.CancelRequested || isLast) return true;
    }
}

}  // namespace

bool DiscusProcessDiscusMainBoardFile(ConversionState& state) {
    std::u16string path;
    try {
        if (state.CancelRequested) return false;
        state.ForumIdsByName = {};
        path = ChooseBoardFile(state);
        if (path.empty()) return false;
        std::u16string text;
        GetFileDataCharset(state, path, text, state.Charset, true);
        if (IsCheck(state)) state.Check->BoardRead(path, text);
        state.ForumCounter = 0;
        state.ForumOrder = 1;
        state.BoardSpare = 0;
        state.BoardSpare2 = 0;
        if (!ProcessCategories(state, text)) return false;
        FinishOutputFile(state, state.ForumsFile, u"mybb_forums");
        FinishOutputFile(state, state.PostsFile, u"mybb_posts");
        FinishOutputFile(state, state.InternalLinksFile, u"");
        return true;
    } catch (...) {
        RoutineHandler(state, u" - DiscusProcessDiscusMainBoardFile() - " + path, CurrentError());
        return false;
    }
}

}  // namespace tessaly
