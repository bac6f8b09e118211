#include <unistd.h>

#include "platform/Disk.h"
#include "platform/failures.h"

namespace fs = std::filesystem;

namespace tessaly::platform {

namespace {

Kind KindOf(const fs::file_status& status) {
    if (fs::is_regular_file(status)) return Kind::kFile;
    if (fs::is_directory(status)) return Kind::kFolder;
    return fs::exists(status) ? Kind::kOther : Kind::kNothing;
}

}  // namespace

Kind KindAt(const fs::path& path) {
    std::error_code error;
    return KindOf(fs::status(path, error));
}

bool IsLink(const fs::path& path) {
    std::error_code error;
    return fs::is_symlink(fs::symlink_status(path, error));
}

std::vector<Entry> EntriesOf(const fs::path& folder) {
    std::vector<Entry> entries;
    std::error_code error;
    fs::directory_iterator entry(folder, error);
    for (const fs::directory_iterator end; !error && entry != end; entry.increment(error)) {
        std::error_code unread;
        entries.push_back(
            {entry->path().filename(), KindOf(entry->status(unread)), entry->is_symlink(unread)});
    }
    if (error == std::errc::no_such_file_or_directory) Raise(kPathNotFound);
    if (error) RaiseSystemError(error);
    return entries;
}

std::optional<fs::path> Canonical(const fs::path& path) {
    std::error_code error;
    fs::path canonical = fs::canonical(path, error);
    if (error) return {};
    return canonical;
}

fs::path CanonicalAsFarAsItExists(const fs::path& path) {
    std::error_code error;
    const fs::path absolute = fs::absolute(path, error);
    const fs::path canonical = fs::weakly_canonical(absolute, error);
    return (error ? absolute : canonical).lexically_normal();
}

void CreateFolders(const fs::path& path) {
    std::error_code error;
    fs::create_directories(path, error);
    if (error && KindAt(path) != Kind::kFolder) RaiseSystemError(error);
}

unsigned long ProcessNumber() {
    return static_cast<unsigned long>(::getpid());
}

void MoveOver(const fs::path& path, const fs::path& target) {
    std::error_code error;
    fs::rename(path, target, error);
    if (error) RaiseSystemError(error);
}

void RemoveFile(const fs::path& path) {
    std::error_code error;
    fs::remove(path, error);
    if (error) RaiseSystemError(error);
}

void RemoveFolder(const fs::path& path) {
    std::error_code error;
    fs::remove_all(path, error);
    if (error) RaiseSystemError(error);
}

}  // namespace tessaly::platform
