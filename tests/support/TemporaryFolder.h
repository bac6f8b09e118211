#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly::testing {

// A folder of its own below the machine's temporary folder, deleted with all it holds at the end of life.
// Names are native, in UTF-8 with "/" between their steps, and relative to the folder.
class TemporaryFolder {
  public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::filesystem::path Native(std::string_view name = {}) const;

    // The path text of a name, with "\" between its steps.
    std::u16string Path(std::string_view name = {}) const;

    // Writes bytes, making the folders on the way.
    void Write(std::string_view name, std::string_view bytes) const;
    void MakeFolder(std::string_view name) const;

    // The bytes of a file; fails the test when it is not there.
    std::string Read(std::string_view name) const;
    bool Exists(std::string_view name) const;

    // Names of all files below a folder, sorted.
    std::vector<std::string> Files(std::string_view name = {}) const;

  private:
    std::filesystem::path folder_;
};

std::string Utf8(const std::filesystem::path& path);

// The name of a file as a statement of the script has it.
std::string SqlName(const std::filesystem::path& file);

// The text of a file in UTF-16, low byte first, without its byte-order mark.
std::u16string FromUtf16(std::string_view bytes);

// The lines of a text, each without its CR LF; what stands behind the last line end is one more.
std::vector<std::string> Lines(std::string_view text);

}  // namespace tessaly::testing
