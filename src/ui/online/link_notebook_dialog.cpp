#include "ui/online/link_notebook_dialog.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

#include "online/service_call.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"
#include "ui/online/select_online_notebook_dlg.h"
#include "ui/options/option_controls.h"

namespace lore {

namespace {
constexpr int kNameChars = 46, kTextChars = 64;
}

LinkNoteBookDialog::LinkNoteBookDialog(NoteBookLink& link, const OnlineConfig& config, const Theme& theme,
                                       SettingsStore& store, QWidget* parent)
    : DialogFrame(tr("Link Desktop NoteBook with an Online NoteBook"), "LinkNoteBook", store, parent),
      link_(link),
      theme_(theme),
      store_(store) {
    auto* const rows = new QGridLayout;
    rows->setHorizontalSpacing(kSpace * 4);
    rows->setVerticalSpacing(kSpace * 3);
    rows->setColumnStretch(1, 1);
    noteBook_ = AddRow(*rows, tr("Current NoteBook:"), "noteBook");
    status_ = AddRow(*rows, tr("Link Status:"), "status");
    onlineNoteBook_ = AddRow(*rows, tr("Online NoteBook:"), "onlineNoteBook");
    Content()->addLayout(rows);
    if (!config.HasService()) {
        QLabel* const missing = MakeRemark(QString::fromUtf8(kNoService), theme_, this);
        missing->setObjectName("noService");
        KeepWhole(*missing, kTextChars);
        Content()->addWidget(missing);
    }
    Content()->addStretch(1);
    clear_ = AddSideButton(tr("&Clear Link"));
    clear_->setObjectName("clearLink");
    with_ = AddButton(tr("&Link With Online NoteBook"));
    with_->setObjectName("linkWith");
    SetMainButton(with_);
    connect(AddButton(tr("E&xit")), &QPushButton::clicked, this, &QDialog::reject);
    connect(with_, &QPushButton::clicked, this, &LinkNoteBookDialog::Link);
    connect(clear_, &QPushButton::clicked, this, &LinkNoteBookDialog::Clear);
    ShowLink();
    with_->setFocus();
}

QLabel* LinkNoteBookDialog::AddRow(QGridLayout& rows, const QString& name, const char* objectName) {
    const int row = rows.rowCount();
    QLabel* const title = MakeRemark(name, theme_, this);
    title->setWordWrap(false);
    auto* const value = new QLabel(this);
    value->setObjectName(QString::fromLatin1(objectName));
    value->setTextFormat(Qt::PlainText);
    value->setTextInteractionFlags(Qt::TextSelectableByMouse);
    value->setWordWrap(true);
    value->setMinimumWidth(value->fontMetrics().averageCharWidth() * kNameChars);
    rows.addWidget(title, row, 0, Qt::AlignTop);
    rows.addWidget(value, row, 1, Qt::AlignTop);
    return value;
}

void LinkNoteBookDialog::Link() {
    link_.LinkWith([this](OnlineNoteBookChoice& choice) {
        return CSelectOnlineNoteBookDlg(choice, theme_, store_, this).exec() == QDialog::Accepted;
    });
    ShowLink();
}

void LinkNoteBookDialog::Clear() {
    link_.Clear();
    ShowLink();
    with_->setFocus();
}

void LinkNoteBookDialog::ShowLink() {
    noteBook_->setText(ToQString(link_.CurrentNoteBook()));
    status_->setText(ToQString(link_.LinkStatus()));
    onlineNoteBook_->setText(ToQString(link_.OnlineNoteBook()));
    clear_->setEnabled(link_.CanClear());
}

}  // namespace lore
