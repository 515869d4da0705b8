#include <QApplication>
#include <QCommandLineParser>
#include <QMessageBox>
#include <QTimer>
#include <cstdio>

#include "app/lorebinder_app.h"
#include "platform/data_lock.h"
#include "platform/ini_store.h"
#include "platform/places.h"
#include "platform/system_sources.h"
#include "ui/board_accessible.h"
#include "ui/fault_bar.h"
#include "ui/main_window.h"
#include "ui/qt_progress.h"
#include "ui/qt_prompts.h"
#include "ui/theme.h"

namespace {

constexpr int kLockedStatus = 4;

struct StartOptions {
    std::filesystem::path data;
    std::filesystem::path settings;
    bool readyLine = false;
};

StartOptions ReadArguments(const QApplication& application) {
    QCommandLineParser parser;
    parser.setApplicationDescription("Research notes with their sources, categories and attachments");
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption data("data", "The data root, the folder that holds \"Data Files\".", "DIR");
    const QCommandLineOption settings("settings", "The settings store as an INI file.", "FILE");
    const QCommandLineOption ready("ready-line", "Print a line on standard error once the board can be used.");
    parser.addOptions({data, settings, ready});
    parser.process(application);
    StartOptions options{
        parser.isSet(data) ? std::filesystem::path(parser.value(data).toStdString()) : lore::UserDataRoot(),
        parser.value(settings).toStdString(), parser.isSet(ready)};
    if (options.settings.empty())
        options.settings = parser.isSet(data) ? options.data / "settings.ini" : lore::UserSettingsFile();
    return options;
}

void TellThatItIsLocked(const std::filesystem::path& data, int error) {
    const QString reason = error == 0 ? QObject::tr("Another process works with it. Close it and try again.")
                                      : QString::fromStdString(lore::FileResult{error}.Reason());
    QMessageBox::warning(nullptr, QObject::tr("Data Folder In Use"),
                         QObject::tr("The data folder %1 can't be opened for writing.\n\n%2")
                             .arg(QString::fromStdString(data.string()), reason));
}

}  // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setApplicationName("Lorebinder");
    QApplication::setApplicationVersion("1.56");
    QApplication::setDesktopFileName("lorebinder");
    QApplication::setWindowIcon(QIcon(":/icons/lorebinder.svg"));
    lore::InstallBoardAccessibility();
    const StartOptions options = ReadArguments(application);

    int error = 0;
    const auto lock = lore::DataLock::Take(options.data, error);
    lore::IniStore store(options.settings);
    lore::Settings early;
    early.LoadOptions(store);
    lore::Theme theme(application, static_cast<lore::Appearance>(early.Int(lore::Option::Appearance)));
    if (!lock) {
        TellThatItIsLocked(options.data, error);
        return kLockedStatus;
    }
    lore::QtPrompts prompts;
    lore::QtProgress progress(theme);
    lore::SystemClock clock;
    lore::SystemGuids guids;
    lore::BarFaults faults;
    lore::CLorebinderApp app(options.data, {prompts, progress, clock, guids, store, faults, &progress});
    app.LoadOptions();
    app.SelectStartNoteBook();

    lore::MainWindow window(app, theme);
    prompts.SetParent(&window);
    progress.SetParent(&window);
    faults.SetBar(window.Faults());
    app.GetSettings().Flag(lore::Option::Maximized) ? window.showMaximized() : window.show();
    QTimer::singleShot(0, &window, [&] {
        app.FinishStartup();
        window.ShowNoteBook();
        if (options.readyLine)
            std::fprintf(stderr, "ready\n");
    });
    const int status = QApplication::exec();
    faults.SetBar(nullptr);
    return status;
}
