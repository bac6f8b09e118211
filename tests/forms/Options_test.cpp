#include <QAbstractButton>
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QTabWidget>
#include <QTest>
#include <algorithm>

#include "tests/forms/OpenForm.h"

using tessaly::testing::OpenForm;

namespace {

// Opens the dialog from the menu, lets something happen in it, and comes back when it is hidden.
void WithDialogOpen(OpenForm& open, const std::function<void()>& events) {
    QTimer::singleShot(0, &open.form, [&] {
        tessaly::testing::WaitUntilActive(open.Options());
        events();
    });
    open.ClickMenu("mnuOptions");
}

}  // namespace

// The dialog of the four options.
class Options : public QObject {
    Q_OBJECT

  private slots:
    void everyWidgetStandsAtItsPlace_data() {
        QTest::addColumn<QRect>("place");
        QTest::newRow("tbsOptions") << QRect(7, 8, 393, 283);
        QTest::newRow("picOptions") << QRect(14, 32, 379, 252);
        // On the panel, whose corner is at 14, 32.
        QTest::newRow("Label1") << QRect(46, 40, 305, 41);
        QTest::newRow("frame1") << QRect(38, 80, 313, 190);
        // In the frame, whose corner is at 38, 80.
        QTest::newRow("chkCreateAttachments") << QRect(46, 119, 273, 25);
        QTest::newRow("chkCreateHiddenTopics") << QRect(46, 143, 281, 25);
        QTest::newRow("chkCreateRedirectionFiles") << QRect(46, 167, 281, 25);
        QTest::newRow("chkFindDiscusSpecialCharacters") << QRect(46, 192, 249, 25);
        QTest::newRow("cmdOK") << QRect(166, 297, 73, 25);
        QTest::newRow("cmdCancel") << QRect(248, 297, 73, 25);
        QTest::newRow("cmdApply") << QRect(328, 297, 73, 25);
    }

    void everyWidgetStandsAtItsPlace() {
        OpenForm open;
        open.Options()->show();
        QFETCH(QRect, place);
        const auto* const widget = open.FindOption<QWidget>(QTest::currentDataTag());
        QCOMPARE(QRect(widget->mapTo(open.Options(), QPoint(0, 0)), widget->size()), place);
        QCOMPARE(open.Options()->size(), QSize(410, 328));
    }

    void captionsAndToolTipsStandAsTheyAre_data() {
        QTest::addColumn<QString>("caption");
        QTest::addColumn<QString>("toolTip");
        QTest::newRow("chkCreateAttachments")
            << QStringLiteral("Create Attachment Files") << QStringLiteral("Create SMF Attachement files");
        QTest::newRow("chkCreateHiddenTopics")
            << QStringLiteral("Create Hidden Topics")
            << QStringLiteral("Create SMF Topics from Discus Hidden Topics");
        QTest::newRow("chkCreateRedirectionFiles")
            << QStringLiteral("Create Discus Redirection Files")
            << QStringLiteral("Create Discus Redirection files that redirect to SMF Forum");
        QTest::newRow("chkFindDiscusSpecialCharacters")
            << QStringLiteral("Find Discus Special Characters")
            << QStringLiteral("Search Discus HTML Files for Discus Special Character Sequences");
        QTest::newRow("cmdOK") << QStringLiteral("OK") << QString();
        QTest::newRow("cmdCancel") << QStringLiteral("Cancel") << QString();
        QTest::newRow("cmdApply") << QStringLiteral("Apply") << QString();
        QTest::newRow("Label1") << QStringLiteral(
                                       "All selection here will dramatically increase conversion time and "
                                       "should only be used when absolutely needed.")
                                << QString();
    }

    void captionsAndToolTipsStandAsTheyAre() {
        OpenForm open;
        QFETCH(QString, caption);
        QFETCH(QString, toolTip);
        const auto* const widget = open.FindOption<QWidget>(QTest::currentDataTag());
        QCOMPARE(widget->property("text").toString().remove(QLatin1Char('&')), caption);
        QCOMPARE(widget->toolTip(), toolTip);
    }

    void noTwoWidgetsShareAMnemonic() {
        OpenForm open;
        QString letters;
        for (const auto* button : open.Options()->findChildren<QAbstractButton*>()) {
            const auto at = button->text().indexOf(QLatin1Char('&'));
            if (at >= 0) letters += button->text().at(at + 1).toUpper();
        }
        std::sort(letters.begin(), letters.end());
        QCOMPARE(letters, QStringLiteral("ACFHORY"));
    }

