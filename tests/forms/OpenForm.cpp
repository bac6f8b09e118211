#include "tests/forms/OpenForm.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QTest>

#include "forms/text.h"

namespace tessaly::testing {

BoxReader::BoxReader() {
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { Look(); });
    timer_.start(1);
}

void BoxReader::Look() {
    auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr) return;
    texts << box->text();
    if (whenOpen) whenOpen();
    box->button(QMessageBox::Ok)->click();
}

void WaitUntilActive(QWidget* window) {
    window->activateWindow();
    const bool isActive = QTest::qWaitFor([window] { return QApplication::activeWindow() == window; });
    if (!isActive) qFatal("the window does not become active");
}

OpenForm::OpenForm() {
    QApplication::setQuitOnLastWindowClosed(false);
    state.ToolboxA.EventInterval = 0;
    form.show();
    WaitUntilActive(&form);
}

void OpenForm::WriteThreePages() {
    board.WriteBoardFile(BoardFile("Main", {12, 13, 14}));
    for (const char* const page : {"12", "13", "14"}) {
        const std::string name = page;
        board.WritePage(name + "/" + name + ".html",
                        PageHead(name + "/Radios", name + "/Radios", "Radios", "Old radios") +
                            Post(5, "Anna", "1043846797", "Hello"));
    }
}

frmOptions* OpenForm::Options() {
    return static_cast<frmOptions*>(form.findChild<QDialog*>(QStringLiteral("frmOptions")));
}

void OpenForm::ClickMenu(const char* name) {
    form.findChild<QAction*>(QString::fromLatin1(name))->trigger();
}

void OpenForm::Click(const char* name) {
    QTest::mouseClick(Find<QWidget>(name), Qt::LeftButton);
}

void OpenForm::Type(const char* name, const QString& text) {
    auto* const field = Find<QLineEdit>(name);
    WaitUntilActive(&form);
    field->setFocus();
    field->selectAll();
    QTest::keyClick(field, Qt::Key_Delete);
    QTest::keyClicks(field, text);
}

void OpenForm::TypeAndLeave(const char* name, const QString& text) {
    Type(name, text);
    QTest::keyClick(Find<QLineEdit>(name), Qt::Key_Tab);
    QCoreApplication::processEvents();
}

void OpenForm::InTheMiddleOfARun(std::function<void()> event) {
    QObject::connect(Find<QLineEdit>("txtMsgCount"), &QLineEdit::textChanged, &form,
                     [this, event = std::move(event)](const QString& count) {
                         if (count != QLatin1String("1") || isMiddleOver_) return;
                         isMiddleOver_ = true;
                         QMetaObject::invokeMethod(&form, event, Qt::QueuedConnection);
                     });
}

QString OpenForm::Setting(const char* key) const {
    return ToQt(
        state.ToolboxA.ReadIniValue(u"Settings", FromQt(QString::fromLatin1(key)), u"(none)", state.IniFile));
}

int ExitStatusOf(const std::function<void()>& events) {
    QTimer::singleShot(0, events);
    return QApplication::exec();
}

}  // namespace tessaly::testing
