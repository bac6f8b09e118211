#include "tests/support/CommandLineBoard.h"

#include <algorithm>
#include <utility>

#include "tests/support/Program.h"
#include "tests/support/TestBoard.h"

namespace tessaly::testing {

CommandLineBoard::CommandLineBoard(std::string program) : program_(std::move(program)) {
    folder.MakeFolder("source/discus_admin_1043846797/secure");
    folder.Write("source/discus/messages/board-topics.html", BoardFile("Main", {12}));
    folder.Write(
        "source/discus/messages/12/12.html",
        PageHead("12/Radios", "12/Radios", "Radios", "Old radios") + Post(5, "Anna", "1043846797", "Hello"));
    folder.Write("program/Docs/Redirect.html", "<title>CCCCC</title><a href=\"ZZZZZ\">AAAAA</a>");
    folder.Write("program/Docs/utf-8.txt", "&auml;\t\xC3\xA4\t&#228;\r\n");
}

std::vector<std::string> CommandLineBoard::Options() const {
    return {"--program-folder", Native("program"),    "--root",  Native("source"),
            "--output",         Native("output"),     "--admin", "Admin",
            "--website",        "http://old.example", "--forum", "http://new.example"};
}

std::vector<std::string> CommandLineBoard::OptionsWith(const std::vector<std::string>& more) const {
    std::vector<std::string> options = more;
    const std::vector<std::string> usual = Options();
    for (std::size_t at = 0; at < usual.size(); at += 2) {
        if (std::ranges::find(more, usual[at]) != more.end()) continue;
        options.push_back(usual[at]);
        options.push_back(usual[at + 1]);
    }
    return options;
}

ProgramRun CommandLineBoard::Convert(const std::vector<std::string>& more) const {
    return ConvertWith(OptionsWith(more));
}

ProgramRun CommandLineBoard::ConvertWith(const std::vector<std::string>& options) const {
    std::vector<std::string> arguments = {program_, "convert"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return RunProgram(arguments);
}

std::optional<std::string> CommandLineBoard::Setting(const std::string& key) const {
    for (const std::string& name : folder.Files("program")) {
        if (name.ends_with(".ini")) return SettingIn(folder.Read("program/" + name), key);
    }
    return {};
}

}  // namespace tessaly::testing
