#include <cstdio>
#include <string>

#include "members/clsTblUserGroups.h"
#include "members/clsTblUsers.h"
#include "output/clsTblForums.h"
#include "output/clsTblPosts.h"
#include "output/clsTblThreads.h"
#include "platform/charset.h"
#include "translate/clsTblAnnouncements.h"
#include "translate/clsTblAttachments.h"

// Prints each column of the import files' tables, one a line: table, column, INT or TEXT.

namespace tessaly {
namespace {

template <typename Row>
void PrintColumns(const char* table) {
    for (const Column& column : Row::kColumns) {
        std::printf("%s %s %s\n", table, platform::ToUtf8(column.name).c_str(),
                    column.kind == ColumnKind::kInt ? "INT" : "TEXT");
    }
}

}  // namespace
}  // namespace tessaly

int main() {
    using namespace tessaly;
    PrintColumns<clsTblForums>("mybb_forums");
    PrintColumns<clsTblThreads>("mybb_threads");
    PrintColumns<clsTblPosts>("mybb_posts");
    PrintColumns<clsTblUsers>("mybb_users");
    PrintColumns<clsTblUserGroups>("mybb_usergroups");
    PrintColumns<clsTblAttachments>("mybb_attachments");
    PrintColumns<clsTblAnnouncements>("mybb_announcements");
}
