#pragma once

#include "exchange/note_differences.h"
#include "ui/controls/dialog_frame.h"

class QTextEdit;

namespace lore {

class Theme;

/// A note of an archive beside the note of the NoteBook with its guid: what differs, and both texts, in which lines
/// that differ have a ground and words that only one of them has are underlined.
class DifferencesWindow : public DialogFrame {
    Q_OBJECT

public:
    DifferencesWindow(const ImportDifferences& differences, const Theme& theme, SettingsStore& store, QWidget* parent);

private:
    void MakeRows(const std::vector<DifferenceRow>& rows, SettingsStore& store);
    QTextEdit* MakeText(const QString& label, const std::string& rtf, const std::vector<TextRange>& words,
                        const Theme& theme);
};

}  // namespace lore
