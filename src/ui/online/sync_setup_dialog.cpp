#include "ui/online/sync_setup_dialog.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>

#include "online/service_call.h"
#include "ui/controls/dialog_parts.h"
#include "ui/controls/text_field.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"
#include "ui/options/option_controls.h"

namespace lore {

namespace {

constexpr int kTextChars = 72;

QVBoxLayout* MakeColumn(QWidget* box) {
    auto* const column = MakeInner<QVBoxLayout>(box, kSpace * 2);
    return column;
}

}  // namespace

SyncSetupDialog::SyncSetupDialog(SyncSetup& setup, const OnlineConfig& config, const Theme& theme, SettingsStore& store,
                                 PageOpener openPage, QWidget* parent)
    : DialogFrame(tr("Lorebinder Online Sync Setup"), "SyncSetup", store, parent),
      setup_(setup),
      theme_(theme),
      openPage_(std::move(openPage)) {
    Content()->addWidget(MakeAccount(config));
    Content()->addWidget(MakeRule(theme_, this));
    Content()->addWidget(MakeRuns());
    Content()->addWidget(MakeRule(theme_, this));
    Content()->addWidget(MakeSyncAll());
    AddLink(tr("Click"), tr("for more information about Lorebinder Online!"), config.infoPage);
    AddLink(tr("Click"), tr("for Tutorial Videos on the Sync Feature!"), config.tutorialPage);
    Content()->addStretch(1);
    QPushButton* const save = AddButton(tr("&Save"));
    save->setObjectName("save");
    SetMainButton(save);
    connect(save, &QPushButton::clicked, this, [this] {
        setup_.Save(atStart_->isChecked(), atClose_->isChecked());
        accept();
    });
    connect(AddButton(tr("Ca&ncel")), &QPushButton::clicked, this, &QDialog::reject);
    ShowAccount();
    guid_->setFocus();
}

QWidget* SyncSetupDialog::MakeAccount(const OnlineConfig& config) {
    auto* const box = new QWidget(this);
    QVBoxLayout* const column = MakeColumn(box);
    head_ = new QLabel(box);
    head_->setObjectName("head");
    head_->setTextFormat(Qt::PlainText);
    head_->setWordWrap(true);
    head_->setFont(theme_.Font(TextSize::Title));
    column->addWidget(head_);
    if (!config.HasService()) {
        QLabel* const missing = MakeRemark(QString::fromUtf8(kNoService), theme_, box);
        missing->setObjectName("noService");
        KeepWhole(*missing, kTextChars);
        column->addWidget(missing);
    }
    guid_ = NewTextField(box, ToQString(setup_.SyncGUID()));
    guid_->setObjectName("syncGuid");
    guid_->setAccessibleName(tr("Online Account Sync GUID"));
    guid_->setMinimumWidth(guid_->fontMetrics().horizontalAdvance(QString::fromLatin1(kExampleGuid)) + kSpace * 8);
    QPushButton* const engage = MakeButton(tr("&Engage Sync"), box);
    engage->setObjectName("engage");
    auto* const row = new QHBoxLayout;
    row->setSpacing(kSpace * 2);
    row->addWidget(guid_, 1);
    row->addWidget(engage);
    column->addWidget(MakeLabel(tr("Online Account Sync &GUID:"), guid_, box));
    column->addLayout(row);
    QLabel* const example = MakeRemark(tr("Example:  %1").arg(QString::fromLatin1(kExampleGuid)), theme_, box);
    example->setTextInteractionFlags(Qt::TextSelectableByMouse);
    column->addWidget(example);
    connect(engage, &QPushButton::clicked, this, &SyncSetupDialog::Engage);
    return box;
}

QWidget* SyncSetupDialog::MakeRuns() {
    auto* const box = new QWidget(this);
    QVBoxLayout* const column = MakeColumn(box);
    atStart_ = new QCheckBox(tr("Run Sync each time Lorebinder S&TARTS"), box);
    atStart_->setObjectName("atStart");
    atStart_->setChecked(setup_.SyncAtStart());
    atClose_ = new QCheckBox(tr("Run Sync each time Lorebinder &CLOSES"), box);
    atClose_->setObjectName("atClose");
    atClose_->setChecked(setup_.SyncAtClose());
    column->addWidget(atStart_);
    column->addWidget(atClose_);
    column->addWidget(MakeRemark(tr("Note: Run Syncs often to keep your notes up to date!!"), theme_, box));
    return box;
}

QWidget* SyncSetupDialog::MakeSyncAll() {
    auto* const box = new QWidget(this);
    QVBoxLayout* const column = MakeColumn(box);
    auto* const explanation = new QLabel(ToQString(SyncAllExplanation()), box);
    explanation->setTextFormat(Qt::PlainText);
    explanation->setWordWrap(true);
    KeepWhole(*explanation, kTextChars);
    QPushButton* const all = MakeButton(tr("Setup &Links and Sync all NoteBooks"), box);
    all->setObjectName("syncAll");
    column->addWidget(explanation);
    column->addWidget(all, 0, Qt::AlignLeft);
    connect(all, &QPushButton::clicked, this, [this] {
        if (setup_.AskToSyncAll())
            done(kSyncAll);
    });
    return box;
}

void SyncSetupDialog::AddLink(const QString& before, const QString& behind, const std::string& address) {
    if (address.empty())
        return;
    auto* const link = new QLabel(QStringLiteral("%1 <a href=\"page\">HERE</a> %2").arg(before, behind), this);
    link->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    link->setAccessibleName(QStringLiteral("%1 HERE %2").arg(before, behind));
    connect(link, &QLabel::linkActivated, this, [this, address] { openPage_(address); });
    Content()->addWidget(link);
}

void SyncSetupDialog::Engage() {
    const EngageOutcome outcome = setup_.Engage(FromQString(guid_->text()));
    ShowAccount();
    guid_->setFocus();
    if (outcome == EngageOutcome::InvalidGuid || outcome == EngageOutcome::NotFound)
        guid_->selectAll();
}

void SyncSetupDialog::ShowAccount() {
    head_->setText(ToQString(setup_.HeadLine()));
}

void SyncSetupDialog::keyPressEvent(QKeyEvent* event) {
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    // After a message the window isn't active yet, and the field doesn't say that it has the focus.
    if (isEnter && focusWidget() == guid_)
        return Engage();
    DialogFrame::keyPressEvent(event);
}

}  // namespace lore
