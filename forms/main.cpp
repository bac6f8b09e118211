#include <QApplication>
#include <QCommandLineParser>
#include <QIcon>
#include <QStatusBar>
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>

#include "control/NameProgram.h"
#include "forms/frmConvert.h"
#include "forms/text.h"
#include "platform/paths.h"

namespace {

constexpr int kWrongUsage = 2;
constexpr int kUntrapped = 3;
constexpr int kNoScreen = 3;

// The options of the command line.
struct Arguments {
    Arguments() {
        parser.setApplicationDescription(
            QStringLiteral("Converts a copy of a Discus 4 message board into import files for a mybb forum.\n"
                           "A run only reads the board. It DELETES the output folder and builds it anew."));
        parser.addOptions({help, version, programFolder, ini});
    }

    const QCommandLineOption help{{QStringLiteral("h"), QStringLiteral("help")},
                                  QStringLiteral("Shows this help.")};
    const QCommandLineOption version{{QStringLiteral("v"), QStringLiteral("version")},
                                     QStringLiteral("Shows the version.")};
    const QCommandLineOption programFolder{
        QStringLiteral("program-folder"),
        QStringLiteral("Where Docs and the settings file are looked for; else where the program lies."),
        QStringLiteral("DIR")};
    const QCommandLineOption ini{QStringLiteral("ini"), QStringLiteral("Another settings file."),
                                 QStringLiteral("FILE")};
    QCommandLineParser parser;
};

// Help and version are there without a screen too.
void AnswerWithoutScreen(int& argc, char** argv) {
    const QCoreApplication application(argc, argv);
    Arguments arguments;
    arguments.parser.parse(QCoreApplication::arguments());
    if (arguments.parser.isSet(arguments.help)) arguments.parser.showHelp();
    if (arguments.parser.isSet(arguments.version)) arguments.parser.showVersion();
}

bool IsScreenNamed() {
    return std::ranges::any_of(std::to_array({"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}),
                               [](const char* name) { return !qEnvironmentVariableIsEmpty(name); });
}

// Takes what Qt says while it looks for a screen. It would abort without one, and what it says of that helps
// only where a screen is named.
void TakeMessageOfStart(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (type == QtFatalMsg) {
        std::fputs("tessaly finds no screen for its window. tessaly-cli does the same work without one.\n",
                   stderr);
        std::_Exit(kNoScreen);
    }
    if (IsScreenNamed()) std::fprintf(stderr, "%s\n", qPrintable(qFormatLogMessage(type, context, text)));
}

std::u16string PathText(const QString& native) {
    if (native.isEmpty()) return {};
    return tessaly::platform::AbsolutePathText(tessaly::platform::ToNative(tessaly::FromQt(native)));
}

QIcon ProgramIcon() {
    QIcon icon;
    for (const int size : {16, 32, 48, 256}) {
        icon.addFile(QStringLiteral(":/tessaly-%1.png").arg(size), QSize(size, size));
    }
    return icon;
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication::setApplicationName(QStringLiteral("tessaly"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TESSALY_VERSION));
    AnswerWithoutScreen(argc, argv);

    const QtMessageHandler usual = qInstallMessageHandler(TakeMessageOfStart);
    const QApplication application(argc, argv);
    qInstallMessageHandler(usual);
    // A run goes on behind a closed window.
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setWindowIcon(ProgramIcon());
    QGuiApplication::setDesktopFileName(QStringLiteral("tessaly"));
    Arguments arguments;
    if (!arguments.parser.parse(QCoreApplication::arguments()) ||
        !arguments.parser.positionalArguments().isEmpty()) {
        const QString wrong = arguments.parser.errorText();
        std::fprintf(stderr, "%s\n%s", qPrintable(wrong), qPrintable(arguments.parser.helpText()));
        return kWrongUsage;
    }
    tessaly::ConversionState state;
    NameProgram(state, PathText(arguments.parser.value(arguments.programFolder)),
                PathText(arguments.parser.value(arguments.ini)));
    tessaly::frmConvert form(state);
    if (!form.Load()) return kUntrapped;
    form.show();
    constexpr int kMilliseconds = 15000;
    form.statusBar()->showMessage(tessaly::ToQt(tessaly::SettingsNote(state)), kMilliseconds);
    return QApplication::exec();
}
