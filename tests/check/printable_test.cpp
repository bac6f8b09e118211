#include "check/printable.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

TEST(Printable, MakesOneLine) {
    EXPECT_EQ(Printable(u"  a \t\r\n b  "), u"a b");
    EXPECT_EQ(Printable(u"\r\n"), u"");
    EXPECT_EQ(Printable(u""), u"");
}

TEST(Printable, PutsAMarkForControlsAndForWhatTurnsTheWritingAround) {
    EXPECT_EQ(Printable(u"a\u0001b\u001Bc\u007Fd\u009Be"), u"a?b?c?d?e");
    EXPECT_EQ(Printable(u"a\u202Eb\u2066c\u200Fd\u061Ce\u2028f"), u"a?b?c?d?e?f");
    EXPECT_EQ(Printable(u"a\u200Bb\uFEFFc\u00ADd\uFFFEe"), u"a?b?c?d?e");
}

TEST(Printable, PutsAMarkForHalvesOfCharactersAndKeepsWholeOnes) {
    EXPECT_EQ(Printable(std::u16string(u"a\xD83D") + u"b"), u"a?b");
    EXPECT_EQ(Printable(std::u16string(u"a\xDE00") + u"b"), u"a?b");
    EXPECT_EQ(Printable(u"a\U0001F600b"), u"a\U0001F600b");
    // A tag, which no one sees.
    EXPECT_EQ(Printable(u"a\U000E0041b"), u"a?b");
}

TEST(Printable, KeepsLettersMarksAndReplacementCharacters) {
    EXPECT_EQ(Printable(u"Gr\u00FC\u00DFe, \u65E5\u672C \u2019\uFFFD <b>&\"'"),
              u"Gr\u00FC\u00DFe, \u65E5\u672C \u2019\uFFFD <b>&\"'");
}

}  // namespace
}  // namespace tessaly
