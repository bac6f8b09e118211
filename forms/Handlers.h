#pragma once

#include <QString>
#include <functional>

class QWidget;

namespace tessaly {

// Runs what the forms' events do. Events come in during a run, so one handler may run inside another. A
// failure that a handler lets pass is shown and ends the program with status 3.
class Handlers {
  public:
    explicit Handlers(QWidget* owner);

    // `doing` tells the operator what failed: "converting the board".
    void Run(const QString& doing, const std::function<void()>& handler);

    // Ends the program with status 0 once no handler runs any more.
    void EndProgram();

    // Leaves the handler in hand when one inside it has failed. Whoever handles events during a run calls it.
    void LeaveAfterFailure() const;

    bool HasFailed() const { return failed_; }

  private:
    void EndIfIdle() const;

    QWidget* owner_;
    int running_ = 0;
    bool ending_ = false;
    bool failed_ = false;
};

}  // namespace tessaly
