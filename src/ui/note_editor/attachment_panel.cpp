#include "ui/note_editor/attachment_panel.h"

#include <QDragEnterEvent>
#include <QFile>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QMimeData>
#include <QPushButton>
#include <QTimer>
#include <QTreeWidget>
#include <QUrl>
#include <QVBoxLayout>

#include "notes/attachment_kind.h"
#include "notes/attachment_path.h"
#include "ui/board/card_attachments.h"
#include "ui/controls/dialog_parts.h"
#include "ui/controls/empty_line.h"
#include "ui/controls/popup_menu.h"
#include "ui/controls/quiet_view.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"
#include "ui/note_editor/attachment_open.h"

namespace lore {

namespace {

constexpr int kRowsInSight = 4;

std::filesystem::path FileOf(const CAttachment& record, const std::filesystem::path& folder) {
    const std::filesystem::path stored = AttachmentPath(record, folder);
    return stored.empty() && record.type != kWebLink ? std::filesystem::path(record.sourceFile) : stored;
}

}  // namespace

AttachmentPanel::AttachmentPanel(AttachmentList& attachments, std::filesystem::path folder, Prompts& prompts,
                                 const Theme& theme, QWidget* parent)
    : PanelSection(tr("Attach Files/Links"), theme, parent),
      attachments_(attachments),
      folder_(std::move(folder)),
      prompts_(prompts),
      theme_(theme),
      list_(new QuietView<QTreeWidget>(this)) {
    setAcceptDrops(true);
    list_->setAccessibleName(tr("Attachments"));
    list_->setHeaderLabels({tr("Title"), tr("Original File/Link")});
    list_->setRootIsDecorated(false);
    list_->setUniformRowHeights(true);
    list_->setAllColumnsShowFocus(true);
    list_->setTextElideMode(Qt::ElideMiddle);
    list_->setContextMenuPolicy(Qt::CustomContextMenu);
    list_->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    list_->header()->setSectionResizeMode(1, QHeaderView::Stretch);
    list_->setFixedHeight(fontMetrics().height() * (kRowsInSight + 1) * 3 / 2 + kSpace * 2);
    list_->installEventFilter(this);
    new EmptyLine(*list_, tr("Drop files or links here, or add them below."));
    Body()->addWidget(list_);
    MakeButtons();
    connect(list_, &QTreeWidget::customContextMenuRequested, this, &AttachmentPanel::OpenMenu);
    connect(list_, &QTreeWidget::itemActivated, this,
            [this](QTreeWidgetItem* item) { Open(list_->indexOfTopLevelItem(item)); });
    Rebuild();
}

void AttachmentPanel::MakeButtons() {
    auto* const row = new QHBoxLayout;
    row->setSpacing(kSpace * 2);
    QPushButton* const file = MakeButton(tr("Add &File..."), this);
    QPushButton* const link = MakeButton(tr("Add &Web Link..."), this);
    row->addWidget(file);
    row->addWidget(link);
    row->addStretch(1);
    Body()->addLayout(row);
    connect(file, &QPushButton::clicked, this, [this] { Run([](AttachmentList& list) { list.AddFiles(); }); });
    connect(link, &QPushButton::clicked, this, [this] { Run([](AttachmentList& list) { list.AddWebLink(); }); });
}

template <typename Command>
void AttachmentPanel::Run(Command command) {
    command(attachments_);
    Rebuild();
    emit Changed();
}

bool AttachmentPanel::IsMissing(const CAttachment& record) const {
    return record.type != kWebLink && !QFile::exists(PathToQString(FileOf(record, folder_)));
}

void AttachmentPanel::Rebuild() {
    const int current = list_->indexOfTopLevelItem(list_->currentItem());
    list_->clear();
    for (size_t i = 0; i < attachments_.Items().size(); ++i) {
        const EditedAttachment& edited = attachments_.Items()[i];
        const bool missing = edited.bitmap.empty() && IsMissing(edited.record);
        const QString original = ToQString(attachments_.OriginalText(i));
        auto* const item = new QTreeWidgetItem(
            list_, {ToQString(edited.record.title), missing ? tr("Missing: %1").arg(original) : original});
        const QString icon = missing ? QStringLiteral("triangle-alert") : AttachmentIcon(edited.record.type);
        item->setIcon(0, theme_.Icon(icon, ColorRole::DimText));
        item->setToolTip(0, item->text(0));
        item->setToolTip(1, item->text(1));
    }
    list_->setCurrentItem(list_->topLevelItem(std::min(std::max(current, 0), list_->topLevelItemCount() - 1)));
}

void AttachmentPanel::AddDropped(const QStringList& paths) {
    Run([&paths](AttachmentList& list) {
        for (const QString& path : paths)
            list.AddFile(QFile::encodeName(path).toStdString());
    });
}

void AttachmentPanel::Open(int row) {
    if (row < 0)
        return;
    const CAttachment record = attachments_.Items()[static_cast<size_t>(row)].record;
    OpenAttachmentFile(record, FileOf(record, folder_), prompts_, theme_, this);
}

void AttachmentPanel::OpenMenu(const QPoint& at) {
    const int row = list_->indexOfTopLevelItem(list_->itemAt(at));  // for a key it is the place of the current one
    if (row < 0)
        return;
    const auto position = static_cast<size_t>(row);
    auto* const menu = NewPopupMenu(this);
    const auto add = [this, menu, position](const QString& text, void (AttachmentList::*command)(size_t)) {
        menu->addAction(text, this, [this, position, command] {
            Run([position, command](AttachmentList& list) { (list.*command)(position); });
        });
    };
    if (attachments_.Items()[position].record.type == kWebLink) {
        add(tr("Edit Link"), &AttachmentList::EditWebLink);
        add(tr("Remove Link"), &AttachmentList::RemoveAttachment);
    } else {
        add(tr("Extract Attachment"), &AttachmentList::ExtractAttachment);
        add(tr("Remove Attachment"), &AttachmentList::RemoveAttachment);
    }
    menu->popup(list_->viewport()->mapToGlobal(at));
}

void AttachmentPanel::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasUrls())
        event->acceptProposedAction();
}

void AttachmentPanel::dropEvent(QDropEvent* event) {
    QStringList files, links;
    for (const QUrl& url : event->mimeData()->urls())
        (url.isLocalFile() ? files : links).append(url.isLocalFile() ? url.toLocalFile() : url.toString());
    event->acceptProposedAction();
    // After the drop: the program it comes from waits for its end, and not for that of a message.
    QTimer::singleShot(0, this, [this, files, links] {
        AddDropped(files);
        Run([&links](AttachmentList& list) {
            for (const QString& link : links)
                list.AddLink(FromQString(link));
        });
    });
}

bool AttachmentPanel::eventFilter(QObject* watched, QEvent* event) {
    const auto* const key = event->type() == QEvent::KeyPress ? static_cast<QKeyEvent*>(event) : nullptr;
    const int row = list_->indexOfTopLevelItem(list_->currentItem());
    if (!key || row < 0 || key->key() != Qt::Key_Delete)
        return PanelSection::eventFilter(watched, event);
    Run([row](AttachmentList& list) { list.RemoveAttachment(static_cast<size_t>(row)); });
    return true;
}

}  // namespace lore
