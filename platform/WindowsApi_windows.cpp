#include "platform/WindowsApi.h"

#include <system_error>

#include "platform/failures.h"

namespace tessaly::platform {

namespace {

std::wstring FullPath(const std::wstring& path) {
    const DWORD size = ::GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
    std::wstring full(size, L'\0');
    full.resize(::GetFullPathNameW(path.c_str(), size, full.data(), nullptr));
    // The long form allows no empty step at the end; only a drive's root keeps its separator.
    while (full.ends_with(L'\\') && !full.ends_with(L":\\")) full.pop_back();
    return full;
}

}  // namespace

std::wstring LongPath(const std::filesystem::path& path) {
    if (path.empty()) return {};
    const std::wstring full = FullPath(path.native());
    const bool isDevice = full.starts_with(L"\\\\?\\") || full.starts_with(L"\\\\.\\");
    if (full.empty() || isDevice) return full;
    if (full.starts_with(L"\\\\")) return L"\\\\?\\UNC" + full.substr(1);
    return L"\\\\?\\" + full;
}

void RaiseLastError() {
    RaiseSystemError(std::error_code(static_cast<int>(::GetLastError()), std::system_category()));
}

}  // namespace tessaly::platform
