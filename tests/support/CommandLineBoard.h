#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tests/support/ProgramRun.h"
#include "tests/support/TemporaryFolder.h"

namespace tessaly::testing {

// A board of one page and one post in a temporary folder, for runs of the real program:
//
//     source/discus/messages, source/discus_admin_1043846797/secure   the board
//     program/Docs/                                                   Redirect.html and utf-8.txt
//     output/                                                         what a run leaves
class CommandLineBoard {
  public:
    explicit CommandLineBoard(std::string program);

    // The options that every run needs: program folder, root, output, website, forum and administrator.
    std::vector<std::string> Options() const;

    // These and those of Options() that they do not give.
    std::vector<std::string> OptionsWith(const std::vector<std::string>& more) const;

    // Runs "convert" with these options and those of Options() that they do not give.
    ProgramRun Convert(const std::vector<std::string>& more = {}) const;

    // Runs "convert" with just these.
    ProgramRun ConvertWith(const std::vector<std::string>& options) const;

    // A value of the settings file beside the program.
    std::optional<std::string> Setting(const std::string& key) const;

    std::string Native(const std::string& name) const { return Utf8(folder.Native(name)); }

    TemporaryFolder folder;

  private:
    std::string program_;
};

}  // namespace tessaly::testing
