#pragma once

#include <QPlainTextEdit>

#include "control/FormFields.h"

namespace tessaly {

// The text box of the run's progress. Messages come by the thousand: they are gathered and put in with one
// repaint each time the run lets events through.
class ProgressArea : public QPlainTextEdit {
  public:
    ProgressArea(AreaField& field, QWidget* form);

  private:
    void Append(std::u16string_view text);
    void Replace(std::u16string_view text);
    void ShowGathered();

    QString gathered_;
    bool isAsked_ = false;
};

}  // namespace tessaly
