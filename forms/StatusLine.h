#pragma once

#include <cstdint>

#include "control/modDefinitions.h"

class QLabel;
class QProgressBar;
class QStatusBar;

namespace tessaly {

// The line below the area: how far the run is, how long it has taken and will take.
class StatusLine {
  public:
    StatusLine(const ConversionState& state, QStatusBar* bar);

    // A run begins: the pages of the message folders are counted.
    void Begin();

    // Brings the line up to date; Refresh leaves it alone when that was done just now.
    void Refresh();
    void Show();

    // The run has ended. Files that it could not read or write are named in place of the bar.
    void End();

  private:
    void TellTroubledFiles();

    const ConversionState& state_;
    QStatusBar* bar_;
    QProgressBar* pages_;
    QLabel* trouble_;
    QLabel* posts_;
    QLabel* elapsed_;
    QLabel* remaining_;
    bool isRunning_ = false;
    std::int64_t toRead_ = 0;
    std::int64_t began_ = 0;
    std::int64_t shown_ = 0;
};

}  // namespace tessaly
