#include "forms/MessageBox.h"

namespace tessaly {

void ShowBox(QWidget* owner, QString text, QMessageBox::Icon icon) {
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    // A window that has gone cannot hold a box.
    QWidget* const parent = owner != nullptr && owner->isVisible() ? owner : nullptr;
    QMessageBox box(icon, QStringLiteral("Tessaly"), QString(), QMessageBox::Ok, parent);
    box.setTextFormat(Qt::PlainText);
    box.setText(text);
    box.exec();
}

}  // namespace tessaly
