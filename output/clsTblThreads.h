#pragma once

#include "output/RowClass.h"

namespace tessaly {

// clang-format off
#define CLS_TBL_THREADS(INT, TEXT) \
    INT(tid) INT(fid) TEXT(subject) INT(prefix) INT(icon) INT(poll) INT(uid) TEXT(username) INT(dateline) \
    INT(firstpost) INT(lastpost) TEXT(lastposter) INT(lastposteruid) INT(views) INT(replies) TEXT(closed) \
    INT(sticky) INT(numratings) INT(totalratings) TEXT(notes) INT(visible) INT(unapprovedposts) \
    INT(deletedposts) INT(attachmentcount) INT(deletetime)
// clang-format on

// One row of the table mybb_threads. `views` carries the number of posts, `lastpost` a time.
TESSALY_ROW_CLASS(clsTblThreads, CLS_TBL_THREADS)

}  // namespace tessaly
