#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QMenu>
#include <QTreeView>
#include <QUrl>

#include "app/open_rules.h"
#include "app/picture_commands.h"
#include "edit/attachment_list.h"
#include "notes/attachment_kind.h"
#include "ui/calendar/task_manager_dialog.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"
#include "ui/main/control_bar.h"
#include "ui/main/main_window.h"
#include "ui/main/panel_page.h"
#include "ui/main/tool_bar.h"
#include "ui/note_editor/attachment_open.h"

namespace lore {

void MainWindow::ShowAllNotes() {
    Search(QString::fromUtf8(kShowAll), SearchScope::Database);
}

void MainWindow::ShowCalendar() {
    TaskManagerDialog(app_, theme_, this).exec();
}

void MainWindow::FillViewMenu(QMenu& view) {
    QAction* const bar = view.addAction(tr("&Filter Panels"));
    bar->setShortcut(QKeySequence(Qt::Key_F9));
    bar->setCheckable(true);
    bar->setChecked(app_.GetSettings().Flag(Option::ShowCtrlBar));
    connect(bar, &QAction::toggled, panels_, &QWidget::setVisible);
    const auto zoomBy = [this](int step) {
        return [this, step] { SetZoom(BoardZoomStep(app_.GetSettings().Int(Option::ZoomLvl), step)); };
    };
    view.addAction(tr("Zoom &In"), QKeySequence::ZoomIn, this, zoomBy(1));
    view.addAction(tr("Zoom &Out"), QKeySequence::ZoomOut, this, zoomBy(-1));
    view.addAction(tr("&Next Pane"), QKeySequence(Qt::Key_F6), this, [this] { GoToPane(1); });
    view.addAction(tr("&Previous Pane"), QKeySequence(Qt::SHIFT | Qt::Key_F6), this, [this] { GoToPane(-1); });
    QMenu* const looks = view.addMenu(tr("&Appearance"));
    auto* const group = new QActionGroup(this);
    connect(looks, &QMenu::aboutToShow, group,
            [this, group] { group->actions().at(static_cast<int>(theme_.GetAppearance()))->setChecked(true); });
    const std::pair<QString, Appearance> choices[] = {
        {tr("&System"), Appearance::System}, {tr("&Light"), Appearance::Light}, {tr("&Dark"), Appearance::Dark}};
    for (const auto& [text, appearance] : choices) {
        QAction* const action = looks->addAction(text);
        action->setCheckable(true);
        action->setChecked(theme_.GetAppearance() == appearance);
        group->addAction(action);
        connect(action, &QAction::triggered, this, [this, chosen = appearance] {
            theme_.SetAppearance(chosen);
            app_.GetSettings().Set(Option::Appearance, static_cast<int32_t>(chosen));
        });
    }
}

void MainWindow::Search(const QString& text, SearchScope scope) {
    const SearchOutcome outcome = app_.Search(FromQString(text), scope, [this] { ListGrew(); });
    if (outcome == SearchOutcome::Invalid || outcome == SearchOutcome::Cancelled)
        ListChanged();
}

void MainWindow::SetSort(int sortId) {
    app_.SetSortOrder(sortId);
    tools_->SetSort(app_.SortOrder());
    board_->RebuildAt(board_->FocusNote());
}

void MainWindow::SetZoom(int percent) {
    app_.GetSettings().Set(Option::ZoomLvl, percent);
    tools_->SetZoom(percent);
    board_->SetOptions(BoardOptionsOf(app_.GetSettings(), app_.Store()));
}

void MainWindow::SetPanelChoice(PanelKind kind, int number) {
    app_.GetSettings().Set(kind == PanelKind::Categories ? Option::CtrlBarCatSet : Option::CtrlBarSortSrc, number);
    panels_->Rebuild(app_);
}

void MainWindow::ChangePicture(int32_t noteId, int attachment, PictureCommand command, const PictureRoom& room) {
    RunPictureCommand(app_, noteId, static_cast<size_t>(attachment), command, room);
    board_->RefreshNote(noteId);
}

void MainWindow::OpenAttachment(int32_t noteId, int attachment) {
    const int row = model_.RowOf(noteId);
    if (row < 0)
        return;
    const CAttachment& chosen = model_.NoteAt(row).attachments[static_cast<size_t>(attachment)];
    OpenAttachmentFile(chosen, model_.AttachmentPath(chosen), app_.Ports().prompts, theme_, this);
}

void MainWindow::ExtractAttachment(int32_t noteId, int attachment) {
    const int row = model_.RowOf(noteId);
    if (row < 0)
        return;
    const AppPorts& ports = app_.Ports();
    ExtractAttachmentFile(model_.NoteAt(row).attachments[static_cast<size_t>(attachment)],
                          app_.NoteBook().paths.Attachments(), ports.prompts, ports.progress, ports.faults);
}

void MainWindow::OpenLink(const QString& address) {
    OpenWebLink(address, app_.Ports().prompts);
}

void MainWindow::GoToPane(int step) {
    QWidget* const panes[] = {tools_->findChild<QWidget*>("searchBox"),
                              panels_->PageAt(static_cast<PanelKind>(panels_->Page()))->Tree(), board_};
    constexpr int kCount = 3;
    int here = 0;
    for (int i = 0; i < kCount; ++i)
        here = panes[i]->hasFocus() ? i : here;
    for (int i = 1; i <= kCount; ++i) {
        QWidget* const next = panes[(here + step * i + kCount * kCount) % kCount];
        if (next->isVisible())
            return next->setFocus(Qt::ShortcutFocusReason);
    }
}

}  // namespace lore
