#include <QProcess>
#include <QRegularExpression>
#include <QTest>

#include "tests/support/TemporaryFolder.h"

using tessaly::testing::TemporaryFolder;

namespace {

constexpr int kWrongUsage = 2;
constexpr int kNoScreen = 3;

struct Outcome {
    int status;
    QString output;
    QString errors;
};

QProcessEnvironment WithoutScreen() {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
    environment.remove(QStringLiteral("DISPLAY"));
    environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
    return environment;
}

Outcome Start(const QStringList& arguments, const QProcessEnvironment& environment) {
    QProcess program;
    program.setProcessEnvironment(environment);
    program.start(QStringLiteral(TESSALY_PROGRAM), arguments);
    if (!program.waitForFinished()) qFatal("the program does not end");
    return {program.exitCode(), QString::fromUtf8(program.readAllStandardOutput()),
            QString::fromUtf8(program.readAllStandardError())};
}

QString Native(const TemporaryFolder& folder, const char* name) {
    return QString::fromStdU16String(folder.Native(name).u16string());
}

const char* const kPointer =
    "tessaly finds no screen for its window. tessaly-cli does the same work without one.\n";

// A value that the load writes back in its plain form, so that a settings file tells whether it was read.
const char* const kToBeRewritten = "[Settings]\nDisplay=01\n";

bool WasRead(const TemporaryFolder& folder, const char* name) {
    return QString::fromStdString(folder.Read(name))
        .contains(QRegularExpression(QStringLiteral("Display=1\\s")));
}

}  // namespace

// The program as it is called.
class Program : public QObject {
    Q_OBJECT

  private slots:
    void helpAndVersionNeedNoScreen() {
        const Outcome help = Start({QStringLiteral("--help")}, WithoutScreen());
        QCOMPARE(help.status, 0);
        for (const char* const option : {"--help", "--version", "--program-folder <DIR>", "--ini <FILE>"}) {
            QVERIFY2(help.output.contains(QLatin1String(option)), option);
        }
        const Outcome version = Start({QStringLiteral("--version")}, WithoutScreen());
        QCOMPARE(version.status, 0);
        QCOMPARE(version.output.trimmed(), QStringLiteral("tessaly " TESSALY_VERSION));
    }

    void withoutAScreenItPointsAtTheCommandLine() {
        const Outcome outcome = Start({}, WithoutScreen());
        QCOMPARE(outcome.status, kNoScreen);
        QCOMPARE(outcome.errors, QString::fromLatin1(kPointer));
        QVERIFY(outcome.output.isEmpty());
    }

    void aScreenThatDoesNotAnswerIsNamedBefore() {
        QProcessEnvironment environment = WithoutScreen();
        environment.insert(QStringLiteral("DISPLAY"), QStringLiteral("nowhere:77"));
        const Outcome outcome = Start({}, environment);
        QCOMPARE(outcome.status, kNoScreen);
        QVERIFY(outcome.errors.contains(QStringLiteral("nowhere:77")));
        QVERIFY(outcome.errors.endsWith(QString::fromLatin1(kPointer)));
    }

    void whatItDoesNotKnowIsWrongUsage() {
        const QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        const Outcome option = Start({QStringLiteral("--colour")}, environment);
        QCOMPARE(option.status, kWrongUsage);
        QVERIFY(option.errors.contains(QStringLiteral("colour")));
        QVERIFY(option.errors.contains(QStringLiteral("--program-folder")));
        const Outcome word = Start({QStringLiteral("board")}, environment);
        QCOMPARE(word.status, kWrongUsage);
        QVERIFY(word.errors.contains(QStringLiteral("--program-folder")));
    }

    void theSettingsFileIsTheOneThatIsNamed() {
        const TemporaryFolder folder;
        folder.Write("my.ini", kToBeRewritten);
        folder.Write("program/tessaly.ini", kToBeRewritten);
        QProcess program;
        program.start(QStringLiteral(TESSALY_PROGRAM),
                      {QStringLiteral("--program-folder"), Native(folder, "program"), QStringLiteral("--ini"),
                       Native(folder, "my.ini")});
        QTRY_VERIFY(WasRead(folder, "my.ini"));
        QVERIFY(!WasRead(folder, "program/tessaly.ini"));
        program.kill();
        program.waitForFinished();
    }

    void elseItLiesInTheProgramsFolder() {
        const TemporaryFolder folder;
        folder.Write("program/tessaly.ini", kToBeRewritten);
        QProcess program;
        program.start(QStringLiteral(TESSALY_PROGRAM),
                      {QStringLiteral("--program-folder"), Native(folder, "program")});
        QTRY_VERIFY(WasRead(folder, "program/tessaly.ini"));
        program.kill();
        program.waitForFinished();
    }
};

QTEST_MAIN(Program)
#include "Program_test.moc"
