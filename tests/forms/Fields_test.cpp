#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

#include "forms/text.h"
#include "tests/forms/OpenForm.h"

using tessaly::testing::OpenForm;

namespace {

const QString kAdminMissing = QStringLiteral("Default Admin of your mybb database must be filled in");
const QString kGroupsMissing = QStringLiteral("Total Default Group of your mybb database must be filled in");

}  // namespace

// What typing, leaving a field and clicking a box do.
class Fields : public QObject {
    Q_OBJECT

  private slots:
    void typedTextIsTheFieldsTextAtOnce() {
        OpenForm open;
        open.Type("txtDiscusWebsite", QStringLiteral("http://a.example"));
        QCOMPARE(tessaly::ToQt(open.state.txtDiscusWebsite.Text), QStringLiteral("http://a.example"));
    }

    void aTypedOrPickedCharsetIsTheFieldsTextAtOnce() {
        OpenForm open;
        auto* const charset = open.Find<QComboBox>("cboCharset");
        charset->setFocus();
        charset->lineEdit()->selectAll();
        QTest::keyClicks(charset->lineEdit(), QStringLiteral("koi8-u"));
        QCOMPARE(tessaly::ToQt(open.state.cboCharset.Text), QStringLiteral("koi8-u"));
        charset->setCurrentIndex(2);
        QCOMPARE(tessaly::ToQt(open.state.cboCharset.Text), QStringLiteral("euc-jp"));
    }

    void leavingTheUsersTakesTheLeadingNumberAndSavesIt() {
        OpenForm open;
        open.TypeAndLeave("txtDefaultUsers", QStringLiteral("12 or so"));
        QCOMPARE(open.state.DefaultUserCount, 12);
        QCOMPARE(open.Setting("mybb_Users"), QStringLiteral("12"));
        QVERIFY(open.boxes.texts.isEmpty());
    }

    void leavingAnAddressStripsItsLastSlashAndSavesIt() {
        OpenForm open;
        open.TypeAndLeave("txtDiscusWebsite", QStringLiteral("http://a.example/"));
        QCOMPARE(open.Find<QLineEdit>("txtDiscusWebsite")->text(), QStringLiteral("http://a.example"));
        QCOMPARE(open.Setting("DiscusWebsite"), QStringLiteral("http://a.example"));
        open.TypeAndLeave("txtmybbForumAddr", QStringLiteral("http://b.example/"));
        QCOMPARE(open.Find<QLineEdit>("txtmybbForumAddr")->text(), QStringLiteral("http://b.example"));
        QCOMPARE(open.Setting("mybbForumAddr"), QStringLiteral("http://b.example"));
    }

    void leavingTheSplitSizeSavesItUnchecked() {
        OpenForm open;
        open.TypeAndLeave("txtSplitMBSize", QStringLiteral("abc"));
        QCOMPARE(open.Setting("SplitMBSize"), QStringLiteral("abc"));
        QVERIFY(open.boxes.texts.isEmpty());
    }

    void leavingTheOutputFolderLetsTheAttachmentsFolderFollow() {
        OpenForm open;
        open.TypeAndLeave("txtmybbOutputFolder", QStringLiteral("D:\\out"));
        QCOMPARE(open.Find<QLineEdit>("txtmybbAttachmentsFolder")->text(),
                 QStringLiteral("D:\\out\\Attachments\\"));
        QCOMPARE(open.Setting("mybb_OutputFolder"), QStringLiteral("D:\\out"));
    }

    void leavingTheRootPutsTheLiteralAdminFolderIntoTheFields() {
        OpenForm open;
        const QString root = tessaly::ToQt(open.board.folder.Path("source"));
        open.TypeAndLeave("txtDiscusRootFolder", root);
        QCOMPARE(open.Find<QLineEdit>("txtDiscusMessageFolder")->text(),
                 root + QStringLiteral("\\discus\\messages\\"));
        QCOMPARE(open.Find<QLineEdit>("txtDiscusMainFolder")->text(),
                 root + QStringLiteral("\\discus_admin_nnnnnnnnnn\\"));
        QCOMPARE(open.Find<QLineEdit>("txtDiscusSecureMessageFolder")->text(),
                 root + QStringLiteral("\\discus_admin_nnnnnnnnnn\\secure\\"));
    }

