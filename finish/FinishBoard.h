#pragma once

#include <string>
#include <vector>

#include "finish/Board.h"

namespace tessaly {

// What the operator is told behind it.
struct Finished {
    std::u16string summary;
    std::vector<std::u16string> warnings;
};

// Reads a run's import files and writes the folder "finish" beside them: the board as a living forum takes
// it. An old folder of that name is replaced when the new one is whole. Throws FinishError when it cannot be
// done.
Finished FinishBoard(const FinishOptions& options);

}  // namespace tessaly
