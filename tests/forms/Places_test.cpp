#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSet>
#include <QTest>

#include "control/Settings.h"
#include "forms/text.h"
#include "tests/forms/OpenForm.h"

using tessaly::testing::OpenForm;

namespace {

// Where the widget stands on the form's area.
QRect PlaceOnForm(OpenForm& open, const QString& name) {
    auto* const area = open.Find<QWidget>("form");
    auto* const widget = open.Find<QWidget>(qPrintable(name));
    return {widget->mapTo(area, QPoint(0, 0)), widget->size()};
}

// The room that a widget's caption needs, measured as it is drawn.
QSize RoomOfText(const QWidget& widget, const QString& caption, bool isWrapped) {
    const int flags = Qt::TextShowMnemonic | (isWrapped ? Qt::TextWordWrap : Qt::TextSingleLine);
    return widget.fontMetrics().boundingRect(QRect(0, 0, widget.width(), 0), flags, caption).size();
}

// Another system font for the length of a test.
class SystemFont {
  public:
    explicit SystemFont(double points) {
        QFont font = usual_;
        font.setPointSizeF(points);
        QApplication::setFont(font);
    }
    ~SystemFont() { QApplication::setFont(usual_); }
    SystemFont(const SystemFont&) = delete;
    SystemFont& operator=(const SystemFont&) = delete;

  private:
    const QFont usual_ = QApplication::font();
};

bool Holds(const QWidget& widget, QSize room) {
    return widget.width() >= room.width() && widget.height() >= room.height();
}

// The first widget whose text does not fit; empty when all do.
QString FirstCutOff(const QWidget& form) {
    for (const auto* label : form.findChildren<QLabel*>()) {
        if (!Holds(*label, RoomOfText(*label, label->text(), label->wordWrap()))) return label->text();
    }
    for (const auto* button : form.findChildren<QAbstractButton*>()) {
        if (!Holds(*button, RoomOfText(*button, button->text(), false))) return button->text();
    }
    for (const auto* field : form.findChildren<QLineEdit*>()) {
        if (field->height() < field->fontMetrics().height()) return field->objectName();
    }
    return {};
}

QString WithoutMnemonic(QString caption) {
    return caption.remove(QLatin1Char('&'));
}

// The letter behind "&"; a null character when there is none.
QChar Mnemonic(const QString& caption) {
    const auto at = caption.indexOf(QLatin1Char('&'));
    return at < 0 ? QChar() : caption.at(at + 1).toUpper();
}

}  // namespace

// What the main form shows, and where, before anything is done.
class Places : public QObject {
    Q_OBJECT

  private slots:
    void everyWidgetStandsAtItsPlace_data() {
        QTest::addColumn<QRect>("place");
        // Twips divided by fifteen.
        QTest::newRow("txtDiscusRootFolder") << QRect(184, 0, 625, 25);
        QTest::newRow("txtDiscusMessageFolder") << QRect(184, 32, 625, 25);
        QTest::newRow("txtDiscusSecureMessageFolder") << QRect(184, 64, 625, 25);
        QTest::newRow("txtDiscusMainFolder") << QRect(184, 96, 625, 25);
        QTest::newRow("txtmybbOutputFolder") << QRect(184, 128, 625, 25);
        QTest::newRow("txtmybbAttachmentsFolder") << QRect(184, 160, 625, 25);
        QTest::newRow("txtDiscusWebsite") << QRect(184, 192, 625, 25);
        QTest::newRow("txtmybbForumAddr") << QRect(184, 224, 625, 25);
        QTest::newRow("txtDefaultGroups") << QRect(184, 256, 57, 25);
        QTest::newRow("cboProcessedFolders") << QRect(256, 256, 185, 21);
        QTest::newRow("txtMsgCount") << QRect(448, 256, 145, 25);
        QTest::newRow("txtSplitMBSize") << QRect(728, 256, 57, 25);
        QTest::newRow("txtArea") << QRect(8, 296, 1041, 377);
        QTest::newRow("cmdBrowseRoot") << QRect(808, 0, 25, 25);
        QTest::newRow("cmdBrowseOutput") << QRect(808, 128, 25, 25);
        QTest::newRow("cmdHelp") << QRect(856, 216, 169, 33);
        QTest::newRow("cmdConvert") << QRect(832, 256, 105, 35);
        QTest::newRow("cmdCancel") << QRect(944, 256, 105, 35);
        QTest::newRow("Frame1") << QRect(840, 0, 209, 209);
        // In the frame, whose corner is at 840, 0.
        QTest::newRow("txtDefaultAdmin") << QRect(856, 32, 185, 25);
        QTest::newRow("txtDefaultUsers") << QRect(856, 80, 57, 25);
        QTest::newRow("chkShowProgress") << QRect(856, 120, 177, 17);
        QTest::newRow("chkLogProgress") << QRect(856, 136, 185, 17);
        QTest::newRow("cboCharset") << QRect(920, 168, 113, 21);
    }

