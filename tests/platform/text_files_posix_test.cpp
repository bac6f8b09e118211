#include <gtest/gtest.h>

#include "platform/IniFile.h"
#include "platform/TextFile.h"
#include "platform/TextStream.h"
#include "platform/charset.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Unprivileged.h"

namespace fs = std::filesystem;

namespace tessaly::platform {
namespace {

using testing::TemporaryFolder;

std::string Written(TextFormat format, std::u16string_view line) {
    const TemporaryFolder folder;
    TextFile file(folder.Path("a.txt"), OpenMode::kWriting, format);
    file.WriteLine(line);
    file.Close();
    return folder.Read("a.txt");
}

TEST(SystemsText, SystemDefaultIsUtf8) {
    EXPECT_EQ(SystemDefaultCharset(), u"utf-8");
    EXPECT_EQ(Written(TextFormat::kSystemDefault, u"\u20AC\u0416"), "\xE2\x82\xAC\xD0\x96\r\n");
}

TEST(SystemsText, SingleByteTextIsWindows1252) {
    EXPECT_EQ(SingleByteCharset(), u"windows-1252");
    EXPECT_EQ(Written(TextFormat::kSingleByte, u"\u20ACM\u00E4rz\u0416\U0001F600"), "\x80M\xE4rz??\r\n");
}

TEST(TextStream, AStatefulTextEndsInTheStartState) {
    const TemporaryFolder folder;
    TextStream stream(u"iso-2022-jp");
    stream.WriteText(u"\u3042");
    stream.WriteText(u"\u3042");
    stream.SaveToFile(folder.Path("a.txt"));
    EXPECT_EQ(folder.Read("a.txt"), "\x1B$B$\"$\"\x1B(B");
}

TEST(TextStream, WithoutATextNotEvenTheHeadOfACharsetIsSaved) {
    const TemporaryFolder folder;
    TextStream(u"iso-2022-kr").SaveToFile(folder.Path("a.txt"));
    EXPECT_EQ(folder.Read("a.txt"), "");
}

TEST(IniFile, AFileThatMayNotBeReadIsLeftAlone) {
    const TemporaryFolder folder;
    folder.Write("a.ini", "[Settings]\nKey=1\n");
    fs::permissions(folder.Native("a.ini"), fs::perms::none);
    fs::permissions(folder.Native(), fs::perms::all);
    {
        const testing::Unprivileged nobody;
        ASSERT_TRUE(nobody.IsSo());
        EXPECT_EQ(ReadIni(folder.Path("a.ini"), u"Settings", u"Key"), std::nullopt);
        EXPECT_EQ(IgnoringErrors([&] { WriteIni(folder.Path("a.ini"), u"Settings", u"Other", u"1"); }), 75);
    }
    fs::permissions(folder.Native("a.ini"), fs::perms::owner_read);
    EXPECT_EQ(folder.Read("a.ini"), "[Settings]\nKey=1\n");
}

}  // namespace
}  // namespace tessaly::platform
