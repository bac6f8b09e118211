#pragma once

#include "output/RowClass.h"

namespace tessaly {

// clang-format off
#define CLS_TBL_ANNOUNCEMENTS(INT, TEXT) \
    INT(aid) INT(fid) INT(uid) TEXT(subject) TEXT(message) INT(startdate) INT(enddate) INT(allowhtml) \
    INT(allowmycode) INT(allowsmilies)
// clang-format on

// One row of the table mybb_announcements.
TESSALY_ROW_CLASS(clsTblAnnouncements, CLS_TBL_ANNOUNCEMENTS)

}  // namespace tessaly
