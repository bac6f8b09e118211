#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QStatusBar>
#include <QTest>
#include <QUrl>

#include "forms/text.h"
#include "platform/paths.h"
#include "tests/forms/OpenForm.h"

using tessaly::testing::ExitStatusOf;
using tessaly::testing::OpenForm;

namespace {

const QString kCancelled = QStringLiteral("Conversion Cancelled");

QString AreaText(OpenForm& open) {
    QCoreApplication::processEvents();
    return open.Find<QPlainTextEdit>("txtArea")->toPlainText();
}

}  // namespace

// Receives the address of a file that the program opens with another program.
class FileOpener : public QObject {
    Q_OBJECT

  public:
    FileOpener() { QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "Open"); }
    ~FileOpener() override { QDesktopServices::unsetUrlHandler(QStringLiteral("file")); }

    QList<QUrl> opened;

  public slots:
    void Open(const QUrl& url) { opened << url; }
};

// Picks a folder in the dialog that opens; backs out of it where none is given.
class FolderPicker {
  public:
    explicit FolderPicker(const QString& folder) {
        QObject::connect(&timer_, &QTimer::timeout, &timer_, [this, folder] {
            auto* const dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            if (dialog == nullptr) return;
            timer_.stop();
            openedOn = dialog->directory().absolutePath();
            if (folder.isEmpty()) return dialog->reject();
            dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(folder);
            QMetaObject::invokeMethod(dialog, "accept");
        });
        timer_.start(1);
    }

    QString openedOn;

  private:
    QTimer timer_;
};

// Counts how often a widget is painted.
class PaintCounter : public QObject {
  public:
    explicit PaintCounter(QWidget* widget) { widget->installEventFilter(this); }

    int count = 0;

  protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) ++count;
        return false;
    }
};

// Runs clicked through, and all that an operator can do during one.
class Run : public QObject {
    Q_OBJECT

  private slots:
    void aRunGoesFromTheClickToTheSummary() {
        OpenForm open;
        open.WriteThreePages();
        open.Click("cmdConvert");

        QCOMPARE(open.boxes.texts.size(), 1);
        QVERIFY(open.boxes.texts.first().startsWith(QStringLiteral("Conversion Start: ")));
        QCOMPARE(open.board.Rows("mybb_posts1.txt").size(), std::size_t{3});
        // The count as the last page was begun.
        QCOMPARE(open.Find<QLineEdit>("txtMsgCount")->text(), QStringLiteral("2"));
        const QString area = AreaText(open);
        QVERIFY(area.contains(QStringLiteral("Conversion Start Time: ")));
        QVERIFY(area.contains(open.boxes.texts.first().trimmed()));
        QCOMPARE(area,
                 tessaly::ToQt(open.state.txtArea.Text).replace(QLatin1String("\r\n"), QLatin1String("\n")));
        QVERIFY(open.Find<QPlainTextEdit>("txtArea")->textCursor().atEnd());
    }

    void theTopsDoneStandInTheListAndNoneIsPicked() {
        OpenForm open;
        open.WriteThreePages();
        open.Click("cmdConvert");
        const auto* const processed = open.Find<QComboBox>("cboProcessedFolders");
        QCOMPARE(processed->count(), 3);
        QCOMPARE(processed->itemText(0), QStringLiteral("12"));
        QCOMPARE(processed->itemText(2), QStringLiteral("14"));
        QCOMPARE(processed->currentIndex(), -1);
    }

    void duringARunOnlyCancelIsEnabledAndBehindItConvertHasTheFocus() {
        OpenForm open;
        open.WriteThreePages();
        bool wasConvertEnabled = true;
        bool wasCancelEnabled = false;
        open.InTheMiddleOfARun([&] {
            wasConvertEnabled = open.Find<QPushButton>("cmdConvert")->isEnabled();
            wasCancelEnabled = open.Find<QPushButton>("cmdCancel")->isEnabled();
        });
        open.Click("cmdConvert");
        QVERIFY(!wasConvertEnabled);
        QVERIFY(wasCancelEnabled);
        QVERIFY(open.Find<QPushButton>("cmdConvert")->isEnabled());
        QVERIFY(!open.Find<QPushButton>("cmdCancel")->isEnabled());
        QCOMPARE(open.form.focusWidget(), open.Find<QWidget>("cmdConvert"));
    }

