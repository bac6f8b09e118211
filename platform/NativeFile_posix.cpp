#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

#include "platform/NativeFile.h"
#include "platform/failures.h"

namespace tessaly::platform {

namespace {

constexpr int kClosed = -1;

[[noreturn]] void RaiseLast() {
    RaiseSystemError(std::error_code(errno, std::generic_category()));
}

int Open(const std::filesystem::path& path, int flags) {
    const int handle = ::open(path.c_str(), flags | O_CLOEXEC, 0666);
    if (handle >= 0) return handle;
    // A file that would be created can only miss its folder.
    if ((flags & O_CREAT) != 0 && errno == ENOENT) Raise(kPathNotFound);
    RaiseLast();
}

int ToHandle(std::intptr_t handle) {
    return static_cast<int>(handle);
}

}  // namespace

NativeFile NativeFile::OpenForReading(const std::filesystem::path& path) {
    NativeFile file(Open(path, O_RDONLY));
    struct stat status {};
    if (::fstat(ToHandle(file.handle_), &status) != 0) RaiseLast();
    if (S_ISDIR(status.st_mode)) Raise(kPathAccessError);
    return file;
}

NativeFile NativeFile::OpenForWriting(const std::filesystem::path& path) {
    return NativeFile(Open(path, O_WRONLY | O_CREAT | O_TRUNC));
}

NativeFile NativeFile::OpenForAppending(const std::filesystem::path& path) {
    return NativeFile(Open(path, O_WRONLY | O_CREAT | O_APPEND));
}

std::size_t NativeFile::Read(char* buffer, std::size_t size) {
    ssize_t got = 0;
    do {
        got = ::read(ToHandle(handle_), buffer, size);
    } while (got < 0 && errno == EINTR);
    if (got < 0) RaiseLast();
    return static_cast<std::size_t>(got);
}

void NativeFile::Write(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t put = ::write(ToHandle(handle_), bytes.data(), bytes.size());
        if (put < 0 && errno == EINTR) continue;
        if (put < 0) RaiseLast();
        bytes.remove_prefix(static_cast<std::size_t>(put));
    }
}

std::int64_t NativeFile::Size() {
    struct stat status {};
    if (::fstat(ToHandle(handle_), &status) != 0) RaiseLast();
    return status.st_size;
}

void NativeFile::Close() {
    const int handle = ToHandle(std::exchange(handle_, kClosed));
    if (handle != kClosed && ::close(handle) != 0 && errno != EINTR) RaiseLast();
}

NativeFile::NativeFile(NativeFile&& other) noexcept : handle_(std::exchange(other.handle_, kClosed)) {
}

NativeFile::~NativeFile() {
    if (handle_ != kClosed) ::close(ToHandle(handle_));
}

}  // namespace tessaly::platform
