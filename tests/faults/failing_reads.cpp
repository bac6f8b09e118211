// Loaded into a program before the C library, it makes one file fail. TESSALY_FAULT tells how:
//
//     vanish 2 /users.txt     from its second opening on the file is gone
//     break 1 /users.txt      from its first opening on no more than half of it can be read
//
// The file is any whose path ends so.

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
        words >> kind >> firstOpening;
        std::getline(words >> std::ws, ending);
    }

    bool Meets(const std::string& path) {
        if (ending.empty() || !path.ends_with(ending)) return false;
        return ++openings >= firstOpening;
    }

    std::string kind;
    int firstOpening = 0;
    std::string ending;
    int openings = 0;
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
    const bool isMet = (flags & O_ACCMODE) == O_RDONLY && TheFault().Meets(path);
    if (isMet && TheFault().kind == "vanish") {
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

int close(int handle) {
    using Close = int (*)(int);
    static const auto original = Original<Close>("close");
    if (handle == brokenHandle) brokenHandle = -1;
    return original(handle);
}
}
