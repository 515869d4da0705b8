#include <QDesktopServices>
#include <QMenu>
#include <QMenuBar>
#include <QUrl>

#include "app/findable_things.h"
#include "app/help_commands.h"
#include "app/update_check.h"
#include "ui/command_bar/command_bar.h"
#include "ui/controls/run_when_free.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"
#include "ui/main/about_dialog.h"
#include "ui/main/main_window.h"
#include "ui/note_editor/note_actions.h"
#include "ui/options/options_prop_sheet.h"

namespace lore {

namespace {

/// Lets an answer wait until no dialog is open, so that it doesn't come between the user and the keyboard.
class PatientSource : public UpdateSource {
public:
    PatientSource(UpdateSource& source, QObject& owner) : source_(source), owner_(owner) {}
    void Fetch(const std::string& address, std::function<void(const UpdateReply&)> done) override {
        source_.Fetch(address, [owner = &owner_, done](const UpdateReply& reply) {
            RunWhenFree(*owner, [done, reply] { done(reply); });
        });
    }

private:
    UpdateSource& source_;
    QObject& owner_;
};

/// The entries of a menu that can be run now, with the menus below it.
void AddActions(const QMenu& menu, const QString& above, CommandFinder& finder, std::vector<QAction*>& actions) {
    for (QAction* const action : menu.actions()) {
        const QString text = action->text().remove('&');
        if (action->isSeparator() || text.isEmpty() || !action->isEnabled() || !action->isVisible())
            continue;
        if (const QMenu* const below = action->menu()) {
            AddActions(*below, above + QStringLiteral(" \u203a ") + text, finder, actions);
            continue;
        }
        QString detail = above;
        if (!action->shortcut().isEmpty())
            detail += QStringLiteral("    ") + action->shortcut().toString(QKeySequence::NativeText);
        finder.Add(
            {FoundKind::Command, text.toStdString(), detail.toStdString(), static_cast<int32_t>(actions.size())});
        actions.push_back(action);
    }
}

}  // namespace

HelpWorld MainWindow::Help() const {
    return {app_.GetSettings(), app_.Ports().prompts,
            [](const std::filesystem::path& file) {
                return QDesktopServices::openUrl(QUrl::fromLocalFile(PathToQString(file)));
            },
            [](const std::string& address) { return QDesktopServices::openUrl(QUrl(ToQString(address))); }};
}

void MainWindow::SetHelp(const std::filesystem::path& manual, UpdateSource* updates) {
    manual_ = manual;
    updateSource_ = updates ? std::make_unique<PatientSource>(*updates, *this) : nullptr;
    updates_ = std::make_unique<UpdateCheck>(
        UpdateWorld{app_.GetSettings(), app_.Store(), app_.Ports().prompts, app_.Ports().faults, app_.Ports().clock,
                    updateSource_.get(),
                    [this](const std::string& page) { OpenHelpPage(Help(), page, "Check for program updates"); }});
}

void MainWindow::CheckForUpdates(bool daily) {
    if (!updates_)
        return;
    daily ? updates_->RunDaily() : updates_->Run();
}

void MainWindow::ShowManual() {
    OpenManual(Help(), manual_);
}

void MainWindow::ShowAbout() {
    FWAboutBoxDlg(theme_, app_.Store(), this).exec();
}

void MainWindow::ShowOptions(OptionsTab tab, QWidget* over) {
    const OptionsWorld world{app_.GetSettings(), app_.Store(), app_.Ports().prompts,
                             [this] { board_->SetOptions(BoardOptionsOf(app_.GetSettings(), app_.Store())); },
                             [this] { return app_.FlushStore(); }};
    const OptionsParts parts{theme_, notes_->Commands().Spelling(), app_.Ports().agent,
                             DialogChoosers(theme_, app_.Store())};
    COptionsPropSheet(world, parts, tab, over ? over : this).exec();
}

void MainWindow::ShowCommandBar() {
    CommandFinder finder;
    std::vector<QAction*> actions;
    for (QAction* const top : menuBar()->actions()) {
        // The menu makes up its mind about its entries when it opens.
        emit top->menu()->aboutToShow();
        AddActions(*top->menu(), top->text().remove('&'), finder, actions);
        emit top->menu()->aboutToHide();
    }
    AddFindableThings(app_, finder);
    CommandBar bar(
        finder, [this](const FindableItem& item) { return WrittenText(app_, item); }, theme_, this);
    if (bar.exec() == QDialog::Accepted)
        RunFound(bar.Chosen(), actions);
}

void MainWindow::RunFound(const FindableItem& item, const std::vector<QAction*>& actions) {
    switch (item.kind) {
        case FoundKind::Command:
            if (item.id >= 0 && item.id < static_cast<int32_t>(actions.size()))
                actions[static_cast<size_t>(item.id)]->trigger();
            return;
        case FoundKind::NoteBook:
            return SwitchNoteBook(item.id);
        case FoundKind::Note:
            board_->SetFocusNote(item.id);
            return board_->setFocus();
        case FoundKind::OtherNote:
            RunPanelOrder({.notes = NotesOfThing(app_, item)});
            board_->SetFocusNote(item.id);
            return board_->setFocus();
        case FoundKind::Search:
            return Search(QString::fromStdString(item.text), SearchScope::Database);
        default:
            RunPanelOrder({.notes = NotesOfThing(app_, item)});
            board_->setFocus();
    }
}

}  // namespace lore
