#pragma once

#include <memory>
#include <string>
#include <vector>

#include "check/BoardCheck.h"
#include "tests/support/TestBoard.h"

namespace tessaly::testing {

// A small board that can be checked, with the fields of the state that can convert it.
class CheckedBoard : public TestBoard {
  public:
    // Checks it anew. What was found is good until the next check.
    const BoardCheck& Check();

    // The findings of a kind, of the last check.
    const std::vector<Finding>& Of(FindingKind kind) const;
    std::int64_t CountOf(FindingKind kind) const;
    std::int64_t LeftOutOf(FindingKind kind) const;

  private:
    std::unique_ptr<ConversionState> checked_;
    std::unique_ptr<BoardCheck> check_;
};

// How many findings of the last check end a run.
std::int64_t EndsOf(const BoardCheck& check);

// What a run's first message is where a finding ends it.
std::u16string MessageOf(const Finding& finding);

}  // namespace tessaly::testing
