#include "translate/modMD5Hash.h"

#include "platform/md5.h"

namespace tessaly {

std::u16string MD5HashString(std::u16string_view path) {
    constexpr std::u16string_view kDigits = u"0123456789ABCDEF";
    std::u16string hash;
    for (const char byte : platform::Md5OfFile(path)) {
        const auto value = static_cast<unsigned char>(byte);
        hash += kDigits[value >> 4];
        hash += kDigits[value & 0x0F];
    }
    return hash;
}

}  // namespace tessaly
