#include "ui/sources/source_dialogs.h"

#include "sources/custom_types_editor.h"
#include "sources/source_browser.h"
#include "sources/source_editor.h"
#include "ui/sources/edit_source_dlg.h"
#include "ui/sources/edit_source_types_dlg.h"
#include "ui/sources/view_sources_dlg.h"

namespace lore {

std::optional<int32_t> SourceDialogs::SelectSource(QWidget* parent) const {
    SourceBrowser browser(commands.Sources(), true);
    CViewSourcesDlg dialog(browser, *this, parent);
    const bool chosen = dialog.exec() == QDialog::Accepted && browser.SelectedID() > 0;
    return chosen ? std::optional(browser.SelectedID()) : std::nullopt;
}

void SourceDialogs::ViewSources(QWidget* parent) const {
    SourceBrowser browser(commands.Sources(), false);
    CViewSourcesDlg(browser, *this, parent).exec();
}

std::optional<int32_t> SourceDialogs::EditSource(const CSource* source, QWidget* parent) const {
    SourceEditor editor =
        source ? SourceEditor::ForSource(commands.Sources(), *source) : SourceEditor::ForNew(commands.Sources());
    CEditSourceDlg dialog(editor, *this, parent);
    return dialog.exec() == QDialog::Accepted ? std::optional(editor.Working().SourceID) : std::nullopt;
}

bool SourceDialogs::EditTypes(QWidget* parent) const {
    CustomTypesEditor editor(commands.Sources());
    return CEditSourceTypesDlg(editor, *this, parent).exec() == QDialog::Accepted;
}

}  // namespace lore
