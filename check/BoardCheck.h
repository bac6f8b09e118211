#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "check/CharsetTest.h"
#include "check/Findings.h"
#include "control/checking.h"
#include "control/modDefinitions.h"

namespace tessaly {

// A category or a page of the board, in the order of the walk.
struct BoardNode {
    std::u16string name;
    std::u16string page;  // folder and file, empty for a category
    std::size_t parent;   // its place in the list; a category is its own
    std::int64_t posts = 0;
    std::int64_t files = 0;
};

// What a board holds, as a run would count it.
struct BoardTally {
    std::int64_t pages = 0;
    std::int64_t posts = 0;
    std::int64_t members = 0;
    std::int64_t groups = 0;
    std::int64_t attachments = 0;
    std::int64_t attachmentBytes = 0;
    std::map<int, std::int64_t> postsByYear;
    std::vector<BoardNode> nodes;
};

// The numbers that a run gives out.
struct RunCounters {
    std::int32_t forums = 0;
    std::int32_t threads = 0;
    std::int32_t posts = 0;
    std::int32_t attachments = 0;
    std::int32_t announcements = 0;
};

// Plays a run that writes nothing and ends at nothing, and gathers what it finds. It hooks itself into a
// state of its own that no run uses; do so before the program's settings are read, since these write too.
class BoardCheck {
  public:
    explicit BoardCheck(ConversionState& state);
    BoardCheck(const BoardCheck&) = delete;
    BoardCheck& operator=(const BoardCheck&) = delete;

    // Goes through the board with the fields as they stand. The messages that a run would show are findings.
    void Run();

    // The operator cancelled it: the rest of the board was not looked at.
    bool IsCancelled() const { return isCancelled_; }

    const ConversionState& State() const { return state_; }
    const Findings& Found() const { return findings_; }
    // Where a run would end, or stop with a message, first of all.
    const std::optional<Finding>& FirstEnd() const { return firstEnd_; }
    // Whether the board file was there, and with it the pages looked at.
    bool WasBoardRead() const { return !boardText_.empty(); }
    const BoardTally& Tally() const { return tally_; }

  private:
    // A file of the source, its text as far as it is at hand, and the place in it that is in hand or from
    // which on something is looked for; 0 for the file as a whole.
    struct Source {
        std::u16string path;
        std::u16string_view text = {};
        Position from = 0;
        std::int32_t line = 0;
    };

    struct UnknownSequence {
        std::u16string text;
        std::int64_t count = 0;
        Finding first;
    };

    void HookIn();
    void TakeFailure(std::u16string_view label, const RunTimeError& error);
    void TakeEnd(FindingKind kind, Finding finding);
    void TakeMessage(std::u16string_view text);
    void TakeRemark(const Remark& remark);
    bool MayEnterPage();
    bool MustLeavePage();
    bool LeadsBack();
    bool IsInLoop() const { return loopLevel_ > 0 && state_.Depth >= loopLevel_; }
    void BeginLoop();
    void TakeLoop(std::u16string_view label, const RunTimeError& error);
    void TakeForum(std::u16string_view name, bool isCategory, std::int32_t forumId);
    void TakePage(std::u16string_view name, std::int32_t forumId);
    BoardNode* NodeInHand();
    std::int32_t ForumIdOf(std::u16string_view name);
    void TakeForumName(std::u16string_view name);
    void TakePost(std::optional<std::int32_t> time);
    void TakePart(std::u16string_view words);
    Position FindPart(std::u16string_view section, std::u16string_view words);
    std::u16string TakePassedOver(const Remark& remark);
    void TakeRow(std::u16string_view row);
    void TakeSequence(std::u16string_view sequence, bool isEntered);
    void TakeFile(std::u16string_view source, std::int64_t length);
    void NoteNamedFiles(std::u16string_view page);
    void CountMembers();
    void FindUnreached();
    void FindUnreached(std::u16string_view messageFolder, std::u16string_view folder);
    void TakeUnknownSequences();

    Source InHand();
    Source MemberInHand();
    Source PageInHand();
    Source Above();
    FindingKind KindOf(std::u16string_view label, const RunTimeError& error);
    std::u16string_view WordsOf(FindingKind kind);
    std::u16string DetailOf(FindingKind kind);
    // What is translated of a post or an announcement.
    static std::u16string_view BodyOf(std::u16string_view section);
    Finding FindingAt(const Source& source, std::u16string_view words);
    Position PositionIn(const Source& source, std::u16string_view words) const;
    Finding FailureAt(const Source& source, std::u16string_view words, std::u16string_view label,
                      const RunTimeError& error);
    Finding FindingOf(const Remark& remark);
    bool IsMemberFile(std::u16string_view path) const;
    bool IsToldOfFile(FindingKind kind);

    ConversionState& state_;
    CheckListener listener_;
    Findings findings_;
    BoardTally tally_;
    std::optional<CharsetTest> charset_;
    std::u16string boardPath_;
    std::u16string boardText_;
    Position categoryPlace_ = 0;
    // The node and the forum of each page on the way to the one in hand, by depth.
    std::vector<std::size_t> nodesInHand_;
    std::vector<std::int32_t> forumsInHand_;
    // Pages that were entered, and those that are told already as not entered.
    std::unordered_set<std::u16string> pagesTold_;
    std::unordered_set<std::u16string> filesNamed_;
    std::map<std::u16string, UnknownSequence> unknown_;
    // Positions in the section: of the link or picture in hand, and where the next one is looked for.
    Position part_ = 0;
    Position nextPart_ = 0;
    int partsMissed_ = 0;
    // What was told of the files of one page.
    std::size_t filesToldOf_ = 0;
    std::set<std::pair<FindingKind, Position>> filesTold_;
    // A way of pages that leads back to itself is followed, without taking anything down, to the level at
    // which a run ends. Behind the first one each page is looked at once: the ways through pages that lead to
    // one another are without end.
    bool hasLoop_ = false;
    bool isLoopOver_ = false;
    std::int32_t loopLevel_ = 0;
    Finding loopEntry_;
    RunCounters countersBefore_;
    std::optional<Finding> firstEnd_;
    bool isCancelled_ = false;
};

// Gives a state the fields, options and program of another one, as a click on Convert would find them there.
void CopyFields(const ConversionState& from, ConversionState& to);

}  // namespace tessaly
