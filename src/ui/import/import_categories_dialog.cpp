#include "ui/import/import_categories_dialog.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTabBar>
#include <QVBoxLayout>
#include <array>

#include "ui/look/theme.h"
#include "ui/note_editor/category_panel.h"

namespace lore {

namespace {

/// Of the bars over the tabs of the sets, blue in the high byte.
constexpr std::array<unsigned, kSetCount> kBarColors{9643033, 12606492, 14523978};
constexpr int kBarHeight = 6;
constexpr int kChars = 64;
constexpr int kLines = 20;

QColor ColorOfBar(int set) {
    const unsigned value = kBarColors[static_cast<size_t>(set - 1)];
    return QColor(static_cast<int>(value & 255), static_cast<int>(value >> 8 & 255), static_cast<int>(value >> 16));
}

}  // namespace

ImportCategoriesDialog::ImportCategoriesDialog(CategoryAssignment& paths, const Theme& theme, SettingsStore& store,
                                               QWidget* parent)
    : DialogFrame(tr("Change Categories of Selected Notes"), "ImportCategories", store, parent),
      panel_(new CategoryPanel(paths, theme, this)),
      bar_(new QWidget(this)) {
    auto* const text = new QLabel(
        tr("Every ticked note gets the paths that you set here. A set that stays empty is left as it is."), this);
    text->setWordWrap(true);
    bar_->setFixedHeight(kBarHeight);
    bar_->setAutoFillBackground(true);
    Content()->addWidget(text);
    Content()->addWidget(bar_);
    Content()->addWidget(panel_, 1);
    QPushButton* const ok = AddButton(tr("&OK"));
    SetMainButton(ok);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(AddButton(tr("&Cancel")), &QPushButton::clicked, this, &QDialog::reject);
    connect(panel_->Tabs(), &QTabBar::currentChanged, this, &ImportCategoriesDialog::ColorBar);
    ColorBar();
    resize(fontMetrics().averageCharWidth() * kChars, fontMetrics().height() * kLines);
    panel_->BoxAt(0)->setFocus();
}

void ImportCategoriesDialog::ColorBar() {
    QPalette colors = bar_->palette();
    colors.setColor(QPalette::Window, ColorOfBar(panel_->ActiveSet()));
    bar_->setPalette(colors);
}

}  // namespace lore
