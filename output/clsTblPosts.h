#pragma once

#include "output/RowClass.h"

namespace tessaly {

// clang-format off
#define CLS_TBL_POSTS(INT, TEXT) \
    INT(pid) INT(tid) INT(replyto) INT(fid) TEXT(subject) INT(icon) INT(uid) TEXT(username) INT(dateline) \
    TEXT(message) INT(ipaddress) INT(includesig) INT(smilieoff) INT(edituid) INT(edittime) \
    TEXT(editreason) INT(visible)
// clang-format on

// One row of the table mybb_posts. `editreason` carries where the post stood on the old board.
TESSALY_ROW_CLASS(clsTblPosts, CLS_TBL_POSTS)

}  // namespace tessaly
