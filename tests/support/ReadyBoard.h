#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tests/support/TestBoard.h"

namespace tessaly::testing {

// A small board in the middle of a run, for tests that call one routine of a phase: the charset is "utf-8",
// the files of the run are named, the output folder is there and the data index holds element 0 alone. No log
// is open; progress reaches the text area.
class ReadyBoard : public TestBoard {
  public:
    ReadyBoard();

    // Adds a member through the fields of a line, divided by ":". Gives his number.
    std::int32_t AddMember(std::u16string_view line);

    // What a family's rows are so far; none when no row was written or the family is finished.
    std::vector<std::string> RowsOf(const OutputFile& family) const;

    // What the text area shows, which is emptied.
    std::u16string TakeArea();
};

// The row of a forum as the walk writes it.
std::string ForumRow(int fid, std::string_view name, std::string_view stype, int pid,
                     std::string_view parentList);

}  // namespace tessaly::testing
