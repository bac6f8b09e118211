#pragma once

#include <cstdint>

#include "control/modDefinitions.h"

namespace tessaly {

// One line on the terminal that tells how far the run is.
class ProgressLine {
  public:
    // Counts the .html files below the two message folders.
    explicit ProgressLine(const ConversionState& state);

    void Show();

    // Empties the line, so that other text can stand there.
    void Clear() const;

  private:
    const ConversionState& state_;
    std::int64_t pages_;
    std::int64_t started_;
    std::int64_t shown_ = 0;
};

}  // namespace tessaly
