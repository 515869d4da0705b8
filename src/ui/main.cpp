#include <QApplication>
#include <QCommandLineParser>
#include <QDeadlineTimer>
#include <QLocale>
#include <QMessageBox>
#include <QThread>
#include <QTimer>
#include <cstdio>

#include "app/lorebinder_app.h"
#include "app/online_commands.h"
#include "app/outside_requests.h"
#include "base/program_version.h"
#include "notes/notebook_paths.h"
#include "online/http_client.h"
#include "online/sync_launch.h"
#include "platform/companion_launcher.h"
#include "platform/data_lock.h"
#include "platform/exit_status.h"
#include "platform/hunspell_checker.h"
#include "platform/ini_store.h"
#include "platform/instance/agent_process.h"
#include "platform/net/net_update_source.h"
#include "platform/places.h"
#include "platform/program_arguments.h"
#include "platform/standard_streams.h"
#include "platform/system_sources.h"
#include "ui/controls/bar_faults.h"
#include "ui/look/theme.h"
#include "ui/main/help_actions.h"
#include "ui/main/main_window.h"
#include "ui/main/online_actions.h"
#include "ui/main/request_hooks.h"
#include "ui/note_editor/note_actions.h"
#include "ui/ports/qt_progress.h"
#include "ui/ports/qt_prompts.h"
#include "ui/ports/quit_guard.h"

