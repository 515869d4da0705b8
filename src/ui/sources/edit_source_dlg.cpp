#include "ui/sources/edit_source_dlg.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <algorithm>

#include "ui/look/qt_text.h"
#include "ui/ports/quit_guard.h"
#include "ui/sources/source_authors_pane.h"
#include "ui/sources/source_date_field.h"
#include "ui/sources/source_fields_pane.h"
#include "ui/sources/source_preview_wnd.h"

namespace lore {

CEditSourceDlg::CEditSourceDlg(SourceEditor& editor, const SourceWindows& windows, QWidget* parent)
    : SourceDialog(tr("Edit Source"), "EditSource", windows, parent), editor_(editor) {
    MakeLayout();
    QPushButton* const save = AddButton(tr("&Save"));
    save->setObjectName("save");
    SetMainButton(save);
    connect(save, &QPushButton::clicked, this, &CEditSourceDlg::Save);
    connect(AddButton(tr("&Cancel")), &QPushButton::clicked, this, &QDialog::reject);
    connect(type_, &QComboBox::activated, this, &CEditSourceDlg::TypeChosen);
    connect(style_, &QComboBox::activated, this, &CEditSourceDlg::StyleChosen);
    const auto typed = [this](size_t slot) {
        return [this, slot](const QString& text) {
            editor_.SetField(slot, FromQString(text));
            ShowPreview();
        };
    };
    connect(title_, &QLineEdit::textEdited, this, typed(0));
    connect(publication_, &QComboBox::editTextChanged, this, typed(1));
    connect(publication_, &QComboBox::activated, this,
            [this, typed](int line) { typed(1)(publication_->itemData(line).toString()); });
    connect(indent_, &QSpinBox::valueChanged, this, [this](int value) {
        editor_.SetIndentSpaces(value);
        ShowPreview();
    });
    connect(etAl_, &QSpinBox::valueChanged, this, [this](int value) {
        editor_.SetAuthorsBeforeEtAl(value);
        ShowPreview();
    });
    connect(date_, &SourceDateField::Changed, this, &CEditSourceDlg::ShowPreview);
    connect(authors_, &SourceAuthorsPane::Tries, Faults(), &FaultBar::Run);
    connect(authors_, &SourceAuthorsPane::Changed, this, &CEditSourceDlg::ShowPreview);
    connect(fields_, &SourceFieldsPane::Changed, this, &CEditSourceDlg::ShowPreview);
    FillTypes();
    ShowType();
    ShowPreview();
    title_->setFocus();
}

void CEditSourceDlg::FillTypes() {
    type_->clear();
    for (const TypeChoice& choice : editor_.Types())
        type_->addItem(ToQString(choice.name).simplified());
    const size_t line = editor_.TypeIndex();
    type_->setCurrentIndex(line < editor_.Types().size() ? static_cast<int>(line) : -1);
}

void CEditSourceDlg::TypeChosen(int line) {
    editor_.ChangeType(static_cast<size_t>(line));
    ShowType();
    ShowPreview();
}

void CEditSourceDlg::StyleChosen(int line) {
    editor_.ChangeStyle(style_->itemData(line).toInt());
    ShowPreview();
}

void CEditSourceDlg::ShowType() {
    const bool isCustom = editor_.IsCustom();
    const std::string_view label = FieldLabel(editor_.Working().SourceType, 1);
    const bool isOrganization = label.starts_with("Org");
    publicationLabel_->setText(isOrganization ? tr("Organi&zation:") : tr("Pu&blication/Publisher:"));
    publication_->setAccessibleName(isOrganization ? tr("Organization") : tr("Publication/Publisher"));
    publicationLabel_->setVisible(!isCustom);
    publication_->setVisible(!isCustom);
    date_->Fill();
    fields_->Fill();
}

void CEditSourceDlg::ShowPreview() {
    preview_->Show(editor_.Formatted());
}

void CEditSourceDlg::EditTypes() {
    if (!Windows().EditTypes(this))
        return;
    editor_.TypesReplaced();
    FillTypes();
    ShowType();
    ShowPreview();
}

void CEditSourceDlg::Save() {
    if (authors_->HasTypedName() &&
        GetPrompts().Ask(
            "The name that you have typed isn't an author yet.  \"Add New\" makes it one.\n\nDo you wish to "
            "save this source without it?",
            "Save Without the Name?") != PromptAnswer::Yes)
        return;
    const auto save = [this] {
        const bool isSaved = editor_.Save();
        if (!isSaved && editor_.Field(0).empty())
            title_->setFocus();
        return isSaved;
    };
    AcceptAfter(save, Windows().theme);
}

void CEditSourceDlg::reject() {
    if (MayClose(*this, GetPrompts(), editor_.HasChanges(), "this source", [this] { Save(); }))
        SourceDialog::reject();
}

}  // namespace lore
