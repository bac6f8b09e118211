#include "platform/NativeFile.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "platform/WindowsApi.h"

namespace tessaly::platform {

namespace {

HANDLE ToHandle(std::intptr_t handle) {
    return reinterpret_cast<HANDLE>(handle);
}

const std::intptr_t kClosed = reinterpret_cast<std::intptr_t>(INVALID_HANDLE_VALUE);

std::intptr_t Open(const std::filesystem::path& path, DWORD access, DWORD creation) {
    // Others may read, write and delete meanwhile, as on every other system.
    constexpr DWORD kShared = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const std::wstring native = LongPath(path);
    const HANDLE handle =
        ::CreateFileW(native.c_str(), access, kShared, nullptr, creation, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle != INVALID_HANDLE_VALUE) return reinterpret_cast<std::intptr_t>(handle);
    const DWORD error = ::GetLastError();
    const DWORD attributes = ::GetFileAttributesW(native.c_str());
    const bool isFolder =
        attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    if (isFolder) Raise(kPathAccessError);
    // A file that would be created can only miss its folder.
    if (creation != OPEN_EXISTING && error == ERROR_PATH_NOT_FOUND) Raise(kPathNotFound);
    ::SetLastError(error);
    RaiseLastError();
}

// One call takes no more than 32 bits.
DWORD AtOnce(std::size_t size) {
    return static_cast<DWORD>(std::min<std::size_t>(size, std::numeric_limits<DWORD>::max() / 2));
}

}  // namespace

NativeFile NativeFile::OpenForReading(const std::filesystem::path& path) {
    return NativeFile(Open(path, GENERIC_READ, OPEN_EXISTING));
}

NativeFile NativeFile::OpenForWriting(const std::filesystem::path& path) {
    return NativeFile(Open(path, GENERIC_WRITE, CREATE_ALWAYS));
}

NativeFile NativeFile::OpenForAppending(const std::filesystem::path& path) {
    return NativeFile(Open(path, FILE_APPEND_DATA | FILE_READ_ATTRIBUTES | SYNCHRONIZE, OPEN_ALWAYS));
}

std::size_t NativeFile::Read(char* buffer, std::size_t size) {
    DWORD got = 0;
    if (::ReadFile(ToHandle(handle_), buffer, AtOnce(size), &got, nullptr) == 0) RaiseLastError();
    return got;
}

void NativeFile::Write(std::string_view bytes) {
    while (!bytes.empty()) {
        DWORD put = 0;
        if (::WriteFile(ToHandle(handle_), bytes.data(), AtOnce(bytes.size()), &put, nullptr) == 0)
            RaiseLastError();
        bytes.remove_prefix(put);
    }
}

std::int64_t NativeFile::Size() {
    LARGE_INTEGER size{};
    if (::GetFileSizeEx(ToHandle(handle_), &size) == 0) RaiseLastError();
    return size.QuadPart;
}

void NativeFile::Close() {
    const std::intptr_t handle = std::exchange(handle_, kClosed);
    if (handle != kClosed && ::CloseHandle(ToHandle(handle)) == 0) RaiseLastError();
}

NativeFile::NativeFile(NativeFile&& other) noexcept : handle_(std::exchange(other.handle_, kClosed)) {
}

NativeFile::~NativeFile() {
    if (handle_ != kClosed) ::CloseHandle(ToHandle(handle_));
}

}  // namespace tessaly::platform
