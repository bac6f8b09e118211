#include <QAction>
#include <QDesktopServices>
#include <QFile>
#include <QProgressDialog>
#include <QPushButton>
#include <QStatusBar>
#include <QTest>
#include <QUrl>

#include "tests/forms/OpenForm.h"

using tessaly::testing::OpenForm;

// Takes the page that would open in the browser.
class Browser : public QObject {
    Q_OBJECT

  public:
    Browser() { QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "Open"); }
    ~Browser() override {
        QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
        for (const QUrl& page : pages) QFile::remove(page.toLocalFile());
    }

    QString Text() const {
        QFile file(pages.last().toLocalFile());
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }

    QList<QUrl> pages;

  public slots:
    void Open(const QUrl& page) { pages << page; }
};

// Clicks Cancel in the box of a check when the check first lets events in.
class Canceller {
  public:
    explicit Canceller(QWidget& form) : form_(form) {
        QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { Look(); });
        timer_.start(0);
    }

    int clicks = 0;
    bool wasShown = false;

  private:
    void Look() {
        auto* const box = form_.findChild<QProgressDialog*>();
        if (box == nullptr || clicks > 0) return;
        ++clicks;
        wasShown = box->isVisible();
        QTest::mouseClick(box->findChild<QPushButton*>(), Qt::LeftButton);
    }

    QWidget& form_;
    QTimer timer_;
};

class CheckTest : public QObject {
    Q_OBJECT

  private slots:
    void standsInTheFileMenuBeforeExit();
    void opensThePageOfTheFieldsAsTheyStand();
    void tellsOfAFolderThatIsNotThere();
    void writesNothingAndLeavesTheFormAsItIs();
    void waitsUntilARunIsOver();
    void endsWithoutAReportWhenCancelIsClicked();
    void showsItsBoxBeforeItLetsEventsIn();
    void leavesTheFormReadyWhenItWasCancelled();
};

void CheckTest::standsInTheFileMenuBeforeExit() {
    OpenForm open;
    const QAction* const check = open.form.findChild<QAction*>(QStringLiteral("mnuCheck"));
    QVERIFY(check != nullptr);
    QCOMPARE(QString(check->text()).remove(QLatin1Char('&')), QStringLiteral("Check board\u2026"));
}

void CheckTest::opensThePageOfTheFieldsAsTheyStand() {
    const Browser browser;
    OpenForm open;
    open.WriteThreePages();
    open.Type("txtmybbForumAddr", QString());
    open.ClickMenu("mnuCheck");
    QCOMPARE(browser.pages.size(), 1);
    QVERIFY(browser.Text().startsWith(QStringLiteral("<!DOCTYPE html>")));
    QVERIFY(browser.Text().contains(QStringLiteral("mybb Forum Address must be filled in")));
    QVERIFY(browser.Text().contains(QStringLiteral("<dt>Posts</dt><dd>3</dd>")));
    QVERIFY(open.form.statusBar()->currentMessage().contains(browser.pages.first().toLocalFile()));
}

void CheckTest::tellsOfAFolderThatIsNotThere() {
    const Browser browser;
    OpenForm open;
    open.WriteThreePages();
    open.state.txtDiscusMessageFolder.SetText(open.board.folder.Path("nowhere"));
    open.ClickMenu("mnuCheck");
    QCOMPARE(browser.pages.size(), 1);
    QVERIFY(browser.Text().contains(QStringLiteral("Discus Message Folder Must Exist")));
    QVERIFY(browser.Text().contains(QStringLiteral("The board was not looked at.")));
    QVERIFY(!browser.Text().contains(QStringLiteral("was cancelled")));
}

void CheckTest::writesNothingAndLeavesTheFormAsItIs() {
    const Browser browser;
    OpenForm open;
    open.WriteThreePages();
    const auto before = open.board.folder.Files();
    const std::u16string area = open.state.txtArea.Text;
    open.ClickMenu("mnuCheck");
    QVERIFY(open.board.folder.Files() == before);
    QVERIFY(!open.board.folder.Exists("output"));
    QVERIFY(open.state.txtArea.Text == area);
    QCOMPARE(open.state.PostCounter, 0);
    QVERIFY(open.state.cmdConvert.Enabled);
    QVERIFY(open.boxes.texts.isEmpty());
}

void CheckTest::waitsUntilARunIsOver() {
    const Browser browser;
    OpenForm open;
    open.WriteThreePages();
    open.InTheMiddleOfARun([&open] { open.ClickMenu("mnuCheck"); });
    open.Click("cmdConvert");
    QVERIFY(browser.pages.isEmpty());
    open.ClickMenu("mnuCheck");
    QCOMPARE(browser.pages.size(), 1);
}

void CheckTest::endsWithoutAReportWhenCancelIsClicked() {
    const Browser browser;
    OpenForm open;
    open.WriteThreePages();
    const Canceller canceller(open.form);
    open.ClickMenu("mnuCheck");
    QCOMPARE(canceller.clicks, 1);
    QVERIFY(browser.pages.isEmpty());
    QVERIFY(open.form.statusBar()->currentMessage().isEmpty());
    QVERIFY(open.boxes.texts.isEmpty());
    QVERIFY(open.form.findChild<QProgressDialog*>() == nullptr);
}

// Nothing of the form behind it can be clicked meanwhile.
void CheckTest::showsItsBoxBeforeItLetsEventsIn() {
    const Browser browser;
    OpenForm open;
    open.WriteThreePages();
    const Canceller canceller(open.form);
    open.ClickMenu("mnuCheck");
    QVERIFY(canceller.wasShown);
}

void CheckTest::leavesTheFormReadyWhenItWasCancelled() {
    const Browser browser;
    OpenForm open;
    open.WriteThreePages();
    const Canceller canceller(open.form);
    open.ClickMenu("mnuCheck");
    QCOMPARE(canceller.clicks, 1);
    open.ClickMenu("mnuCheck");
    QCOMPARE(browser.pages.size(), 1);
    QVERIFY(browser.Text().contains(QStringLiteral("<dt>Posts</dt><dd>3</dd>")));
    open.Click("cmdConvert");
    QCOMPARE(open.state.PostCounter, 3);
    QCOMPARE(open.boxes.texts.size(), 1);
    QVERIFY(!open.boxes.texts.first().contains(QStringLiteral("Cancelled")));
}

QTEST_MAIN(CheckTest)

#include "Check_test.moc"
