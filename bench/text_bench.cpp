#include "bench/BenchBoard.h"
#include "reader/FieldEscaping.h"
#include "text/KeyedCollection.h"
#include "text/folding.h"
#include "text/numbers.h"
#include "text/search.h"
#include "text/split.h"

namespace tessaly::bench {
namespace {

void FindNothing(benchmark::State& run, std::u16string_view what) {
    const std::u16string page = Page(20);
    for (auto _ : run) benchmark::DoNotOptimize(Find(page, what));
    CountCharacters(run, page.size());
}
BENCHMARK_CAPTURE(FindNothing, tag, u"<!--Announcement-->");
BENCHMARK_CAPTURE(FindNothing, word, u"xylophone");
BENCHMARK_CAPTURE(FindNothing, one_unit, u"~");

void FindEach(benchmark::State& run, std::u16string_view what) {
    const std::u16string page = Page(20);
    for (auto _ : run) {
        for (Position at = Find(page, what); at != 0; at = Find(page, what, at + 1))
            benchmark::DoNotOptimize(at);
    }
    CountCharacters(run, page.size());
}
BENCHMARK_CAPTURE(FindEach, post, u"<!--Post: ");
BENCHMARK_CAPTURE(FindEach, tag, u"<");

void FindFromBehind(benchmark::State& run) {
    const std::u16string_view message = Message();
    for (auto _ : run) benchmark::DoNotOptimize(FindBackward(message, u"~"));
    CountCharacters(run, message.size());
}
BENCHMARK(FindFromBehind);

void Replace(benchmark::State& run, std::u16string_view what, std::u16string_view with) {
    const std::u16string page = Page(20);
    std::u16string text;
    for (auto _ : run) {
        text = page;
        ReplaceAll(text, what, with);
        benchmark::DoNotOptimize(text.data());
    }
    CountCharacters(run, page.size());
}
BENCHMARK_CAPTURE(Replace, nothing, u"KvMsgNo", u"1");
BENCHMARK_CAPTURE(Replace, few, u"<b>", u"[b]");
BENCHMARK_CAPTURE(Replace, many_to_longer, u",", u"([)");
BENCHMARK_CAPTURE(Replace, many_to_none, u"\"", u"");

void SplitLines(benchmark::State& run) {
    const std::u16string page = Page(20);
    for (auto _ : run) benchmark::DoNotOptimize(Split(page, u"\n").size());
    CountCharacters(run, page.size());
}
BENCHMARK(SplitLines);

void FoldMessage(benchmark::State& run) {
    const std::u16string_view message = Message();
    for (auto _ : run) benchmark::DoNotOptimize(Folded(message).size());
    CountCharacters(run, message.size());
}
BENCHMARK(FoldMessage);

void NumberToText(benchmark::State& run) {
    for (auto _ : run) benchmark::DoNotOptimize(ToText(1043846797).size());
}
BENCHMARK(NumberToText);

void TextToNumber(benchmark::State& run) {
    for (auto _ : run) benchmark::DoNotOptimize(ToInteger(u"1043846797"));
}
BENCHMARK(TextToNumber);

void EscapeMessage(benchmark::State& run) {
    const std::u16string_view message = PlainMessage();
    for (auto _ : run) benchmark::DoNotOptimize(EscapeField(message).size());
    CountCharacters(run, message.size());
}
BENCHMARK(EscapeMessage);

void EscapeName(benchmark::State& run) {
    for (auto _ : run) benchmark::DoNotOptimize(RemoveFieldTokens(EscapeField(u"Anna O'Virtanen")).size());
}
BENCHMARK(EscapeName);

std::u16string NameOf(std::int64_t number) {
    return u"Anna Virtanen " + ToText(number);
}

void AddKeys(benchmark::State& run) {
    for (auto _ : run) {
        KeyedCollection<std::int64_t> names;
        for (std::int64_t i = 0; i < run.range(0); ++i) names.Add(NameOf(i), i);
        benchmark::DoNotOptimize(names.Count());
    }
    run.SetItemsProcessed(run.iterations() * run.range(0));
}
BENCHMARK(AddKeys)->Arg(1000)->Arg(16000);

void FindKey(benchmark::State& run) {
    KeyedCollection<std::int64_t> names;
    for (std::int64_t i = 0; i < run.range(0); ++i) names.Add(NameOf(i), i);
    const std::u16string name = Folded(NameOf(run.range(0) / 2));
    for (auto _ : run) benchmark::DoNotOptimize(names.Find(name));
}
BENCHMARK(FindKey)->Arg(1000)->Arg(16000);

}  // namespace
}  // namespace tessaly::bench
