#include "platform/files.h"

#include <algorithm>
#include <filesystem>

#include "platform/DeleteGuard.h"
#include "platform/NativeFile.h"
#include "platform/NativeText.h"
#include "platform/failures.h"
#include "platform/paths.h"
#include "text/folding.h"
#include "text/search.h"

namespace fs = std::filesystem;

namespace tessaly::platform {

namespace {

// A file that is written beside its place and takes it when all of it is written; gone again when that fails.
class FileBeside {
  public:
    explicit FileBeside(const fs::path& target) : target_(target), path_(target) { path_ += ".part"; }

    ~FileBeside() {
        std::error_code error;
        if (!isPlaced_) fs::remove(path_, error);
    }

    FileBeside(const FileBeside&) = delete;
    FileBeside& operator=(const FileBeside&) = delete;

    const fs::path& Path() const { return path_; }

    void Place() {
        std::error_code error;
        fs::rename(path_, target_, error);
        if (error) RaiseSystemError(error);
        isPlaced_ = true;
    }

  private:
    fs::path target_;
    fs::path path_;
    bool isPlaced_ = false;
};

bool ComesBefore(const std::u16string& one, const std::u16string& other) {
    const auto less = [](char16_t a, char16_t b) { return Fold(a) < Fold(b); };
    if (std::ranges::lexicographical_compare(one, other, less)) return true;
    return !std::ranges::lexicographical_compare(other, one, less) && one < other;
}

// The folder itself is taken as spelled. Links lead to what they name.
template <typename Wanted>
std::vector<std::u16string> NamesIn(std::u16string_view folder, Wanted wanted) {
    std::vector<std::u16string> names;
    std::error_code error;
    fs::directory_iterator entry(ToNative(folder), error);
    for (const fs::directory_iterator end; !error && entry != end; entry.increment(error)) {
        std::error_code unread;
        if (wanted(entry->status(unread))) names.push_back(FromNativeText(entry->path().filename()));
    }
    if (error == std::errc::no_such_file_or_directory) Raise(kPathNotFound);
    if (error) RaiseSystemError(error);
    std::ranges::sort(names, ComesBefore);
    return names;
}

// The folder as the guard compares it: absolute, all links followed as far as the path exists.
std::u16string Resolved(std::u16string_view folder) {
    if (folder.empty()) return {};
    std::error_code error;
    const fs::path absolute = fs::absolute(ToNative(folder), error);
    const fs::path resolved = fs::weakly_canonical(absolute, error);
    return FromNativeText((error ? absolute : resolved).lexically_normal());
}

bool Matches(std::u16string_view name, std::u16string_view pattern) {
    const std::size_t star = pattern.find(u'*');
    if (star == std::u16string_view::npos) return name == pattern;
    const std::u16string_view head = pattern.substr(0, star);
    const std::u16string_view tail = pattern.substr(star + 1);
    return name.size() >= head.size() + tail.size() && name.starts_with(head) && name.ends_with(tail);
}

}  // namespace

bool FileExists(std::u16string_view path) {
    std::error_code error;
    if (fs::is_regular_file(ToNative(path), error)) return true;
    return fs::is_regular_file(FindSource(path), error);
}

bool FileExistsWithin(std::u16string_view path, const std::vector<std::u16string>& folders) {
    std::error_code error;
    fs::path file = ToNative(path);
    if (!fs::is_regular_file(file, error)) file = FindSource(path);
    return fs::is_regular_file(file, error) && LiesWithin(file, folders);
}

bool FolderExists(std::u16string_view path) {
    std::error_code error;
    return fs::is_directory(ToNative(path), error);
}

std::string ReadWholeFile(std::u16string_view path) {
    NativeFile file = [path] {
        try {
            return NativeFile::OpenForReading(FindSource(path));
        } catch (const RunTimeError&) {
            Raise(kFileNotOpened);
        }
    }();
    // One byte more than the file has, so that the last read finds the end.
    std::string bytes(static_cast<std::size_t>(file.Size()) + 1, '\0');
    std::size_t filled = 0;
    while (const std::size_t got = file.Read(bytes.data() + filled, bytes.size() - filled)) {
        filled += got;
        if (filled == bytes.size()) bytes.resize(bytes.size() * 2);
    }
    bytes.resize(filled);
    return bytes;
}

std::int64_t FileLength(std::u16string_view path) {
    return NativeFile::OpenForReading(FindSource(path)).Size();
}

void WriteWholeFile(std::u16string_view path, const std::vector<std::string>& pieces) {
    try {
        FileBeside beside(ToNative(path));
        NativeFile file = NativeFile::OpenForWriting(beside.Path());
        for (const std::string& piece : pieces) file.Write(piece);
        file.Close();
        beside.Place();
    } catch (const RunTimeError&) {
        Raise(kWriteFailed);
    }
}

void CopyFile(std::u16string_view source, std::u16string_view target) {
    FileBeside beside(ToNative(target));
    std::error_code error;
    fs::copy_file(FindSource(source), beside.Path(), fs::copy_options::overwrite_existing, error);
    if (error) RaiseSystemError(error);
    beside.Place();
}

void MakeFolders(std::u16string_view path) {
    std::error_code error;
    fs::create_directories(ToNative(path), error);
    if (error && !FolderExists(path)) RaiseSystemError(error);
}

std::vector<std::u16string> Subfolders(std::u16string_view folder) {
    return NamesIn(folder, [](const fs::file_status& status) { return fs::is_directory(status); });
}

std::vector<std::u16string> Files(std::u16string_view folder) {
    return NamesIn(folder, [](const fs::file_status& status) { return fs::is_regular_file(status); });
}

std::int64_t CountFiles(std::u16string_view folder, std::u16string_view ending) {
    std::int64_t count = 0;
    std::error_code error;
    fs::recursive_directory_iterator entry(ToNative(folder), fs::directory_options::skip_permission_denied,
                                           error);
    for (const fs::recursive_directory_iterator end; !error && entry != end; entry.increment(error)) {
        if (FromNativeText(entry->path().filename()).ends_with(ending)) ++count;
    }
    return count;
}

void DeleteFolder(std::u16string_view folder, const Protected& kept) {
    GuardedFolders guarded{Resolved(kept.homeFolder), Resolved(kept.programFolder), {}};
    for (const std::u16string& source : kept.sourceFolders) guarded.sources.push_back(Resolved(source));
    const std::u16string reason = ReasonNotToDelete(Resolved(folder), guarded);
    if (!reason.empty()) {
        kept.showMessage(u"The folder " + std::u16string(folder) + u" is not deleted: " + reason);
        Raise(kPermissionDenied);
    }
    std::error_code error;
    fs::remove_all(ToNative(folder), error);
    if (error) RaiseSystemError(error);
}

void DeleteFiles(std::u16string_view folder, std::u16string_view name) {
    for (const std::u16string& file : Files(folder)) {
        if (!Matches(file, name)) continue;
        std::error_code error;
        fs::remove(ToNative(std::u16string(folder) + u"\\" + file), error);
        if (error) RaiseSystemError(error);
    }
}

}  // namespace tessaly::platform
