#include "platform/DeleteGuard.h"

#include <gtest/gtest.h>

namespace tessaly::platform {
namespace {

const GuardedFolders kUnix{u"/home/anna",
                           u"/opt/tessaly/bin",
                           {u"/srv/Discus", u"/srv/discus/discus/messages", u"/data/secure", u"/data/main"}};

const GuardedFolders kWindows{
    u"C:\\Users\\Anna",
    u"C:\\Program Files\\Tessaly",
    {u"D:\\Discus\\", u"D:\\Discus\\messages\\", u"\\\\server\\share\\secure", u""}};

bool Refuses(std::u16string_view folder, const GuardedFolders& guarded) {
    return !ReasonNotToDelete(folder, guarded).empty();
}

TEST(DeleteGuard, RefusesAnEmptyText) {
    EXPECT_EQ(ReasonNotToDelete(u"", kUnix), u"no folder is named");
    EXPECT_EQ(ReasonNotToDelete(u" ", kUnix), u"no folder is named");
    EXPECT_EQ(ReasonNotToDelete(u"    ", kWindows), u"no folder is named");
}

TEST(DeleteGuard, RefusesTheRootOfAFileSystem) {
    for (const std::u16string_view root : {u"/", u"//", u"\\", u"\\\\", u"///"}) {
        EXPECT_EQ(ReasonNotToDelete(root, kUnix), u"it is the root of a file system");
    }
}

TEST(DeleteGuard, RefusesTheRootOfADrive) {
    for (const std::u16string_view root : {u"C:\\", u"C:", u"c:/", u"Z:\\", u"Z:\\\\", u"\\\\?\\Z:\\",
                                           u"\\\\?\\Z:", u"\\\\.\\Z:\\", u"\\\\?\\Volume{01234567}\\"}) {
        EXPECT_EQ(ReasonNotToDelete(root, kWindows), u"it is the root of a file system");
    }
}

TEST(DeleteGuard, RefusesTheRootOfAShare) {
    for (const std::u16string_view root :
         {u"\\\\server\\share", u"\\\\server\\share\\", u"//server/share/", u"\\\\server", u"\\\\server\\",
          u"\\\\?\\UNC\\server\\share", u"\\\\?\\unc\\server\\share\\"}) {
        EXPECT_EQ(ReasonNotToDelete(root, kWindows), u"it is the root of a file system");
    }
}

TEST(DeleteGuard, RefusesTheHomeFolderAndAllAboveIt) {
    for (const std::u16string_view folder : {u"/home/anna", u"/home/anna/", u"/home", u"/HOME/Anna"}) {
        EXPECT_EQ(ReasonNotToDelete(folder, kUnix), u"it is or holds your home folder");
    }
    for (const std::u16string_view folder :
         {u"C:\\Users\\Anna", u"c:\\users\\", u"C:/Users", u"\\\\?\\C:\\Users"}) {
        EXPECT_EQ(ReasonNotToDelete(folder, kWindows), u"it is or holds your home folder");
    }
}

TEST(DeleteGuard, RefusesTheProgramsFolderAndAllAboveIt) {
    for (const std::u16string_view folder :
         {u"/opt/tessaly/bin/", u"/opt/tessaly", u"/opt", u"/OPT/TESSALY"}) {
        EXPECT_EQ(ReasonNotToDelete(folder, kUnix), u"it is or holds the program's own folder");
    }
    EXPECT_EQ(ReasonNotToDelete(u"C:\\PROGRAM FILES", kWindows), u"it is or holds the program's own folder");
}

TEST(DeleteGuard, RefusesEachFolderOfTheSourceAndAllAboveIt) {
    EXPECT_EQ(ReasonNotToDelete(u"/srv/discus", kUnix),
              u"it is or holds a folder of the Discus copy, /srv/Discus");
    EXPECT_EQ(ReasonNotToDelete(u"/srv/discus/discus/messages/", kUnix),
              u"it is or holds a folder of the Discus copy, /srv/discus/discus/messages");
    EXPECT_EQ(ReasonNotToDelete(u"/srv/discus/discus", kUnix),
              u"it is or holds a folder of the Discus copy, /srv/discus/discus/messages");
    EXPECT_TRUE(Refuses(u"/srv", kUnix));
    EXPECT_TRUE(Refuses(u"/data", kUnix));
    EXPECT_TRUE(Refuses(u"/data/SECURE", kUnix));
    EXPECT_TRUE(Refuses(u"/data/main/", kUnix));
    EXPECT_TRUE(Refuses(u"d:\\discus", kWindows));
    EXPECT_TRUE(Refuses(u"D:\\Discus\\Messages", kWindows));
    EXPECT_TRUE(Refuses(u"\\\\SERVER\\share\\secure\\", kWindows));
    EXPECT_TRUE(Refuses(u"\\\\?\\UNC\\server\\share\\secure", kWindows));
    EXPECT_TRUE(Refuses(u"\\\\?\\D:\\Discus", kWindows));
}

TEST(DeleteGuard, AllowsAFolderThatOnlySharesABeginning) {
    for (const std::u16string_view folder :
         {u"/home/anna2", u"/home/ann", u"/home/annabel/out", u"/srv/discus2", u"/srv/dis", u"/data/secure2",
          u"/opt/tess", u"/opt/tessaly/binaries"}) {
        EXPECT_EQ(ReasonNotToDelete(folder, kUnix), u"");
    }
    EXPECT_FALSE(Refuses(u"D:\\Discus2", kWindows));
    EXPECT_FALSE(Refuses(u"\\\\server\\share2\\out", kWindows));
}

TEST(DeleteGuard, AllowsAFolderInsideAGuardedOne) {
    for (const std::u16string_view folder :
         {u"/home/anna/out", u"/srv/discus/output", u"/srv/discus/discus/messages/out", u"/data/secure/x",
          u"/opt/tessaly/bin/out", u"/tmp/out"}) {
        EXPECT_EQ(ReasonNotToDelete(folder, kUnix), u"");
    }
    EXPECT_FALSE(Refuses(u"C:\\Users\\Anna\\Output\\", kWindows));
    EXPECT_FALSE(Refuses(u"C:\\Output", kWindows));
    EXPECT_FALSE(Refuses(u"\\\\server\\share\\out", kWindows));
    EXPECT_FALSE(Refuses(u"\\\\?\\C:\\Output", kWindows));
    EXPECT_FALSE(Refuses(u"\\\\?\\UNC\\server\\share\\out", kWindows));
}

TEST(DeleteGuard, AFolderThatIsNotKnownGuardsNothing) {
    const GuardedFolders nothing{u"", u"", {u"", u""}};
    EXPECT_FALSE(Refuses(u"/srv/out", nothing));
    EXPECT_TRUE(Refuses(u"/", nothing));
}

}  // namespace
}  // namespace tessaly::platform
