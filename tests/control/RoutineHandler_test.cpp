#include "control/RoutineHandler.h"

#include <gtest/gtest.h>

#include <new>

namespace tessaly {
namespace {

TEST(RoutineHandler, RecordsAndShowsTheSameTextAndAsksTheRunToStop) {
    ConversionState state;
    std::vector<std::u16string> shown;
    state.ShowMessage = [&](std::u16string_view text) {
        EXPECT_EQ(state.ToolboxA.RecordedErrors.size(), 1u) << "recorded first";
        EXPECT_FALSE(state.CancelRequested) << "the run is asked to stop behind the box";
        shown.emplace_back(text);
    };
    RoutineHandler(state, u" - DisplayInfo()", {61, u"Disk full"});
    EXPECT_EQ(shown, (std::vector<std::u16string>{u"61 - DisplayInfo()\r\n\r\nDisk full"}));
    EXPECT_EQ(state.ToolboxA.RecordedErrors, shown);
    EXPECT_TRUE(state.CancelRequested);
    EXPECT_EQ(state.txtArea.Text, u"") << "a handler tells nothing in the area";
}

TEST(RoutineHandler, NamesMemoryThatRanOut) {
    try {
        throw std::bad_alloc();
    } catch (...) {
        const RunTimeError error = CurrentError();
        EXPECT_EQ(error.number, 7);
        EXPECT_EQ(error.description, u"Out of memory");
    }
}

}  // namespace
}  // namespace tessaly
