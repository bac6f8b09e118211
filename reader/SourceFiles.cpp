#include "reader/SourceFiles.h"

#include <algorithm>

#include "control/RoutineHandler.h"
#include "control/checking.h"
#include "platform/charset.h"
#include "platform/files.h"
#include "reader/SpecialCharacters.h"

namespace tessaly {

namespace {

constexpr std::u16string_view kNul(u"\0", 1);

std::u16string CharsetToUse(const ConversionState& state, std::u16string_view charset) {
    if (!charset.empty()) return std::u16string(charset);
    return state.Charset.empty() ? u"utf-8" : state.Charset;
}

void NoteUndecoded(const ConversionState& state, std::u16string_view path, std::u16string_view text) {
    if (!IsCheck(state)) return;
    const auto count = std::ranges::count(text, u'\uFFFD');
    if (count == 0) return;
    NoteFinding(state, FindingKind::kUndecodedCharacter, text, path, count);
}

}  // namespace

void GetFileDataCharset(ConversionState& state, std::u16string_view path, std::u16string& text,
                        std::u16string_view charset, bool findSequences) try {
    text.clear();
    text = platform::Decode(platform::ReadWholeFile(path), CharsetToUse(state, charset));
    NoteUndecoded(state, path, text);
    if (findSequences) DiscusFindSpecialCharacterSequences(state, text);
    RemoveAll(text, kNul);
    state.ToolboxA.KeepResponsive();
} catch (...) {
    RoutineHandler(state, u" - GetFileDataCharset() - " + std::u16string(path), CurrentError());
}

void GetFileDataANSI(ConversionState& state, std::u16string_view path, std::u16string& text,
                     bool findSequences) try {
    text.clear();
    text = platform::Decode(platform::ReadWholeFile(path), u"us-ascii");
    if (findSequences) {
        std::u16string copy = text;
        DiscusFindSpecialCharacterSequences(state, copy);
    }
    RemoveAll(text, kNul);
    state.ToolboxA.KeepResponsive();
} catch (...) {
    RoutineHandler(state, u" - GetFileDataANSI() - " + std::u16string(path), CurrentError());
}

}  // namespace tessaly
