#include "tests/support/Program.h"

#include <sstream>

namespace tessaly::testing {

Program::Program(std::string_view settings) {
    state.ShowMessage = [this](std::u16string_view text) { messages.emplace_back(text); };
    state.SetFocus = [this](TextField& field) { focused.push_back(&field); };
    state.ProgramFolder = folder.Path();
    state.ProgramName = u"tessaly-test.exe";
    if (!settings.empty()) folder.Write("tessaly-test.ini", "[Settings]\r\n" + std::string(settings));
}

std::optional<std::string> Program::Setting(std::string_view key) const {
    if (!folder.Exists("tessaly-test.ini")) return {};
    return SettingIn(folder.Read("tessaly-test.ini"), key);
}

std::optional<std::string> SettingIn(std::string_view bytes, std::string_view key) {
    const std::string head = std::string(key) + "=";
    std::istringstream rest{std::string(bytes)};
    for (std::string line; std::getline(rest, line);) {
        if (line.ends_with('\r')) line.pop_back();
        if (line.starts_with(head)) return line.substr(head.size());
    }
    return {};
}

}  // namespace tessaly::testing
