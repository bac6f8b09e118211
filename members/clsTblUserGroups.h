#pragma once

#include "output/RowClass.h"

namespace tessaly {

// clang-format off
#define CLS_TBL_USER_GROUPS(INT, TEXT) \
    INT(gid) INT(ltype) TEXT(title) TEXT(description) TEXT(namestyle) TEXT(usertitle) INT(stars) \
    TEXT(starimage) TEXT(image) INT(disporder) INT(isbannedgroup) INT(canview) INT(canviewthreads) \
    INT(canviewprofiles) INT(candlattachments) INT(canviewboardclosed) INT(canpostthreads) \
    INT(canpostreplys) INT(canpostattachments) INT(canratethreads) INT(modposts) INT(modthreads) \
    INT(mod_edit_posts) INT(modattachments) INT(caneditposts) INT(candeleteposts) INT(candeletethreads) \
    INT(caneditattachments) INT(canpostpolls) INT(canvotepolls) INT(canundovotes) INT(canusepms) \
    INT(cansendpms) INT(cantrackpms) INT(candenypmreceipts) INT(pmquota) INT(maxpmrecipients) \
    INT(cansendemail) INT(cansendemailoverride) INT(maxemails) INT(emailfloodtime) INT(canviewmemberlist) \
    INT(canviewcalendar) INT(canaddevents) INT(canbypasseventmod) INT(canmoderateevents) \
    INT(canviewonline) INT(canviewwolinvis) INT(canviewonlineips) INT(cancp) INT(issupermod) \
    INT(cansearch) INT(canusercp) INT(canuploadavatars) INT(canratemembers) INT(canchangename) \
    INT(canbereported) INT(canchangewebsite) INT(showforumteam) INT(usereputationsystem) \
    INT(cangivereputations) INT(candeletereputations) INT(reputationpower) INT(maxreputationsday) \
    INT(maxreputationsperuser) INT(maxreputationsperthread) INT(candisplaygroup) INT(attachquota) \
    INT(cancustomtitle) INT(canwarnusers) INT(canreceivewarnings) INT(maxwarningsday) INT(canmodcp) \
    INT(showinbirthdaylist) INT(canoverridepm) INT(canusesig) INT(canusesigxposts) INT(signofollow) \
    INT(edittimelimit) INT(maxposts) INT(showmemberlist) INT(canmanageannounce) INT(canmanagemodqueue) \
    INT(canmanagereportedcontent) INT(canviewmodlogs) INT(caneditprofiles) INT(canbanusers) \
    INT(canviewwarnlogs) INT(canuseipsearch)
// clang-format on

// One row of the table mybb_usergroups.
TESSALY_ROW_CLASS(clsTblUserGroups, CLS_TBL_USER_GROUPS)

}  // namespace tessaly
