#include <fcntl.h>
#include <pwd.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>

#include "platform/NativeText.h"
#include "platform/charset.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/paths.h"

namespace fs = std::filesystem;

namespace tessaly::platform {

namespace {

bool IsEscapedByte(char16_t unit) {
    return unit >= 0xDC80 && unit <= 0xDCFF;
}

bool IsLeadSurrogate(char16_t unit) {
    return (unit & 0xFC00) == 0xD800;
}

// The length of the well-formed UTF-8 character at the head, 0 when there is none.
std::size_t CharacterLength(std::string_view bytes) {
    for (std::size_t length = 1; length <= 4 && length <= bytes.size(); ++length) {
        const std::u16string text = FromUtf8(bytes.substr(0, length));
        if (text.find(u'\uFFFD') == std::u16string::npos) return length;
    }
    return bytes.starts_with("\xEF\xBF\xBD") ? 3 : 0;
}

}  // namespace

fs::path ToNativeText(std::u16string_view text) {
    std::string bytes;
    std::size_t from = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool isPaired = at > 0 && IsLeadSurrogate(text[at - 1]);
        if (!IsEscapedByte(text[at]) || isPaired) continue;
        bytes += ToUtf8(text.substr(from, at - from));
        bytes += static_cast<char>(text[at] & 0xFF);
        from = at + 1;
    }
    return bytes + ToUtf8(text.substr(from));
}

std::u16string FromNativeText(const fs::path& path) {
    std::u16string text = FromUtf8(path.native());
    if (text.find(u'\uFFFD') == std::u16string::npos) return text;
    text.clear();
    std::string_view rest = path.native();
    while (!rest.empty()) {
        const std::size_t length = CharacterLength(rest);
        if (length == 0) {
            text += static_cast<char16_t>(0xDC00 + static_cast<unsigned char>(rest.front()));
        } else {
            text += FromUtf8(rest.substr(0, length));
        }
        rest.remove_prefix(length == 0 ? 1 : length);
    }
    return text;
}

std::u16string ProgramFile() {
    std::error_code error;
    return ToPathText(fs::read_symlink("/proc/self/exe", error));
}

std::u16string HomeFolder() {
    if (const char* const home = std::getenv("HOME"); home != nullptr && *home != '\0')
        return ToPathText(home);
    const passwd* const user = ::getpwuid(::getuid());
    return user == nullptr ? std::u16string() : ToPathText(user->pw_dir);
}

std::u16string UserSettingsFolder() {
    // A relative path is to be passed over.
    if (const char* const folder = std::getenv("XDG_CONFIG_HOME"); folder != nullptr && *folder == '/')
        return ToPathText(fs::path(folder) / "tessaly");
    const std::u16string home = HomeFolder();
    return home.empty() ? home : home + u"\\.config\\tessaly";
}

bool CanWriteInto(std::u16string_view folder) {
    return ::faccessat(AT_FDCWD, ToNative(folder).c_str(), W_OK | X_OK, AT_EACCESS) == 0;
}

std::u16string MomentText(std::time_t moment) {
    std::tm local{};
    ::localtime_r(&moment, &local);
    char text[32];
    const std::size_t length = std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &local);
    return std::u16string(text, text + length);
}

}  // namespace tessaly::platform
