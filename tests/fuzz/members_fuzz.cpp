#include "members/modMembers.h"
#include "members/mybbWriteGroupsFile.h"
#include "members/mybbWriteUserFile.h"
#include "tests/fuzz/FuzzBoard.h"

// One member file, and the rows made from it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tessaly;
    const fuzzing::FuzzBoard& board = fuzzing::Board();
    board.Write("source/discus_admin_1/users.txt", fuzzing::AsBytes(data, size));
    const auto state = board.NewState();
    DiscusReadUserFile(*state);
    mybbWriteGroupsFile(*state);
    mybbWriteUserFile(*state);
    return 0;
}
