#include "ui/options/general_page.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include "base/rgb.h"
#include "ui/controls/dialog_parts.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"
#include "ui/options/font_dialog.h"
#include "ui/options/option_controls.h"

namespace lore {

namespace {

constexpr int kMostTyped = 999;

QString Described(const FontSetting& font) {
    return QStringLiteral("%1, %2 pt").arg(ToQString(font.faceName)).arg(std::abs(font.height) * 0.75);
}

}  // namespace

OptionChoosers DialogChoosers(const Theme& theme, SettingsStore& store) {
    OptionChoosers choosers;
    choosers.font = [&theme, &store](const QString& title, const FontSetting& now,
                                     QWidget* parent) -> std::optional<FontSetting> {
        FontDialog dialog(title, now, theme, store, parent);
        return dialog.exec() == QDialog::Accepted ? std::optional(dialog.Chosen()) : std::nullopt;
    };
    choosers.color = [](const QString& title, uint32_t now, QWidget* parent) -> std::optional<uint32_t> {
        const QColor picked = QColorDialog::getColor(ToQColor(now), parent, title);
        if (!picked.isValid())
            return std::nullopt;
        return MakeRgb(static_cast<unsigned>(picked.red()), static_cast<unsigned>(picked.green()),
                       static_cast<unsigned>(picked.blue()));
    };
    return choosers;
}

COptGeneralPg::COptGeneralPg(OptionsWorld& world, Theme& theme, OptionChoosers choosers, QWidget* parent)
    : QWidget(parent), model_(world), theme_(theme), choosers_(std::move(choosers)) {
    auto* const columns = new QHBoxLayout(this);
    columns->setContentsMargins(kSpace * 4, kSpace * 4, kSpace * 4, kSpace * 4);
    columns->setSpacing(kSpace * 8);
    columns->addWidget(MakeNotes(), 1, Qt::AlignTop);
    auto* const right = new QVBoxLayout;
    right->setSpacing(kSpace * 5);
    right->addWidget(MakeLook());
    right->addWidget(MakeWork());
    right->addStretch(1);
    columns->addLayout(right, 1);
    connect(&theme_, &Theme::Changed, this, &COptGeneralPg::ShowChoices);
    ShowChoices();
}

QWidget* COptGeneralPg::MakeNotes() {
    QVBoxLayout* body = nullptr;
    QWidget* const section = MakeOptionSection(tr("Notes on the board"), theme_, body, this);
    for (const OptionBox& box : GeneralPage::NoteBoxes()) {
        body->addWidget(MakeOptionBox(
            box, model_.IsOn(box.option), [this, &box](bool on) { model_.SetOn(box, on); }, section));
        if (box.option == Option::SourceTop)
            AddSourceSize(*body, section);
    }
    return section;
}

void COptGeneralPg::AddSourceSize(QVBoxLayout& body, QWidget* parent) {
    auto* const row = new QHBoxLayout;
    auto* const size = new QSpinBox(parent);
    size->setObjectName("sourceSize");
    size->setAccessibleName(tr("Source Text Size:"));
    size->setRange(0, kMostTyped);
    // A number is taken once it is typed whole.
    size->setKeyboardTracking(false);
    size->setValue(model_.SourceSize());
    row->addWidget(MakeLabel(tr("Source Text Size:"), size, parent));
    row->addWidget(size);
    row->addStretch(1);
    body.addLayout(row);
    connect(size, &QSpinBox::valueChanged, this,
            [this, size](int value) { size->setValue(model_.SetSourceSize(value)); });
}

QPushButton* COptGeneralPg::AddButton(QVBoxLayout& body, const char* name, const QString& text) {
    QPushButton* const button = MakeButton(text, this);
    button->setObjectName(QString::fromLatin1(name));
    body.addWidget(button, 0, Qt::AlignLeft);
    return button;
}

QWidget* COptGeneralPg::MakeLook() {
    QVBoxLayout* body = nullptr;
    QWidget* const section = MakeOptionSection(tr("Look"), theme_, body, this);
    auto* const row = new QHBoxLayout;
    auto* const looks = new QComboBox(section);
    looks->setObjectName("appearance");
    looks->addItems({tr("System"), tr("Light"), tr("Dark")});
    looks->setCurrentIndex(static_cast<int>(theme_.GetAppearance()));
    row->addWidget(MakeFieldLabel(tr("Appearance:"), looks, section));
    row->addWidget(looks);
    row->addStretch(1);
    body->addLayout(row);
    connect(looks, &QComboBox::currentIndexChanged, this, [this](int index) {
        model_.SetAppearance(index);
        theme_.SetAppearance(static_cast<Appearance>(index));
    });
    editFont_ = AddButton(*body, "editFont", tr("Set Default Edit Note Font"));
    body->addWidget(editSample_ = MakeRemark({}, theme_, section));
    titleFont_ = AddButton(*body, "titleFont", tr("Set Picture Title Font"));
    body->addWidget(titleSample_ = MakeRemark({}, theme_, section));
    ground_ = AddButton(*body, "selectedGround", tr("Set Selected Note Text Background Color"));
    connect(editFont_, &QPushButton::clicked, this, [this] {
        ChooseFont(tr("Set Default Edit Note Font"), &GeneralPage::EditFont, &GeneralPage::SetEditFont);
    });
    connect(titleFont_, &QPushButton::clicked, this, [this] {
        ChooseFont(tr("Set Picture Title Font"), &GeneralPage::PictureTitleFont, &GeneralPage::SetPictureTitleFont);
    });
    connect(ground_, &QPushButton::clicked, this, [this] {
        const QString title = tr("Set Selected Note Text Background Color");
        if (const auto color = choosers_.color(title, model_.SelectedNoteColor(), this))
            model_.SetSelectedNoteColor(*color);
        ShowChoices();
    });
    return section;
}

QWidget* COptGeneralPg::MakeWork() {
    QVBoxLayout* body = nullptr;
    QWidget* const section = MakeOptionSection(tr("Work"), theme_, body, this);
    for (const OptionBox& box : GeneralPage::OtherBoxes())
        body->addWidget(MakeOptionBox(
            box, model_.IsOn(box.option), [this, &box](bool on) { model_.SetOn(box, on); }, section));
    return section;
}

void COptGeneralPg::ChooseFont(const QString& title, FontSetting (GeneralPage::*now)() const,
                               void (GeneralPage::*set)(const FontSetting&)) {
    if (const auto font = choosers_.font(title, (model_.*now)(), this))
        (model_.*set)(*font);
    ShowChoices();
}

void COptGeneralPg::ShowChoices() {
    editSample_->setText(Described(model_.EditFont()));
    titleSample_->setText(Described(model_.PictureTitleFont()));
    ground_->setIcon(MakeSwatch(model_.SelectedNoteColor(), theme_, *this));
    ground_->setAccessibleDescription(ToQColor(model_.SelectedNoteColor()).name());
}

}  // namespace lore
