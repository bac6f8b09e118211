#pragma once

#include "output/RowClass.h"

namespace tessaly {

// clang-format off
#define CLS_TBL_ATTACHMENTS(INT, TEXT) \
    INT(aid) INT(pid) TEXT(posthash) INT(uid) TEXT(filename) TEXT(filetype) INT(filesize) TEXT(attachname) \
    INT(downloads) INT(dateuploaded) INT(visible) TEXT(thumbnail)
// clang-format on

// One row of the table mybb_attachments. `pid` and `uid` both carry the member number.
TESSALY_ROW_CLASS(clsTblAttachments, CLS_TBL_ATTACHMENTS)

}  // namespace tessaly
