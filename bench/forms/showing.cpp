// Measures what showing progress costs: converts a board behind the real window, turn by turn with "Show
// Progress" ticked and not ticked.
//     QT_QPA_PLATFORM=offscreen TMPDIR=/dev/shm tessaly-bench-showing BOARD [ROUNDS]
#include <QApplication>
#include <QCheckBox>
#include <QElapsedTimer>
#include <QPushButton>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <vector>

#include "forms/frmConvert.h"
#include "platform/files.h"
#include "platform/paths.h"

namespace {

namespace fs = std::filesystem;

std::string SettingsText(const fs::path& board, const fs::path& output) {
    std::string admin;
    for (const auto& entry : fs::directory_iterator(board)) {
        const std::string name = entry.path().filename().string();
        if (name.starts_with("discus_admin_")) admin = name;
    }
    const std::string root = fs::absolute(board).string();
    return "[Settings]\r\nDiscusRootFolder=" + root + "\r\nDiscusMessageFolder=" + root +
           "/discus/messages\r\nDiscusMainFolder=" + root + "/" + admin +
           "\r\nDiscusSecureMessageFolder=" + root + "/" + admin +
           "/secure\r\nDiscusWebsite=http://www.old-board.example/discus\r\n"
           "mybbForumAddr=http://forum.example\r\nmybb_Admin=Admin\r\nmybb_OutputFolder=" +
           output.string() + "\r\n";
}

struct Cost {
    std::vector<double> wall;
    std::vector<double> processor;
};

void Measure(tessaly::frmConvert& form, bool isShown, Cost& cost) {
    auto* const show = form.findChild<QCheckBox*>(QStringLiteral("chkShowProgress"));
    if (show->isChecked() != isShown) show->click();
    QElapsedTimer timer;
    timer.start();
    const std::clock_t before = std::clock();
    form.findChild<QPushButton*>(QStringLiteral("cmdConvert"))->click();
    // What was gathered for the area belongs to the run.
    QCoreApplication::processEvents();
    cost.wall.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e9);
    cost.processor.push_back(static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC);
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

void Print(const char* kind, const std::vector<double>& shown, const std::vector<double>& silent) {
    std::printf("%s: %.3f s shown, %.3f s not shown, %.2f times\n", kind, Median(shown), Median(silent),
                Median(shown) / Median(silent));
}

}  // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    if (argc < 2) {
        std::fputs("usage: tessaly-bench-showing BOARD [ROUNDS]\n", stderr);
        return 2;
    }
    const int rounds = argc > 2 ? std::atoi(argv[2]) : 5;
    const QTemporaryDir folder;
    const fs::path place = folder.path().toStdString();
    const std::u16string settings = tessaly::platform::ToPathText(place / "settings.ini");
    tessaly::platform::WriteWholeFile(settings, {SettingsText(argv[1], place / "output")});

    tessaly::ConversionState state;
    state.ProgramFolder = tessaly::platform::AbsolutePathText(TESSALY_SOURCE_DIR);
    state.ProgramName = u"tessaly";
    state.SettingsFile = settings;
    tessaly::frmConvert form(state);
    // A box would wait for somebody.
    state.ShowMessage = [](std::u16string_view) {};
    if (!form.Load()) return 1;
    form.show();

    Cost shown;
    Cost silent;
    Cost first;
    Measure(form, true, first);
    const std::size_t characters = state.txtArea.Text.size();
    for (int round = 0; round < rounds; ++round) {
        Measure(form, true, shown);
        Measure(form, false, silent);
    }
    std::printf("%d posts, %zu characters in the area, medians of %d runs\n", state.PostCounter, characters,
                rounds);
    Print("wall", shown.wall, silent.wall);
    Print("CPU", shown.processor, silent.processor);
    return 0;
}
