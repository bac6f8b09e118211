#include "reader/SpecialCharacters.h"

#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "control/DisplayInfo.h"
#include "control/RoutineHandler.h"
#include "control/checking.h"
#include "control/troubledFiles.h"
#include "platform/TextFile.h"
#include "reader/SourceFiles.h"
#include "text/split.h"

namespace tessaly {

namespace {

using platform::TextFile;

constexpr Position kShortest = 4;
constexpr Position kLongest = 10;

// A character file whose replacements bring their own sequences back makes a text grow without end.
constexpr std::size_t kMostGrowth = 4;
constexpr std::size_t kPageSize = 4096;

// A column of just three characters gives its middle one: it may be a blank, or a back-quote, between marks.
std::u16string ReplacementOf(std::u16string_view column) {
    if (column.size() == 3) return std::u16string(column.substr(1, 1));
    std::u16string replacement(column);
    RemoveAll(replacement, u"`");
    return replacement;
}

// Of two lines with the same key the first stays.
void AddSequence(ConversionState& state, std::u16string_view sequence, const std::u16string& replacement) {
    if (sequence.empty()) return;
    IgnoringErrors([&] { state.ReplaceableCharacters.Add(Trim(sequence), replacement); });
}

void ReadCharacterLine(ConversionState& state, std::u16string_view line) {
    const auto columns = Split(line, u"\t");
    const std::u16string replacement = ReplacementOf(Element(columns, 1));
    if (replacement.empty()) return;
    AddSequence(state, columns[0], replacement);
    if (columns.size() > 2) AddSequence(state, columns[2], replacement);
}

void Report(ConversionState& state, std::u16string_view trouble, const std::u16string& path) {
    NoteFinding(state, FindingKind::kNoCharacterFile, {}, path);
    DisplayInfo(state, std::u16string(trouble) + path + u"\r\nContinuing without it...\r\n", true, true,
                true);
}

bool HoldsBlank(std::u16string_view text) {
    return text.find(u' ') != std::u16string_view::npos;
}

bool IsSequence(std::u16string_view text) {
    const Position length = Length(text);
    return length >= kShortest && length <= kLongest && !HoldsBlank(text);
}

// The log of unknown sequences, opened with the first of them in a text.
class SequenceLog {
  public:
    explicit SequenceLog(ConversionState& state)
        : state_(state), path_(state.mybbOutputFolder + u"Discus Special Characters.txt") {}

    void Write(std::u16string_view sequence) {
        if (IsCheck(state_)) return state_.Check->SequenceMet(sequence, true);
        WithFile(state_, path_, [&] {
            if (!file_) {
                file_.emplace(path_, platform::OpenMode::kAppending, platform::TextFormat::kSingleByte);
            }
            file_->WriteLine(sequence);
        });
    }

    void Close() {
        if (file_) WithFile(state_, path_, [this] { file_->Close(); });
    }

