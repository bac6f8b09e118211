#include "platform/WindowsApi.h"
// The system's header above must come first.
#include <shlobj.h>

#include <ctime>

#include "platform/NativeText.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/paths.h"

namespace fs = std::filesystem;

namespace tessaly::platform {

fs::path ToNativeText(std::u16string_view text) {
    return std::wstring(text.begin(), text.end());
}

std::u16string FromNativeText(const fs::path& path) {
    return std::u16string(path.native().begin(), path.native().end());
}

std::u16string ProgramFile() {
    std::wstring file(MAX_PATH, L'\0');
    DWORD length = ::GetModuleFileNameW(nullptr, file.data(), static_cast<DWORD>(file.size()));
    while (length == file.size()) {
        file.resize(file.size() * 2);
        length = ::GetModuleFileNameW(nullptr, file.data(), static_cast<DWORD>(file.size()));
    }
    file.resize(length);
    return ToPathText(file);
}

std::u16string HomeFolder() {
    if (const wchar_t* const home = ::_wgetenv(L"USERPROFILE"); home != nullptr && *home != L'\0')
        return ToPathText(home);
    wchar_t folder[MAX_PATH];
    const HRESULT result = ::SHGetFolderPathW(nullptr, CSIDL_PROFILE, nullptr, SHGFP_TYPE_CURRENT, folder);
    return FAILED(result) ? std::u16string() : ToPathText(folder);
}

std::u16string UserSettingsFolder() {
    const wchar_t* const folder = ::_wgetenv(L"APPDATA");
    if (folder == nullptr || *folder == L'\0') return {};
    return ToPathText(fs::path(folder) / "Tessaly");
}

// Only trying tells: rights are inherited from many places.
bool CanWriteInto(std::u16string_view folder) {
    const std::wstring file = LongPath(ToNative(std::u16string(folder) + u"\\tessaly-tries-to-write.tmp"));
    const HANDLE handle = ::CreateFileW(file.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                        FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    if (handle == INVALID_HANDLE_VALUE) return false;
    ::CloseHandle(handle);
    return true;
}

std::u16string MomentText(std::time_t moment) {
    std::tm local{};
    ::localtime_s(&local, &moment);
    char text[32];
    const std::size_t length = std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &local);
    return std::u16string(text, text + length);
}

}  // namespace tessaly::platform
