#include "ui/options/options_prop_sheet.h"

#include <QPushButton>
#include <QSignalBlocker>
#include <QTabWidget>
#include <QVBoxLayout>

#include "ui/look/theme.h"
#include "ui/options/agent_page.h"
#include "ui/options/backup_page.h"
#include "ui/options/option_controls.h"
#include "ui/options/spell_page.h"

namespace lore {

COptionsPropSheet::COptionsPropSheet(OptionsWorld world, const OptionsParts& parts, OptionsTab tab, QWidget* parent)
    : DialogFrame(tr("Lorebinder Options"), "Options", world.store, parent), world_(std::move(world)) {
    tabs_ = new QTabWidget(this);
    tabs_->setObjectName("pages");
    tabs_->setAccessibleName(tr("Pages of the options"));
    // The names stand as they are written.
    tabs_->setElideMode(Qt::ElideNone);
    tabs_->setUsesScrollButtons(true);
    backup_ = new COptBackupPg(world_, parts.theme, tabs_);
    AddPage(new COptGeneralPg(world_, parts.theme, parts.choosers, tabs_), tr("<  General  >"));
    AddPage(backup_, tr("<  Auto-Backup  >"));
    AddPage(new OptSpellChkPg(world_, parts.theme, parts.spelling, tabs_), tr("<  Spell Checker  >"));
    AddPage(new COptAgentPg(world_, parts.theme, parts.agent, tabs_), tr("<  Agent  >"));
    Content()->addWidget(tabs_, 1);
    QPushButton* const close = AddButton(tr("&OK"));
    SetMainButton(close);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    page_ = static_cast<int>(tab);
    tabs_->setCurrentIndex(page_);
    connect(tabs_, &QTabWidget::currentChanged, this, &COptionsPropSheet::LeavePage);
}

void COptionsPropSheet::AddPage(QWidget* page, const QString& name) {
    GiveAltKeys(*page, "o");
    tabs_->addTab(page, name);
}

void COptionsPropSheet::LeavePage(int next) {
    if (page_ == static_cast<int>(OptionsTab::AutoBackup) && next != page_ && !backup_->MayLeave()) {
        const QSignalBlocker quiet(tabs_);
        tabs_->setCurrentIndex(page_);
        return;
    }
    page_ = next;
}

void COptionsPropSheet::done(int result) {
    if (page_ == static_cast<int>(OptionsTab::AutoBackup) && !backup_->MayLeave())
        return;
    DialogFrame::done(result);
    world_.flush();
}

}  // namespace lore
