#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tessaly::platform {

// The words of the command line, the program's own first, in UTF-8.
std::vector<std::string> Arguments(int count, char** words);

// From now on the operator's interrupt (Ctrl-C) is noted; a second one ends the process.
void NoteInterrupts();

// Whether an interrupt was noted since the last call.
bool TakeInterrupt();

// Whether messages on standard error are read on a screen.
bool ErrorsGoToTerminal();

// Writes a text to standard output or standard error.
void WriteOutput(std::u16string_view text);
void WriteError(std::u16string_view text);

}  // namespace tessaly::platform
