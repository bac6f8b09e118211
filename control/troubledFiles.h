#pragma once

#include <string_view>

#include "control/modDefinitions.h"

namespace tessaly {

// Runs one step that reads or writes a file. When it fails, the file is noted for whoever shows the run,
// since most handlers tell the routine and not the file; the failure passes on.
template <typename Step>
void WithFile(ConversionState& state, std::u16string_view path, Step&& step) {
    try {
        step();
    } catch (...) {
        state.Progress.TroubledFiles.emplace_back(path);
        throw;
    }
}

// What to tell the operator about them behind the summary; empty when all files were read and written.
std::u16string TroubledFilesText(const ConversionState& state);

}  // namespace tessaly
