#pragma once

#include <cstdint>
#include <filesystem>
#include <string_view>

#include "text/RunTimeError.h"

namespace tessaly::platform {

// One open file of the machine. Raises 53, 57, 61, 70, 75 or 76; closes itself silently at its end of life.
class NativeFile {
  public:
    static NativeFile OpenForReading(const std::filesystem::path& path);
    static NativeFile OpenForWriting(const std::filesystem::path& path);
    static NativeFile OpenForAppending(const std::filesystem::path& path);

    // How many bytes came, 0 at the end of the file.
    std::size_t Read(char* buffer, std::size_t size);
    void Write(std::string_view bytes);
    std::int64_t Size();
    void Close();

    NativeFile(NativeFile&& other) noexcept;
    NativeFile& operator=(NativeFile&&) = delete;
    ~NativeFile();

  private:
    explicit NativeFile(std::intptr_t handle) : handle_(handle) {}

    std::intptr_t handle_;
};

}  // namespace tessaly::platform