    void everyWidgetStandsAtItsPlace() {
        OpenForm open;
        QFETCH(QRect, place);
        QCOMPARE(PlaceOnForm(open, QString::fromLatin1(QTest::currentDataTag())), place);
    }

    void theFormsAreaHasItsFirstSize() {
        OpenForm open;
        QCOMPARE(open.Find<QWidget>("form")->size(), QSize(1061, 678));
    }

    void theAreaAndTheTextFieldsTakeWhatIsGained() {
        OpenForm open;
        open.form.resize(open.form.size() + QSize(200, 100));
        QTRY_COMPARE(open.Find<QWidget>("form")->size(), QSize(1261, 778));
        QCOMPARE(PlaceOnForm(open, QStringLiteral("txtDiscusWebsite")), QRect(184, 192, 825, 25));
        QCOMPARE(PlaceOnForm(open, QStringLiteral("txtArea")), QRect(8, 296, 1241, 477));
        QCOMPARE(PlaceOnForm(open, QStringLiteral("cmdConvert")), QRect(1032, 256, 105, 35));
        QCOMPARE(PlaceOnForm(open, QStringLiteral("txtDefaultAdmin")), QRect(1056, 32, 185, 25));
    }

    void onASmallScreenTheWindowCanBeMadeSmall() {
        OpenForm open;
        open.form.resize(640, 360);
        QTRY_COMPARE(open.form.size(), QSize(640, 360));
        // The form itself stays usable behind scroll bars.
        QVERIFY(open.Find<QLineEdit>("txtDiscusRootFolder")->width() >= 300);
        QVERIFY(open.Find<QWidget>("txtArea")->height() >= 80);
        QCOMPARE(FirstCutOff(*open.form.centralWidget()), QString());
    }

    void noTextIsCutOffAtAnySizeOfTheSystemsFont_data() {
        QTest::addColumn<double>("points");
        QTest::newRow("8") << 8.0;
        QTest::newRow("9") << 9.0;
        QTest::newRow("11") << 11.0;
        QTest::newRow("14") << 14.0;
        QTest::newRow("18") << 18.0;
        QTest::newRow("24") << 24.0;
    }

    void noTextIsCutOffAtAnySizeOfTheSystemsFont() {
        QFETCH(double, points);
        const SystemFont font(points);
        OpenForm open;
        open.Options()->show();
        QCOMPARE(FirstCutOff(*open.form.centralWidget()), QString());
        QCOMPARE(FirstCutOff(*open.Options()), QString());
        QVERIFY(open.Find<QLabel>("Label10")->font().pointSizeF() >= 9.75);
    }

    void aLargeSystemFontMakesTheCaptionsLargerToo() {
        const SystemFont font(22);
        OpenForm open;
        // Twice the 11 points that are usual at most, up to the rounding of fonts to pixels.
        QVERIFY(qAbs(open.Find<QLabel>("Label10")->font().pointSizeF() - 19.5) < 0.5);
        QVERIFY(open.Find<QLineEdit>("txtDiscusRootFolder")->height() > 25);
    }

    void theFacesAreHeavyAndOfTheirSizes() {
        OpenForm open;
        QVERIFY(open.Find<QLabel>("Label10")->font().bold());
        QCOMPARE(open.Find<QLabel>("Label10")->font().pointSizeF(), 9.75);
        QVERIFY(open.Find<QCheckBox>("chkShowProgress")->font().bold());
        QCOMPARE(open.Find<QCheckBox>("chkShowProgress")->font().pointSizeF(), 8.25);
        QVERIFY(open.Find<QPushButton>("cmdConvert")->font().bold());
        QCOMPARE(open.Find<QPushButton>("cmdConvert")->font().pointSizeF(), 14.25);
        QCOMPARE(open.Find<QPushButton>("cmdCancel")->font().pointSizeF(), 14.25);
    }