    void theDialogIsCalledOptionsAndHasOneTab() {
        OpenForm open;
        QCOMPARE(open.Options()->windowTitle(), QStringLiteral("Options"));
        const auto* const tabs = open.FindOption<QTabWidget>("tbsOptions");
        QCOMPARE(tabs->count(), 1);
        QCOMPARE(tabs->tabText(0), QStringLiteral("Files"));
        QCOMPARE(tabs->tabToolTip(0), QStringLiteral("Set Options File Creation"));
    }

    void theDialogIsCentredOnTheScreenAndHiddenAtTheStart() {
        OpenForm open;
        const QSize screen = open.Options()->screen()->size();
        QVERIFY(open.Options()->isHidden());
        QPoint place;
        WithDialogOpen(open, [&] {
            place = open.Options()->pos();
            open.FindOption<QPushButton>("cmdOK")->click();
        });
        QCOMPARE(place, QPoint((screen.width() - 410) / 2, (screen.height() - 328) / 2));
    }

    void theDialogIsModal() {
        OpenForm open;
        QWidget* modal = nullptr;
        WithDialogOpen(open, [&] {
            modal = QApplication::activeModalWidget();
            open.FindOption<QPushButton>("cmdOK")->click();
        });
        QCOMPARE(modal, open.Options());
        QVERIFY(open.Options()->isHidden());
    }

    void eachBoxIsTickedAtTheStartSetsItsOptionAtItsClickAndSavesIt() {
        OpenForm open;
        const struct {
            const char* name;
            const char* key;
            bool& option;
        } boxes[] = {
            {"chkCreateAttachments", "CreateAttachments", open.state.optCreateAttachments},
            {"chkCreateHiddenTopics", "CreateHiddenTopics", open.state.optCreateHiddenTopics},
            {"chkCreateRedirectionFiles", "CreateRedirectionFiles", open.state.optCreateRedirectionFiles},
            {"chkFindDiscusSpecialCharacters", "FindDiscusSpecialCharacters",
             open.state.optFindDiscusSpecialCharacters},
        };
        for (const auto& box : boxes) {
            auto* const widget = open.FindOption<QCheckBox>(box.name);
            QVERIFY2(widget->isChecked(), box.name);
            QVERIFY2(box.option, box.name);
            widget->click();
            QVERIFY2(!box.option, box.name);
            QCOMPARE(open.Setting(box.key), QStringLiteral("0"));
            widget->click();
            QVERIFY2(box.option, box.name);
            QCOMPARE(open.Setting(box.key), QStringLiteral("1"));
        }
    }

    void cancelHidesTheDialogAndUndoesNothing() {
        OpenForm open;
        WithDialogOpen(open, [&] {
            open.FindOption<QCheckBox>("chkCreateHiddenTopics")->click();
            QTest::mouseClick(open.FindOption<QPushButton>("cmdCancel"), Qt::LeftButton);
        });
        QVERIFY(open.Options()->isHidden());
        QVERIFY(!open.state.optCreateHiddenTopics);
        QCOMPARE(open.Setting("CreateHiddenTopics"), QStringLiteral("0"));
    }

    void theEscapeKeyHidesTheDialog() {
        OpenForm open;
        WithDialogOpen(open, [&] { QTest::keyClick(open.Options(), Qt::Key_Escape); });
        QVERIFY(open.Options()->isHidden());
        QVERIFY(open.form.isVisible());
    }

    void applyDoesNothing() {
        OpenForm open;
        bool isOpen = false;
        WithDialogOpen(open, [&] {
            QTest::mouseClick(open.FindOption<QPushButton>("cmdApply"), Qt::LeftButton);
            isOpen = open.Options()->isVisible();
            open.FindOption<QPushButton>("cmdOK")->click();
        });
        QVERIFY(isOpen);
    }

    void controlTabGoesFromTheLastTabToTheFirst() {
        OpenForm open;
        auto* const tabs = open.FindOption<QTabWidget>("tbsOptions");
        tabs->addTab(new QWidget(tabs), QStringLiteral("More"));
        QList<int> selected;
        QList<bool> panelShown;
        WithDialogOpen(open, [&] {
            for (int press = 0; press < 2; ++press) {
                QTest::keyClick(open.Options(), Qt::Key_Tab, Qt::ControlModifier);
                selected << tabs->currentIndex();
                panelShown << open.FindOption<QWidget>("picOptions")->isVisible();
            }
            open.FindOption<QPushButton>("cmdOK")->click();
        });
        QCOMPARE(selected, QList<int>({1, 0}));
        QCOMPARE(panelShown, QList<bool>({false, true}));
    }
};

QTEST_MAIN(Options)
#include "Options_test.moc"
