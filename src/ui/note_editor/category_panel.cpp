#include "ui/note_editor/category_panel.h"

#include <QLabel>
#include <QScrollArea>
#include <QTabBar>
#include <QVBoxLayout>

#include "ui/controls/dialog_parts.h"
#include "ui/controls/opening_combo.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"

namespace lore {

namespace {

// What the entries of a box stand for, besides ids of categories.
constexpr int kFree = -1;
constexpr int kCreate = -2;
constexpr int kClear = -3;

QString OneLine(const std::string& text) {
    return ToQString(text).simplified();
}

}  // namespace

CategoryPanel::CategoryPanel(CategoryAssignment& paths, const Theme& theme, QWidget* parent)
    : QWidget(parent), paths_(paths), theme_(theme), tabs_(new QTabBar(this)), scroll_(new QScrollArea(this)) {
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(kSpace * 2, kSpace * 2, kSpace * 2, kSpace * 2);
    layout->setSpacing(kSpace * 2);
    auto* const title = new QLabel(tr("Category Assignments"), this);
    for (int set = 1; set <= kSetCount; ++set) {
        tabs_->addTab(tr("Set &%1").arg(set));
        tabs_->setTabToolTip(set - 1, tr("Category Set %1").arg(set));
    }
    tabs_->setAccessibleName(title->text());
    tabs_->setExpanding(true);
    tabs_->setDocumentMode(true);
    auto* const holder = new QWidget(scroll_);
    list_ = MakeInner<QVBoxLayout>(holder, kSpace * 2);
    list_->addStretch(1);
    scroll_->setWidget(holder);
    scroll_->setWidgetResizable(true);
    scroll_->setFrameShape(QFrame::NoFrame);
    scroll_->setFocusPolicy(Qt::NoFocus);
    layout->addWidget(title);
    layout->addWidget(tabs_);
    layout->addWidget(scroll_, 1);
    connect(tabs_, &QTabBar::currentChanged, this, &CategoryPanel::Rebuild);
    Rebuild();
}

int CategoryPanel::ActiveSet() const {
    return tabs_->currentIndex() + 1;
}

void CategoryPanel::Rebuild() {
    const size_t levels = paths_.LevelCount(ActiveSet());
    const int last = static_cast<int>(levels);
    // A box that goes would leave no control with the focus.
    if (boxes_.indexOf(window()->focusWidget()) > last)
        boxes_[last]->setFocus(Qt::OtherFocusReason);
    while (boxes_.size() > last + 1)
        delete boxes_.takeLast();
    while (boxes_.size() < last + 1) {
        auto* const box = new OpeningCombo(this);
        const auto level = static_cast<size_t>(boxes_.size());
        NameBox(*box, tr("Level %1").arg(level + 1));
        box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        // The boxes are made anew, this one too, when the choice has been dealt with.
        connect(
            box, &QComboBox::activated, this, [this, level](int index) { Choose(level, index); }, Qt::QueuedConnection);
        list_->insertWidget(static_cast<int>(level), box);
        setTabOrder(boxes_.isEmpty() ? static_cast<QWidget*>(tabs_) : boxes_.last(), box);
        boxes_.append(box);
    }
    for (size_t level = 0; level <= levels; ++level)
        FillBox(*boxes_[static_cast<int>(level)], level);
}

void CategoryPanel::FillBox(QComboBox& box, size_t level) {
    const int set = ActiveSet();
    const int32_t chosen = paths_.ChosenID(set, level);
    const bool isFree = level >= paths_.LevelCount(set);
    box.clear();
    if (isFree)
        box.addItem(OneLine(paths_.BoxText(set, level)), kFree);
    for (const CategoryChoice& choice : paths_.Choices(set, level)) {
        const bool isChosen = !isFree && choice.id == chosen;
        box.addItem(isChosen ? OneLine(paths_.BoxText(set, level)) : OneLine(choice.name), choice.id);
    }
    if (!isFree && box.findData(chosen) < 0)
        box.insertItem(0, OneLine(paths_.BoxText(set, level)), chosen);
    if (!isFree)
        box.addItem(tr("Remove From This Level On"), kClear);
    if (paths_.CanCreate(set, level))
        box.addItem(QString::fromLatin1(kCreateCategoryText), kCreate);
    box.setCurrentIndex(box.findData(isFree ? kFree : chosen));
    box.setToolTip(box.currentText());
}

void CategoryPanel::Choose(size_t level, int index) {
    const int set = ActiveSet();
    if (static_cast<int>(level) >= boxes_.size() || index < 0)
        return;
    const int chosen = boxes_[static_cast<int>(level)]->itemData(index).toInt();
    if (chosen == kCreate)
        paths_.CreateCategory(set, level);
    else if (chosen == kClear)
        paths_.ClearFrom(set, level);
    else if (chosen != kFree)
        paths_.Choose(set, level, chosen);
    Rebuild();
    emit Changed();
}

}  // namespace lore