namespace {

constexpr int kOpenTime = 1000;  // milliseconds that a start may have the lock without a channel
constexpr int kLookAgain = 50;   // milliseconds

struct StartOptions {
    lore::CompanionPlaces places;
    std::string file;      ///< to import
    std::string reminder;  ///< whose event or day is shown
    bool capture = false;
    bool readyLine = false;
};

void NameProgram() {
    QCoreApplication::setApplicationName("Lorebinder");
    QCoreApplication::setApplicationVersion(lore::ProgramVersion());
}

StartOptions ReadArguments() {
    QCommandLineParser parser;
    parser.setApplicationDescription("Research notes with their sources, categories and attachments");
    parser.addHelpOption();
    parser.addVersionOption();
    const lore::PlaceOptions places(parser, lore::DefaultPlaces::User);
    const QCommandLineOption ready("ready-line", "Print a line on standard error once the board can be used.");
    const QCommandLineOption capture("capture", "Paste the clipboard into a new note.");
    const QCommandLineOption reminder("reminder", "Show the event or the day of a reminder, by its id.", "ID");
    parser.addOptions({ready, capture, reminder});
    parser.addPositionalArgument("FILE", "An export archive to import.", "[FILE]");
    lore::ParseArguments(parser, 1);
    return {places.Places(), lore::PathOfArgument(parser.positionalArguments().value(0)).string(),
            parser.value(reminder).toStdString(), parser.isSet(capture), parser.isSet(ready)};
}

void TellThatItIsLocked(const std::filesystem::path& data) {
    QMessageBox::warning(nullptr, QObject::tr("Data Folder In Use"),
                         QObject::tr("The data folder %1 can't be opened for writing.\n\n%2")
                             .arg(QString::fromStdString(data.string()),
                                  QObject::tr("Another process is working with it. Close it and try again.")));
}

void TellThatItIsSilent(const std::filesystem::path& data) {
    std::fprintf(stderr, "lorebinder: the program working with %s doesn't answer\n", data.c_str());
    QMessageBox::warning(nullptr, QObject::tr("No Answer"),
                         QObject::tr("Lorebinder is already working with the data folder %1, but it doesn't answer.\n\n"
                                     "Wait until it has done its work, or end it, and try again.")
                             .arg(QString::fromStdString(data.string())));
}

/// The exit status of a start that hands over to the running instance, or gets no answer from it; nothing without one.
std::optional<int> HandOver(lore::LocalChannel& channel, const std::string& request,
                            const std::filesystem::path& data) {
    if (channel.SendToInstance(request, true))
        return 0;
    if (!channel.IsSilent())
        return std::nullopt;
    TellThatItIsSilent(data);
    return lore::NumberOf(lore::ExitStatus::Locked);
}

/// The same while the process that has the data folder may be about to open its channel.
std::optional<int> HandOverSoon(lore::LocalChannel& channel, const std::string& request,
                                const std::filesystem::path& data) {
    for (const QDeadlineTimer limit(kOpenTime); !limit.hasExpired(); QThread::msleep(kLookAgain))
        if (const auto status = HandOver(channel, request, data))
            return status;
    return std::nullopt;
}

/// How a start came to its data folder.
struct FolderTaken {
    enum class Outcome { Taken, Locked, Failed } outcome;
    std::optional<lore::DataLock> lock = {};
    std::filesystem::path folder = {};  ///< the one that was tried
    lore::FileResult reason = {};       ///< why it can't be used, of a failure
};

FolderTaken TakeFolder(const std::filesystem::path& dataRoot) {
    using Outcome = FolderTaken::Outcome;
    lore::LockAttempt attempt = lore::DataLock::Take(dataRoot);
    if (!attempt.lock)
        return {attempt.IsHeldByOther() ? Outcome::Locked : Outcome::Failed, {}, dataRoot, attempt.failure};
    const lore::FileResult made = lore::ComputeFolders(dataRoot);
    return {made.Ok() ? Outcome::Taken : Outcome::Failed, std::move(attempt.lock),
            lore::DataPaths{dataRoot}.DataFiles(), made};
}

/// No note could be kept.
void TellUnusableFolder(const std::filesystem::path& folder, const lore::FileResult& result) {
    std::fprintf(stderr, "lorebinder: the data folder can't be used: %s: %s\n", folder.c_str(),
                 result.Reason().c_str());
    QMessageBox::warning(nullptr, QObject::tr("Data Folder Unusable"),
                         QObject::tr("The data folder %1 can't be made, or nothing can be written there.\n\n%2\n\nSee "
                                     "to it that you may write there and that there is room, or start Lorebinder with "
                                     "another folder: lorebinder --data FOLDER")
                             .arg(QString::fromStdString(folder.string()), QString::fromStdString(result.Reason())));
}

/// Without its settings the program would take itself for a new one, and give ids out again.
void TellUnreadSettings(const lore::StoreFailure& failure) {
    std::fprintf(stderr, "lorebinder: the settings could not be read: %s: %s\n", failure.path.c_str(),
                 failure.reason.c_str());
    QMessageBox::warning(nullptr, QObject::tr("Settings Not Read"),
                         QObject::tr("The settings in %1 can't be read.\n\n%2")
                             .arg(QString::fromStdString(failure.path), QString::fromStdString(failure.reason)));
}

/// The sync at the start: the sync program starts this one again, with a word that keeps it from another sync. Gives
/// the reason if it can't be started; the start then goes on without a sync, so that nobody is kept from the notes, and
/// the window tells it.
std::optional<std::string> SyncInPlaceOfStart(lore::ProcessLauncher& companions, const lore::Settings& settings,
                                              const std::filesystem::path& data) {
    const lore::SyncPlace place{lore::DataPaths{data}.DataFiles(), lore::ProgramFolder(),
                                lore::NextCategoryId({}, settings)};
    std::optional<std::string> failed = lore::LaunchSyncer(companions, lore::kSyncOpen, settings, place);
    if (failed)
        std::fprintf(stderr, "The sync program could not be started: %s. Lorebinder starts without a sync.\n",
                     failed->c_str());
    return failed;
}

/// The chosen language, or that of the desktop, where it has a dictionary; otherwise English.
void SelectLanguage(lore::SpellChecker& spelling, const lore::Settings& settings) {
    if (!spelling.Select(settings.Text(lore::Option::SpellLanguage)) &&
        !spelling.Select(QLocale::system().name().toStdString()))
        spelling.Select("en_US");
}

/// One that was chosen beside a note's text holds for the next time too.
void KeepLanguage(const lore::SpellChecker& spelling, lore::CLorebinderApp& app) {
    app.GetSettings().Set(lore::Option::SpellLanguage, spelling.Language());
    app.GetSettings().Save(app.Store(), lore::Option::SpellLanguage);
    app.FlushStore();
}

/// What a start has made once it is sure that this process is the one that works with the data folder.
struct Started {
    const StartOptions& options;
    const std::string& request;  ///< of the command line; may be empty
    lore::LocalChannel& channel;
    lore::IniStore& store;
    lore::CompanionLauncher& companions;
    lore::Theme& theme;
    std::optional<std::string> missesSync;  ///< why the sync program that was to run could not be started
};

/// Shows the main window until it closes; gives the exit status.
int RunProgram(const Started& started) {
    const auto& [options, request, channel, store, companions, theme, missesSync] = started;
    lore::QtPrompts prompts;
    lore::QtProgress progress(theme);
    lore::SystemClock clock;
    lore::SystemGuids guids;
    lore::BarFaults faults;
    lore::HttpClient http;
    const lore::CompanionPlaces& places = options.places;
    lore::AgentProcess agent(lore::ProgramFolder() / lore::kAgentProgram, lore::AgentAutostart(places), places.dataRoot,
                             companions, lore::PlaceArguments(places));
    const lore::AppPorts ports{.prompts = prompts,
                               .progress = progress,
                               .clock = clock,
                               .guids = guids,
                               .store = store,
                               .faults = faults,
                               .background = &progress,
                               .wait = lore::WaitFor,
                               .random = lore::RandomUpTo,
                               .companions = &companions,
                               .agent = &agent,
                               .http = &http,
                               .programFolder = lore::ProgramFolder(),
                               .toUtc = lore::LocalToUtc};
    lore::CLorebinderApp app(places.dataRoot, ports);
    app.LoadOptions();
    app.SelectStartNoteBook();

    lore::HunspellChecker spelling(lore::HunspellChecker::SystemFolders(), app.Data().Lexicons() / "UserWords.txt",
                                   faults);
    SelectLanguage(spelling, app.GetSettings());
    const std::string firstLanguage = spelling.Language();

    lore::MainWindow window(app, theme);
    window.Notes()->Commands().SetSpelling(&spelling);
    lore::NetUpdateSource updates;
    window.Help().SetUp(lore::ManualFile(), &updates);
    const lore::QuitGuard quits;
    const lore::QuitSignals orders;
    prompts.SetParent(&window);
    progress.SetParent(&window);
    if (missesSync)
        lore::TellSyncNotStarted(faults, *missesSync);
    faults.SetBar(window.Faults());
    app.GetSettings().Flag(lore::Option::Maximized) ? window.showMaximized() : window.show();
    lore::OutsideRequests requests(lore::HooksOf(window, app, theme));
    if (!request.empty())
        requests.OpenDocumentFile(request);
    channel.Listen([&requests](const lore::InstanceMessage& message) { return requests.Receive(message); });
    QTimer::singleShot(0, &window, [&] {
        app.FinishStartup();
        window.ShowNoteBook();
        requests.FinishStartup();
        if (started.options.readyLine)
            std::fprintf(stderr, "ready\n");
        window.Notes()->OfferUnsavedNotes();
        window.Online().CheckLinkSoon();
    });
    const int status = QApplication::exec();
    faults.SetBar(nullptr);
    if (spelling.Language() != firstLanguage)
        KeepLanguage(spelling, app);
    return status;
}

}  // namespace

