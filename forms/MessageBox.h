#pragma once

#include <QMessageBox>

namespace tessaly {

// Shows a text in a box and waits for OK. The text is shown as it stands: what a board's page says is never
// taken for markup.
void ShowBox(QWidget* owner, QString text, QMessageBox::Icon icon = QMessageBox::NoIcon);

}  // namespace tessaly
