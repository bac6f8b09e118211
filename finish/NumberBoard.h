#pragma once

#include "finish/Board.h"

namespace tessaly {

// Gives the threads and forums that stay their new numbers, once all posts are read. Pages that were forums
// of one thread are folded into the forum above. Throws FinishError when the forums are too many.
void NumberBoard(Board& board);

// Counts threads and posts of the forums and finds their last thread, once the threads' posts are counted.
void CountForums(Board& board);

}  // namespace tessaly
