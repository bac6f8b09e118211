#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <fstream>
#include <random>
#include <sstream>

#include "platform/paths.h"

namespace fs = std::filesystem;

namespace tessaly::testing {

namespace {

fs::path FromUtf8Name(std::string_view name) {
    return std::u8string(name.begin(), name.end());
}

}  // namespace

TemporaryFolder::TemporaryFolder() {
    static std::atomic<int> count = 0;
    std::random_device random;
    folder_ = fs::temp_directory_path() /
              ("tessaly-test-" + std::to_string(random()) + "-" + std::to_string(++count));
    fs::create_directories(folder_);
    folder_ = fs::canonical(folder_);
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code error;
    fs::remove_all(folder_, error);
}

fs::path TemporaryFolder::Native(std::string_view name) const {
    return name.empty() ? folder_ : (folder_ / FromUtf8Name(name)).make_preferred();
}

std::u16string TemporaryFolder::Path(std::string_view name) const {
    return platform::ToPathText(Native(name));
}

void TemporaryFolder::Write(std::string_view name, std::string_view bytes) const {
    fs::create_directories(Native(name).parent_path());
    std::ofstream file(Native(name), std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    ASSERT_TRUE(file.good()) << name;
}

void TemporaryFolder::MakeFolder(std::string_view name) const {
    fs::create_directories(Native(name));
}

std::string TemporaryFolder::Read(std::string_view name) const {
    std::ifstream file(Native(name), std::ios::binary);
    EXPECT_TRUE(file.good()) << name << " is not there";
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
}

bool TemporaryFolder::Exists(std::string_view name) const {
    return fs::exists(Native(name));
}

std::vector<std::string> TemporaryFolder::Files(std::string_view name) const {
    std::vector<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(Native(name))) {
        if (entry.is_regular_file())
            names.push_back(Utf8(entry.path().lexically_relative(Native(name)).generic_u8string()));
    }
    std::ranges::sort(names);
    return names;
}

std::string Utf8(const fs::path& path) {
    const std::u8string bytes = path.u8string();
    return {bytes.begin(), bytes.end()};
}

std::string SqlName(const fs::path& file) {
    std::string doubled;
    for (const char byte : Utf8(file)) doubled += byte == '\\' ? "\\\\" : std::string(1, byte);
    return doubled;
}

std::u16string FromUtf16(std::string_view bytes) {
    std::u16string text;
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
        const auto low = static_cast<unsigned char>(bytes[at]);
        const auto high = static_cast<unsigned char>(bytes[at + 1]);
        text += static_cast<char16_t>(high * 256 + low);
    }
    if (text.starts_with(u'\uFEFF')) text.erase(0, 1);
    return text;
}

std::vector<std::string> Lines(std::string_view text) {
    std::vector<std::string> lines;
    std::size_t from = 0;
    for (std::size_t at = text.find("\r\n"); at != std::string_view::npos; at = text.find("\r\n", from)) {
        lines.emplace_back(text.substr(from, at - from));
        from = at + 2;
    }
    lines.emplace_back(text.substr(from));
    return lines;
}

}  // namespace tessaly::testing
