#include "bench/BenchBoard.h"
#include "platform/TextStream.h"
#include "platform/charset.h"

namespace tessaly::bench {
namespace {

constexpr const char16_t* kGerman = u"Grüße aus Köln, wo die Möwen kreischen. ";
constexpr const char16_t* kJapanese = u"日本語の表示とソフトウェアの能力。";

std::u16string WithEvery(std::u16string_view piece, std::size_t distance) {
    std::u16string text = Page(20);
    for (std::size_t at = distance; at < text.size(); at += distance + piece.size()) text.insert(at, piece);
    return text;
}

std::string BytesOf(std::u16string_view text, std::u16string_view charset) {
    std::string bytes;
    platform::Encoder encoder(charset);
    encoder.Append(text, bytes);
    encoder.Finish(bytes);
    return bytes;
}

void DecodePage(benchmark::State& run, const char16_t* charset, const char16_t* piece) {
    const std::string bytes = BytesOf(WithEvery(piece, 500), charset);
    for (auto _ : run) benchmark::DoNotOptimize(platform::Decode(bytes, charset).size());
    run.SetBytesProcessed(run.iterations() * static_cast<std::int64_t>(bytes.size()));
}
BENCHMARK_CAPTURE(DecodePage, utf_8, u"utf-8", kGerman);
BENCHMARK_CAPTURE(DecodePage, utf_8_japanese, u"utf-8", kJapanese);
BENCHMARK_CAPTURE(DecodePage, iso_8859_1, u"iso-8859-1", kGerman);
BENCHMARK_CAPTURE(DecodePage, iso_8859_2, u"iso-8859-2", kGerman);
BENCHMARK_CAPTURE(DecodePage, shift_jis, u"shift-jis", kJapanese);
BENCHMARK_CAPTURE(DecodePage, big5, u"big5", u"中文");

void EncodePage(benchmark::State& run, const char16_t* charset, const char16_t* piece) {
    const std::u16string text = WithEvery(piece, 500);
    std::string bytes;
    for (auto _ : run) {
        bytes.clear();
        platform::Encoder encoder(charset);
        encoder.Append(text, bytes);
        encoder.Finish(bytes);
        benchmark::DoNotOptimize(bytes.data());
    }
    run.SetBytesProcessed(run.iterations() * static_cast<std::int64_t>(bytes.size()));
}
BENCHMARK_CAPTURE(EncodePage, utf_8, u"utf-8", kGerman);
BENCHMARK_CAPTURE(EncodePage, utf_8_japanese, u"utf-8", kJapanese);
BENCHMARK_CAPTURE(EncodePage, iso_8859_1, u"iso-8859-1", kGerman);
BENCHMARK_CAPTURE(EncodePage, shift_jis, u"shift-jis", kJapanese);

void WriteRows(benchmark::State& run, const char16_t* charset) {
    constexpr int kRows = 1000;
    const std::u16string row(PlainMessage());
    for (auto _ : run) {
        platform::TextStream stream(charset);
        for (int i = 0; i < kRows; ++i) stream.WriteLine(row);
    }
    CountCharacters(run, row.size() * kRows);
}
BENCHMARK_CAPTURE(WriteRows, utf_8, u"utf-8");
BENCHMARK_CAPTURE(WriteRows, iso_8859_1, u"iso-8859-1");

}  // namespace
}  // namespace tessaly::bench
