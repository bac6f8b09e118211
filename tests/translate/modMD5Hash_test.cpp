#include "translate/modMD5Hash.h"

#include <gtest/gtest.h>

#include "tests/support/TemporaryFolder.h"
#include "text/RunTimeError.h"

namespace tessaly {
namespace {

using testing::TemporaryFolder;

class MD5HashStringTest : public ::testing::Test {
  protected:
    std::u16string HashOf(std::string_view bytes) {
        folder.Write("file", bytes);
        return MD5HashString(folder.Path("file"));
    }

    TemporaryFolder folder;
};

// The test suite of RFC 1321.
TEST_F(MD5HashStringTest, TheHashIsThatOfTheStandardInUpperCaseWithLeadingZeros) {
    EXPECT_EQ(HashOf("a"), u"0CC175B9C0F1B6A831C399E269772661");
    EXPECT_EQ(HashOf("abc"), u"900150983CD24FB0D6963F7D28E17F72");
    EXPECT_EQ(HashOf("message digest"), u"F96B697D7CB7938D525A2F31AAF161D0");
    EXPECT_EQ(HashOf("abcdefghijklmnopqrstuvwxyz"), u"C3FCD3D76192E4007DFB496CCA67E13B");
    EXPECT_EQ(HashOf("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789"),
              u"D174AB98D277D9F5A5611C2C9F419D9F");
    EXPECT_EQ(HashOf("12345678901234567890123456789012345678901234567890123456789012345678901234567890"),
              u"57EDF4A22BE3C955AC49DA2E2107B67A");
}

TEST_F(MD5HashStringTest, AnEmptyFileHasTheHashOfNothing) {
    EXPECT_EQ(HashOf(""), u"D41D8CD98F00B204E9800998ECF8427E");
}

TEST_F(MD5HashStringTest, NulBytesAndLineEndsCountAsTheyAre) {
    EXPECT_EQ(HashOf(std::string("\0", 1)), u"93B885ADFE0DA089CDF634904FD59F71");
    EXPECT_EQ(HashOf("\r\n"), u"81051BCC2CF1BEDF378224B0A93E2877");
}

TEST_F(MD5HashStringTest, AFileThatIsNotThereIsAFailure) {
    try {
        MD5HashString(folder.Path("none"));
        FAIL();
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.number, kFileNotFound);
    }
}

}  // namespace
}  // namespace tessaly
