#include "forms/ProgressArea.h"

#include <QMetaObject>
#include <QTextCursor>

#include "forms/text.h"

namespace tessaly {

ProgressArea::ProgressArea(AreaField& field, QWidget* form) : QPlainTextEdit(form) {
    // The style's own frame loses its upper edge at 125 and 150 per cent.
    setFrameStyle(QFrame::Panel | QFrame::Sunken);
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setUndoRedoEnabled(false);
    setTabChangesFocus(true);
    // Deep topics are indented by many tabs.
    constexpr int kTabCharacters = 4;
    setTabStopDistance(kTabCharacters * fontMetrics().averageCharWidth());
    field.Appended = [this](std::u16string_view text) { Append(text); };
    field.Changed = [this, &field] { Replace(field.Text); };
    Replace(field.Text);
}

void ProgressArea::Append(std::u16string_view text) {
    gathered_ += QStringView(text);
    if (isAsked_) return;
    isAsked_ = true;
    QMetaObject::invokeMethod(
        this, [this] { ShowGathered(); }, Qt::QueuedConnection);
}

void ProgressArea::Replace(std::u16string_view text) {
    gathered_.clear();
    setPlainText(ToQt(text));
    moveCursor(QTextCursor::End);
}

void ProgressArea::ShowGathered() {
    isAsked_ = false;
    if (gathered_.isEmpty()) return;
    moveCursor(QTextCursor::End);
    textCursor().insertText(gathered_);
    moveCursor(QTextCursor::End);
    gathered_.clear();
}

}  // namespace tessaly
