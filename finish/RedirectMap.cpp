#include "finish/RedirectMap.h"

#include <unordered_set>

#include "finish/ReadBoard.h"
#include "platform/TextFile.h"
#include "text/numbers.h"
#include "text/search.h"

namespace tessaly {

namespace {

using platform::OpenMode;
using platform::TextFile;
using platform::TextFormat;

// Blanks and quotes would end a path too early, and "$" begins a variable in one of the two files.
bool IsPlain(std::u16string_view path) {
    return path.find_first_of(u" \t\"'\\;{}$#") == std::u16string_view::npos;
}

class MapWriter {
  public:
    explicit MapWriter(std::u16string_view folder)
        : nginx_(std::u16string(folder) + u"redirect.nginx.conf", OpenMode::kWriting, TextFormat::kUtf8),
          apache_(std::u16string(folder) + u"redirect.apache.txt", OpenMode::kWriting, TextFormat::kUtf8) {
        nginx_.Write(u"map $uri $new_address {\n");
    }

    // A page that was met twice keeps its first address.
    void Add(const std::u16string& path, std::u16string_view address) {
        if (!IsPlain(path) || !paths_.insert(path).second) return;
        std::u16string line = path + u" ";
        line += address;
        nginx_.Write(u"    " + path + u" \"" + std::u16string(address) + u"\";\n");
        apache_.Write(line + u"\n");
    }

    std::int64_t Close() {
        nginx_.Write(u"}\n");
        nginx_.Close();
        apache_.Close();
        return static_cast<std::int64_t>(paths_.size());
    }

  private:
    TextFile nginx_;
    TextFile apache_;
    std::unordered_set<std::u16string> paths_;
};

// Without a note only the pages that hold messages are known, and where the board lay is taken for granted.
void AddPagesOfThreads(const Board& board, MapWriter& map) {
    map.Add(u"/discus/messages/board-topics.html", board.options.forumAddress + u"index.php");
    for (const Thread& thread : board.threads) {
        if (thread.posts == 0) continue;
        const std::u16string path = u"/discus/messages/" +
                                    ToText(static_cast<std::int64_t>(thread.page.folder)) + u"/" +
                                    ToText(static_cast<std::int64_t>(thread.page.file)) + u".html";
        map.Add(path, board.options.forumAddress + u"showthread.php?tid=" + ToText(thread.tid));
    }
}

}  // namespace

std::int64_t WriteRedirectMap(const Board& board, std::u16string_view folder) {
    MapWriter map(folder);
    for (const FinishNote::Page& page : board.note.pages) {
        if (page.fid == 0) {
            map.Add(page.path, board.options.forumAddress + u"index.php");
        } else if (const auto address = AddressOfPage(board, PageAtPath(page.path))) {
            map.Add(page.path, *address);
        }
    }
    if (board.note.pages.empty()) AddPagesOfThreads(board, map);
    return map.Close();
}

}  // namespace tessaly
