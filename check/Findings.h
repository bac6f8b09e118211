#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "control/checking.h"
#include "text/search.h"

namespace tessaly {

enum class Grade { kEndsRun, kLoses, kWorthKnowing };

// What there is to tell of all findings of one kind.
struct KindTexts {
    FindingKind kind;
    Grade grade;
    std::u16string_view id;  // how a program asks for the kind
    std::u16string_view title;
    std::u16string_view run;     // what the run does
    std::u16string_view remedy;  // what to change
};

// In the order of the kinds.
std::span<const KindTexts> AllKinds();
const KindTexts& TextsOf(FindingKind kind);

// One place of a board at which a run ends, loses something, or something else is worth knowing. Texts are
// printable.
struct Finding {
    std::u16string label;   // the first line of the run's message, for what ends it
    std::u16string reason;  // the rest of that message
    std::u16string page;    // full path of the file
    std::u16string post;    // its number, empty outside of posts
    Position position = 0;  // in the text of the file, 0 when it is not known
    std::int32_t line = 0;  // of the file, 0 when it is not known
    std::u16string words;   // the source around it
    std::u16string detail;
    std::int64_t count = 1;
};

// The findings of a board by kind. All are counted, the first of each kind are kept.
class Findings {
  public:
    static constexpr std::size_t kMostKept = 500;

    // Counts a finding of so many things, and keeps it unless enough of its kind are kept.
    void Add(FindingKind kind, Finding finding, std::int64_t count = 1);
    bool IsFull(FindingKind kind) const { return KeptOf(kind).size() >= kMostKept; }

    std::int64_t CountOf(FindingKind kind) const;
    std::int64_t CountOf(Grade grade) const;
    const std::vector<Finding>& KeptOf(FindingKind kind) const;
    // How many of its kind were not kept.
    std::int64_t LeftOutOf(FindingKind kind) const;

  private:
    struct OfKind {
        std::int64_t count = 0;
        std::int64_t added = 0;
        std::vector<Finding> kept;
    };

    std::array<OfKind, static_cast<std::size_t>(FindingKind::kUnusedFile) + 1> kinds_;
};

}  // namespace tessaly