    void aRootThatIsNotThereIsToldOnceAndTheFocusMovesOn() {
        OpenForm open;
        open.TypeAndLeave("txtDiscusRootFolder", QStringLiteral("C:\\nowhere at all"));
        QCOMPARE(open.boxes.texts, QStringList(QStringLiteral("Discus Root Folder Must Exist!")));
        QCOMPARE(open.form.focusWidget(), open.Find<QWidget>("cmdBrowseRoot"));
    }

    void groupsOfZeroAreToldOnceAndTakeTheFocusBack() {
        OpenForm open;
        open.TypeAndLeave("txtDefaultGroups", QStringLiteral("0"));
        QCOMPARE(open.boxes.texts, QStringList(kGroupsMissing));
        QCOMPARE(open.form.focusWidget(), open.Find<QWidget>("txtDefaultGroups"));
        QCOMPARE(open.state.DefaultGroupCount, 0);
        open.TypeAndLeave("txtDefaultGroups", QStringLiteral("8"));
        QCOMPARE(open.boxes.texts.size(), 1);
        QCOMPARE(open.state.DefaultGroupCount, 8);
        QCOMPARE(open.form.focusWidget(), open.Find<QWidget>("cboProcessedFolders"));
    }

    void twoFieldsThatTakeTheFocusBackDoNotTrapTheOperator() {
        OpenForm open;
        open.Type("txtDefaultGroups", QStringLiteral("0"));
        auto* const admin = open.Find<QLineEdit>("txtDefaultAdmin");
        open.state.txtDefaultAdmin.SetText(u"");
        admin->setFocus();
        QCoreApplication::processEvents();
        QCOMPARE(open.boxes.texts, QStringList(kGroupsMissing));
        QCOMPARE(open.form.focusWidget(), open.Find<QWidget>("txtDefaultGroups"));
        // The blank name says nothing until it is left by the operator.
        open.TypeAndLeave("txtDefaultGroups", QStringLiteral("7"));
        admin->setFocus();
        QTest::keyClick(admin, Qt::Key_Tab);
        QCoreApplication::processEvents();
        QCOMPARE(open.boxes.texts, QStringList({kGroupsMissing, kAdminMissing}));
        QCOMPARE(open.form.focusWidget(), admin);
    }

