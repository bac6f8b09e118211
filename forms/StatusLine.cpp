#include "forms/StatusLine.h"

#include <QLabel>
#include <QProgressBar>
#include <QStatusBar>
#include <algorithm>

#include "control/CountPages.h"
#include "control/troubledFiles.h"
#include "forms/text.h"
#include "platform/clock.h"
#include "platform/paths.h"

namespace tessaly {

namespace {

QString Duration(std::int64_t milliseconds) {
    const std::int64_t seconds = milliseconds / 1000;
    return QStringLiteral("%1:%2:%3")
        .arg(seconds / 3600)
        .arg(seconds / 60 % 60, 2, 10, QLatin1Char('0'))
        .arg(seconds % 60, 2, 10, QLatin1Char('0'));
}

QLabel* AddLabel(QStatusBar* bar, const QString& name) {
    auto* const label = new QLabel(bar);
    label->setObjectName(name);
    bar->addPermanentWidget(label);
    return label;
}

}  // namespace

StatusLine::StatusLine(const ConversionState& state, QStatusBar* bar)
    : state_(state), bar_(bar), pages_(new QProgressBar(bar)), trouble_(new QLabel(bar)) {
    pages_->setObjectName(QStringLiteral("statusPages"));
    pages_->setAccessibleName(QStringLiteral("Pages read"));
    pages_->setMaximum(1);
    pages_->setValue(0);
    pages_->setFormat(QString());
    bar->addWidget(pages_, 1);
    trouble_->setObjectName(QStringLiteral("statusTrouble"));
    trouble_->setTextFormat(Qt::PlainText);
    // A long path is cut off; it must not make the window wider.
    trouble_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    trouble_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    trouble_->hide();
    bar->addWidget(trouble_, 1);
    posts_ = AddLabel(bar, QStringLiteral("statusPosts"));
    elapsed_ = AddLabel(bar, QStringLiteral("statusElapsed"));
    remaining_ = AddLabel(bar, QStringLiteral("statusRemaining"));
}

void StatusLine::Begin() {
    // A note would stand over the bar.
    bar_->clearMessage();
    trouble_->hide();
    pages_->show();
    toRead_ = CountPages(state_);
    began_ = platform::SteadyMilliseconds();
    isRunning_ = true;
}

void StatusLine::Refresh() {
    constexpr std::int64_t kBetween = 100;
    if (platform::SteadyMilliseconds() - shown_ >= kBetween) Show();
}

void StatusLine::End() {
    isRunning_ = false;
    TellTroubledFiles();
}

// The first one stands in the line, the others in its tool tip.
void StatusLine::TellTroubledFiles() {
    const auto& files = state_.Progress.TroubledFiles;
    if (files.empty()) return;
    trouble_->setText(QStringLiteral("Files that could not be read or written: %1, beginning with %2")
                          .arg(files.size())
                          .arg(ToQt(platform::WithNativeSeparators(files.front()))));
    trouble_->setToolTip(ToQt(TroubledFilesText(state_)));
    pages_->hide();
    trouble_->show();
}

void StatusLine::Show() {
    if (!isRunning_) return;
    shown_ = platform::SteadyMilliseconds();
    const std::int64_t elapsed = shown_ - began_;
    const std::int64_t read = state_.Progress.PagesRead;
    // A page that two others lead to is read twice.
    const std::int64_t all = std::max({toRead_, read, std::int64_t{1}});
    pages_->setMaximum(static_cast<int>(all));
    pages_->setValue(static_cast<int>(read));
    pages_->setFormat(QStringLiteral("%1 of %2 pages read").arg(read).arg(std::max(toRead_, read)));
    posts_->setText(QStringLiteral("%1 posts").arg(state_.PostCounter));
    elapsed_->setText(QStringLiteral("%1 elapsed").arg(Duration(elapsed)));
    if (read > 0)
        remaining_->setText(QStringLiteral("%1 remaining").arg(Duration(elapsed * (all - read) / read)));
    if (!state_.Progress.SummaryShown) return;
    // How long the summary stands on the screen is no part of the run.
    remaining_->clear();
    isRunning_ = false;
}

}  // namespace tessaly