    void duringARunAllElseStaysEnabled() {
        OpenForm open;
        open.WriteThreePages();
        QStringList disabled;
        open.InTheMiddleOfARun([&] {
            for (const char* const name :
                 {"cmdBrowseRoot", "cmdBrowseOutput", "cmdHelp", "txtDiscusRootFolder", "txtmybbOutputFolder",
                  "txtDefaultAdmin", "chkShowProgress", "cboCharset", "txtArea"}) {
                if (!open.Find<QWidget>(name)->isEnabled()) disabled << QString::fromLatin1(name);
            }
            for (const char* const name : {"mnuExit", "mnuOptions"}) {
                const auto* const entry = open.form.findChild<QAction*>(QString::fromLatin1(name));
                if (!entry->isEnabled()) disabled << QString::fromLatin1(name);
            }
        });
        open.Click("cmdConvert");
        QCOMPARE(disabled, QStringList());
    }

    void anOutputFolderPickedDuringARunIsDeletedAtOnceAndTheRunGoesOn() {
        OpenForm open;
        open.WriteThreePages();
        open.board.folder.Write("other/old.txt", "old");
        const std::u16string picked = open.board.folder.Path("other");
        open.state.ToolboxA.PickFolder = [&](std::u16string_view) { return picked; };
        bool wasThereBehindThePick = true;
        open.InTheMiddleOfARun([&] {
            open.Click("cmdBrowseOutput");
            wasThereBehindThePick = open.board.folder.Exists("other/old.txt");
        });
        open.Click("cmdConvert");
        QVERIFY(!wasThereBehindThePick);
        QCOMPARE(open.boxes.texts.size(), 1);
        QVERIFY(!open.boxes.texts.first().contains(kCancelled));
        // The files that were begun stay where they were begun.
        QCOMPARE(open.board.Rows("mybb_posts1.txt").size(), std::size_t{3});
    }

    void duringARunTheWindowIsPaintedAgainAndAgain() {
        OpenForm open;
        open.WriteThreePages();
        PaintCounter paints(open.Find<QPlainTextEdit>("txtArea")->viewport());
        int soFar = 0;
        open.InTheMiddleOfARun([&] { soFar = paints.count; });
        open.Click("cmdConvert");
        QVERIFY(soFar > 1);
        QVERIFY(paints.count > soFar);
    }

    void duringARunTheAreaShowsWhatHasBeenToldSoFar() {
        OpenForm open;
        open.WriteThreePages();
        QString shown;
        open.InTheMiddleOfARun([&] { shown = open.Find<QPlainTextEdit>("txtArea")->toPlainText(); });
        open.Click("cmdConvert");
        QVERIFY(shown.contains(QStringLiteral("Conversion Start Time: ")));
        QVERIFY(!shown.contains(QStringLiteral("Elapsed Time: ")));
    }

    void theRunDoesNotRunTheChecksOfFieldsThatNobodyLeft() {
        OpenForm open;
        open.WriteThreePages();
        const std::u16string secure = open.state.txtDiscusSecureMessageFolder.Text;
        open.Click("cmdConvert");
        open.Find<QWidget>("txtDefaultAdmin")->setFocus();
        QCoreApplication::processEvents();
        // The check of the root folder would put its literal text here.
        QCOMPARE(open.state.txtDiscusSecureMessageFolder.Text, secure);
    }

    void cancelInTheMiddleEndsTheRunWithItsBanner() {
        OpenForm open;
        open.WriteThreePages();
        bool wasCancelEnabled = true;
        open.InTheMiddleOfARun([&] {
            open.Click("cmdCancel");
            wasCancelEnabled = open.Find<QPushButton>("cmdCancel")->isEnabled();
        });
        open.Click("cmdConvert");
        QVERIFY(!wasCancelEnabled);
        QCOMPARE(open.boxes.texts.size(), 1);
        QVERIFY(open.boxes.texts.first().startsWith(QStringLiteral("\n\nConversion Cancelled\n\n")));
        QCOMPARE(open.board.Rows("mybb_posts1.txt").size(), std::size_t{1});
        QVERIFY(open.board.HasOutput("Discus Conversion Import SQL.sql"));
        QVERIFY(open.Find<QPushButton>("cmdConvert")->isEnabled());
        QVERIFY(!open.state.CancelRequested);
        QCOMPARE(open.form.cursor().shape(), Qt::ArrowCursor);
    }

    void aSecondRunStartsAfresh() {
        OpenForm open;
        open.WriteThreePages();
        open.InTheMiddleOfARun([&] { open.Click("cmdCancel"); });
        open.Click("cmdConvert");
        open.boxes.texts.clear();
        open.Click("cmdConvert");
        QCOMPARE(open.boxes.texts.size(), 1);
        QVERIFY(!open.boxes.texts.first().contains(kCancelled));
        QCOMPARE(open.board.Rows("mybb_posts1.txt").size(), std::size_t{3});
        QCOMPARE(open.Find<QLineEdit>("txtMsgCount")->text(), QStringLiteral("2"));
        // Two tops of the cancelled run and three of this one.
        QCOMPARE(open.Find<QComboBox>("cboProcessedFolders")->count(), 5);
        QVERIFY(!AreaText(open).contains(kCancelled));
    }

