#include "ui/options/font_dialog.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QDoubleSpinBox>
#include <QFontComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <cmath>

#include "base/rgb.h"
#include "ui/controls/dialog_parts.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"
#include "ui/options/option_controls.h"

namespace lore {

namespace {

constexpr double kPointsPerPixel = 0.75;
constexpr int kNormalWeight = 400, kBoldWeight = 700;
constexpr int kSampleLines = 3;

uint32_t ColorOf(const QColor& color) {
    return MakeRgb(static_cast<unsigned>(color.red()), static_cast<unsigned>(color.green()),
                   static_cast<unsigned>(color.blue()));
}

}  // namespace

QFont ToQFont(const FontSetting& font) {
    QFont shown(ToQString(font.faceName));
    shown.setPixelSize(std::max(std::abs(font.height), 1));
    shown.setWeight(font.weight >= kBoldWeight ? QFont::Bold : QFont::Normal);
    shown.setItalic(font.italic);
    shown.setUnderline(font.underline);
    return shown;
}

FontDialog::FontDialog(const QString& title, const FontSetting& font, const Theme& theme, SettingsStore& store,
                       QWidget* parent)
    : DialogFrame(title, "ChooseFont", store, parent), theme_(theme), before_(font), color_(font.color) {
    Content()->addWidget(MakeControls(font));
    sample_ = new QLabel(tr("The lamp was lit at dusk"), this);
    sample_->setObjectName("sample");
    sample_->setAccessibleName(tr("Sample"));
    sample_->setAlignment(Qt::AlignCenter);
    sample_->setAutoFillBackground(true);
    sample_->setMinimumHeight(fontMetrics().height() * kSampleLines);
    Content()->addWidget(sample_, 1);
    QPushButton* const take = AddButton(tr("&OK"));
    SetMainButton(take);
    connect(take, &QPushButton::clicked, this, &QDialog::accept);
    connect(AddButton(tr("&Cancel")), &QPushButton::clicked, this, &QDialog::reject);
    GiveAltKeys(*this, "oc");
    connect(&theme_, &Theme::Changed, this, &FontDialog::ShowSample);
    ShowSample();
}

QWidget* FontDialog::MakeControls(const FontSetting& font) {
    auto* const box = new QWidget(this);
    auto* const form = new QFormLayout(box);
    form->setContentsMargins(0, 0, 0, 0);
    face_ = new QFontComboBox(box);
    face_->setCurrentFont(QFont(ToQString(font.faceName)));
    face_->setEditText(ToQString(font.faceName));
    size_ = new QDoubleSpinBox(box);
    size_->setRange(6, 72);
    size_->setDecimals(1);
    size_->setSingleStep(kPointsPerPixel * 2);
    size_->setSuffix(tr(" pt"));
    size_->setValue(std::abs(font.height) * kPointsPerPixel);
    form->addRow(tr("Font"), face_);
    form->addRow(tr("Size"), size_);
    auto* const row = new QHBoxLayout;
    const std::tuple<QCheckBox**, QString, bool> boxes[] = {{&bold_, tr("Bold"), font.weight >= kBoldWeight},
                                                            {&italic_, tr("Italics"), font.italic},
                                                            {&underline_, tr("Underline"), font.underline}};
    for (const auto& [check, text, on] : boxes) {
        *check = new QCheckBox(text, box);
        (*check)->setChecked(on);
        row->addWidget(*check);
        connect(*check, &QCheckBox::toggled, this, &FontDialog::ShowSample);
    }
    colorButton_ = MakeButton(tr("Text Color..."), box);
    row->addWidget(colorButton_);
    form->addRow(row);
    connect(colorButton_, &QPushButton::clicked, this, &FontDialog::PickColor);
    connect(face_, &QComboBox::editTextChanged, this, &FontDialog::ShowSample);
    connect(size_, &QDoubleSpinBox::valueChanged, this, &FontDialog::ShowSample);
    return box;
}

void FontDialog::PickColor() {
    const QColor picked = QColorDialog::getColor(ToQColor(color_), this, tr("Text Color"));
    if (!picked.isValid())
        return;
    color_ = ColorOf(picked);
    ShowSample();
}

FontSetting FontDialog::Chosen() const {
    FontSetting font = before_;
    const QString face = face_->currentText().trimmed();
    if (!face.isEmpty())
        font.faceName = FromQString(face);
    font.height = static_cast<int32_t>(std::lround(size_->value() / kPointsPerPixel));
    if (bold_->isChecked() != (before_.weight >= kBoldWeight))
        font.weight = bold_->isChecked() ? kBoldWeight : kNormalWeight;
    font.italic = italic_->isChecked();
    font.underline = underline_->isChecked();
    font.color = color_;
    return font;
}

void FontDialog::ShowSample() {
    if (!sample_)
        return;
    sample_->setFont(ToQFont(Chosen()));
    const QColor ground = theme_.Color(ColorRole::Card);
    QPalette palette = sample_->palette();
    palette.setColor(QPalette::Window, ground);
    palette.setColor(QPalette::WindowText, Legible(ToQColor(color_), ground));
    sample_->setPalette(palette);
    colorButton_->setIcon(MakeSwatch(color_, theme_, *this));
}

}  // namespace lore
