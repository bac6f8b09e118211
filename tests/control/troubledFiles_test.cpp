#include "control/troubledFiles.h"

#include <gtest/gtest.h>

#include "text/RunTimeError.h"

namespace tessaly {
namespace {

TEST(TroubledFiles, AFileThatFailsIsNotedAndTheFailurePasses) {
    ConversionState state;
    EXPECT_EQ(IgnoringErrors([&] { WithFile(state, u"\\out\\Log.txt", [] { Raise(kDiskFull); }); }), 61);
    EXPECT_EQ(TroubledFilesText(state),
              u"These files could not be read or written. Look for a full disk, missing rights or an open "
              u"file, and "
              u"convert again:\r\n\\out\\Log.txt\r\n");
}

TEST(TroubledFiles, NothingIsToldWhenAllWentWell) {
    ConversionState state;
    WithFile(state, u"\\out\\Log.txt", [] {});
    EXPECT_EQ(TroubledFilesText(state), u"");
}

TEST(TroubledFiles, OfManyTheFirstTwentyAreNamed) {
    ConversionState state;
    for (int file = 0; file < 21; ++file) {
        IgnoringErrors([&] { WithFile(state, u"x", [] { Raise(kDiskFull); }); });
    }
    EXPECT_TRUE(TroubledFilesText(state).ends_with(u"x\r\nx\r\n... and more\r\n"));
}

}  // namespace
}  // namespace tessaly