    void anOptionChangedDuringARunTakesEffectAtOnce() {
        OpenForm open;
        open.WriteThreePages();
        QTimer inTheDialog;
        inTheDialog.setSingleShot(true);
        connect(&inTheDialog, &QTimer::timeout, this, [&] {
            open.FindOption<QCheckBox>("chkCreateRedirectionFiles")->click();
            open.FindOption<QPushButton>("cmdOK")->click();
        });
        open.InTheMiddleOfARun([&] {
            inTheDialog.start(0);
            open.ClickMenu("mnuOptions");
        });
        open.Click("cmdConvert");
        QVERIFY(!open.state.optCreateRedirectionFiles);
        QCOMPARE(open.Setting("CreateRedirectionFiles"), QStringLiteral("0"));
        QCOMPARE(open.board.Rows("mybb_posts1.txt").size(), std::size_t{3});
    }

    void aFieldLeftDuringARunIsTakenOver() {
        OpenForm open;
        open.WriteThreePages();
        open.InTheMiddleOfARun([&] { open.TypeAndLeave("txtDefaultUsers", QStringLiteral("77")); });
        open.Click("cmdConvert");
        QCOMPARE(open.state.DefaultUserCount, 77);
        QCOMPARE(open.boxes.texts.size(), 1);
    }

    void exitDuringARunCancelsItShowsItsSummaryAndEndsTheProgram() {
        OpenForm open;
        open.WriteThreePages();
        bool wasVisibleBehind = true;
        open.boxes.whenOpen = [&] { wasVisibleBehind = open.form.isVisible(); };
        open.InTheMiddleOfARun([&] { open.ClickMenu("mnuExit"); });
        const int status = ExitStatusOf([&] { open.Click("cmdConvert"); });
        QCOMPARE(status, 0);
        QCOMPARE(open.boxes.texts.size(), 1);
        QVERIFY(open.boxes.texts.first().contains(kCancelled));
        QVERIFY(!wasVisibleBehind);
        QVERIFY(open.board.Rows("mybb_posts1.txt").size() < 3);
    }

    void closingTheWindowDuringARunLetsItGoToItsEnd() {
        OpenForm open;
        open.WriteThreePages();
        open.InTheMiddleOfARun([&] { open.form.close(); });
        const int status = ExitStatusOf([&] { open.Click("cmdConvert"); });
        QCOMPARE(status, 0);
        QVERIFY(open.form.isHidden());
        QCOMPARE(open.boxes.texts.size(), 1);
        QVERIFY(!open.boxes.texts.first().contains(kCancelled));
        QCOMPARE(open.board.Rows("mybb_posts1.txt").size(), std::size_t{3});
    }

    void closingTheIdleWindowEndsTheProgram() {
        OpenForm open;
        QCOMPARE(ExitStatusOf([&] { open.form.close(); }), 0);
        QVERIFY(open.form.isHidden());
        QVERIFY(!open.state.CancelRequested);
    }

    void exitWithNoRunEndsTheProgram() {
        OpenForm open;
        QCOMPARE(ExitStatusOf([&] { open.ClickMenu("mnuExit"); }), 0);
        QVERIFY(open.form.isHidden());
        QVERIFY(open.state.CancelRequested);
    }

    void closingTheWindowDoesNotCheckTheFieldInHand() {
        OpenForm open;
        open.Type("txtDefaultGroups", QStringLiteral("0"));
        QCOMPARE(ExitStatusOf([&] { open.form.close(); }), 0);
        QVERIFY(open.boxes.texts.isEmpty());
    }

    void aFailureThatNothingTrapsIsShownAndEndsTheProgramWithStatusThree() {
        OpenForm open;
        open.WriteThreePages();
        // So many megabytes are more bytes than a number holds.
        open.state.txtSplitMBSize.SetText(u"9999999");
        QCOMPARE(ExitStatusOf([&] { open.Click("cmdConvert"); }), 3);
        QCOMPARE(open.boxes.texts,
                 QStringList(QStringLiteral("Run-time error 6\n\nOverflow\n\nThis happened while converting "
                                            "the board. The program ends.")));
    }

