#include <unicode/ucol.h>

#include <limits>
#include <memory>

#include "platform/collation.h"
#include "text/RunTimeError.h"

namespace tessaly::platform {

namespace {

using Collator = std::unique_ptr<UCollator, decltype(&ucol_close)>;

Collator MakeCollator() {
    UErrorCode error = U_ZERO_ERROR;
    Collator collator(ucol_open("", &error), ucol_close);
    if (U_FAILURE(error)) Raise(kOutOfMemory);
    ucol_setStrength(collator.get(), UCOL_PRIMARY);
    return collator;
}

int32_t ToLength(std::size_t size) {
    if (size > static_cast<std::size_t>(std::numeric_limits<int32_t>::max()) / 8) Raise(kOutOfMemory);
    return static_cast<int32_t>(size);
}

}  // namespace

std::string LooseKey(std::u16string_view text) {
    static const Collator collator = MakeCollator();
    const std::u16string_view trimmed = text.substr(0, text.find_last_not_of(u' ') + 1);
    std::string key(trimmed.size() * 4 + 16, '\0');
    while (true) {
        const int32_t length = ucol_getSortKey(collator.get(), trimmed.data(), ToLength(trimmed.size()),
                                               reinterpret_cast<uint8_t*>(key.data()), ToLength(key.size()));
        const bool fits = static_cast<std::size_t>(length) <= key.size();
        key.resize(static_cast<std::size_t>(length));
        if (fits) return key;
    }
}

}  // namespace tessaly::platform
