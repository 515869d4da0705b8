#include "ui/dialog_frame.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

#include "ui/qt_text.h"
#include "ui/theme_look.h"
#include "ui/window_place.h"

namespace lore {

DialogFrame::DialogFrame(const QString& title, const char* place, SettingsStore& store, QWidget* parent)
    : QDialog(parent), place_(place), store_(store) {
    setWindowTitle(title);
    setObjectName(QString::fromLatin1(place));
    setModal(true);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(kSpace * 5, kSpace * 5, kSpace * 5, kSpace * 4);
    layout->setSpacing(kSpace * 4);
    content_ = new QVBoxLayout;
    content_->setSpacing(kSpace * 3);
    layout->addLayout(content_, 1);
    buttons_ = new QHBoxLayout;
    buttons_->setSpacing(kSpace * 2);
    buttons_->addStretch(1);
    layout->addLayout(buttons_);
    for (const int key : {Qt::Key_Return, Qt::Key_Enter}) {
        auto* const shortcut = new QShortcut(QKeySequence(Qt::CTRL | key), this);
        connect(shortcut, &QShortcut::activated, this, [this] {
            if (main_)
                main_->click();
        });
    }
}

QPushButton* DialogFrame::AddButton(const QString& text) {
    auto* const button = new QPushButton(text, this);
    button->setAutoDefault(false);
    buttons_->addWidget(button);
    return button;
}

QPushButton* DialogFrame::AddSideButton(const QString& text) {
    auto* const button = new QPushButton(text, this);
    button->setAutoDefault(false);
    buttons_->insertWidget(sideButtons_++, button);
    return button;
}

void DialogFrame::SetMainButton(QPushButton* button) {
    main_ = button;
    button->setDefault(true);
}

void DialogFrame::done(int result) {
    StorePlace();
    QDialog::done(result);
}

void DialogFrame::showEvent(QShowEvent* event) {
    if (!std::exchange(isPlaced_, true))
        RestorePlace();
    GrowToFit();
    QDialog::showEvent(event);
}

// A dialog takes no notice of the lines that a text needs when it is wrapped.
void DialogFrame::GrowToFit() {
    const int needed = layout()->hasHeightForWidth() ? layout()->totalMinimumHeightForWidth(width()) : 0;
    if (needed > height())
        resize(width(), needed);
}

void DialogFrame::RestorePlace() {
    if (const std::optional<QRect> place = StoredWindowPlace(store_, place_)) {
        resize(place->size().expandedTo(minimumSizeHint()));
        move(place->topLeft());
    }
}

void DialogFrame::StorePlace() {
    StoreWindowPlace(store_, place_, *this);
}

}  // namespace lore
