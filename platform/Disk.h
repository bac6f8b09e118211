#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include "text/RunTimeError.h"

namespace tessaly::platform {

// What lies on the disk, by paths of the machine. Failures are raised with the number that fits.

enum class Kind { kNothing, kFile, kFolder, kOther };

// Links lead to what they name.
Kind KindAt(const std::filesystem::path& path);
bool IsLink(const std::filesystem::path& path);

struct Entry {
    std::filesystem::path name;
    Kind kind;
    bool isLink;
};

// Raises 76 when the folder is not there.
std::vector<Entry> EntriesOf(const std::filesystem::path& folder);

// The absolute path with all links followed; none when nothing is there.
std::optional<std::filesystem::path> Canonical(const std::filesystem::path& path);

// The same, as far as the path exists.
std::filesystem::path CanonicalAsFarAsItExists(const std::filesystem::path& path);

// With every missing parent.
void CreateFolders(const std::filesystem::path& path);

// A number that no other process has as long as this one runs.
unsigned long ProcessNumber();

// Puts the file over whatever file stands at the target.
void MoveOver(const std::filesystem::path& path, const std::filesystem::path& target);

// Read-only ones too; what is not there is no failure. A folder goes with all it holds, a link as itself.
void RemoveFile(const std::filesystem::path& path);
void RemoveFolder(const std::filesystem::path& path);

// Whether names that differ in case alone are one name on this system.
constexpr bool kNamesIgnoreCase = std::filesystem::path::preferred_separator == '\\';

}  // namespace tessaly::platform
