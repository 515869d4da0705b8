#include "ui/sources/source_dialog.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QLabel>
#include <QListWidget>
#include <QVBoxLayout>

#include "ui/look/theme.h"

namespace lore {

SourceDialog::SourceDialog(const QString& title, const char* place, const SourceWindows& windows, QWidget* parent)
    : DialogFrame(title, place, windows.store, parent), windows_(windows) {
    bar_ = &DialogFrame::Faults(windows.theme);
    faults_.SetBar(bar_);
    before_ = windows.commands.ShowFaultsIn(&faults_);
}

SourceDialog::~SourceDialog() {
    windows_.commands.ShowFaultsIn(before_);
    faults_.SetBar(nullptr);
}

QLabel* MakeHint(const QString& text, const Theme& theme, QWidget* parent) {
    auto* const label = new QLabel(text, parent);
    label->setFont(theme.Font(TextSize::Small));
    label->setWordWrap(true);
    const auto restyle = [label, &theme] {
        QPalette palette = label->palette();
        palette.setColor(QPalette::WindowText, theme.Color(ColorRole::DimText));
        label->setPalette(palette);
    };
    restyle();
    QObject::connect(&theme, &Theme::Changed, label, restyle);
    return label;
}

void MoveCurrentRow(QListWidget& list, int by) {
    const int from = list.currentRow(), to = from + by;
    if (from < 0 || to < 0 || to >= list.count())
        return;
    list.model()->moveRow({}, from, {}, to > from ? to + 1 : to);
    list.setCurrentRow(to);
}

}  // namespace lore
