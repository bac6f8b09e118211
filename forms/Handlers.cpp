#include "forms/Handlers.h"

#include <QCoreApplication>

#include "forms/MessageBox.h"
#include "forms/text.h"
#include "text/RunTimeError.h"

namespace tessaly {

namespace {

constexpr int kAllWell = 0;
constexpr int kUntrapped = 3;

// Unwinds a run whose program is ending; no failure, so that no routine traps it.
struct ProgramEnds {};

QString FailureText(const RunTimeError& error, const QString& doing) {
    return QStringLiteral("Run-time error %1\n\n%2\n\nThis happened while %3. The program ends.")
        .arg(error.number)
        .arg(ToQt(error.description), doing);
}

}  // namespace

Handlers::Handlers(QWidget* owner) : owner_(owner) {
}

void Handlers::Run(const QString& doing, const std::function<void()>& handler) {
    if (failed_) return;
    ++running_;
    try {
        handler();
    } catch (const ProgramEnds&) {
        // The handler inside that failed has shown why.
    } catch (...) {
        const RunTimeError error = CurrentError();
        failed_ = true;
        ShowBox(owner_, FailureText(error, doing), QMessageBox::Critical);
    }
    --running_;
    EndIfIdle();
}

void Handlers::EndProgram() {
    ending_ = true;
    EndIfIdle();
}

void Handlers::LeaveAfterFailure() const {
    if (failed_) throw ProgramEnds();
}

void Handlers::EndIfIdle() const {
    if (running_ > 0) return;
    if (failed_) return QCoreApplication::exit(kUntrapped);
    if (ending_) QCoreApplication::exit(kAllWell);
}

}  // namespace tessaly