    void captionsStandAsTheyAre_data() {
        QTest::addColumn<QString>("caption");
        QTest::newRow("Label10") << QStringLiteral("Local Root:");
        QTest::newRow("Label5") << QStringLiteral("Discus Messages:");
        QTest::newRow("Label7") << QStringLiteral("Discus Secure:");
        QTest::newRow("Label6") << QStringLiteral("Discus Main:");
        QTest::newRow("Label8") << QStringLiteral("mybb Output:");
        QTest::newRow("Label9") << QStringLiteral("mybb Attachments:");
        QTest::newRow("lblDiscusWebsite") << QStringLiteral("Discus Website:");
        QTest::newRow("Label11") << QStringLiteral("mybb Forum Addr:");
        QTest::newRow("Label13") << QStringLiteral("Default User Groups:");
        QTest::newRow("Label12") << QStringLiteral("Max MB Size For Split Files");
        QTest::newRow("Label1") << QStringLiteral("mybb Default Admin");
        QTest::newRow("Label15") << QStringLiteral("mybb Default Users");
        QTest::newRow("Label14") << QStringLiteral("Charset:");
        QTest::newRow("chkShowProgress") << QStringLiteral("Show Progress");
        QTest::newRow("chkLogProgress") << QStringLiteral("Log Progress to File");
        QTest::newRow("cmdBrowseRoot") << QStringLiteral("...");
        QTest::newRow("cmdBrowseOutput") << QStringLiteral("...");
        QTest::newRow("cmdHelp") << QStringLiteral("View Documentation");
        QTest::newRow("cmdConvert") << QStringLiteral("Convert");
        QTest::newRow("cmdCancel") << QStringLiteral("Cancel");
    }

    void captionsStandAsTheyAre() {
        OpenForm open;
        QFETCH(QString, caption);
        const auto* const widget = open.Find<QWidget>(QTest::currentDataTag());
        QCOMPARE(WithoutMnemonic(widget->property("text").toString()), caption);
    }

    void theMenuHasFileWithExitAndOptions() {
        OpenForm open;
        QCOMPARE(WithoutMnemonic(open.form.findChild<QMenu*>(QStringLiteral("mnuFile"))->title()),
                 QStringLiteral("File"));
        QCOMPARE(WithoutMnemonic(open.form.findChild<QAction*>(QStringLiteral("mnuExit"))->text()),
                 QStringLiteral("Exit"));
        QCOMPARE(WithoutMnemonic(open.form.findChild<QAction*>(QStringLiteral("mnuOptions"))->text()),
                 QStringLiteral("Options"));
    }

    void noTwoWidgetsShareAMnemonic() {
        OpenForm open;
        QSet<QChar> taken;
        QStringList captions;
        for (const auto* action : open.form.menuBar()->actions()) captions << action->text();
        for (const auto* label : open.form.centralWidget()->findChildren<QLabel*>())
            captions << label->text();
        for (const auto* button : open.form.centralWidget()->findChildren<QAbstractButton*>())
            captions << button->text();
        for (const QString& caption : captions) {
            const QChar letter = Mnemonic(caption);
            if (letter.isNull()) continue;
            QVERIFY2(!taken.contains(letter), qPrintable(caption));
            taken.insert(letter);
        }
        QCOMPARE(taken.size(), 16);
    }

    void aMnemonicOfALabelLeadsToItsField() {
        OpenForm open;
        QTest::keyClick(&open.form, Qt::Key_W, Qt::AltModifier);
        QTRY_COMPARE(open.form.focusWidget(), open.Find<QWidget>("txtDiscusWebsite"));
    }

