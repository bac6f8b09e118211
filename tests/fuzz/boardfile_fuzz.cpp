#include "reader/modBoards.h"
#include "tests/fuzz/FuzzBoard.h"

// One board file; its tops find two small pages or none.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tessaly;
    const fuzzing::FuzzBoard& board = fuzzing::Board();
    board.Write("source/discus/messages/1/1.html", "<!--Me: 1/One--><a href=x.html?1>s</a>");
    board.Write("source/discus/messages/board-topics.html", fuzzing::AsBytes(data, size));
    const auto state = board.NewState();
    DiscusProcessDiscusMainBoardFile(*state);
    return 0;
}
