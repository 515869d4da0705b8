#include "ui/note_editor/source_panel.h"

#include <QContextMenuEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScrollArea>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/controls/dialog_parts.h"
#include "ui/controls/panel_section.h"
#include "ui/controls/popup_menu.h"
#include "ui/look/theme.h"
#include "ui/note_editor/source_row_view.h"

namespace lore {

SourcePanel::SourcePanel(SourceRows& rows, SourcePanelWindows windows, const Theme& theme, QWidget* parent)
    : QWidget(parent),
      rows_(rows),
      windows_(std::move(windows)),
      theme_(theme),
      scroll_(new QScrollArea(this)),
      empty_(new QLabel(QString::fromLatin1(kNoSourcesText), this)) {
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(kSpace * 2, kSpace * 2, kSpace * 2, kSpace * 2);
    layout->setSpacing(kSpace * 2);
    MakeButtons(*layout);
    auto* const holder = new QWidget(scroll_);
    list_ = MakeInner<QVBoxLayout>(holder, kSpace * 2);
    list_->addStretch(1);
    scroll_->setWidget(holder);
    scroll_->setWidgetResizable(true);
    scroll_->setFrameShape(QFrame::NoFrame);
    scroll_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll_->setFocusPolicy(Qt::NoFocus);
    empty_->setAlignment(Qt::AlignCenter);
    empty_->setTextFormat(Qt::PlainText);
    layout->addWidget(empty_, 1);
    layout->addWidget(scroll_, 1);
    Rebuild();
}

void SourcePanel::MakeButtons(QVBoxLayout& layout) {
    auto* const row = new QHBoxLayout;
    row->setSpacing(kSpace);
    auto* const title = new QLabel(tr("Sources"), this);
    row->addWidget(title, 1);
    add_ = MakeIconButton("plus", tr("Add Source"), theme_, this);
    remove_ = MakeIconButton("minus", tr("Remove Source"), theme_, this);
    clear_ = MakeIconButton("x", tr("Clear Sources"), theme_, this);
    for (QToolButton* const button : {add_, remove_, clear_})
        row->addWidget(button);
    layout.addLayout(row);
    connect(add_, &QToolButton::clicked, this, &SourcePanel::AddSource);
    connect(remove_, &QToolButton::clicked, this, &SourcePanel::RemoveSource);
    connect(clear_, &QToolButton::clicked, this, &SourcePanel::ClearSources);
}

void SourcePanel::Rebuild() {
    for (SourceRowView* const view : views_) {
        view->hide();
        view->deleteLater();
    }
    views_.clear();
    for (size_t i = 0; i < rows_.Rows().size(); ++i) {
        auto* const view = new SourceRowView(rows_, i, theme_, this);
        const int row = static_cast<int>(i);
        connect(view, &SourceRowView::Clicked, this, [this, row] { Select(row); });
        connect(view, &SourceRowView::Changed, this, &SourcePanel::Changed);
        connect(view, &SourceRowView::RemoveRequested, this, &SourcePanel::RemoveSource, Qt::QueuedConnection);
        view->SetSelected(rows_.Rows()[i].selected);
        list_->insertWidget(row, view);
        setTabOrder(views_.isEmpty() ? static_cast<QWidget*>(clear_) : views_.last()->Line(), view);
        setTabOrder(view, view->LineButton());
        setTabOrder(view->LineButton(), view->Line());
        views_.append(view);
    }
    empty_->setVisible(views_.isEmpty());
    scroll_->setVisible(!views_.isEmpty());
    remove_->setEnabled(rows_.SelectedRow().has_value());
    clear_->setEnabled(!views_.isEmpty());
}

void SourcePanel::Select(int row) {
    rows_.SelectRow(rows_.Rows()[static_cast<size_t>(row)].source.SourceID);
    for (int i = 0; i < views_.size(); ++i)
        views_[i]->SetSelected(i == row);
    remove_->setEnabled(true);
}

void SourcePanel::ShowRow(std::optional<size_t> row) {
    if (!row)
        return;
    Select(static_cast<int>(*row));
    scroll_->widget()->layout()->activate();
    scroll_->ensureWidgetVisible(views_[static_cast<int>(*row)]);
}

void SourcePanel::AddSource() {
    const std::optional<int32_t> chosen = windows_.choose(this);
    if (!chosen)
        rows_.Refresh();
    const std::optional<size_t> row = chosen ? rows_.AddSource(*chosen) : rows_.SelectedRow();
    Rebuild();
    ShowRow(row);
    emit Changed();
}

void SourcePanel::EditSource() {
    const std::optional<size_t> row = rows_.SelectedRow();
    if (!row)
        return;
    windows_.edit(rows_.Rows()[*row].source.SourceID, this);
    rows_.Refresh();
    Rebuild();
    ShowRow(rows_.SelectedRow());
    emit Changed();
}

void SourcePanel::RemoveSource() {
    const std::optional<size_t> row = rows_.SelectedRow();
    if (!row)
        return;
    rows_.RemoveSource(*row);
    Rebuild();
    if (!views_.isEmpty())
        ShowRow(std::min(*row, rows_.Rows().size() - 1));
    emit Changed();
}

void SourcePanel::ClearSources() {
    rows_.ClearSources();
    Rebuild();
    emit Changed();
}

void SourcePanel::contextMenuEvent(QContextMenuEvent* event) {
    const auto isOn = [event](const QWidget* widget) {
        return widget->rect().contains(widget->mapFromGlobal(event->globalPos()));
    };
    int under = -1;
    for (int i = 0; i < views_.size() && isOn(scroll_->viewport()); ++i)  // a row that is scrolled goes on beyond it
        under = isOn(views_[i]) ? i : under;
    OpenMenu(event->globalPos(), under);
}

void SourcePanel::OpenMenu(const QPoint& at, int row) {
    auto* const menu = NewPopupMenu(this);
    if (row >= 0) {
        Select(row);
        menu->addAction(tr("Edit Source"), this, &SourcePanel::EditSource);
        menu->addAction(tr("Remove Source"), this, &SourcePanel::RemoveSource);
    } else {
        menu->addAction(tr("Add Source"), this, &SourcePanel::AddSource);
        menu->addAction(tr("Clear Sources"), this, &SourcePanel::ClearSources);
    }
    menu->popup(at);
}

}  // namespace lore
