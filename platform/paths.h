#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "platform/NativeFile.h"

namespace tessaly::platform {

// Inside the program a path is a text with "\" between its steps. Here it becomes a path of the machine:
// on Windows as it stands, elsewhere with each "\" as "/".
std::filesystem::path ToNative(std::u16string_view path);

// A path of the machine as a path text.
std::u16string ToPathText(const std::filesystem::path& path);

// A native path, such as the command line gives, made absolute and turned into a path text.
std::u16string AbsolutePathText(const std::filesystem::path& path);

// The path without a separator at its end, behind which a link would be followed.
std::filesystem::path WithoutTrailingSeparator(const std::filesystem::path& path);

// The path text as another program on this machine opens it: with native separators.
std::u16string WithNativeSeparators(std::u16string_view path);

// The path of a source file: as spelled when that is there, else looked for step by step ignoring case.
// Gives the path as spelled when nothing is found.
std::filesystem::path FindSource(std::u16string_view path);

// The same, opened for reading.
NativeFile OpenSource(std::u16string_view path);

// Whether the file lies below one of the folders when all links are followed. Empty folders are passed over.
bool LiesWithin(const std::filesystem::path& file, const std::vector<std::u16string>& folders);

// Full path of the running program.
std::u16string ProgramFile();

// The operator's home folder; empty when the system tells none.
std::u16string HomeFolder();

// The folder of the operator's own settings of this program, which need not be there; empty when the system
// tells none.
std::u16string UserSettingsFolder();

}  // namespace tessaly::platform
