#include "finish/NumberBoard.h"

#include <limits>

#include "finish/FinishError.h"
#include "text/numbers.h"

namespace tessaly {

namespace {

constexpr std::int64_t kMostForums = 65535;

std::vector<std::int64_t> ThreadsOfForums(const Board& board) {
    std::vector<std::int64_t> counts(board.forums.size());
    for (const Thread& thread : board.threads) {
        if (thread.posts > 0) ++counts[thread.forum];
    }
    return counts;
}

// As the board stands: a list that holds but one page stays a list.
void FoldPages(Board& board) {
    if (board.options.keepPagesAsForums) return;
    const std::vector<std::int64_t> threads = ThreadsOfForums(board);
    for (std::size_t at = 0; at < board.forums.size(); ++at) {
        Forum& forum = board.forums[at];
        if (forum.isCategory || forum.hasSubForum || threads[at] != 1 || forum.parent == kNone) continue;
        forum.isFolded = !board.forums[forum.parent].isCategory;
    }
}

void NumberForums(Board& board) {
    std::int64_t next = board.options.firstForum;
    std::int64_t categories = 0;
    std::vector<std::int64_t> children(board.forums.size());
    for (Forum& forum : board.forums) {
        if (forum.isFolded) {
            forum.fid = board.forums[forum.parent].fid;
            continue;
        }
        const bool isTop = forum.parent == kNone;
        forum.order = ++(isTop ? categories : children[forum.parent]);
        forum.fid = next++;
        if (!isTop) forum.parentList = board.forums[forum.parent].parentList + u",";
        forum.parentList += ToText(forum.fid);
    }
    const std::int64_t count = next - board.options.firstForum;
    if (count > kMostForums)
        throw FinishError{u"The board has " + ToText(count) +
                          u" forums, and the new forum takes 65535 at most." +
                          (board.options.keepPagesAsForums ? u" Leave out --keep-pages-as-forums." : u"")};
    if (next - 1 > kMostForums)
        throw FinishError{u"The forums would have numbers up to " + ToText(next - 1) +
                          u", and 65535 is the highest. Take a smaller --first-forum."};
}

void NumberThreads(Board& board) {
    std::int64_t next = board.options.firstThread;
    for (Thread& thread : board.threads) {
        if (thread.posts == 0) continue;
        const Forum& forum = board.forums[thread.forum];
        if (forum.isFolded) thread.forum = forum.parent;
        thread.tid = next++;
    }
    if (next - 1 > std::numeric_limits<std::uint32_t>::max())
        throw FinishError{u"The numbers of the threads go beyond 4294967295. Take a smaller --first-thread."};
}

}  // namespace

void NumberBoard(Board& board) {
    FoldPages(board);
    NumberForums(board);
    NumberThreads(board);
}

void CountForums(Board& board) {
    for (std::size_t at = 0; at < board.threads.size(); ++at) {
        const Thread& thread = board.threads[at];
        if (thread.posts == 0) continue;
        Forum& forum = board.forums[thread.forum];
        ++forum.threads;
        forum.posts += thread.posts;
        const bool isLater =
            forum.lastThread == kNone || thread.lastTime >= board.threads[forum.lastThread].lastTime;
        if (isLater) forum.lastThread = at;
    }
}

}  // namespace tessaly
