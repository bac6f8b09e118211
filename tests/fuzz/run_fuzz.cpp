#include "control/cmdConvert.h"
#include "tests/fuzz/FuzzBoard.h"

// A whole run over a tiny board: board file, two pages and member file, parted by bytes 0xFF.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tessaly;
    const fuzzing::FuzzBoard& board = fuzzing::Board();
    const auto parts = fuzzing::Parts(fuzzing::AsBytes(data, size), 4);
    board.Write("source/discus/messages/board-topics.html", parts[0]);
    board.Write("source/discus/messages/1/1.html", parts[1]);
    board.Write("source/discus/messages/1/3.html", parts[2]);
    board.Write("source/discus_admin_1/users.txt", parts[3]);
    const auto state = board.NewState();
    IgnoringErrors([&] { cmdConvert_Click(*state); });
    return 0;
}
