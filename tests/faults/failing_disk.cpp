// Loaded into a program before the C library, it makes the disk fail. TESSALY_FAULT tells how:
//
//     vanish 2 /users.txt     from its second opening on the file whose path ends so is gone
//     break 1 /users.txt      from its first opening on no more than half of it can be read
//     full 3 /output/         from the third write on nothing more goes into files with this in their path

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdlib>
#include <sstream>
#include <string>

namespace {

struct Fault {
    Fault() {
        const char* const text = std::getenv("TESSALY_FAULT");
        std::istringstream words(text == nullptr ? "" : text);
        words >> kind >> first;
        std::getline(words >> std::ws, path);
    }

    bool Counts(bool isMeant) {
        if (path.empty() || !isMeant) return false;
        return ++count >= first;
    }

    std::string kind;
    int first = 0;
    std::string path;
    int count = 0;
};

Fault& TheFault() {
    static Fault fault;
    return fault;
}

int brokenHandle = -1;
ssize_t bytesLeft = 0;

template <typename Function>
Function Original(const char* name) {
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

int OpenOrFail(const char* path, int flags, mode_t mode) {
    using Open = int (*)(const char*, int, ...);
    static const auto original = Original<Open>("open");
    Fault& fault = TheFault();
    const bool isRead = fault.kind != "full" && (flags & O_ACCMODE) == O_RDONLY;
    const bool isMet = fault.Counts(isRead && std::string(path).ends_with(fault.path));
    if (isMet && fault.kind == "vanish") {
        errno = ENOENT;
        return -1;
    }
    const int handle = original(path, flags, mode);
    if (!isMet || handle < 0) return handle;
    struct stat status {};
    ::fstat(handle, &status);
    brokenHandle = handle;
    bytesLeft = status.st_size / 2;
    return handle;
}

std::string PathOf(int handle) {
    char path[4096];
    const ssize_t length = ::readlink(("/proc/self/fd/" + std::to_string(handle)).c_str(), path, sizeof path);
    return length < 0 ? std::string() : std::string(path, path + length);
}

}  // namespace

extern "C" {

int open(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const auto mode = static_cast<mode_t>(va_arg(arguments, unsigned));
    va_end(arguments);
    return OpenOrFail(path, flags, mode);
}

int open64(const char* path, int flags, ...) __attribute__((alias("open")));

ssize_t read(int handle, void* buffer, size_t size) {
    using Read = ssize_t (*)(int, void*, size_t);
    static const auto original = Original<Read>("read");
    if (handle != brokenHandle) return original(handle, buffer, size);
    if (bytesLeft == 0) {
        errno = EIO;
        return -1;
    }
    const auto most = static_cast<size_t>(bytesLeft);
    const ssize_t got = original(handle, buffer, size < most ? size : most);
    if (got > 0) bytesLeft -= got;
    return got;
}

ssize_t write(int handle, const void* bytes, size_t size) {
    using Write = ssize_t (*)(int, const void*, size_t);
    static const auto original = Original<Write>("write");
    Fault& fault = TheFault();
    if (fault.kind != "full" || !fault.Counts(PathOf(handle).find(fault.path) != std::string::npos))
        return original(handle, bytes, size);
    errno = ENOSPC;
    return -1;
}

int close(int handle) {
    using Close = int (*)(int);
    static const auto original = Original<Close>("close");
    if (handle == brokenHandle) brokenHandle = -1;
    return original(handle);
}
}
