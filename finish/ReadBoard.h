#pragma once

#include "finish/Board.h"
#include "finish/MessageText.h"

namespace tessaly {

// Go through the import files of one kind each and make the board's index, in this order. All throw
// FinishError.
void ReadMembers(Board& board);
void ReadForums(Board& board);
void ReadThreads(Board& board);
void ReadAttachments(Board& board);
void ReadLinks(Board& board);
void ReadPosts(Board& board);

// Lists the links whose target was not converted.
void ListDeadLinks(Board& board);

// The address of what a page of the old board has become, none when it was not converted.
std::optional<std::u16string> AddressOfPage(const Board& board, const PageKey& page);

// The address that a link of the old board gets, none when it stays.
std::optional<std::u16string> NewAddressOf(const Board& board, std::u16string_view oldAddress);

// The place of the thread of a post's row.
std::size_t ThreadOfRow(const Board& board, std::int32_t pid, const PageKey& page);

// Which page and which post of it the key in a post's `editreason` names.
struct Origin {
    PageKey page;
    std::uint64_t post = 0;
};
Origin OriginOf(std::u16string_view editreason);

// What is put behind a post's message for its attachments.
std::u16string AttachmentTags(const Board& board, std::int32_t oldPid);

// The most bytes that a message of the forum's table takes.
inline constexpr std::size_t kMostMessageBytes = 65535;

// A message that may be too long for one post, in as many pieces as it gets numbers. Its links still have
// their old addresses, and each piece has room for the new ones; the first for `room` more bytes.
MessagePieces PiecesOfMessage(const Board& board, std::u16string_view message, std::size_t room);

}  // namespace tessaly