    void everyFieldHasAnAccessibleName_data() {
        QTest::addColumn<QString>("accessibleName");
        QTest::newRow("txtDiscusRootFolder") << QStringLiteral("Local Root");
        QTest::newRow("txtDiscusMessageFolder") << QStringLiteral("Discus Messages");
        QTest::newRow("txtDiscusSecureMessageFolder") << QStringLiteral("Discus Secure");
        QTest::newRow("txtDiscusMainFolder") << QStringLiteral("Discus Main");
        QTest::newRow("txtmybbOutputFolder") << QStringLiteral("mybb Output");
        QTest::newRow("txtmybbAttachmentsFolder") << QStringLiteral("mybb Attachments");
        QTest::newRow("txtDiscusWebsite") << QStringLiteral("Discus Website");
        QTest::newRow("txtmybbForumAddr") << QStringLiteral("mybb Forum Addr");
        QTest::newRow("txtDefaultGroups") << QStringLiteral("Default User Groups");
        QTest::newRow("cboProcessedFolders") << QStringLiteral("Processed folders");
        QTest::newRow("txtMsgCount") << QStringLiteral("Posts converted");
        QTest::newRow("txtSplitMBSize") << QStringLiteral("Max MB Size For Split Files");
        QTest::newRow("txtArea") << QStringLiteral("Progress");
        QTest::newRow("txtDefaultAdmin") << QStringLiteral("mybb Default Admin");
        QTest::newRow("txtDefaultUsers") << QStringLiteral("mybb Default Users");
        QTest::newRow("cboCharset") << QStringLiteral("Charset");
        QTest::newRow("cmdBrowseRoot") << QStringLiteral("Browse for Local Root");
        QTest::newRow("cmdBrowseOutput") << QStringLiteral("Browse for mybb Output");
    }

    void everyFieldHasAnAccessibleName() {
        OpenForm open;
        QFETCH(QString, accessibleName);
        QCOMPARE(open.Find<QWidget>(QTest::currentDataTag())->accessibleName(), accessibleName);
    }

    void theTabKeyGoesFromConvertThroughAllThatIsEnabled() {
        OpenForm open;
        const QStringList expected = {QStringLiteral("cmdConvert"),
                                      QStringLiteral("txtDiscusRootFolder"),
                                      QStringLiteral("cmdBrowseRoot"),
                                      QStringLiteral("txtmybbOutputFolder"),
                                      QStringLiteral("cmdBrowseOutput"),
                                      QStringLiteral("txtDiscusWebsite"),
                                      QStringLiteral("txtmybbForumAddr"),
                                      QStringLiteral("txtDefaultAdmin"),
                                      QStringLiteral("txtDefaultUsers"),
                                      QStringLiteral("chkShowProgress"),
                                      QStringLiteral("chkLogProgress"),
                                      QStringLiteral("cboCharset"),
                                      QStringLiteral("cmdHelp"),
                                      QStringLiteral("txtDefaultGroups"),
                                      QStringLiteral("cboProcessedFolders"),
                                      QStringLiteral("txtSplitMBSize"),
                                      QStringLiteral("txtArea"),
                                      QStringLiteral("cmdConvert")};
        QStringList visited;
        while (visited.size() < expected.size()) {
            visited << open.form.focusWidget()->objectName();
            QTest::keyClick(open.form.focusWidget(), Qt::Key_Tab);
        }
        QCOMPARE(visited, expected);
    }

    void beforeAnySettingIsReadTheDesignsTextsStand() {
        tessaly::ConversionState state;
        tessaly::frmConvert form(state);
        const auto text = [&form](const char* name) {
            return form.findChild<QLineEdit*>(QString::fromLatin1(name))->text();
        };
        QCOMPARE(text("txtDiscusRootFolder"), QStringLiteral("C:\\Discusware"));
        QCOMPARE(text("txtDiscusMessageFolder"), QStringLiteral("C:\\Discusware\\discus\\messages"));
        QCOMPARE(text("txtDiscusSecureMessageFolder"),
                 QStringLiteral("C:\\Discusware\\discus_admin_nnnnnnnnnn\\secure"));
        QCOMPARE(text("txtDiscusMainFolder"), QStringLiteral("C:\\Discusware\\discus_admin_nnnnnnnnnn"));
        QCOMPARE(text("txtmybbOutputFolder"), QStringLiteral("C:\\Discusware\\phpBB3\\Output\\"));
        QCOMPARE(text("txtmybbAttachmentsFolder"),
                 QStringLiteral("C:\\Discusware\\phpBB3\\Output\\attachments"));
        QCOMPARE(text("txtDefaultGroups"), QStringLiteral("8"));
        QCOMPARE(text("txtMsgCount"), QStringLiteral("0"));
        QCOMPARE(text("txtSplitMBSize"), QStringLiteral("50"));
        QCOMPARE(text("txtDiscusWebsite"), QString());
        QCOMPARE(form.windowTitle(), QStringLiteral("Tessaly"));
    }

