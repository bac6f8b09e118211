#pragma once

#include "output/RowClass.h"

namespace tessaly {

// clang-format off
#define CLS_TABLE_BOARD(INT, TEXT) \
    INT(id_board) INT(id_cat) INT(child_level) INT(id_parent) INT(board_order) INT(id_last_msg) \
    INT(id_msg_updated) TEXT(member_groups) INT(id_profile) TEXT(name) TEXT(description) INT(num_topics) \
    INT(num_posts) INT(count_posts) INT(id_theme) INT(override_theme) INT(unapproved_post) \
    INT(unapproved_topic) TEXT(redirect)
// clang-format on

// One row of a table of boards. No writer makes one.
TESSALY_ROW_CLASS(clsTableBoard, CLS_TABLE_BOARD)

}  // namespace tessaly
