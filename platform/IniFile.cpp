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

namespace tessaly::platform {

namespace {

// Empty when there is no such file yet.
void Load(CSimpleIniA& ini, std::u16string_view file) {
    ini.SetUnicode(true);
    ini.SetSpaces(false);
    if (!FileExists(file)) return;
    const std::string bytes = ReadWholeFile(file);
    if (ini.LoadData(bytes) < 0) Raise(kPathAccessError);
}

}  // namespace

std::optional<std::u16string> ReadIni(std::u16string_view file, std::u16string_view section,
                                      std::u16string_view key) {
    CSimpleIniA ini;
    if (IgnoringErrors([&] { Load(ini, file); }) != kNoError) return {};
    const char* const value = ini.GetValue(ToUtf8(section).c_str(), ToUtf8(key).c_str(), nullptr);
    if (value == nullptr) return {};
    return FromUtf8(value);
}

void WriteIni(std::u16string_view file, std::u16string_view section, std::u16string_view key,
              std::u16string_view value) {
    CSimpleIniA ini;
    std::string bytes;
    const int error = IgnoringErrors([&] {
        Load(ini, file);
        ini.SetValue(ToUtf8(section).c_str(), ToUtf8(key).c_str(), ToUtf8(value).c_str());
        if (ini.Save(bytes) < 0) Raise(kPathAccessError);
        WriteWholeFile(file, {bytes});
    });
    if (error != kNoError) Raise(kPathAccessError);
}

}  // namespace tessaly::platform
