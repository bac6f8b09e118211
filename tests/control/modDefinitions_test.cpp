#include "control/modDefinitions.h"

#include <gtest/gtest.h>

#include "text/RunTimeError.h"

namespace tessaly {
namespace {

TEST(StartValues, OfTheFieldsAreTheFormsOwn) {
    const ConversionState state;
    EXPECT_EQ(state.txtDiscusRootFolder.Text, u"C:\\Discusware");
    EXPECT_EQ(state.txtDiscusMessageFolder.Text, u"C:\\Discusware\\discus\\messages");
    EXPECT_EQ(state.txtDiscusSecureMessageFolder.Text, u"C:\\Discusware\\discus_admin_nnnnnnnnnn\\secure");
    EXPECT_EQ(state.txtDiscusMainFolder.Text, u"C:\\Discusware\\discus_admin_nnnnnnnnnn");
    EXPECT_EQ(state.txtmybbOutputFolder.Text, u"C:\\Discusware\\phpBB3\\Output\\");
    EXPECT_EQ(state.txtmybbAttachmentsFolder.Text, u"C:\\Discusware\\phpBB3\\Output\\attachments");
    EXPECT_EQ(state.txtDiscusWebsite.Text, u"");
    EXPECT_EQ(state.txtmybbForumAddr.Text, u"");
    EXPECT_EQ(state.txtDefaultGroups.Text, u"8");
    EXPECT_EQ(state.txtDefaultUsers.Text, u"");
    EXPECT_EQ(state.txtDefaultAdmin.Text, u"");
    EXPECT_EQ(state.txtSplitMBSize.Text, u"50");
    EXPECT_EQ(state.txtMsgCount.Text, u"0");
    EXPECT_EQ(state.txtArea.Text, u"");
    EXPECT_EQ(state.cboCharset.Text, u"");
    EXPECT_TRUE(state.cboProcessedFolders.Items.empty());
    EXPECT_EQ(state.Caption.Text, u"Tessaly");
}

TEST(StartValues, OfTheBoxesTickTheFourOfTheOptionsAlone) {
    const ConversionState state;
    EXPECT_EQ(state.chkCreateAttachments.Value, 1);
    EXPECT_EQ(state.chkCreateHiddenTopics.Value, 1);
    EXPECT_EQ(state.chkCreateRedirectionFiles.Value, 1);
    EXPECT_EQ(state.chkFindDiscusSpecialCharacters.Value, 1);
    EXPECT_EQ(state.chkShowProgress.Value, 0);
    EXPECT_EQ(state.chkLogProgress.Value, 0);
}

TEST(StartValues, OfTheButtonsAreIdle) {
    const ConversionState state;
    EXPECT_TRUE(state.cmdConvert.Enabled);
    EXPECT_FALSE(state.cmdCancel.Enabled);
}

TEST(StartValues, OfTheVariablesAre0AndEmptyBut7Groups) {
    const ConversionState state;
    EXPECT_EQ(state.DefaultGroupCount, 7);
    EXPECT_EQ(state.DefaultUserCount, 0);
    EXPECT_EQ(state.SplitMBSize, 0);
    EXPECT_EQ(state.Charset, u"");
    EXPECT_EQ(state.RedirectTemplate, u"");
    EXPECT_FALSE(state.CancelRequested);
    EXPECT_FALSE(state.HiddenTopic);
    EXPECT_EQ(state.AnnouncementForumId, 0);
    EXPECT_EQ(state.PageSerial, 0);
    EXPECT_EQ(state.ThreadsFile.Stream, nullptr);
    EXPECT_EQ(state.ThreadsFile.Number, 0);
    EXPECT_EQ(state.ThreadsFile.Size, 0);
}

TEST(DataIndex, HasItsElement0FromTheStart) {
    ConversionState state;
    ASSERT_EQ(state.DataIndex.size(), 1u);
    EXPECT_EQ(&CurrentIndex(state), &state.DataIndex[0]);
}

TEST(DataIndex, RaisesForALevelThatIsNotThere) {
    ConversionState state;
    state.Depth = 1;
    EXPECT_EQ(IgnoringErrors([&] { CurrentIndex(state); }), 9);
    state.Depth = -1;
    EXPECT_EQ(IgnoringErrors([&] { CurrentIndex(state); }), 9);
}

TEST(Collections, LeaveAMissingKeyAtItsFailure) {
    ConversionState state;
    state.RealNames.Add(u"Anna", u"Anna");
    EXPECT_EQ(IgnoringErrors([&] { state.RealNames.Get(u"Berta"); }), 5);
    EXPECT_EQ(IgnoringErrors([&] { state.RealNames.Remove(u"Berta"); }), 5);
    EXPECT_EQ(state.RealNames.Count(), 1);
    EXPECT_EQ(state.RealNames.Get(u"Anna"), u"Anna");
}

TEST(Collections, RefuseAKeyThatDiffersInCaseAlone) {
    ConversionState state;
    state.RealNames.Add(u"Anna", u"first");
    EXPECT_EQ(IgnoringErrors([&] { state.RealNames.Add(u"aNNA", u"second"); }), 457);
    EXPECT_EQ(state.RealNames.Count(), 1);
    EXPECT_EQ(state.RealNames.Get(u"ANNA"), u"first");
}

TEST(CharsetNames, AreOnOfferInTheirOrderBehindAnEmptyOne) {
    EXPECT_EQ(CharsetNames(),
              (std::vector<std::u16string>{u"",           u"big5",        u"euc-jp",      u"euc-kr",
                                           u"gb2312",     u"iso-2022-jp", u"iso-2022-kr", u"iso-8859-1",
                                           u"iso-8859-2", u"iso-8859-3",  u"iso-8859-4",  u"iso-8859-5",
                                           u"iso-8859-6", u"iso-8859-7",  u"iso-8859-8",  u"iso-8859-9",
                                           u"koi8-r",     u"shift-jis",   u"us-ascii",    u"utf-7",
                                           u"utf-8"}));
}

TEST(Area, TellsWhatIsAppendedApartFromWhatIsSet) {
    AreaField area;
    std::u16string appended;
    int changed = 0;
    area.Appended = [&appended](std::u16string_view text) { appended += text; };
    area.Changed = [&changed] { ++changed; };
    area.SetText(u"a");
    area.AppendText(u"bc");
    EXPECT_EQ(area.Text, u"abc");
    EXPECT_EQ(appended, u"bc");
    EXPECT_EQ(changed, 1);
}

}  // namespace
}  // namespace tessaly
