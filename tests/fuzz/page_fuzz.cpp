#include "reader/modThreads.h"
#include "tests/fuzz/FuzzBoard.h"

// One page file through the walk: its sections, posts, thread and announcements.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tessaly;
    const fuzzing::FuzzBoard& board = fuzzing::Board();
    board.Write("source/discus/messages/1/1.html", fuzzing::AsBytes(data, size));
    const auto state = board.NewState();
    state->Depth = 0;
    DiscusProcessBoardTopics(*state, u"1", u"Category", 1, false);
    return 0;
}
