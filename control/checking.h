#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "control/modDefinitions.h"
#include "text/RunTimeError.h"

namespace tessaly {

struct clsMember;

// What a check of a board finds, the kinds that end a run first, then those that lose something, then what is
// worth knowing.
enum class FindingKind {
    kFontTags,
    kPostTime,
    kPostTag,
    kImageQuotes,
    kAttachmentAddress,
    kAttachmentSize,
    kWebsite,
    kLinkAddress,
    kSubtopicLink,
    kRedirectPath,
    kForumName,
    kPageLoop,
    kMemberFields,
    kMemberNumber,
    kGroupName,
    kMemberAddress,
    kOutputFolder,
    kFileNotRead,
    kCharset,
    kCharacterFile,
    kMessage,
    kOtherFailure,

    kPostsBehindUnclosed,
    kPostWithoutText,
    kNoSubject,
    kMissingPage,
    kUnreachedPage,
    kTouchingSection,
    kForumsNotWritten,
    kOtherThread,
    kOtherForum,
    kFurtherImage,
    kImageElsewhere,
    kLinkElsewhere,
    kSkippedLink,
    kScriptLink,
    kUnclosedLink,
    kFileTakenForTopic,
    kMissingAttachment,
    kAttachmentElsewhere,
    kNoAttachment,
    kSurplusAttachment,
    kInheritedGroup,
    kFurtherGroups,
    kUndecodedCharacter,
    kLackedCharacter,

    kUnknownSequence,
    kForumNameTwice,
    kHiddenPageLeftOut,
    kMissingTopic,
    kMemberRenamed,
    kUnknownPoster,
    kNoMemberFile,
    kNoCharacterFile,
    kUnusedFile,
};

// What a run would lose at some place: the words of the source that stand there, as far as they are at hand,
// what is to be told of them, and how many things of the kind it is.
struct Remark {
    FindingKind kind;
    std::u16string_view words;
    std::u16string_view detail;
    std::int64_t count = 1;
};

// Where something stands in a file as it is read: line and position from 1.
struct SourcePlace {
    Position position = 0;
    std::int32_t line = 0;
};

// Who listens while a check plays a run; a run itself has no listener. With one the routines write nothing,
// and go on behind what would end the run.
struct CheckListener {
    std::function<void(std::u16string_view label, const RunTimeError& error)> Failed;
    std::function<void(const Remark& remark)> Noted;
    std::function<void(std::u16string_view path, std::u16string_view text)> BoardRead;
    // The page in hand has been found. False when it has been looked at enough.
    std::function<bool()> MayEnterPage;
    // Whether the rest of the page in hand is to be left.
    std::function<bool()> MustLeavePage;
    std::function<void(std::u16string_view name, bool isCategory, std::int32_t forumId)> ForumMade;
    // The forum that a name stands for, also one that a run would not find.
    std::function<std::int32_t(std::u16string_view name)> ForumIdOf;
    // A post; its time is missing when it is no number.
    std::function<void(std::optional<std::int32_t> time)> PostRead;
    // The next link or picture of the section in hand, in the order of its text; empty behind the last.
    std::function<void(std::u16string_view words)> PartMet;
    std::function<void(std::u16string_view row)> RowMade;
    // A sequence "&...;" of a source file: one that no file of characters knows, when it is entered as such,
    // and every one that is met, known or not.
    std::function<void(std::u16string_view sequence, bool isEntered)> SequenceMet;
    std::function<void(std::u16string_view source, std::int64_t length)> FileTaken;

    // What is in hand. The views are good as long as the routine that set them runs.
    Position BoardPlace = 0;      // a category or a top of the board file
    std::u16string_view Section;  // a post, an announcement or the entry of a sub-topic
    SourcePlace MemberLine;       // of the member file
    const std::vector<std::u16string_view>* MemberFields = nullptr;  // of that line
    const clsMember* Member = nullptr;                               // whose row is written
    std::u16string_view MemberValue;  // a time of the line, or a group of the member
    std::unordered_map<std::int32_t, SourcePlace> LinesOfMembers;  // by member number

    // What a run would have made by now for its redirection pages. Of the files only those that have a number
    // for a name, as the folders do: no other can be in the way of one.
    std::unordered_set<std::u16string> RedirectFolders;
    std::unordered_set<std::u16string> RedirectFiles;
};

inline bool IsCheck(const ConversionState& state) {
    return state.Check != nullptr;
}

inline void NoteFinding(const ConversionState& state, FindingKind kind, std::u16string_view words = {},
                        std::u16string_view detail = {}, std::int64_t count = 1) {
    if (IsCheck(state)) state.Check->Noted({kind, words, detail, count});
}

inline void NotePart(const ConversionState& state, std::u16string_view words) {
    if (IsCheck(state)) state.Check->PartMet(words);
}

// Whether a step of a check went well; its failure goes to the routine's handler.
bool GoesWell(ConversionState& state, std::u16string_view label, const std::function<void()>& step);

// One step of a routine. Its failure ends a run through the routine's handler; a check takes it down and goes
// on with the next step. False behind a failure.
template <typename Step>
bool GoingOnInCheck(ConversionState& state, std::u16string_view label, Step&& step) {
    if (!IsCheck(state)) {
        step();
        return true;
    }
    return GoesWell(state, label, std::ref(step));
}

// The same for a step that works on a post, an announcement or the entry of a sub-topic.
template <typename Step>
void InSection(ConversionState& state, std::u16string_view label, std::u16string_view section, Step&& step) {
    if (!IsCheck(state)) return step();
    state.Check->Section = section;
    GoingOnInCheck(state, label, step);
    state.Check->Section = {};
}

// The same for a step that works on one value of a member.
template <typename Step>
void InMemberValue(ConversionState& state, std::u16string_view label, std::u16string_view value,
                   Step&& step) {
    if (!IsCheck(state)) return step();
    state.Check->MemberValue = value;
    GoingOnInCheck(state, label, step);
    state.Check->MemberValue = {};
}

}  // namespace tessaly