    void aFailureOfAFieldDuringARunEndsTheRunWithoutItsSummary() {
        OpenForm open;
        open.WriteThreePages();
        open.InTheMiddleOfARun([&] { open.TypeAndLeave("txtDefaultUsers", QStringLiteral("99999999999")); });
        QCOMPARE(ExitStatusOf([&] { open.Click("cmdConvert"); }), 3);
        QCOMPARE(open.boxes.texts.size(), 1);
        QVERIFY(open.boxes.texts.first().startsWith(QStringLiteral(
            "Run-time error 6\n\nOverflow\n\nThis happened while checking and saving the field \"mybb "
            "Default Users\"")));
    }

    void aSplitSizeInTheSettingsThatIsNoNumberIsShownAndTheLoadFails() {
        tessaly::testing::TemporaryFolder folder;
        folder.Write("tessaly.ini", "[Settings]\r\nSplitMBSize=many\r\n");
        tessaly::testing::BoxReader boxes;
        tessaly::ConversionState state;
        state.ProgramFolder = folder.Path();
        state.ProgramName = u"tessaly";
        tessaly::frmConvert form(state);
        bool isLoaded = true;
        const int status = ExitStatusOf([&] { isLoaded = form.Load(); });
        QVERIFY(!isLoaded);
        QCOMPARE(status, 3);
        QCOMPARE(boxes.texts,
                 QStringList(QStringLiteral("Run-time error 13\n\nType mismatch\n\nThis happened while "
                                            "reading the settings. The program ends.")));
    }

    void aFileThatCouldNotBeWrittenIsNamedInTheStatusLineUntilTheNextRun() {
        OpenForm open;
        open.WriteThreePages();
        // A folder where the posts' file would go.
        open.InTheMiddleOfARun([&] { open.board.folder.MakeFolder("output/mybb_posts1.txt/in the way"); });
        open.Click("cmdConvert");
        const auto* const trouble = open.form.findChild<QLabel*>(QStringLiteral("statusTrouble"));
        QVERIFY(trouble->isVisible());
        QVERIFY(trouble->text().startsWith(QStringLiteral("Files that could not be read or written: ")));
        QVERIFY(trouble->text().endsWith(QStringLiteral("mybb_posts1.txt")));
        QVERIFY(trouble->toolTip().contains(QStringLiteral("Look for a full disk")));
        // Menus put their own notes into the line and take them away again.
        open.form.statusBar()->clearMessage();
        QVERIFY(trouble->isVisible());
        open.Click("cmdConvert");
        QVERIFY(trouble->isHidden());
        QVERIFY(open.form.findChild<QProgressBar*>(QStringLiteral("statusPages"))->isVisible());
    }

    void browsingForTheRootFillsItAndChecksIt() {
        OpenForm open;
        const std::u16string root = open.board.folder.Path("source");
        std::u16string start;
        open.state.ToolboxA.PickFolder = [&](std::u16string_view from) {
            start = from;
            return root;
        };
        open.Click("cmdBrowseRoot");
        QCOMPARE(tessaly::ToQt(start), tessaly::ToQt(root) + QLatin1Char('\\'));
        QCOMPARE(open.Find<QLineEdit>("txtDiscusRootFolder")->text(), tessaly::ToQt(root));
        QCOMPARE(open.Find<QLineEdit>("txtDiscusMainFolder")->text(),
                 tessaly::ToQt(root) + QStringLiteral("\\discus_admin_nnnnnnnnnn\\"));
    }

    void theFolderPickerOpensOnTheFieldAndGivesWhatIsPicked() {
        OpenForm open;
        open.board.folder.MakeFolder("elsewhere");
        FolderPicker picker(QString::fromStdU16String(open.board.folder.Native("elsewhere").u16string()));
        open.Click("cmdBrowseRoot");
        QCOMPARE(picker.openedOn, QString::fromStdU16String(open.board.folder.Native("source").u16string()));
        QCOMPARE(open.Find<QLineEdit>("txtDiscusRootFolder")->text(),
                 tessaly::ToQt(open.board.folder.Path("elsewhere")));
        QCOMPARE(open.Find<QLineEdit>("txtDiscusMessageFolder")->text(),
                 tessaly::ToQt(open.board.folder.Path("elsewhere")) + QStringLiteral("\\discus\\messages\\"));
    }

    void backingOutOfTheFolderPickerGivesNothing() {
        OpenForm open;
        open.board.folder.Write("output/old.txt", "old");
        FolderPicker picker{QString()};
        open.Click("cmdBrowseOutput");
        QCOMPARE(picker.openedOn, QString::fromStdU16String(open.board.folder.Native("output").u16string()));
        QVERIFY(open.board.folder.Exists("output/old.txt"));
    }

