#include "platform/IniFile.h"

// Windows has the library's header alone.
#ifdef _WIN32
#define SI_IMPLEMENTATION
#else
#define SI_CONVERT_ICU
#endif
#include <SimpleIni.h>

#include "platform/charset.h"
#include "platform/files.h"
#include "text/search.h"
#include "text/split.h"

namespace tessaly::platform {

namespace {

// Gives the bytes of the file; empty when there is no such file yet.
std::string Load(CSimpleIniA& ini, std::u16string_view file) {
    ini.SetUnicode(true);
    ini.SetSpaces(false);
    if (!FileExists(file)) return {};
    std::string bytes = ReadWholeFile(file);
    if (ini.LoadData(bytes) < 0) Raise(kPathAccessError);
    return bytes;
}

bool IsCommentOrBlank(std::string_view line) {
    const std::size_t first = line.find_first_not_of(" \t\r\n");
    return first == std::string_view::npos || line[first] == ';' || line[first] == '#';
}

// The lines behind the last key, which the library would drop. Where there is no key at all it keeps them.
std::string_view CommentsAtEnd(std::string_view bytes) {
    std::size_t end = bytes.size();
    while (end > 0) {
        const std::size_t before = end < 2 ? std::string_view::npos : bytes.rfind('\n', end - 2);
        const std::size_t line = before == std::string_view::npos ? 0 : before + 1;
        if (!IsCommentOrBlank(bytes.substr(line, end - line))) return bytes.substr(end);
        end = line;
    }
    return {};
}

// A value is one line, whatever it holds.
std::u16string OneLine(std::u16string_view value) {
    std::u16string line(value);
    for (const char16_t mark : {u'\r', u'\n', u'\0'}) ReplaceAll(line, {&mark, 1}, u" ");
    return line;
}

bool IsQuoted(std::u16string_view value) {
    return value.size() >= 2 && value.front() == u'"' && value.back() == u'"';
}

// Quotes keep the blanks at a value's ends.
std::u16string Quoted(const std::u16string& value) {
    const bool endsInBlank = Trim(value) != value || value.starts_with(u'\t') || value.ends_with(u'\t');
    return endsInBlank || IsQuoted(value) ? u'"' + value + u'"' : value;
}

std::u16string Unquoted(const std::u16string& value) {
    return IsQuoted(value) ? value.substr(1, value.size() - 2) : value;
}

}  // namespace

std::optional<std::u16string> ReadIni(std::u16string_view file, std::u16string_view section,
                                      std::u16string_view key) {
    CSimpleIniA ini;
    if (IgnoringErrors([&] { Load(ini, file); }) != kNoError) return {};
    const char* const value = ini.GetValue(ToUtf8(section).c_str(), ToUtf8(key).c_str(), nullptr);
    if (value == nullptr) return {};
    return Unquoted(FromUtf8(value));
}

void WriteIni(std::u16string_view file, std::u16string_view section, std::u16string_view key,
              std::u16string_view value) {
    CSimpleIniA ini;
    std::string bytes;
    const int error = IgnoringErrors([&] {
        const std::string old = Load(ini, file);
        ini.SetValue(ToUtf8(section).c_str(), ToUtf8(key).c_str(), ToUtf8(Quoted(OneLine(value))).c_str());
        if (ini.Save(bytes) < 0) Raise(kPathAccessError);
        WriteWholeFile(file, {bytes, std::string(CommentsAtEnd(old))});
    });
    if (error != kNoError) Raise(kPathAccessError);
}

}  // namespace tessaly::platform