int main(int argc, char** argv) {
    lore::PrepareStandardStreams();
    NameProgram();
    if (lore::AsksForWords(argc, argv)) {
        const QCoreApplication application(argc, argv);
        ReadArguments();
        return 0;
    }
    QApplication application(argc, argv);
    QApplication::setDesktopFileName("lorebinder");
    QApplication::setWindowIcon(QIcon(":/icons/lorebinder.svg"));
    const StartOptions options = ReadArguments();
    std::error_code noFolder;  // one that has been removed: paths stay as they are
    const std::string request = lore::RequestOfCommandLine(options.file, options.capture,
                                                           std::filesystem::current_path(noFolder), options.reminder);
    const lore::CompanionPlaces& places = options.places;
    lore::LocalChannel channel(lore::kProgramRole, places.dataRoot);
    if (const auto status = HandOver(channel, request, places.dataRoot))
        return *status;

    lore::IniStore store(places.settingsFile);
    if (const auto& unread = store.Unread()) {
        TellUnreadSettings(*unread);
        return lore::NumberOf(lore::ExitStatus::Fault);
    }
    lore::Settings early;
    early.LoadOptions(store);
    lore::CompanionLauncher companions(places.dataRoot, places.settingsFile);
    std::optional<std::string> missesSync;
    if (lore::SyncsAtStart(early, options.file)) {
        missesSync = SyncInPlaceOfStart(companions, early, places.dataRoot);
        if (!missesSync)
            return 0;
    }
    const FolderTaken taken = TakeFolder(places.dataRoot);
    // A lock that goes meanwhile isn't taken: the settings have been read.
    if (taken.outcome == FolderTaken::Outcome::Locked)
        if (const auto status = HandOverSoon(channel, request, places.dataRoot))
            return *status;
    if (taken.outcome == FolderTaken::Outcome::Taken)
        channel.Open();
    lore::Theme theme(application, static_cast<lore::Appearance>(early.Int(lore::Option::Appearance)));
    switch (taken.outcome) {
        case FolderTaken::Outcome::Locked:
            TellThatItIsLocked(places.dataRoot);
            return lore::NumberOf(lore::ExitStatus::Locked);
        case FolderTaken::Outcome::Failed:
            TellUnusableFolder(taken.folder, taken.reason);
            return lore::NumberOf(lore::ExitStatus::Fault);
        case FolderTaken::Outcome::Taken:
            break;
    }
    return RunProgram({options, request, channel, store, companions, theme, missesSync});
}
