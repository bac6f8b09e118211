#include "translate/modImages.h"

#include "control/checking.h"
#include "reader/TagScanning.h"

namespace tessaly {

namespace {

constexpr std::u16string_view kImage = u"<img src=";

bool IsLocal(std::u16string_view source) {
    return Contains(source, u"/discus/messages/") || Contains(source, u"/secure/");
}

// All that are left behind but the one that failed.
void NoteLostImages(const ConversionState& state, std::u16string_view text, Position failed) {
    constexpr std::u16string_view kTag = u"<img ";
    for (Position at = Find(text, kTag); at != 0; at = Find(text, kTag, at + 1)) {
        const Position end = Find(text, u">", at);
        if (end == 0) break;
        const std::u16string_view tag = Between(text, at, end + 1);
        NotePart(state, tag);
        if (at == failed) continue;
        NoteFinding(state, IsLocal(tag) ? FindingKind::kFurtherImage : FindingKind::kImageElsewhere, tag);
    }
    NotePart(state, {});
}

}  // namespace

std::u16string ProcessImages(ConversionState& state, std::u16string_view text) {
    Position tag = Find(text, kImage);
    if (tag == 0) return std::u16string(text);
    Position behindTag = 1;
    ExtractTagSection(state, text, kImage, u">", tag, behindTag);
    // The next " alt=" may lie behind the end of the tag: the source then runs on to there.
    std::u16string source(FirstTagSection(state, text, kImage, u" alt="));
    if (!IsLocal(source)) return std::u16string(text);
    RemoveAll(source, u"<img src=\"");
    const std::u16string_view address = Between(source, 1, Find(source, u"\""));
    NotePart(state, Between(text, tag, behindTag));
    std::u16string translated(Between(text, 1, tag));
    translated += u"[img]";
    translated += address;
    translated += u"[/img]";
    translated += From(text, behindTag);
    return translated;
}

std::u16string TranslateImages(ConversionState& state, std::u16string_view label, std::u16string text) {
    const bool isProcessed = GoingOnInCheck(state, label, [&] { text = ProcessImages(state, text); });
    if (IsCheck(state)) NoteLostImages(state, text, isProcessed ? 0 : Find(text, kImage));
    return text;
}

}  // namespace tessaly
