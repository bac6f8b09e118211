#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "members/clsTblUserGroups.h"
#include "members/clsTblUsers.h"
#include "output/clsTableBoard.h"
#include "output/clsTblForums.h"
#include "output/clsTblPosts.h"
#include "output/clsTblThreads.h"
#include "platform/charset.h"
#include "translate/clsTblAnnouncements.h"
#include "translate/clsTblAttachments.h"

namespace tessaly {
namespace {

// The columns of a row class as "Int name" or "Text name", in their order.
template <typename Row>
std::vector<std::string> Columns() {
    std::vector<std::string> columns;
    for (const Column& column : Row::kColumns) {
        const std::string kind = column.kind == ColumnKind::kInt ? "Int " : "Text ";
        columns.push_back(kind + platform::ToUtf8(column.name));
    }
    return columns;
}

// A list written as the table's description is: "Int tid, Text subject".
std::vector<std::string> Listed(const std::string& text) {
    std::vector<std::string> columns;
    std::istringstream rest(text);
    for (std::string column; std::getline(rest >> std::ws, column, ',');) columns.push_back(column);
    return columns;
}

template <typename Row>
std::string Rendered(const Row& row) {
    std::u16string text;
    row.BuildString(text);
    return platform::ToUtf8(text);
}

TEST(clsTblThreads, HasIts25ColumnsInTheOrderOfTheTable) {
    EXPECT_EQ(Columns<clsTblThreads>(),
              Listed("Int tid, Int fid, Text subject, Int prefix, Int icon, Int poll, Int uid, "
                     "Text username, Int dateline, Int firstpost, Int lastpost, Text lastposter, "
                     "Int lastposteruid, Int views, Int replies, Text closed, Int sticky, "
                     "Int numratings, Int totalratings, Text notes, Int visible, Int unapprovedposts, "
                     "Int deletedposts, Int attachmentcount, Int deletetime"));
}

TEST(clsTblThreads, RendersEveryColumnWhenNothingIsSet) {
    EXPECT_EQ(Rendered(clsTblThreads()), R"(0,0,"",0,0,0,0,"",0,0,0,"",0,0,0,"",0,0,0,"",0,0,0,0,0)");
}

TEST(clsTblPosts, HasIts17ColumnsInTheOrderOfTheTable) {
    EXPECT_EQ(Columns<clsTblPosts>(),
              Listed("Int pid, Int tid, Int replyto, Int fid, Text subject, Int icon, Int uid, "
                     "Text username, Int dateline, Text message, Int ipaddress, Int includesig, "
                     "Int smilieoff, Int edituid, Int edittime, Text editreason, Int visible"));
}

TEST(clsTblPosts, RendersEveryColumnWhenNothingIsSet) {
    EXPECT_EQ(Rendered(clsTblPosts()), R"(0,0,0,0,"",0,0,"",0,"",0,0,0,0,0,"",0)");
}

TEST(clsTblForums, HasIts41ColumnsInTheOrderOfTheTable) {
    EXPECT_EQ(Columns<clsTblForums>(),
              Listed("Int fid, Text name, Text description, Text linkto, Text stype, Int pid, "
                     "Text parentlist, Int disporder, Int active, Int lopen, Int threads, Int posts, "
                     "Int lastpost, Text lastposter, Int lastposteruid, Int lastposttid, "
                     "Text lastpostsubject, Int allowhtml, Int allowmycode, Int allowsmilies, "
                     "Int allowimgcode, Int allowvideocode, Int allowpicons, Int allowtratings, "
                     "Int usepostcounts, Int usethreadcounts, Int requireprefix, Text password, "
                     "Int showinjump, Int style, Int overridestyle, Int rulestype, Text rulestitle, "
                     "Text rules, Int unapprovedthreads, Int unapprovedposts, Int deletedthreads, "
                     "Int deletedposts, Int defaultdatecut, Text defaultsortby, Text defaultsortorder"));
}

TEST(clsTblForums, RendersEveryColumnWhenNothingIsSet) {
    EXPECT_EQ(Rendered(clsTblForums()),
              R"(0,"","","","",0,"",0,0,0,0,0,0,"",0,0,"",0,0,0,0,0,0,0,0,0,0,"",0,0,0,0,"","",0,0,0,0,)"
              R"(0,"","")");
}

TEST(clsTableBoard, HasIts19ColumnsInTheOrderOfTheTable) {
    EXPECT_EQ(Columns<clsTableBoard>(),
              Listed("Int id_board, Int id_cat, Int child_level, Int id_parent, Int board_order, "
                     "Int id_last_msg, Int id_msg_updated, Text member_groups, Int id_profile, "
                     "Text name, Text description, Int num_topics, Int num_posts, Int count_posts, "
                     "Int id_theme, Int override_theme, Int unapproved_post, Int unapproved_topic, "
                     "Text redirect"));
}

TEST(clsTableBoard, RendersEveryColumnWhenNothingIsSet) {
    EXPECT_EQ(Rendered(clsTableBoard()), R"(0,0,0,0,0,0,0,"",0,"","",0,0,0,0,0,0,0,"")");
}

TEST(clsTblUsers, HasIts84ColumnsInTheOrderOfTheTable) {
    EXPECT_EQ(Columns<clsTblUsers>(),
              Listed("Int uid, Text username, Text password, Text salt, Text loginkey, Text email, "
                     "Int postnum, Int threadnum, Text avatar, Text avatardimensions, Text avatartype, "
                     "Int usergroup, Text additionalgroups, Int displaygroup, Text usertitle, "
                     "Int regdate, Int lastactive, Int lastvisit, Int lastpost, Text website, Text icq, "
                     "Text aim, Text yahoo, Text skype, Text google, Text birthday, "
                     "Text birthdayprivacy, Text signature, Int allownotices, Int hideemail, "
                     "Int subscriptionmethod, Int invisible, Int receivepms, Int receivefrombuddy, "
                     "Int pmnotice, Int pmnotify, Int buddyrequestspm, Int buddyrequestsauto, "
                     "Text threadmode, Int showimages, Int showvideos, Int showsigs, Int showavatars, "
                     "Int showquickreply, Int showredirect, Int ppp, Int tpp, Int daysprune, "
                     "Text dateformat, Text timeformat, Text timezone, Int dst, Int dstcorrection, "
                     "Text buddylist, Text ignorelist, Int style, Int away, Int awaydate, "
                     "Text returndate, Text awayreason, Text pmfolders, Text notepad, Int referrer, "
                     "Int referrals, Int reputation, Int regip, Int lastip, Text language, "
                     "Int timeonline, Int showcodebuttons, Int totalpms, Int unreadpms, "
                     "Int warningpoints, Int moderateposts, Int moderationtime, Int suspendposting, "
                     "Int suspensiontime, Int suspendsignature, Int suspendsigtime, Int coppauser, "
                     "Int classicpostbit, Int loginattempts, Text usernotes, Int sourceeditor"));
}

TEST(clsTblUsers, RendersEveryColumnWhenNothingIsSet) {
    EXPECT_EQ(Rendered(clsTblUsers()),
              R"(0,"","","","","",0,0,"","","",0,"",0,"",0,0,0,0,"","","","","","","","","",0,0,0,0,0,)"
              R"(0,0,0,0,0,"",0,0,0,0,0,0,0,0,0,"","","",0,0,"","",0,0,0,"","","","",0,0,0,0,0,"",0,0,)"
              R"(0,0,0,0,0,0,0,0,0,0,0,0,"",0)");
}

TEST(clsTblUserGroups, HasIts89ColumnsInTheOrderOfTheTable) {
    EXPECT_EQ(Columns<clsTblUserGroups>(),
              Listed("Int gid, Int ltype, Text title, Text description, Text namestyle, Text usertitle, "
                     "Int stars, Text starimage, Text image, Int disporder, Int isbannedgroup, "
                     "Int canview, Int canviewthreads, Int canviewprofiles, Int candlattachments, "
                     "Int canviewboardclosed, Int canpostthreads, Int canpostreplys, "
                     "Int canpostattachments, Int canratethreads, Int modposts, Int modthreads, "
                     "Int mod_edit_posts, Int modattachments, Int caneditposts, Int candeleteposts, "
                     "Int candeletethreads, Int caneditattachments, Int canpostpolls, Int canvotepolls, "
                     "Int canundovotes, Int canusepms, Int cansendpms, Int cantrackpms, "
                     "Int candenypmreceipts, Int pmquota, Int maxpmrecipients, Int cansendemail, "
                     "Int cansendemailoverride, Int maxemails, Int emailfloodtime, "
                     "Int canviewmemberlist, Int canviewcalendar, Int canaddevents, "
                     "Int canbypasseventmod, Int canmoderateevents, Int canviewonline, "
                     "Int canviewwolinvis, Int canviewonlineips, Int cancp, Int issupermod, "
                     "Int cansearch, Int canusercp, Int canuploadavatars, Int canratemembers, "
                     "Int canchangename, Int canbereported, Int canchangewebsite, Int showforumteam, "
                     "Int usereputationsystem, Int cangivereputations, Int candeletereputations, "
                     "Int reputationpower, Int maxreputationsday, Int maxreputationsperuser, "
                     "Int maxreputationsperthread, Int candisplaygroup, Int attachquota, "
                     "Int cancustomtitle, Int canwarnusers, Int canreceivewarnings, Int maxwarningsday, "
                     "Int canmodcp, Int showinbirthdaylist, Int canoverridepm, Int canusesig, "
                     "Int canusesigxposts, Int signofollow, Int edittimelimit, Int maxposts, "
                     "Int showmemberlist, Int canmanageannounce, Int canmanagemodqueue, "
                     "Int canmanagereportedcontent, Int canviewmodlogs, Int caneditprofiles, "
                     "Int canbanusers, Int canviewwarnlogs, Int canuseipsearch"));
}

TEST(clsTblUserGroups, RendersEveryColumnWhenNothingIsSet) {
    EXPECT_EQ(Rendered(clsTblUserGroups()),
              R"(0,0,"","","","",0,"","",0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,)"
              R"(0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,)"
              R"(0,0,0,0,0,0)");
}

TEST(clsTblAttachments, HasIts12ColumnsInTheOrderOfTheTable) {
    EXPECT_EQ(Columns<clsTblAttachments>(),
              Listed("Int aid, Int pid, Text posthash, Int uid, Text filename, Text filetype, "
                     "Int filesize, Text attachname, Int downloads, Int dateuploaded, Int visible, "
                     "Text thumbnail"));
}

TEST(clsTblAttachments, RendersEveryColumnWhenNothingIsSet) {
    EXPECT_EQ(Rendered(clsTblAttachments()), R"(0,0,"",0,"","",0,"",0,0,0,"")");
}

TEST(clsTblAnnouncements, HasIts10ColumnsInTheOrderOfTheTable) {
    EXPECT_EQ(Columns<clsTblAnnouncements>(),
              Listed("Int aid, Int fid, Int uid, Text subject, Text message, Int startdate, "
                     "Int enddate, Int allowhtml, Int allowmycode, Int allowsmilies"));
}

TEST(clsTblAnnouncements, RendersEveryColumnWhenNothingIsSet) {
    EXPECT_EQ(Rendered(clsTblAnnouncements()), R"(0,0,0,"","",0,0,0,0,0)");
}

TEST(RowGrammar, WritesAnIntegerBareAndANegativeOneWithItsSign) {
    clsTblThreads row;
    row.tid = 1234567;
    row.dateline = -86400;
    row.deletetime = -2147483647 - 1;
    EXPECT_EQ(Rendered(row),
              R"(1234567,0,"",0,0,0,0,"",-86400,0,0,"",0,0,0,"",0,0,0,"",0,0,0,0,-2147483648)");
}

TEST(RowGrammar, ChangesNothingInATextColumn) {
    clsTblAttachments row;
    row.posthash = u" a,b ";
    row.filename = u"say \"yes\"";
    row.filetype = u"one\r\ntwo";
    row.attachname = u"C:\\x";
    row.thumbnail = u"'";
    EXPECT_EQ(Rendered(row), "0,0,\" a,b \",0,\"say \"yes\"\",\"one\r\ntwo\",0,\"C:\\x\",0,0,0,\"'\"");
}

TEST(RowGrammar, ReplacesWhatTheTextHeldBefore) {
    clsTblAnnouncements row;
    row.aid = 7;
    std::u16string text = u"an older row";
    row.BuildString(text);
    EXPECT_EQ(text, u"7,0,0,\"\",\"\",0,0,0,0,0");
}

TEST(RowGrammar, HasThirteenZerosAndFourEmptyTextsInANewPost) {
    const std::string row = Rendered(clsTblPosts());
    EXPECT_EQ(std::ranges::count(row, '0'), 13);
    EXPECT_EQ(std::ranges::count(row, '"'), 8);
    EXPECT_EQ(std::ranges::count(row, ','), 16);
}

TEST(RowGrammar, HasTwentyZerosAndFiveEmptyTextsInANewThread) {
    const std::string row = Rendered(clsTblThreads());
    EXPECT_EQ(std::ranges::count(row, '0'), 20);
    EXPECT_EQ(std::ranges::count(row, '"'), 10);
    EXPECT_EQ(std::ranges::count(row, ','), 24);
}

TEST(RowGrammar, RendersEachColumnInItsOwnPlace) {
    clsTblPosts row;
    row.pid = 1;
    row.tid = 2;
    row.replyto = 3;
    row.fid = 4;
    row.subject = u"five";
    row.icon = 6;
    row.uid = 7;
    row.username = u"eight";
    row.dateline = 9;
    row.message = u"ten";
    row.ipaddress = 11;
    row.includesig = 12;
    row.smilieoff = 13;
    row.edituid = 14;
    row.edittime = 15;
    row.editreason = u"sixteen";
    row.visible = 17;
    EXPECT_EQ(Rendered(row), R"(1,2,3,4,"five",6,7,"eight",9,"ten",11,12,13,14,15,"sixteen",17)");
}

}  // namespace
}  // namespace tessaly
