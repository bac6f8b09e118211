#include "bench/BenchBoard.h"
#include "control/DisplayInfo.h"
#include "members/clsMember.h"
#include "members/clsTblUsers.h"
#include "members/modMembers.h"
#include "output/clsTblPosts.h"
#include "reader/SpecialCharacters.h"
#include "reader/TagScanning.h"
#include "text/numbers.h"
#include "text/split.h"
#include "translate/DiscusProcessFormatting.h"
#include "translate/DiscusProcessLinks.h"
#include "translate/modAttachments.h"
#include "translate/modImages.h"
#include "translate/modMessages.h"

namespace tessaly::bench {
namespace {

// Rows in memory are dropped after so many rounds.
constexpr int kRoundsBetweenDrops = 1000;

// Must stay below 5 ns: it stands in the tightest loops.
void KeepResponsiveWhenNothingIsDue(benchmark::State& run) {
    ToolboxLibrary toolbox;
    toolbox.HandleEvents = [] {};
    for (auto _ : run) {
        toolbox.KeepResponsive();
        benchmark::ClobberMemory();
    }
}
BENCHMARK(KeepResponsiveWhenNothingIsDue);

void TellNothing(benchmark::State& run) {
    BenchBoard board;
    for (auto _ : run) DisplayInfo(board.state, u"Processing Post for - Diary\r\n", false, false, false);
}
BENCHMARK(TellNothing);

void TellInArea(benchmark::State& run) {
    BenchBoard board;
    board.state.optDisplay = true;
    for (auto _ : run) DisplayInfo(board.state, u"Processing Post for - Diary\r\n", false, false, false);
}
BENCHMARK(TellInArea);

void FindSections(benchmark::State& run) {
    BenchBoard board;
    const std::u16string page = Page(20);
    for (auto _ : run) {
        Position at = 1;
        Position next = 1;
        while (!ExtractTagSection(board.state, page, u"<!--Text-->", u"<!--/Text-->", at, next).empty())
            at = next;
    }
    CountCharacters(run, page.size());
}
BENCHMARK(FindSections);

void ReadTopicInfo(benchmark::State& run) {
    BenchBoard board;
    const std::u16string page = Page(20);
    std::u16string topic;
    std::u16string me;
    std::u16string number;
    for (auto _ : run) GetTopicInfo(board.state, page, topic, me, number);
}
BENCHMARK(ReadTopicInfo);

void RemoveTagsOfMessage(benchmark::State& run) {
    BenchBoard board;
    for (auto _ : run) benchmark::DoNotOptimize(RemoveTagInformation(board.state, Message()).size());
    CountCharacters(run, Message().size());
}
BENCHMARK(RemoveTagsOfMessage);

void RemoveTagsOfPage(benchmark::State& run) {
    BenchBoard board;
    const std::u16string page = Page(20);
    for (auto _ : run) benchmark::DoNotOptimize(RemoveTagInformation(board.state, page).size());
    CountCharacters(run, page.size());
}
BENCHMARK(RemoveTagsOfPage);

void ExchangeSequences(benchmark::State& run) {
    BenchBoard board;
    const std::u16string page = Page(20);
    std::u16string text;
    for (auto _ : run) {
        text = page;
        DiscusFindSpecialCharacterSequences(board.state, text);
        benchmark::DoNotOptimize(text.data());
    }
    CountCharacters(run, page.size());
}
BENCHMARK(ExchangeSequences);

void ExchangeNoSequences(benchmark::State& run) {
    BenchBoard board;
    std::u16string text(PlainMessage());
    for (auto _ : run) DiscusFindSpecialCharacterSequences(board.state, text);
    CountCharacters(run, text.size());
}
BENCHMARK(ExchangeNoSequences);

void ExchangeUnknownSequences(benchmark::State& run) {
    BenchBoard board;
    std::u16string text;
    for (int i = 0; i < 2000; ++i) text += u"&u" + ToText(1'000'000 + i % 500) + u"; word ";
    for (auto _ : run) DiscusFindSpecialCharacterSequences(board.state, text);
    CountCharacters(run, text.size());
}
BENCHMARK(ExchangeUnknownSequences);

void FormatMessage(benchmark::State& run) {
    BenchBoard board;
    for (auto _ : run)
        benchmark::DoNotOptimize(DiscusProcessFormatting(board.state, std::u16string(Message())).size());
    CountCharacters(run, Message().size());
}
BENCHMARK(FormatMessage);

void FormatPlainMessage(benchmark::State& run) {
    BenchBoard board;
    for (auto _ : run)
        benchmark::DoNotOptimize(DiscusProcessFormatting(board.state, std::u16string(PlainMessage())).size());
    CountCharacters(run, PlainMessage().size());
}
BENCHMARK(FormatPlainMessage);

void PairNestedFonts(benchmark::State& run) {
    BenchBoard board;
    std::u16string text;
    for (std::int64_t i = 0; i < run.range(0); ++i) text += u"<font size=2>";
    for (std::int64_t i = 0; i < run.range(0); ++i) text += u"</font>";
    std::vector<TagPair> pairs;
    for (auto _ : run) PairFontTags(board.state, text, u"<font ", u"</font>", pairs);
    CountCharacters(run, text.size());
}
BENCHMARK(PairNestedFonts)->Arg(10)->Arg(10'000);

void ProcessLinks(benchmark::State& run, std::u16string_view text) {
    BenchBoard board;
    std::u16string body;
    int rounds = 0;
    for (auto _ : run) {
        body = text;
        benchmark::DoNotOptimize(DiscusProcessLinks(board.state, body, 1, 2).size());
        if (++rounds % kRoundsBetweenDrops == 0) board.DropRows();
    }
    CountCharacters(run, text.size());
}
BENCHMARK_CAPTURE(ProcessLinks, one_to_a_topic, Message());
BENCHMARK_CAPTURE(ProcessLinks, none, PlainMessage());

void ProcessImagesOfMessage(benchmark::State& run) {
    BenchBoard board;
    for (auto _ : run) benchmark::DoNotOptimize(ProcessImages(board.state, Message()).size());
    CountCharacters(run, Message().size());
}
BENCHMARK(ProcessImagesOfMessage);

void TakeAttachment(benchmark::State& run) {
    BenchBoard board;
    const std::u16string text =
        std::u16string(Message()) +
        u"<!--attachment:1--><a href=\"http://old.example/discus/messages/3/manual.pdf\" target=_blank>manual"
        u"</a><!--/attachment-->";
    std::u16string body;
    for (auto _ : run) {
        body = text;
        ProcessAttachments(board.state, body, 2);
        board.DropRows();
        // The same file again, so that the folder does not fill.
        board.state.AttachmentCounter = 0;
    }
}
BENCHMARK(TakeAttachment);

void RenderPost(benchmark::State& run) {
    clsTblPosts post;
    post.subject = u"Diary";
    post.username = u"Anna Virtanen";
    post.message = PlainMessage();
    std::u16string row;
    for (auto _ : run) {
        post.BuildString(row);
        benchmark::DoNotOptimize(row.data());
    }
    CountCharacters(run, row.size());
}
BENCHMARK(RenderPost);

void RenderUser(benchmark::State& run) {
    const clsTblUsers user;
    std::u16string row;
    for (auto _ : run) {
        user.BuildString(row);
        benchmark::DoNotOptimize(row.data());
    }
}
BENCHMARK(RenderUser);

void AddMembers(benchmark::State& run, bool isOneName) {
    BenchBoard board;
    ConversionState& state = board.state;
    for (auto _ : run) {
        state.MembersById = {};
        state.MembersByRealName = {};
        state.MembersByUserName = {};
        state.RealNames = {};
        for (std::int64_t i = 0; i < run.range(0); ++i) {
            const std::u16string name = isOneName ? u"Anna" : u"Anna " + ToText(i);
            const std::u16string line =
                u"anna" + ToText(i) + u":pw:a@b.example:" + name + u":::1:10.0.0.1:2::";
            DiscusAddMember(state, Split(line, u":"));
        }
    }
    run.SetItemsProcessed(run.iterations() * run.range(0));
}
BENCHMARK_CAPTURE(AddMembers, names_of_their_own, false)->Arg(1000)->Arg(16'000);
BENCHMARK_CAPTURE(AddMembers, one_name, true)->Arg(1000)->Arg(16'000);

void PostsOfPage(benchmark::State& run) {
    BenchBoard board;
    const std::u16string page = Page(20);
    const std::u16string path = board.state.DiscusMessageFolder + u"3\\110.html";
    for (auto _ : run) {
        DiscusProcessPostsOnPage(board.state, path, u"Title", u"Topic", u"Me", u"Subject", 2, 0, 0, page);
        board.DropRows();
    }
    if (board.state.CancelRequested) run.SkipWithError("the page was not taken");
    CountCharacters(run, page.size());
}
BENCHMARK(PostsOfPage);

}  // namespace
}  // namespace tessaly::bench
