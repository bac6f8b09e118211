#pragma once

#include <QStringList>
#include <QTimer>
#include <QWidget>
#include <functional>

#include "forms/frmConvert.h"
#include "forms/frmOptions.h"
#include "tests/support/TestBoard.h"

namespace tessaly::testing {

// Reads each message box and presses its OK.
class BoxReader {
  public:
    BoxReader();

    QStringList texts;
    // Called with each box before OK is pressed.
    std::function<void()> whenOpen;

  private:
    void Look();

    QTimer timer_;
};

// Brings a window to the front: without that no key and no change of focus reaches it.
void WaitUntilActive(QWidget* window);

// The main form on the screen, over a small board that is ready to convert. The board's state has been
// loaded; events are let in at every turn.
class OpenForm {
  public:
    OpenForm();

    // A board of three tops, 12 to 14, each a page with one post.
    void WriteThreePages();

    // A widget of the main form, of the options form, or an entry of the menu.
    template <typename Widget>
    Widget* Find(const char* name) {
        auto* const found = form.centralWidget()->findChild<Widget*>(QString::fromLatin1(name));
        Q_ASSERT(found != nullptr);
        return found;
    }
    template <typename Widget>
    Widget* FindOption(const char* name) {
        auto* const found = Options()->findChild<Widget*>(QString::fromLatin1(name));
        Q_ASSERT(found != nullptr);
        return found;
    }
    frmOptions* Options();
    void ClickMenu(const char* name);

    void Click(const char* name);
    // Puts the cursor into a field, replaces its text by typing, moves on with the Tab key.
    void Type(const char* name, const QString& text);
    void TypeAndLeave(const char* name, const QString& text);

    // Happens while the second of the three pages is in hand, when the run next lets events in.
    void InTheMiddleOfARun(std::function<void()> event);

    // The value of a key of the settings file; "(none)" when it is not there.
    QString Setting(const char* key) const;

    TestBoard board;
    ConversionState& state = board.state;
    BoxReader boxes;
    frmConvert form{board.state};

  private:
    bool isMiddleOver_ = false;
};

// Lets the events happen within the program's own loop; gives its exit status.
int ExitStatusOf(const std::function<void()>& events);

}  // namespace tessaly::testing
