#include "agent/agent_program.h"

#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <algorithm>

#include "notes/file_faults.h"
#include "notes/notebook_paths.h"
#include "platform/ini_store.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"

namespace lore {

namespace {

constexpr int kSettle = 150;  // milliseconds from a change in the folder to the look at it
constexpr int kSecond = 1000;

bool IsOn(const Settings& settings, Option option) {
    return settings.Int(option) == kAgentOn;
}

/// A copy of what can be pasted into a note.
std::unique_ptr<QMimeData> CopyOf(const QMimeData& from) {
    auto copy = std::make_unique<QMimeData>();
    for (const char* const format : {"text/plain", "text/html", "text/rtf", "application/rtf", "text/uri-list"}) {
        if (from.hasFormat(format))
            copy->setData(format, from.data(format));
    }
    if (from.hasText())
        copy->setText(from.text());
    return copy;
}

}  // namespace

AgentProgram::AgentProgram(const AgentParts& parts)
    : parts_(parts),
      program_(parts.places, parts.companions, [this] { tray_.Tell(tr("Lorebinder could not be started.")); }),
      agent_(DataPaths{parts.places.dataRoot}.Reminders(),
             DataPaths{parts.places.dataRoot}.DataFiles() / kShownFileName, parts.clock, parts.faults, Hooks()),
      window_(agent_, parts.theme, [this](const Popup& popup) { program_.Open(popup.reminder.ReminderId); }),
      tray_(Commands()),
      hotKey_([this] { Capture(); }) {
    look_.setSingleShot(true);
    connect(&look_, &QTimer::timeout, this, &AgentProgram::Look);
    connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, [this] { look_.start(kSettle); });
    connect(&window_, &PopupWindow::Changed, this, [this] {
        ShowWaiting();
        WaitForNext();
    });
}

AgentHooks AgentProgram::Hooks() {
    return {.lookSoon = [this] { look_.start(0); },
            .checkSettings = [this] { QTimer::singleShot(0, this, &AgentProgram::CheckSettings); },
            .bringToFront = [this] { QTimer::singleShot(0, this, [this] { window_.BringUp(); }); },
            .close = [this] { QTimer::singleShot(0, this, [this] { emit Closed(); }); }};
}

TrayCommands AgentProgram::Commands() {
    return {.openProgram = [this] { program_.Open(); },
            .capture = [this] { Capture(); },
            .showReminders = [this] { window_.BringUp(); },
            .closeProgram = [this] { program_.Close(); },
            .quit = [this] { emit Closed(); },
            .setRunAgent = [this](bool on) { SetOption(Option::RunAgent, on); },
            .setStartupAgent = [this](bool on) { SetOption(Option::StartupAgent, on); }};
}

void AgentProgram::Start() {
    const DataPaths data{parts_.places.dataRoot};
    TellFailedWrite(parts_.faults, kDataFolderUnmade, data.DataFiles(), ComputeFolders(data.root));
    watcher_.addPath(PathToQString(data.DataFiles()));
    CheckSettings();
    agent_.Start();
    window_.Refresh(agent_.TakeNew());
    ShowWaiting();
    WaitForNext();
}

void AgentProgram::CheckSettings() {
    const IniStore store(parts_.places.settingsFile);
    if (const auto& unread = store.Unread())
        parts_.faults.Tell({kSettingsUnread, unread->path, unread->reason});
    settings_.LoadOptions(store);
    parts_.theme.SetAppearance(static_cast<Appearance>(settings_.Int(Option::Appearance)));
    tray_.SetOptions(IsOn(settings_, Option::RunAgent), IsOn(settings_, Option::StartupAgent));
    tray_.SetWanted(settings_.Int(Option::TrayIcon) > 0);
    const HotKey key{settings_.Int(Option::Hotkey), settings_.Int(Option::HotkeyMod)};
    if (key == taken_)
        return;
    taken_ = key;
    if (!hotKey_.Set(key) && hotKey_.IsAvailable())
        tray_.Tell(tr("The hot key can't be used: another program has it, or the keyboard lacks it."));
}

void AgentProgram::SetOption(Option option, bool on) {
    settings_.Set(option, on ? kAgentOn : int32_t{0});
    IniStore store(parts_.places.settingsFile);
    settings_.Save(store, option);
    if (!store.Flush())
        tray_.Tell(tr("The settings could not be written."));
    if (option == Option::StartupAgent && !parts_.self.StartWithSession(on))
        tray_.Tell(tr("The start of the agent with the session could not be set up."));
    program_.CheckAgentOptions();
}

void AgentProgram::Look() {
    tray_.SetWanted(settings_.Int(Option::TrayIcon) > 0);
    // A folder that was taken away and has come back is another one to the system.
    const QString folder = PathToQString(DataPaths{parts_.places.dataRoot}.DataFiles());
    if (!watcher_.directories().contains(folder))
        watcher_.addPath(folder);
    if (agent_.Look()) {
        const size_t came = agent_.TakeNew();
        window_.Refresh(came);
        ShowWaiting();
        if (came > 0)
            QApplication::beep();
    } else {
        window_.FollowTime();
    }
    WaitForNext();
}

void AgentProgram::WaitForNext() {
    // The clock counts whole seconds: one more is needed to be after the moment.
    look_.start(static_cast<int>(agent_.SecondsToNextLook()) * kSecond + kSecond / 20);
}

void AgentProgram::ShowWaiting() {
    tray_.SetWaiting(static_cast<int>(agent_.Schedule().OnScreen().size()));
}

void AgentProgram::Capture() {
    QClipboard& clipboard = *QApplication::clipboard();
    if (clipboard.supportsSelection() && clipboard.mimeData(QClipboard::Selection)->hasText())
        clipboard.setMimeData(CopyOf(*clipboard.mimeData(QClipboard::Selection)).release());
    program_.Capture();
}

}  // namespace lore
