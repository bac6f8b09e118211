#include "control/NameProgram.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>

#include "tests/support/TemporaryFolder.h"

namespace tessaly {
namespace {

using testing::TemporaryFolder;

// A variable of the environment for as long as a test runs.
class Variable {
  public:
    Variable(const char* name, const std::string& value) : name_(name) {
        if (const char* const old = std::getenv(name); old != nullptr) old_ = old;
        ::setenv(name, value.c_str(), 1);
    }

    ~Variable() {
        if (old_) {
            ::setenv(name_, old_->c_str(), 1);
        } else {
            ::unsetenv(name_);
        }
    }

    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

  private:
    const char* name_;
    std::optional<std::string> old_;
};

TEST(NameProgram, KeepsTheSettingsBesideAProgramWhoseFolderCanBeWritten) {
    const TemporaryFolder folder;
    ConversionState state;
    NameProgram(state, folder.Path(), u"");

    EXPECT_EQ(state.ProgramFolder, folder.Path());
    EXPECT_EQ(state.ProgramName, u"control_tests");
    EXPECT_EQ(state.SettingsFile, u"");
    EXPECT_EQ(SettingsNote(state), u"");
    EXPECT_TRUE(folder.Files().empty());
}

// A folder that is not there cannot be written, not by root either.
TEST(NameProgram, KeepsTheSettingsInTheUsersConfigurationFolderWhenTheProgramsCannotBeWritten) {
    const TemporaryFolder folder;
    const Variable configuration("XDG_CONFIG_HOME", folder.Native("config").string());
    ConversionState state;
    NameProgram(state, folder.Path("missing"), u"");

    EXPECT_EQ(state.ProgramFolder, folder.Path("missing"));
    EXPECT_EQ(state.SettingsFile, folder.Path("config/tessaly/control_tests.ini"));
    EXPECT_TRUE(folder.Exists("config/tessaly"));
}

TEST(NameProgram, TellsWhereTheUsersSettingsAreAsOtherProgramsOpenThem) {
    const TemporaryFolder folder;
    const Variable configuration("XDG_CONFIG_HOME", folder.Native("config").string());
    ConversionState state;
    NameProgram(state, folder.Path("missing"), u"");

    const std::string note =
        "Settings are kept in " + folder.Native("config/tessaly/control_tests.ini").string();
    EXPECT_EQ(SettingsNote(state), std::u16string(note.begin(), note.end()));
}

TEST(NameProgram, PassesOverAConfigurationFolderThatIsARelativePath) {
    const TemporaryFolder folder;
    const Variable configuration("XDG_CONFIG_HOME", "config");
    const Variable home("HOME", folder.Native().string());
    ConversionState state;
    NameProgram(state, folder.Path("missing"), u"");

    EXPECT_EQ(state.SettingsFile, folder.Path(".config/tessaly/control_tests.ini"));
}

TEST(NameProgram, LeavesTheSettingsBesideTheProgramWhenTheUserHasNoPlaceForThemEither) {
    const TemporaryFolder folder;
    folder.Write("config", "a file");
    const Variable configuration("XDG_CONFIG_HOME", folder.Native("config").string());
    ConversionState state;
    NameProgram(state, folder.Path("missing"), u"");

    EXPECT_EQ(state.SettingsFile, u"");
}

TEST(NameProgram, TakesTheSettingsFileThatIsGiven) {
    const TemporaryFolder folder;
    const Variable configuration("XDG_CONFIG_HOME", folder.Native("config").string());
    ConversionState state;
    NameProgram(state, folder.Path("missing"), folder.Path("mine.ini"));

    EXPECT_EQ(state.SettingsFile, folder.Path("mine.ini"));
    EXPECT_FALSE(folder.Exists("config"));
}

TEST(NameProgram, TakesTheFolderOfTheRunningProgramWhenNoneIsGiven) {
    const TemporaryFolder folder;
    const Variable configuration("XDG_CONFIG_HOME", folder.Native("config").string());
    ConversionState state;
    NameProgram(state, u"", u"");

    EXPECT_TRUE(state.ProgramFolder.ends_with(u"\\bin")) << "the build's folder of programs";
}

}  // namespace
}  // namespace tessaly
