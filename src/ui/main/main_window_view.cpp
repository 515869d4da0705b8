#include <QAction>
#include <QActionGroup>
#include <QMenu>
#include <QTreeView>

#include "ui/look/theme.h"
#include "ui/main/control_bar.h"
#include "ui/main/main_window.h"
#include "ui/main/panel_page.h"
#include "ui/main/tool_bar.h"

namespace lore {

void MainWindow::FillViewMenu(QMenu& view) {
    QAction* const bar = view.addAction(tr("&Filter Panels"));
    bar->setShortcut(QKeySequence(Qt::Key_F9));
    bar->setCheckable(true);
    bar->setChecked(app_.GetSettings().Flag(Option::ShowCtrlBar));
    connect(bar, &QAction::toggled, panels_, &QWidget::setVisible);
    view.addAction(tr("Zoom &In"), QKeySequence::ZoomIn, this, [this] { ZoomBy(1); });
    view.addAction(tr("Zoom &Out"), QKeySequence::ZoomOut, this, [this] { ZoomBy(-1); });
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

void MainWindow::ZoomBy(int step) {
    SetZoom(BoardZoomStep(app_.GetSettings().Int(Option::ZoomLvl), step));
}

void MainWindow::SetPanelChoice(PanelKind kind, int number) {
    app_.GetSettings().Set(kind == PanelKind::Categories ? Option::CtrlBarCatSet : Option::CtrlBarSortSrc, number);
    panels_->Rebuild(app_);
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