    void theLoadFillsTheFieldsFromTheSettings() {
        tessaly::testing::TemporaryFolder folder;
        folder.Write("tessaly.ini",
                     "[Settings]\r\nDiscusWebsite=http://old.example/\r\nDisplay=0\r\n"
                     "mybb_Groups=9\r\nCreateHiddenTopics=0\r\nCharset=big5\r\n");
        tessaly::ConversionState state;
        state.ProgramFolder = folder.Path();
        state.ProgramName = u"tessaly.exe";
        tessaly::frmConvert form(state);
        QVERIFY(form.Load());
        const auto text = [&form](const char* name) {
            return form.findChild<QLineEdit*>(QString::fromLatin1(name))->text();
        };
        QCOMPARE(form.windowTitle(), QStringLiteral("Tessaly - Version " TESSALY_VERSION));
        QCOMPARE(text("txtDiscusWebsite"), QStringLiteral("http://old.example"));
        QCOMPARE(text("txtDefaultGroups"), QStringLiteral("9"));
        QCOMPARE(text("txtDefaultUsers"), QStringLiteral("0"));
        QCOMPARE(text("txtDiscusRootFolder"), QStringLiteral("C:\\Discusware\\"));
        QCOMPARE(text("txtmybbOutputFolder"), QStringLiteral("C:\\Discusware\\mybb\\Output\\"));
        const auto isTicked = [&form](const char* name) {
            return form.findChild<QCheckBox*>(QString::fromLatin1(name))->isChecked();
        };
        QVERIFY(!isTicked("chkShowProgress"));
        QVERIFY(isTicked("chkLogProgress"));
        QVERIFY(!isTicked("chkCreateHiddenTopics"));
        QVERIFY(isTicked("chkCreateAttachments"));
        QCOMPARE(form.findChild<QComboBox*>(QStringLiteral("cboCharset"))->currentText(),
                 QStringLiteral("big5"));
    }

    void theFoldersThatFollowAndTheCountAreDisabled() {
        OpenForm open;
        for (const char* const name : {"txtDiscusMessageFolder", "txtDiscusSecureMessageFolder",
                                       "txtDiscusMainFolder", "txtmybbAttachmentsFolder", "txtMsgCount"}) {
            QVERIFY2(!open.Find<QLineEdit>(name)->isEnabled(), name);
        }
        for (const char* const name :
             {"txtDiscusRootFolder", "txtmybbOutputFolder", "txtDiscusWebsite", "txtmybbForumAddr",
              "txtDefaultGroups", "txtSplitMBSize", "txtDefaultAdmin", "txtDefaultUsers"}) {
            QVERIFY2(open.Find<QLineEdit>(name)->isEnabled(), name);
        }
    }

    void atTheStartConvertIsEnabledHasTheFocusAndCancelIsDisabled() {
        OpenForm open;
        QVERIFY(open.Find<QPushButton>("cmdConvert")->isEnabled());
        QVERIFY(!open.Find<QPushButton>("cmdCancel")->isEnabled());
        QCOMPARE(open.form.focusWidget(), open.Find<QWidget>("cmdConvert"));
    }

    void theCharsetsOnOfferStandInTheirOrder() {
        OpenForm open;
        const auto* const charset = open.Find<QComboBox>("cboCharset");
        QStringList names;
        for (int at = 0; at < charset->count(); ++at) names << charset->itemText(at);
        const QString expected = QStringLiteral(
            ",big5,euc-jp,euc-kr,gb2312,iso-2022-jp,iso-2022-kr,iso-8859-1,iso-8859-2,iso-8859-3,iso-8859-4,"
            "iso-8859-5,iso-8859-6,iso-8859-7,iso-8859-8,iso-8859-9,koi8-r,shift-jis,us-ascii,utf-7,utf-8");
        QCOMPARE(names.join(QLatin1Char(',')), expected);
        QVERIFY(charset->isEditable());
    }
};

QTEST_MAIN(Places)
#include "Places_test.moc"
