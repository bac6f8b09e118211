#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "text/RunTimeError.h"

namespace tessaly::platform {

// All paths are path texts. Failures are raised with the number that fits: 53, 57, 61, 70, 75 or 76.

// The most that a file's name may have, in bytes of UTF-8, or in characters on Windows.
inline constexpr std::size_t kLongestName = 255;

// Whether a file of that path exists; in source folders also when its case differs.
bool FileExists(std::u16string_view path);

// The same, and the file lies below one of the folders, wherever links and ".." lead.
bool FileExistsWithin(std::u16string_view path, const std::vector<std::u16string>& folders);

// Whether the folder exists, spelled just so.
bool FolderExists(std::u16string_view path);

// Whether the operator may create files in the folder.
bool CanWriteInto(std::u16string_view folder);

// All bytes of a source file. Raises 3002 when it cannot be opened, 57 when reading stops in the middle.
std::string ReadWholeFile(std::u16string_view path);

// The length of a source file in bytes.
std::int64_t FileLength(std::u16string_view path);

// Writes a whole file, replacing an old one. It is written beside and renamed, so that no half of it ever
// stands under its name. Raises 3004 when it cannot be written.
void WriteWholeFile(std::u16string_view path, const std::vector<std::string>& pieces);

// Copies a source file over whatever stands at the target, in the same way.
void CopyFile(std::u16string_view source, std::u16string_view target);

// Creates the folder with every missing parent; does nothing when it is there.
void MakeFolders(std::u16string_view path);

// The number that this raises for what stands where the folder, or one above it, has to be; 0 when nothing is
// in the way. Rights and room are not looked at.
int ObstacleToFolders(std::u16string_view path);

// Gives a folder another name beside it; nothing stands under that name yet.
void RenameFolder(std::u16string_view folder, std::u16string_view name);

// The folders' or files' names, in order of name ignoring case. Raises 76 when the folder is not there.
std::vector<std::u16string> Subfolders(std::u16string_view folder);
std::vector<std::u16string> Files(std::u16string_view folder);

// How many files below the folder, at any depth, have a name that ends so; what cannot be read counts as
// none.
std::int64_t CountFiles(std::u16string_view folder, std::u16string_view ending);

// What the program must never delete, and how a refusal is told.
struct Protected {
    std::u16string homeFolder;
    std::u16string programFolder;
    std::vector<std::u16string> sourceFolders;
    std::function<void(std::u16string_view)> showMessage;
};

// Whether a folder may be deleted. When it is protected, a message is shown that names it and the reason.
bool MayDelete(std::u16string_view folder, const Protected& kept);

// Deletes a folder with all it holds, read-only files too, never following a link out of it. What is
// protected it refuses with that message, and raises 70. Raises 76 for what is no folder.
void DeleteFolder(std::u16string_view folder, const Protected& kept);

// Deletes the files of one folder whose names match; "*" in the name stands for any text. Case differs as on
// the file system. A file that is not there is no failure; one that cannot be deleted does not keep the
// others.
void DeleteFiles(std::u16string_view folder, std::u16string_view name);

}  // namespace tessaly::platform