  private:
    ConversionState& state_;
    std::u16string path_;
    std::optional<TextFile> file_;
};

// A sequence not met before stands for itself from now on.
const std::u16string& AddUnknown(ConversionState& state, std::u16string_view sequence, SequenceLog& log) {
    state.ReplaceableCharacters.Add(sequence, std::u16string(sequence));
    log.Write(sequence);
    return state.ReplaceableCharacters.Get(sequence);
}

struct Sequence {
    Position at;
    std::u16string_view text;
    const std::u16string* replacement;
};

// All sequences of a text in which no replacement can make, change or hide another one, so that one pass does
// what replacing each in the whole text would do. Nothing when that is not so: when an "&" stands closely
// before a sequence, or when a replacement brings an "&" or a ";" of its own.
std::optional<std::vector<Sequence>> FindIndependent(ConversionState& state, std::u16string_view text) {
    std::vector<Sequence> sequences;
    Position before = 0;
    Position semicolon = 0;
    for (Position at = Find(text, u"&"); at != 0; at = Find(text, u"&", at + 1)) {
        if (semicolon < at) {
            before = 0;
            semicolon = Find(text, u";", at);
        }
        if (semicolon == 0) break;
        const std::u16string_view candidate = Between(text, at, semicolon + 1);
        if (IsSequence(candidate)) {
            if (before != 0 && at - before < kLongest && !HoldsBlank(Between(text, before, at))) return {};
            const std::u16string* const replacement = state.ReplaceableCharacters.Find(candidate);
            if (replacement != nullptr && !EqualIgnoringCase(*replacement, candidate) &&
                replacement->find_first_of(u"&;") != std::u16string::npos) {
                return {};
            }
            sequences.push_back({at, candidate, replacement});
        }
        before = at;
    }
    return sequences;
}

// Those from `begin` on stay, but for further occurrences of those before it.
void LeaveBehind(std::vector<Sequence>& sequences, std::size_t begin) {
    std::unordered_set<const std::u16string*> seen;
    for (std::size_t index = 0; index < sequences.size(); ++index) {
        const std::u16string*& replacement = sequences[index].replacement;
        if (index < begin) {
            seen.insert(replacement);
        } else if (!seen.contains(replacement)) {
            replacement = nullptr;
        }
    }
}

void ReplaceAtOnce(std::u16string& text, const std::vector<Sequence>& sequences) {
    std::u16string replaced;
    replaced.reserve(text.size());
    Position from = 1;
    for (const Sequence& sequence : sequences) {
        if (sequence.replacement == nullptr) continue;
        replaced += Between(text, from, sequence.at);
        replaced += *sequence.replacement;
        from = sequence.at + Length(sequence.text);
    }
    replaced += From(text, from);
    text = std::move(replaced);
}

// A log that cannot be written to ends the search; what came before is replaced all the same.
void ReplaceIndependent(ConversionState& state, std::u16string& text, std::vector<Sequence> sequences,
                        SequenceLog& log) {
    if (sequences.empty()) return;
    std::size_t index = 0;
    try {
        for (; index < sequences.size(); ++index) {
            Sequence& sequence = sequences[index];
            if (sequence.replacement == nullptr)
                sequence.replacement = state.ReplaceableCharacters.Find(sequence.text);
            if (sequence.replacement == nullptr)
                sequence.replacement = &AddUnknown(state, sequence.text, log);
            if (IsCheck(state)) state.Check->SequenceMet(sequence.text, false);
        }
    } catch (...) {
        LeaveBehind(sequences, index);
        ReplaceAtOnce(text, sequences);
        throw;
    }
    ReplaceAtOnce(text, sequences);
}

// Gives all occurrences one spelling; tells whether that changed any.
bool Respell(std::u16string& text, const std::u16string& spelling) {
    bool isChanged = false;
    for (Position at = Find(text, spelling); at != 0; at = Find(text, spelling, at + Length(spelling))) {
        const auto offset = static_cast<std::size_t>(at) - 1;
        if (text.compare(offset, spelling.size(), spelling) == 0) continue;
        text.replace(offset, spelling.size(), spelling);
        isChanged = true;
    }
    return isChanged;
}

// The plain way: each sequence found is replaced in the whole text, before the present position too. What
// stands for itself need not be looked through again while the text stays the same.
void ReplaceOneByOne(ConversionState& state, std::u16string& text, SequenceLog& log) {
    std::unordered_map<std::u16string, std::size_t> spelledAt;
    const std::size_t mostSize = text.size() * kMostGrowth + kPageSize;
    std::size_t changes = 1;
    Position semicolon = 0;
    for (Position at = Find(text, u"&"); at != 0; at = Find(text, u"&", at + 1)) {
        if (semicolon < at) semicolon = Find(text, u";", at);
        if (semicolon == 0) return;
        if (!IsSequence(Between(text, at, semicolon + 1))) continue;
        const std::u16string sequence(Between(text, at, semicolon + 1));
        const std::u16string* const replacement = state.ReplaceableCharacters.Find(sequence);
        if (replacement == nullptr) {
            AddUnknown(state, sequence, log);
        } else if (!EqualIgnoringCase(sequence, *replacement)) {
            ReplaceAll(text, sequence, *replacement);
            if (text.size() > mostSize) Raise(kOutOfMemory);
            ++changes;
            semicolon = 0;
        } else if (std::size_t& spelled = spelledAt[*replacement]; spelled != changes) {
            if (Respell(text, *replacement)) ++changes;
            spelled = changes;
        }
        if (IsCheck(state)) state.Check->SequenceMet(sequence, false);
    }
}

}  // namespace

void DiscusGetReplaceableCharacterArray(ConversionState& state, std::u16string_view charset) try {
    state.ReplaceableCharactersLoaded = false;
    if (state.CancelRequested) return;
    const std::u16string docs = state.ProgramFolder + u"\\Docs";
    const std::u16string path = docs + u"\\" + std::u16string(charset) + u".txt";
    if (!ToolboxLibrary::FileExistsWithin(path, {docs})) {
        return Report(state, u"Replacable character array file not found - ", path);
    }
    std::u16string data;
    GetFileDataCharset(state, path, data, u"utf-8", false);
    const auto lines = Split(data, u"\r\n");
    if (lines.size() < 2) return Report(state, u"Replacable character array file is empty - ", path);
    state.ReplaceableCharactersLoaded = true;
    // What stands behind the last line end is no line.
    for (std::size_t line = 0; line + 1 < lines.size(); ++line) {
        GoingOnInCheck(state, u" - DiscusGetReplaceableCharacterArray()",
                       [&] { ReadCharacterLine(state, lines[line]); });
        state.ToolboxA.KeepResponsive();
    }
} catch (...) {
    RoutineHandler(state, u" - DiscusGetReplaceableCharacterArray()", CurrentError());
}

void DiscusFindSpecialCharacterSequences(ConversionState& state, std::u16string& text) try {
    if (!state.optFindDiscusSpecialCharacters) return;
    SequenceLog log(state);
    if (auto sequences = FindIndependent(state, text)) {
        ReplaceIndependent(state, text, *std::move(sequences), log);
    } else {
        ReplaceOneByOne(state, text, log);
    }
    log.Close();
} catch (...) {
    RoutineHandler(state, u" - DiscusFindSpecialCharacterSequences()", CurrentError());
}

}  // namespace tessaly
