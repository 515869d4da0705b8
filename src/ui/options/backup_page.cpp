#include "ui/options/backup_page.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/controls/dialog_parts.h"
#include "ui/controls/text_field.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"
#include "ui/options/option_controls.h"

namespace lore {

namespace {

constexpr OptionBox kEnable{Option::EnableBackup, "Enable Auto-Backup Feature", false};
constexpr OptionBox kOverwrite{Option::OverwriteBkup, "Overwrite previous backup files", false};

}  // namespace

COptBackupPg::COptBackupPg(OptionsWorld& world, const Theme& theme, QWidget* parent)
    : QWidget(parent), model_(world), theme_(theme) {
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(kSpace * 4, kSpace * 4, kSpace * 4, kSpace * 4);
    layout->setSpacing(kSpace * 3);
    const auto enable = [this](bool on) {
        model_.Enable(on);
        ShowState();
    };
    enable_ = MakeOptionBox(kEnable, model_.IsEnabled(), enable, this);
    layout->addWidget(enable_);
    below_ = new QWidget(this);
    auto* const inner = new QVBoxLayout(below_);
    inner->setContentsMargins(kSpace * 6, 0, 0, 0);
    inner->setSpacing(kSpace * 3);
    AddUses(*inner);
    AddPath(*inner);
    const auto overwrite = [this](bool on) { model_.SetOn(kOverwrite, on); };
    inner->addWidget(MakeOptionBox(kOverwrite, model_.IsOn(Option::OverwriteBkup), overwrite, below_));
    layout->addWidget(below_);
    layout->addWidget(next_ = MakeRemark({}, theme_, this));
    next_->setObjectName("nextBackup");
    layout->addStretch(1);
    ShowState();
}

void COptBackupPg::AddUses(QVBoxLayout& layout) {
    auto* const row = new QHBoxLayout;
    auto* const uses = new QComboBox(below_);
    uses->setObjectName("uses");
    for (int number = 1; number <= BackupPage::kMostUses; ++number)
        uses->addItem(QString::number(number));
    uses->setCurrentIndex(model_.Uses() - 1);
    QLabel* const label = MakeLabel(tr("Number of uses between backups:"), uses, below_);
    uses->setAccessibleName(label->text());
    row->addWidget(label);
    row->addWidget(uses);
    row->addStretch(1);
    layout.addLayout(row);
    connect(uses, &QComboBox::activated, this, [this](int index) {
        model_.SetUses(index + 1);
        ShowState();
    });
}

void COptBackupPg::AddPath(QVBoxLayout& layout) {
    path_ = NewTextField(below_);
    path_->setObjectName("backupPath");
    path_->setReadOnly(true);
    QLabel* const label = MakeLabel(tr("Your Backup File Path:"), path_, below_);
    path_->setAccessibleName(label->text());
    QPushButton* const set = MakeButton(tr("Set Backup Path"), below_);
    set->setObjectName("setBackupPath");
    auto* const row = new QHBoxLayout;
    row->setSpacing(kSpace * 2);
    row->addWidget(path_, 1);
    row->addWidget(set);
    auto* const block = new QVBoxLayout;
    block->setSpacing(kSpace);
    block->addWidget(label);
    block->addLayout(row);
    layout.addLayout(block);
    connect(set, &QPushButton::clicked, this, [this] {
        model_.ChoosePath();
        ShowState();
    });
}

void COptBackupPg::ShowState() {
    below_->setEnabled(model_.IsEnabled());
    path_->setText(PathToQString(model_.PathText()));
    path_->setCursorPosition(0);
    next_->setText(ToQString(model_.NextText()));
}

}  // namespace lore
