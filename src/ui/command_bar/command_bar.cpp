#include "ui/command_bar/command_bar.h"

#include <QKeyEvent>
#include <QListView>
#include <QVBoxLayout>

#include "ui/command_bar/command_bar_model.h"
#include "ui/controls/text_field.h"
#include "ui/look/theme.h"

namespace lore {

namespace {

constexpr int kWidthInCharacters = 80;
constexpr int kRows = 12;

}  // namespace

CommandBar::CommandBar(const CommandFinder& finder, std::function<std::string(const FindableItem&)> textOf,
                       const Theme& theme, QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint), finder_(finder) {
    setObjectName("commandBar");
    setWindowTitle(tr("Command Bar"));
    setAccessibleName(tr("Command Bar"));
    field_ = NewTextField(this);
    field_->setObjectName("commandField");
    field_->setAccessibleName(tr("What to find"));
    field_->setPlaceholderText(tr("Find a command, NoteBook, category, source, key word or note"));
    field_->setFont(theme.Font(TextSize::Title));
    OfferClearing(*field_);
    AddLeadingIcon(*field_, theme.Icon("search", ColorRole::DimText), tr("Search"));
    field_->installEventFilter(this);
    model_ = new CommandBarModel(std::move(textOf), this);
    list_ = new QListView(this);
    list_->setObjectName("found");
    list_->setAccessibleName(tr("Found"));
    list_->setModel(model_);
    list_->setItemDelegate(new CommandBarDelegate(theme, this));
    list_->setUniformItemSizes(true);
    list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list_->setFocusPolicy(Qt::NoFocus);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(kSpace * 2, kSpace * 2, kSpace * 2, kSpace * 2);
    layout->setSpacing(kSpace * 2);
    layout->addWidget(field_);
    layout->addWidget(list_);
    connect(field_, &QLineEdit::textChanged, this, &CommandBar::Find);
    connect(list_, &QListView::clicked, this, &QDialog::accept);
    Find({});
}

FindableItem CommandBar::Chosen() const {
    const QModelIndex index = list_->currentIndex();
    return index.isValid() ? model_->ItemAt(index.row()) : FindableItem();
}

void CommandBar::Find(const QString& typed) {
    model_->Show(finder_, typed);
    list_->setCurrentIndex(model_->index(0));
    list_->scrollToTop();
}

bool CommandBar::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        auto* const key = static_cast<QKeyEvent*>(event);
        const int rows = model_->rowCount();
        const int row = list_->currentIndex().row();
        if ((key->key() == Qt::Key_Down || key->key() == Qt::Key_Up) && rows > 0) {
            const int step = key->key() == Qt::Key_Down ? 1 : rows - 1;
            list_->setCurrentIndex(model_->index((row + step) % rows));
            return true;
        }
        if (key->key() == Qt::Key_PageDown || key->key() == Qt::Key_PageUp) {
            const int target = row + (key->key() == Qt::Key_PageDown ? kRows : -kRows);
            list_->setCurrentIndex(model_->index(std::clamp(target, 0, std::max(rows - 1, 0))));
            return true;
        }
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            if (list_->currentIndex().isValid())
                accept();
            return true;
        }
    }
    return QDialog::eventFilter(object, event);
}

void CommandBar::showEvent(QShowEvent* event) {
    Place();
    field_->setFocus();
    QDialog::showEvent(event);
}

void CommandBar::Place() {
    const QWidget* const window = parentWidget();
    const int rows = (list_->fontMetrics().height() + kSpace * 3) * kRows;
    const int top = window->height() / 10;
    resize(std::min(fontMetrics().averageCharWidth() * kWidthInCharacters, window->width() - kSpace * 8),
           std::min(sizeHint().height() - list_->sizeHint().height() + rows, window->height() - top - kSpace * 4));
    move(window->mapToGlobal(QPoint((window->width() - width()) / 2, top)));
}

}  // namespace lore
