#include "ui/sources/edit_source_types_dlg.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>

#include "ui/controls/dialog_parts.h"
#include "ui/controls/quiet_view.h"
#include "ui/controls/text_field.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"
#include "ui/ports/quit_guard.h"

namespace lore {

namespace {

constexpr int kTypeChars = 26;
constexpr int kFieldChars = 34;
constexpr int kListRows = 12;

struct Flag {
    const char* text;
    bool CCustomSourceField::*member;
};
constexpr Flag kFlags[] = {{"&Underline", &CCustomSourceField::underline},
                           {"&Italics", &CCustomSourceField::italics},
                           {"&Bold", &CCustomSourceField::bold}};

QListWidget* MakeList(const char* name, int chars, QWidget* parent) {
    auto* const list = new QuietView<QListWidget>(parent);
    list->setObjectName(name);
    list->setMinimumWidth(list->fontMetrics().averageCharWidth() * chars);
    list->setMinimumHeight(list->fontMetrics().height() * kListRows);
    return list;
}

int RowOf(const std::optional<size_t>& row) {
    return row ? static_cast<int>(*row) : -1;
}

std::optional<size_t> ToRow(int row) {
    return row < 0 ? std::nullopt : std::optional(static_cast<size_t>(row));
}

/// What a name shows in a list; an empty one still has a line.
QString ListText(const std::string& name) {
    return ToQString(name).simplified();
}

}  // namespace

CEditSourceTypesDlg::CEditSourceTypesDlg(CustomTypesEditor& editor, const SourceWindows& windows, QWidget* parent)
    : SourceDialog(tr("Custom Source Types"), "EditSourceTypes", windows, parent), editor_(editor) {
    auto* const columns = new QHBoxLayout;
    columns->setSpacing(kSpace * 6);
    columns->addWidget(MakeTypes(), 2);
    columns->addWidget(MakeFields(), 3);
    Content()->addLayout(columns, 1);
    QPushButton* const save = AddButton(tr("&Save"));
    save->setObjectName("save");
    SetMainButton(save);
    connect(save, &QPushButton::clicked, this, &CEditSourceTypesDlg::Save);
    connect(AddButton(tr("&Cancel")), &QPushButton::clicked, this, &QDialog::reject);
    ConnectFields();
    FillTypes();
    types_->setFocus();
}

QWidget* CEditSourceTypesDlg::MakeTypes() {
    auto* const box = new QWidget(this);
    auto* const layout = MakeInner<QVBoxLayout>(box, kSpace * 2);
    types_ = MakeList("types", kTypeChars, box);
    layout->addWidget(MakeFieldLabel(tr("Source &Types:"), types_, box));
    layout->addWidget(types_, 1);
    auto* const buttons = new QHBoxLayout;
    QPushButton* const add = MakeButton(tr("&New Type"), box);
    add->setObjectName("newType");
    deleteType_ = MakeButton(tr("&Delete"), box);
    buttons->addWidget(add);
    buttons->addWidget(deleteType_);
    buttons->addStretch(1);
    layout->addLayout(buttons);
    connect(add, &QPushButton::clicked, this, [this] {
        editor_.NewType();
        FillTypes();
        typeName_->setFocus();
        typeName_->selectAll();
    });
    const auto remove = [this] {
        editor_.DeleteType();
        FillTypes();
    };
    connect(deleteType_, &QPushButton::clicked, this, remove);
    AddListKey(types_, QKeySequence::Delete, remove);
    connect(types_, &QListWidget::currentRowChanged, this, [this](int row) {
        editor_.SelectType(ToRow(row));
        FillFields();
    });
    return box;
}

QWidget* CEditSourceTypesDlg::MakeFields() {
    auto* const box = new QWidget(this);
    auto* const layout = MakeInner<QVBoxLayout>(box, kSpace * 2);
    typeName_ = NewTextField(box);
    typeName_->setObjectName("typeName");
    layout->addWidget(MakeFieldLabel(tr("Type Na&me:"), typeName_, box));
    layout->addWidget(typeName_);
    fields_ = MakeList("fields", kFieldChars, box);
    fields_->setMinimumHeight(fields_->fontMetrics().height() * kListRows / 2);
    fields_->setDragDropMode(QAbstractItemView::InternalMove);
    fields_->setDefaultDropAction(Qt::MoveAction);
    auto* const head = new QHBoxLayout;
    head->addWidget(MakeFieldLabel(tr("Fie&lds:"), fields_, box));
    head->addStretch(1);
    QLabel* const hint = MakeHint(tr("Drag names to change order"), Windows().theme, box);
    hint->setWordWrap(false);
    head->addWidget(hint);
    layout->addLayout(head);
    layout->addWidget(fields_, 1);
    auto* const buttons = new QHBoxLayout;
    addField_ = MakeButton(tr("&Add Field"), box);
    addField_->setObjectName("addField");
    deleteField_ = MakeButton(tr("Delete &Field"), box);
    deleteField_->setObjectName("deleteField");
    buttons->addWidget(addField_);
    buttons->addWidget(deleteField_);
    buttons->addStretch(1);
    layout->addLayout(buttons);
    layout->addWidget(MakeFieldForm());
    return box;
}

QWidget* CEditSourceTypesDlg::MakeFieldForm() {
    auto* const box = new QWidget(this);
    auto* const grid = MakeInner<QGridLayout>(box, kSpace * 2);
    fieldName_ = NewTextField(box);
    fieldName_->setObjectName("fieldName");
    end_ = new QComboBox(box);
    end_->setObjectName("endWith");
    for (int32_t mark = 0; mark < kEndMarks; ++mark)
        end_->addItem(ToQString(EndMarkName(mark)));
    grid->addWidget(MakeFieldLabel(tr("Nam&e:"), fieldName_, box), 0, 0);
    grid->addWidget(fieldName_, 0, 1, 1, 3);
    grid->addWidget(MakeFieldLabel(tr("End &with:"), end_, box), 1, 0);
    grid->addWidget(end_, 1, 1, 1, 3);
    for (size_t i = 0; i < flags_.size(); ++i) {
        flags_[i] = new QCheckBox(tr(kFlags[i].text), box);
        grid->addWidget(flags_[i], 2, static_cast<int>(i) + 1);
    }
    grid->setColumnStretch(3, 1);
    return box;
}

void CEditSourceTypesDlg::ConnectFields() {
    connect(typeName_, &QLineEdit::textEdited, this, [this](const QString& text) {
        editor_.SetTypeName(FromQString(text));
        if (types_->currentItem())
            types_->currentItem()->setText(ListText(editor_.Type()->name));
    });
    connect(fields_, &QListWidget::currentRowChanged, this, [this](int row) {
        editor_.SelectField(ToRow(row));
        ShowField();
    });
    connect(fields_->model(), &QAbstractItemModel::rowsMoved, this, &CEditSourceTypesDlg::FieldsMoved);
    AddListKey(fields_, QKeySequence(Qt::ALT | Qt::Key_Up), [this] { MoveCurrentRow(*fields_, -1); });
    AddListKey(fields_, QKeySequence(Qt::ALT | Qt::Key_Down), [this] { MoveCurrentRow(*fields_, 1); });
    connect(addField_, &QPushButton::clicked, this, [this] {
        editor_.AddField();
        FillFields();
        fieldName_->setFocus();
        fieldName_->selectAll();
    });
    const auto remove = [this] {
        editor_.DeleteField();
        FillFields();
    };
    connect(deleteField_, &QPushButton::clicked, this, remove);
    AddListKey(fields_, QKeySequence::Delete, remove);
    connect(fieldName_, &QLineEdit::textEdited, this, [this](const QString& text) {
        editor_.SetFieldName(FromQString(text));
        if (fields_->currentItem())
            fields_->currentItem()->setText(ListText(editor_.Field()->name));
    });
    for (size_t i = 0; i < flags_.size(); ++i)
        connect(flags_[i], &QCheckBox::clicked, this, [this, i](bool on) { editor_.SetFlag(kFlags[i].member, on); });
    connect(end_, &QComboBox::activated, this, [this](int mark) { editor_.SetEnd(mark); });
}

void CEditSourceTypesDlg::FillTypes() {
    {
        const QSignalBlocker quiet(types_);
        types_->clear();
        for (const CCustomSourceType& type : editor_.Types())
            types_->addItem(ListText(type.name));
        types_->setCurrentRow(RowOf(editor_.SelectedType()));
    }
    FillFields();
}

void CEditSourceTypesDlg::FillFields() {
    const CCustomSourceType* const type = editor_.Type();
    {
        const QSignalBlocker quiet(fields_);
        fields_->clear();
        for (size_t i = 0; type && i < type->fields.size(); ++i) {
            auto* const item = new QListWidgetItem(ListText(type->fields[i].name), fields_);
            item->setData(Qt::UserRole, static_cast<int>(i));
            // A row takes no drop upon itself: rows go between others.
            item->setFlags(item->flags() & ~Qt::ItemIsDropEnabled);
        }
        fields_->setCurrentRow(RowOf(editor_.SelectedField()));
    }
    typeName_->setText(type ? ToQString(type->name) : QString());
    typeName_->setPlaceholderText(type ? QString() : tr("\"New Type\" makes a source type of your own"));
    for (QWidget* const control : std::initializer_list<QWidget*>{typeName_, fields_, addField_, deleteType_})
        control->setEnabled(type != nullptr);
    ShowField();
}

void CEditSourceTypesDlg::ShowField() {
    const CCustomSourceField* const field = editor_.Field();
    fieldName_->setText(field ? ToQString(field->name) : QString());
    fieldName_->setEnabled(editor_.CanNameField());
    end_->setCurrentIndex(field ? field->end : -1);
    for (size_t i = 0; i < flags_.size(); ++i)
        flags_[i]->setChecked(field && field->*kFlags[i].member);
    for (QWidget* const control : std::initializer_list<QWidget*>{end_, deleteField_, flags_[0], flags_[1], flags_[2]})
        control->setEnabled(field != nullptr);
}

/// One row stands at another place than in the model.
void CEditSourceTypesDlg::FieldsMoved() {
    std::vector<int> order;
    order.reserve(static_cast<size_t>(fields_->count()));
    for (int row = 0; row < fields_->count(); ++row)
        order.push_back(fields_->item(row)->data(Qt::UserRole).toInt());
    int first = 0, last = fields_->count() - 1;
    while (first <= last && order[static_cast<size_t>(first)] == first)
        ++first;
    while (last > first && order[static_cast<size_t>(last)] == last)
        --last;
    if (first >= last)
        return;
    const bool down = order[static_cast<size_t>(last)] == first;
    editor_.MoveField(static_cast<size_t>(down ? first : last), static_cast<size_t>(down ? last : first));
    for (int row = 0; row < fields_->count(); ++row)
        fields_->item(row)->setData(Qt::UserRole, row);
    editor_.SelectField(ToRow(fields_->currentRow()));
    ShowField();
}

void CEditSourceTypesDlg::Save() {
    AcceptAfter([this] { return editor_.Save(); }, Windows().theme);
}

void CEditSourceTypesDlg::reject() {
    if (MayClose(*this, GetPrompts(), editor_.HasChanges(), "the source types", [this] { Save(); }))
        SourceDialog::reject();
}

}  // namespace lore