    void anotherWindowInFrontDoesNotCountAsLeaving() {
        OpenForm open;
        open.Type("txtDefaultGroups", QStringLiteral("0"));
        QWidget other;
        other.show();
        other.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        open.form.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&open.form));
        QVERIFY(open.boxes.texts.isEmpty());
        QCOMPARE(open.state.DefaultGroupCount, 7);
    }

    void theOptionsDialogDoesNotCountAsLeaving() {
        OpenForm open;
        open.Type("txtDefaultGroups", QStringLiteral("0"));
        QTimer::singleShot(0, &open.form, [&open] { open.FindOption<QPushButton>("cmdOK")->click(); });
        open.ClickMenu("mnuOptions");
        QVERIFY(open.boxes.texts.isEmpty());
    }

    void aClickIsLostWhenTheFieldThatItLeavesHasSomethingToSay() {
        OpenForm open;
        open.WriteThreePages();
        open.Type("txtDefaultGroups", QStringLiteral("0"));
        open.Click("cmdConvert");
        QCOMPARE(open.boxes.texts, QStringList(kGroupsMissing));
        QVERIFY(!open.board.HasOutput("Log.txt"));
        QCOMPARE(open.form.focusWidget(), open.Find<QWidget>("txtDefaultGroups"));
    }

    void aClickByMnemonicChecksTheFieldThatItLeaves() {
        OpenForm open;
        open.Type("txtDefaultUsers", QStringLiteral("4"));
        int picked = 0;
        open.state.ToolboxA.PickFolder = [&](std::u16string_view) {
            picked = open.state.DefaultUserCount;
            return std::u16string();
        };
        open.Find<QPushButton>("cmdBrowseOutput")->click();
        QCOMPARE(picked, 4);
    }

    void aBlankAdminOnConvertIsToldOnceAndGivesTheButtonsBack() {
        OpenForm open;
        open.state.txtDefaultAdmin.SetText(u"  ");
        open.Click("cmdConvert");
        QCoreApplication::processEvents();
        QCOMPARE(open.boxes.texts, QStringList(kAdminMissing));
        QVERIFY(open.Find<QPushButton>("cmdConvert")->isEnabled());
        QVERIFY(!open.Find<QPushButton>("cmdCancel")->isEnabled());
        QCOMPARE(open.Find<QPlainTextEdit>("txtArea")->toPlainText(), QString());
        QCOMPARE(open.form.focusWidget(), open.Find<QWidget>("txtDefaultAdmin"));
    }

    void aBlankWebsiteOnConvertLeavesNoOtherRun() {
        OpenForm open;
        open.state.txtDiscusWebsite.SetText(u" ");
        open.Click("cmdConvert");
        QCOMPARE(open.boxes.texts, QStringList(QStringLiteral("Discus website must be filled in")));
        QVERIFY(!open.Find<QPushButton>("cmdConvert")->isEnabled());
        QVERIFY(open.Find<QPushButton>("cmdCancel")->isEnabled());
        open.Click("cmdCancel");
        QVERIFY(!open.Find<QPushButton>("cmdCancel")->isEnabled());
    }

    void aBlankForumAddressOnConvertLeavesNoOtherRun() {
        OpenForm open;
        open.state.txtmybbForumAddr.SetText(u"");
        open.Click("cmdConvert");
        QCOMPARE(open.boxes.texts, QStringList(QStringLiteral("mybb Forum Address must be filled in")));
        QVERIFY(!open.Find<QPushButton>("cmdConvert")->isEnabled());
    }

    void aClickOnAProgressBoxSetsItsOptionAndSavesIt() {
        OpenForm open;
        open.Click("chkShowProgress");
        QVERIFY(!open.state.optDisplay);
        QCOMPARE(open.Setting("Display"), QStringLiteral("0"));
        open.Click("chkShowProgress");
        QVERIFY(open.state.optDisplay);
        QCOMPARE(open.Setting("Display"), QStringLiteral("1"));
        open.Click("chkLogProgress");
        QVERIFY(!open.state.optLog);
        QCOMPARE(open.Setting("Log"), QStringLiteral("0"));
    }

    void aTextOfABoardIsNeverTakenForMarkup() {
        OpenForm open;
        Qt::TextFormat format = Qt::AutoText;
        open.boxes.whenOpen = [&format] {
            format = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())->textFormat();
        };
        open.state.ShowMessage(u"<b>bold</b> <img src=x>\r\nnext");
        QCOMPARE(format, Qt::PlainText);
        QCOMPARE(open.boxes.texts, QStringList(QStringLiteral("<b>bold</b> <img src=x>\nnext")));
    }

    void theAreaShowsWhatWasAppendedWithTheCaretAtItsEnd() {
        OpenForm open;
        auto* const area = open.Find<QPlainTextEdit>("txtArea");
        open.state.txtArea.SetText(u"one\r\n");
        open.state.txtArea.AppendText(u"<i>two</i>\r\n");
        open.state.txtArea.AppendText(u"three");
        QCoreApplication::processEvents();
        QCOMPARE(area->toPlainText(), QStringLiteral("one\n<i>two</i>\nthree"));
        QVERIFY(area->textCursor().atEnd());
        open.state.txtArea.AppendText(u"lost");
        open.state.txtArea.SetText(u"new");
        QCoreApplication::processEvents();
        QCOMPARE(area->toPlainText(), QStringLiteral("new"));
        QVERIFY(area->isReadOnly());
    }
};

QTEST_MAIN(Fields)
#include "Fields_test.moc"