    void backingOutOfTheRootStillChecksWhatStandsThere() {
        OpenForm open;
        open.state.ToolboxA.PickFolder = [](std::u16string_view) { return std::u16string(); };
        open.state.txtDiscusRootFolder.SetText(u"");
        open.Click("cmdBrowseRoot");
        QCOMPARE(open.boxes.texts, QStringList(QStringLiteral("Discus Root Folder Must Be Filled In")));
    }

    void browsingForTheOutputDeletesTheFolderThatIsPicked() {
        OpenForm open;
        open.board.folder.Write("other/old.txt", "old");
        const std::u16string picked = open.board.folder.Path("other");
        open.state.ToolboxA.PickFolder = [&](std::u16string_view) { return picked; };
        open.Click("cmdBrowseOutput");
        QVERIFY(!open.board.folder.Exists("other/old.txt"));
        QVERIFY(open.board.folder.Exists("other/Attachments"));
        QCOMPARE(open.Find<QLineEdit>("txtmybbOutputFolder")->text(), tessaly::ToQt(picked));
        QVERIFY(AreaText(open).contains(QStringLiteral("Deleting Output Folders & Files - ")));
    }

    void backingOutOfTheOutputDoesNothing() {
        OpenForm open;
        open.state.ToolboxA.PickFolder = [](std::u16string_view) { return std::u16string(); };
        open.Click("cmdBrowseOutput");
        QCOMPARE(AreaText(open), QString());
        QVERIFY(open.boxes.texts.isEmpty());
        QCOMPARE(open.Find<QLineEdit>("txtmybbOutputFolder")->text(),
                 tessaly::ToQt(open.board.folder.Path("output")) + QLatin1Char('\\'));
    }

    void theDocumentationIsOpenedFromTheProgramsFolder() {
        OpenForm open;
        FileOpener opener;
        open.Click("cmdHelp");
        const QString file = QString::fromStdU16String(
            open.board.folder.Native("program/Docs/Tessaly Conversion.pdf").u16string());
        QCOMPARE(opener.opened, QList<QUrl>({QUrl::fromLocalFile(file)}));
    }

    void theDocumentationIsDeliveredUnderTheNameThatIsOpened() {
        OpenForm open;
        FileOpener opener;
        open.state.ProgramFolder =
            tessaly::platform::AbsolutePathText(std::filesystem::path(TESSALY_SOURCE_DIR));
        open.Click("cmdHelp");
        QFile manual(opener.opened.first().toLocalFile());
        QVERIFY(manual.open(QIODevice::ReadOnly));
        QCOMPARE(manual.read(5), QByteArray("%PDF-"));
    }

    void aRunTakesANoteOutOfTheStatusLine() {
        OpenForm open;
        open.WriteThreePages();
        open.form.statusBar()->showMessage(QStringLiteral("Settings are kept elsewhere"));
        open.Click("cmdConvert");
        QCOMPARE(open.form.statusBar()->currentMessage(), QString());
        QVERIFY(open.form.findChild<QProgressBar*>(QStringLiteral("statusPages"))->isVisible());
    }

    void theStatusLineCountsThePagesRead() {
        OpenForm open;
        open.WriteThreePages();
        // Nothing leads to this page, so it is counted and not read. The front page is no page.
        open.board.WriteSecurePage("40/40.html", "<html></html>");
        const auto* const pages = open.form.findChild<QProgressBar*>(QStringLiteral("statusPages"));
        const auto* const remaining = open.form.findChild<QLabel*>(QStringLiteral("statusRemaining"));
        QCOMPARE(pages->text(), QString());
        bool wasRemainingTold = false;
        open.InTheMiddleOfARun([&] {
            // The line is brought up to date beside a box.
            open.state.ShowMessage(u"Stop");
            wasRemainingTold = remaining->text().endsWith(QLatin1String(" remaining"));
        });
        QString besideTheSummary;
        open.boxes.whenOpen = [&] { besideTheSummary = pages->text() + remaining->text(); };
        open.Click("cmdConvert");
        QVERIFY(wasRemainingTold);
        QCOMPARE(besideTheSummary, QStringLiteral("3 of 4 pages read"));
        QCOMPARE(pages->text(), QStringLiteral("3 of 4 pages read"));
        QCOMPARE(pages->maximum(), 4);
        QCOMPARE(pages->value(), 3);
        const auto text = [&open](const char* name) {
            return open.form.findChild<QLabel*>(QString::fromLatin1(name))->text();
        };
        QCOMPARE(text("statusPosts"), QStringLiteral("3 posts"));
        QVERIFY(text("statusElapsed").endsWith(QStringLiteral(" elapsed")));
    }
};

QTEST_MAIN(Run)
#include "Run_test.moc"
