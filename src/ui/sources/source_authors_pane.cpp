#include "ui/sources/source_authors_pane.h"

#include <QApplication>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <algorithm>
#include <iterator>

#include "ui/controls/dialog_parts.h"
#include "ui/controls/empty_line.h"
#include "ui/controls/quiet_view.h"
#include "ui/controls/text_field.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"
#include "ui/sources/source_dialog.h"

namespace lore {

namespace {

constexpr int kListChars = 24;
constexpr int kListRows = 7;

int32_t IdOf(const QListWidgetItem* item) {
    return item ? item->data(Qt::UserRole).toInt() : -1;
}

void FillList(QListWidget& list, const std::vector<AuthorLine>& lines) {
    const QSignalBlocker quiet(list);
    list.clear();
    for (const AuthorLine& line : lines) {
        auto* const item = new QListWidgetItem(ToQString(line.name).simplified(), &list);
        item->setData(Qt::UserRole, line.id);
        item->setFlags(item->flags() & ~Qt::ItemIsDropEnabled);
    }
}

}  // namespace

SourceAuthorsPane::SourceAuthorsPane(SourceAuthors& authors, const Theme& theme, QWidget* parent)
    : PanelSection(tr("Set Authors"), theme, parent), authors_(authors) {
    Body()->setSpacing(kSpace * 2);
    MakeLists(theme);
    MakeNames();
    ConnectLists();
    Fill();
}

void SourceAuthorsPane::MakeLists(const Theme& theme) {
    auto* const grid = new QGridLayout;
    grid->setHorizontalSpacing(kSpace * 3);
    grid->setVerticalSpacing(kSpace);
    available_ = new QuietView<QListWidget>(this);
    available_->setObjectName("availableAuthors");
    available_->setUniformItemSizes(true);
    taken_ = new QuietView<QListWidget>(this);
    taken_->setObjectName("sourceAuthors");
    taken_->setDragDropMode(QAbstractItemView::InternalMove);
    taken_->setDefaultDropAction(Qt::MoveAction);
    for (QListWidget* const list : {available_, taken_}) {
        list->setMinimumWidth(list->fontMetrics().averageCharWidth() * kListChars);
        list->setMinimumHeight(list->fontMetrics().height() * kListRows);
    }
    new EmptyLine(*available_, tr("Type a name below. \"Add New\" puts it here."));
    new EmptyLine(*taken_, tr("Double-click a name under \"Available Authors\" to put it here."));
    grid->addWidget(MakeFieldLabel(tr("A&vailable Authors:"), available_, this), 0, 0);
    grid->addWidget(MakeFieldLabel(tr("So&urce Authors:"), taken_, this), 0, 1);
    grid->addWidget(available_, 1, 0);
    grid->addWidget(taken_, 1, 1);
    grid->addWidget(MakeHint(tr("Dbl-Clk name to add author."), theme, this), 2, 0, Qt::AlignTop);
    grid->addWidget(
        MakeHint(tr("Dbl-Clk name to remove author.") + QLatin1Char('\n') + tr("Drag names to change order."), theme,
                 this),
        2, 1, Qt::AlignTop);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(1, 1);
    Body()->addLayout(grid, 1);
}

void SourceAuthorsPane::MakeNames() {
    auto* const grid = new QGridLayout;
    grid->setHorizontalSpacing(kSpace * 2);
    grid->setVerticalSpacing(kSpace);
    first_ = NewTextField(this);
    middle_ = NewTextField(this);
    last_ = NewTextField(this);
    first_->setObjectName("first");
    middle_->setObjectName("middle");
    last_->setObjectName("last");
    const std::tuple<QString, QLineEdit*, int> fields[] = {
        {tr("&First:"), first_, 3}, {tr("&M.I.:"), middle_, 1}, {tr("&Last:"), last_, 3}};
    int column = 0;
    for (const auto& [text, field, stretch] : fields) {
        grid->addWidget(MakeFieldLabel(text, field, this), 0, column);
        grid->addWidget(field, 1, column);
        grid->setColumnStretch(column++, stretch);
        field->installEventFilter(this);
    }
    Body()->addLayout(grid);
    auto* const buttons = new QHBoxLayout;
    QPushButton* const add = MakeButton(tr("&Add New"), this);
    add->setObjectName("addAuthor");
    update_ = MakeButton(tr("U&pdate"), this);
    update_->setObjectName("updateAuthor");
    delete_ = MakeButton(tr("&Delete"), this);
    delete_->setObjectName("deleteAuthor");
    for (QPushButton* const button : {add, update_, delete_})
        buttons->addWidget(button);
    buttons->addStretch(1);
    Body()->addLayout(buttons);
    connect(add, &QPushButton::clicked, this, &SourceAuthorsPane::AddNew);
    connect(update_, &QPushButton::clicked, this, &SourceAuthorsPane::Update);
    connect(delete_, &QPushButton::clicked, this, &SourceAuthorsPane::Delete);
}

void SourceAuthorsPane::ConnectLists() {
    connect(available_, &QListWidget::itemSelectionChanged, this, &SourceAuthorsPane::ShowName);
    connect(available_, &QListWidget::itemActivated, this, &SourceAuthorsPane::Append);
    connect(taken_, &QListWidget::itemActivated, this, &SourceAuthorsPane::Remove);
    AddListKey(available_, QKeySequence::Delete, [this] { Delete(); });
    AddListKey(taken_, QKeySequence::Delete, [this] { Remove(); });
    AddListKey(taken_, QKeySequence(Qt::ALT | Qt::Key_Up), [this] { MoveCurrentRow(*taken_, -1); });
    AddListKey(taken_, QKeySequence(Qt::ALT | Qt::Key_Down), [this] { MoveCurrentRow(*taken_, 1); });
    connect(taken_->model(), &QAbstractItemModel::rowsMoved, this, &SourceAuthorsPane::Reordered);
    taken_->setToolTip(tr("Alt+Up and Alt+Down move a name too"));
}

void SourceAuthorsPane::Fill() {
    FillList(*available_, authors_.Available());
    FillList(*taken_, authors_.OfSource());
    ShowName();
}

int32_t SourceAuthorsPane::SelectedAvailable() const {
    const QList<QListWidgetItem*> selected = available_->selectedItems();
    return selected.isEmpty() ? -1 : IdOf(selected.first());
}

void SourceAuthorsPane::SelectAvailable(int32_t id) {
    for (int row = 0; row < available_->count(); ++row) {
        if (IdOf(available_->item(row)) == id)
            available_->setCurrentRow(row);
    }
    ShowName();
}

void SourceAuthorsPane::ShowName() {
    const CAuthor* const author = authors_.Find(SelectedAvailable());
    const CAuthor shown = author ? *author : CAuthor();
    first_->setText(ToQString(shown.first));
    middle_->setText(ToQString(shown.middle));
    last_->setText(ToQString(shown.last));
    update_->setEnabled(author != nullptr);
    delete_->setEnabled(author != nullptr);
}

bool SourceAuthorsPane::HasTypedName() const {
    const QLineEdit* const fields[] = {first_, middle_, last_};
    return std::any_of(std::begin(fields), std::end(fields), [](const QLineEdit* field) {
        return field->isModified() && !field->text().trimmed().isEmpty();
    });
}

CAuthor SourceAuthorsPane::TypedName() const {
    CAuthor name;
    name.AuthorID = SelectedAvailable();
    name.first = FromQString(first_->text());
    name.middle = FromQString(middle_->text());
    name.last = FromQString(last_->text());
    return name;
}

void SourceAuthorsPane::AddNew() {
    emit Tries([this] {
        const std::optional<int32_t> id = authors_.AddNew(TypedName());
        if (!id) {
            QApplication::beep();
            return false;
        }
        Fill();
        SelectAvailable(*id);
        available_->setFocus();
        return true;
    });
}

void SourceAuthorsPane::Update() {
    emit Tries([this] {
        const CAuthor name = TypedName();
        if (!authors_.Update(name))
            return false;
        Fill();
        SelectAvailable(name.AuthorID);
        emit Changed();
        return true;
    });
}

void SourceAuthorsPane::Delete() {
    emit Tries([this] {
        if (!authors_.Delete(SelectedAvailable()))
            return false;
        Fill();
        emit Changed();
        return true;
    });
}

void SourceAuthorsPane::Append() {
    const int row = available_->currentRow();
    authors_.Append(IdOf(available_->currentItem()));
    Fill();
    available_->setCurrentRow(std::min(row, available_->count() - 1), QItemSelectionModel::NoUpdate);
    emit Changed();
}

void SourceAuthorsPane::Remove() {
    const int row = taken_->currentRow();
    authors_.Remove(IdOf(taken_->currentItem()));
    Fill();
    taken_->setCurrentRow(std::min(row, taken_->count() - 1));
    emit Changed();
}

void SourceAuthorsPane::Reordered() {
    std::vector<int32_t> order;
    order.reserve(static_cast<size_t>(taken_->count()));
    for (int row = 0; row < taken_->count(); ++row)
        order.push_back(IdOf(taken_->item(row)));
    authors_.Reorder(order);
    emit Changed();
}

bool SourceAuthorsPane::eventFilter(QObject* watched, QEvent* event) {
    const auto* const key = event->type() == QEvent::KeyPress ? static_cast<QKeyEvent*>(event) : nullptr;
    const bool isEnter =
        key && key->modifiers() == Qt::NoModifier && (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter);
    if (!isEnter)
        return PanelSection::eventFilter(watched, event);
    // In the parts of a name Enter is for the name, not for the dialog.
    AddNew();
    return true;
}

}  // namespace lore
