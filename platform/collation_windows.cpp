#include <limits>

#include "platform/WindowsApi.h"
#include "platform/collation.h"

namespace tessaly::platform {

namespace {

int ToLength(std::size_t size) {
    if (size > static_cast<std::size_t>(std::numeric_limits<int>::max()) / 8) Raise(kOutOfMemory);
    return static_cast<int>(size);
}

}  // namespace

std::string LooseKey(std::u16string_view text) {
    constexpr DWORD kWanted =
        LCMAP_SORTKEY | NORM_IGNORECASE | NORM_IGNORENONSPACE | NORM_IGNOREKANATYPE | NORM_IGNOREWIDTH;
    const std::u16string_view trimmed = text.substr(0, text.find_last_not_of(u' ') + 1);
    if (trimmed.empty()) return {};
    const auto* const units = reinterpret_cast<const wchar_t*>(trimmed.data());
    const int length = ToLength(trimmed.size());
    const int size =
        ::LCMapStringEx(LOCALE_NAME_INVARIANT, kWanted, units, length, nullptr, 0, nullptr, nullptr, 0);
    std::string key(static_cast<std::size_t>(size), '\0');
    // A sort key is bytes, and its room is counted in bytes.
    ::LCMapStringEx(LOCALE_NAME_INVARIANT, kWanted, units, length, reinterpret_cast<wchar_t*>(key.data()),
                    size, nullptr, nullptr, 0);
    return key;
}

}  // namespace tessaly::platform
