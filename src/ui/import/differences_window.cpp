#include "ui/import/differences_window.h"

#include <QLabel>
#include <QPushButton>
#include <QSplitter>
#include <QTextEdit>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "base/utf8.h"
#include "rtf/rtf.h"
#include "ui/board/rich_text_view.h"
#include "ui/controls/dialog_parts.h"
#include "ui/controls/list_columns.h"
#include "ui/controls/quiet_view.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"
#include "ui/look/window_place.h"

namespace lore {

namespace {

constexpr int kRows = 8;

/// Where each character of a text begins in the screen's form of it, and behind the last one its end.
std::vector<int> ScreenPositions(const std::string& utf8) {
    std::vector<int> positions;
    int at = 0;
    for (const char c : utf8) {
        if (IsContinuation(c))
            continue;
        positions.push_back(at);
        at += SequenceLength(c) == 4 ? 2 : 1;
    }
    positions.push_back(at);
    return positions;
}

/// Underlines words. Where list marks stand in the shown text its positions are others; then the lines alone are
/// marked.
void MarkWords(QTextEdit& edit, const std::string& text, const std::vector<TextRange>& words) {
    const std::vector<int> positions = ScreenPositions(text);
    if (edit.document()->characterCount() != positions.back() + 1)
        return;
    QList<QTextEdit::ExtraSelection> selections;
    for (const TextRange& word : words) {
        if (word.begin >= positions.size() || word.end >= positions.size())
            continue;
        QTextEdit::ExtraSelection selection;
        selection.cursor = QTextCursor(edit.document());
        selection.cursor.setPosition(positions[word.begin]);
        selection.cursor.setPosition(positions[word.end], QTextCursor::KeepAnchor);
        selection.format.setUnderlineStyle(QTextCharFormat::DashUnderline);
        selection.format.setFontWeight(QFont::Bold);
        selections.append(selection);
    }
    edit.setExtraSelections(selections);
}

}  // namespace

DifferencesWindow::DifferencesWindow(const ImportDifferences& differences, const Theme& theme, SettingsStore& store,
                                     QWidget* parent)
    : DialogFrame(tr("Note Differences"), "NoteDifferences", store, parent) {
    if (!differences.head.empty()) {
        auto* const head = new QLabel(ToQString(differences.head), this);
        head->setWordWrap(true);
        Content()->addWidget(head);
    }
    MakeRows(differences.rows, store);
    auto* const texts = new QSplitter(Qt::Horizontal, this);
    texts->setChildrenCollapsible(false);
    texts->addWidget(
        MakeText(tr("Import Note's Text:"), differences.importRtf, differences.text.words, theme)->parentWidget());
    texts->addWidget(MakeText(tr("Database Note's Text:"), differences.databaseRtf, differences.text.otherWords, theme)
                         ->parentWidget());
    KeepSplit(*texts, store, "NoteDifferencesSplit");
    Content()->addWidget(texts, 1);
    QPushButton* const close = AddButton(tr("&Close"));
    SetMainButton(close);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
}

void DifferencesWindow::MakeRows(const std::vector<DifferenceRow>& rows, SettingsStore& store) {
    auto* const list = new QuietView<QTreeWidget>(this);
    list->setObjectName("differences");
    list->setAccessibleName(tr("Differences"));
    list->setRootIsDecorated(false);
    list->setHeaderLabels({tr("Difference"), tr("Import Note"), tr("Database Note")});
    for (const DifferenceRow& row : rows) {
        auto* const item =
            new QTreeWidgetItem(list, {ToQString(row.name), ToQString(row.importText), ToQString(row.databaseText)});
        for (int column = 0; column < list->columnCount(); ++column)
            item->setToolTip(column, item->text(column));
    }
    (new ListColumns(*list, store, "NoteDifferencesColumns"))->Fit();
    list->setMinimumHeight(list->fontMetrics().height() * kRows);
    Content()->addWidget(list);
}

QTextEdit* DifferencesWindow::MakeText(const QString& label, const std::string& rtf,
                                       const std::vector<TextRange>& words, const Theme& theme) {
    auto* const frame = new QWidget(this);
    auto* const column = MakeInner<QVBoxLayout>(frame, kSpace);
    auto* const edit = new QTextEdit(frame);
    edit->setReadOnly(true);
    edit->setAccessibleName(label);
    edit->setObjectName(label);
    edit->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    column->addWidget(MakeLabel(label, edit, frame));
    column->addWidget(edit, 1);
    const Document document = ReadRtf(rtf);
    RichTextLook look;
    look.ground = palette().color(QPalette::Base);
    look.dotsPerInch = logicalDpiX();
    std::unique_ptr<QTextDocument> shown = ShowRichText(document, look, theme);
    shown->setParent(edit);
    edit->setDocument(shown.release());
    MarkWords(*edit, document.text, words);
    return edit;
}

}  // namespace lore
