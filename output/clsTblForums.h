#pragma once

#include "output/RowClass.h"

namespace tessaly {

// clang-format off
#define CLS_TBL_FORUMS(INT, TEXT) \
    INT(fid) TEXT(name) TEXT(description) TEXT(linkto) TEXT(stype) INT(pid) TEXT(parentlist) \
    INT(disporder) INT(active) INT(lopen) INT(threads) INT(posts) INT(lastpost) TEXT(lastposter) \
    INT(lastposteruid) INT(lastposttid) TEXT(lastpostsubject) INT(allowhtml) INT(allowmycode) \
    INT(allowsmilies) INT(allowimgcode) INT(allowvideocode) INT(allowpicons) INT(allowtratings) \
    INT(usepostcounts) INT(usethreadcounts) INT(requireprefix) TEXT(password) INT(showinjump) INT(style) \
    INT(overridestyle) INT(rulestype) TEXT(rulestitle) TEXT(rules) INT(unapprovedthreads) \
    INT(unapprovedposts) INT(deletedthreads) INT(deletedposts) INT(defaultdatecut) TEXT(defaultsortby) \
    TEXT(defaultsortorder)
// clang-format on

// One row of the table mybb_forums.
TESSALY_ROW_CLASS(clsTblForums, CLS_TBL_FORUMS)

}  // namespace tessaly
