#pragma once

#include <string>
#include <vector>

#include "tests/support/TemporaryFolder.h"

namespace tessaly::testing {

// What a program left behind: its exit status and what it wrote.
struct ProgramRun {
    int status = -1;
    std::string output;
    std::string errors;
};

// Runs a program with these arguments and waits for its end. A working folder is entered first when one is
// named.
ProgramRun RunProgram(const std::vector<std::string>& arguments, const std::string& workingFolder = {});

}  // namespace tessaly::testing
