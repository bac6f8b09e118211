#include <openssl/evp.h>

#include <array>
#include <memory>

#include "platform/NativeFile.h"
#include "platform/md5.h"
#include "platform/paths.h"

namespace tessaly::platform {

std::string Md5OfFile(std::u16string_view path) {
    NativeFile file = OpenSource(path);
    const std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context(EVP_MD_CTX_new(), EVP_MD_CTX_free);
    if (context == nullptr) Raise(kOutOfMemory);
    if (EVP_DigestInit_ex(context.get(), EVP_md5(), nullptr) != 1) Raise(kInvalidCall);
    std::array<char, 1 << 16> buffer;
    while (const std::size_t got = file.Read(buffer.data(), buffer.size())) {
        if (EVP_DigestUpdate(context.get(), buffer.data(), got) != 1) Raise(kInvalidCall);
    }
    unsigned char digest[EVP_MAX_MD_SIZE];
    unsigned int length = 0;
    if (EVP_DigestFinal_ex(context.get(), digest, &length) != 1) Raise(kInvalidCall);
    return std::string(digest, digest + length);
}

}  // namespace tessaly::platform
