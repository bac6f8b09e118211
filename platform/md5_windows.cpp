#include "platform/WindowsApi.h"
// The system's header above must come first.
#include <bcrypt.h>

#include "platform/NativeFile.h"
#include "platform/md5.h"
#include "platform/paths.h"

namespace tessaly::platform {

namespace {

// The system's MD5 of one text.
class Hash {
  public:
    Hash() {
        Test(::BCryptOpenAlgorithmProvider(&algorithm_, BCRYPT_MD5_ALGORITHM, nullptr, 0));
        const NTSTATUS status = ::BCryptCreateHash(algorithm_, &hash_, nullptr, 0, nullptr, 0, 0);
        if (status < 0) ::BCryptCloseAlgorithmProvider(algorithm_, 0);
        Test(status);
    }

    ~Hash() {
        ::BCryptDestroyHash(hash_);
        ::BCryptCloseAlgorithmProvider(algorithm_, 0);
    }

    Hash(const Hash&) = delete;
    Hash& operator=(const Hash&) = delete;

    void Add(std::string& buffer, std::size_t size) {
        Test(::BCryptHashData(hash_, reinterpret_cast<PUCHAR>(buffer.data()), static_cast<ULONG>(size), 0));
    }

    std::string Digest() {
        std::string digest(16, '\0');
        Test(::BCryptFinishHash(hash_, reinterpret_cast<PUCHAR>(digest.data()), 16, 0));
        return digest;
    }

  private:
    static void Test(NTSTATUS status) {
        if (status < 0) Raise(kInvalidCall);
    }

    BCRYPT_ALG_HANDLE algorithm_ = nullptr;
    BCRYPT_HASH_HANDLE hash_ = nullptr;
};

}  // namespace

std::string Md5OfFile(std::u16string_view path) {
    NativeFile file = OpenSource(path);
    Hash hash;
    std::string buffer(1 << 18, '\0');
    while (const std::size_t got = file.Read(buffer.data(), buffer.size())) hash.Add(buffer, got);
    return hash.Digest();
}

}  // namespace tessaly::platform
