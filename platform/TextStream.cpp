#include "platform/TextStream.h"

#include "platform/files.h"

namespace tessaly::platform {

namespace {

constexpr std::size_t kPieceSize = 1 << 20;

}  // namespace

void TextStream::WriteText(std::u16string_view text) {
    encoder_.Append(text, Piece());
}

void TextStream::WriteLine(std::u16string_view text) {
    std::string& piece = Piece();
    encoder_.Append(text, piece);
    encoder_.Append(u"\r\n", piece);
}

void TextStream::SaveToFile(std::u16string_view path) {
    encoder_.Finish(Piece());
    WriteWholeFile(path, pieces_);
}

std::string& TextStream::Piece() {
    if (!pieces_.empty() && pieces_.back().size() < kPieceSize) return pieces_.back();
    std::string& piece = pieces_.emplace_back();
    // Most texts are short; one that goes on fills its pieces.
    if (pieces_.size() > 1) piece.reserve(kPieceSize + kPieceSize / 16);
    return piece;
}

}  // namespace tessaly::platform
