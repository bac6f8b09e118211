#pragma once

#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>
#include <string_view>

#include "control/modDefinitions.h"

namespace tessaly::bench {

// The HTML of one message of some 1,600 characters: plain sentences for the most part, with a share of the
// markup, links and sequences that messages hold.
std::u16string_view Message();

// The same after the sequences were exchanged and the tags removed.
std::u16string_view PlainMessage();

// A page with that many posts of Message.
std::u16string Page(int posts);

// The state of a run in its middle, with options on and nothing shown or logged. The message folder holds
// 3\manual.pdf and the pages 3\3.html and 3\110.html; all lies in a temporary folder of its own.
class BenchBoard {
  public:
    BenchBoard();
    ~BenchBoard();
    BenchBoard(const BenchBoard&) = delete;
    BenchBoard& operator=(const BenchBoard&) = delete;

    // Lets go of the rows so far, so that memory stays as small as it is in a run.
    void DropRows();

    ConversionState state;

  private:
    std::filesystem::path folder_;
};

// Tells the rate at which a text of that many characters was worked through.
inline void CountCharacters(benchmark::State& run, std::size_t characters) {
    run.SetBytesProcessed(run.iterations() * static_cast<std::int64_t>(characters * sizeof(char16_t)));
}

}  // namespace tessaly::bench
