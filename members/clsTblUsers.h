#pragma once

#include "output/RowClass.h"

namespace tessaly {

// clang-format off
#define CLS_TBL_USERS(INT, TEXT) \
    INT(uid) TEXT(username) TEXT(password) TEXT(salt) TEXT(loginkey) TEXT(email) INT(postnum) \
    INT(threadnum) TEXT(avatar) TEXT(avatardimensions) TEXT(avatartype) INT(usergroup) \
    TEXT(additionalgroups) INT(displaygroup) TEXT(usertitle) INT(regdate) INT(lastactive) INT(lastvisit) \
    INT(lastpost) TEXT(website) TEXT(icq) TEXT(aim) TEXT(yahoo) TEXT(skype) TEXT(google) TEXT(birthday) \
    TEXT(birthdayprivacy) TEXT(signature) INT(allownotices) INT(hideemail) INT(subscriptionmethod) \
    INT(invisible) INT(receivepms) INT(receivefrombuddy) INT(pmnotice) INT(pmnotify) INT(buddyrequestspm) \
    INT(buddyrequestsauto) TEXT(threadmode) INT(showimages) INT(showvideos) INT(showsigs) INT(showavatars) \
    INT(showquickreply) INT(showredirect) INT(ppp) INT(tpp) INT(daysprune) TEXT(dateformat) \
    TEXT(timeformat) TEXT(timezone) INT(dst) INT(dstcorrection) TEXT(buddylist) TEXT(ignorelist) \
    INT(style) INT(away) INT(awaydate) TEXT(returndate) TEXT(awayreason) TEXT(pmfolders) TEXT(notepad) \
    INT(referrer) INT(referrals) INT(reputation) INT(regip) INT(lastip) TEXT(language) INT(timeonline) \
    INT(showcodebuttons) INT(totalpms) INT(unreadpms) INT(warningpoints) INT(moderateposts) \
    INT(moderationtime) INT(suspendposting) INT(suspensiontime) INT(suspendsignature) INT(suspendsigtime) \
    INT(coppauser) INT(classicpostbit) INT(loginattempts) TEXT(usernotes) INT(sourceeditor)
// clang-format on

// One row of the table mybb_users.
TESSALY_ROW_CLASS(clsTblUsers, CLS_TBL_USERS)

}  // namespace tessaly
