#include <QClipboard>
#include <QContextMenuEvent>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QTextTable>
#include <QTimer>
#include <algorithm>
#include <memory>
#include <utility>

#include "base/text.h"
#include "ui/editor/document_fill.h"
#include "ui/editor/note_clipboard.h"
#include "ui/editor/picture_frame.h"
#include "ui/editor/picture_import.h"
#include "ui/editor/rich_text_edit.h"
#include "ui/editor/spell_marks.h"
#include "ui/editor/table_commands.h"

namespace lore {
namespace {

constexpr qint64 kLargestPictureFile = 100 << 20;  // bytes

bool IsTyping(const QKeyEvent& event) {
    const QString text = event.text();
    return !text.isEmpty() && text.at(0).isPrint() &&
           !(event.modifiers() & (Qt::ControlModifier | Qt::MetaModifier) && !(event.modifiers() & Qt::AltModifier));
}

/// A cell or a row of a table without a grid that was divided: its end stands behind the second part alone.
void DropFlatEnd(const QTextBlock& first) {
    QTextBlockFormat format = first.blockFormat();
    if (!format.hasProperty(kFlatProperty))
        return;
    const int level = format.intProperty(kFlatProperty) >> 8;
    format.setProperty(kFlatProperty, level << 8 | static_cast<int>(ParagraphEnd::Paragraph));
    format.clearProperty(kFlatRowProperty);
    QTextCursor(first).setBlockFormat(format);
}

/// Whether the selection holds a table, or a part of one and something else.
bool SelectsTable(const QTextCursor& cursor) {
    QTextFrame* const frame = cursor.document()->frameAt(cursor.selectionStart());
    const QList<QTextFrame*> within = frame->childFrames();
    const auto isSelected = [&](const QTextFrame* child) {
        return child->firstPosition() > cursor.selectionStart() && child->firstPosition() <= cursor.selectionEnd();
    };
    return cursor.hasSelection() && (cursor.document()->frameAt(cursor.selectionEnd()) != frame ||
                                     std::any_of(within.begin(), within.end(), isSelected));
}

QByteArray PictureFileBytes(const QString& path) {
    QFile file(path);
    if (file.size() > kLargestPictureFile || !file.open(QIODevice::ReadOnly))
        return {};
    return file.readAll();
}

}  // namespace

// Text that is typed has a look of its own: not that of a link in front of it, and never none.
void RichTextEdit::PrepareTyping() {
    const QTextCharFormat now = currentCharFormat();
    CharFormat format = commands_.CharactersNow();
    bool changed = !now.hasProperty(kCharsProperty) || now.hasProperty(kBreakProperty) ||
                   now.hasProperty(kPictureProperty) || now.objectType() == kKeptObject;
    if (format.link >= 0) {
        QTextCursor behind = textCursor();
        behind.setPosition(behind.selectionEnd());
        const bool inside = !behind.atBlockEnd() && behind.movePosition(QTextCursor::NextCharacter) &&
                            formats_.Characters(behind.charFormat()).link == format.link;
        if (!inside) {
            format.link = -1;
            changed = true;
        }
    }
    if (!changed)
        return;
    // What is typed takes its place. A format would be one of the cells too, and cost them their spans.
    if (QTextCursor cursor = textCursor(); SelectsTable(cursor)) {
        cursor.removeSelectedText();
        setTextCursor(cursor);
    }
    setCurrentCharFormat(formats_.Shown(format, commands_.GroundAt(textCursor())));
}

// Letters that are typed after it join the step.
void RichTextEdit::InsertStep(const QString& text) {
    QTextCursor cursor = textCursor();
    QTextCharFormat look = currentCharFormat();
    look.clearProperty(QTextFormat::ObjectType);  // that of a cell; letters behind it have none, and would not join
    cursor.beginEditBlock();
    cursor.insertText(text, look);
    cursor.endEditBlock();
    ensureCursorVisible();
    stepEnded_ = false;
}

bool RichTextEdit::HandleTab(bool forward) {
    QTextCursor cursor = textCursor();
    if (cursor.currentTable() && MoveToCell(cursor, forward, formats_)) {
        setTextCursor(cursor);
        ensureCursorVisible();
        return true;
    }
    if (commands_.ParagraphNow().list != ListKind::None && (cursor.atBlockStart() || cursor.hasSelection() || !forward))
        return commands_.ChangeLevel(forward ? 1 : -1);
    if (cursor.hasSelection() &&
        cursor.document()->findBlock(cursor.selectionStart()) != cursor.document()->findBlock(cursor.selectionEnd())) {
        commands_.Indent(forward ? 1 : -1);
        return true;
    }
    if (!forward)
        return false;
    PrepareTyping();
    InsertStep(QStringLiteral("\t"));
    return true;
}

bool RichTextEdit::HandleEnter(bool lineBreak) {
    PrepareTyping();
    if (lineBreak) {
        InsertStep(QString(QChar::LineSeparator));
        return true;
    }
    QTextCursor cursor = textCursor();
    const ParagraphFormat paragraph = commands_.ParagraphNow();
    if (paragraph.list != ListKind::None && cursor.block().length() == 1 && !cursor.hasSelection()) {
        commands_.ToggleList(paragraph.list);
        return true;
    }
    const ParagraphStyle style = commands_.StyleNow();
    const bool endsHeading =
        style >= ParagraphStyle::Heading1 && style <= ParagraphStyle::Heading3 && cursor.atBlockEnd();
    cursor.beginEditBlock();
    cursor.insertBlock();
    DropFlatEnd(cursor.block().previous());
    setTextCursor(cursor);
    if (endsHeading)
        commands_.SetStyle(ParagraphStyle::Normal);
    cursor.endEditBlock();
    ensureCursorVisible();
    return true;
}

bool RichTextEdit::HandleBackspace() {
    const QTextCursor cursor = textCursor();
    const ListKind kind = commands_.ParagraphNow().list;
    if (kind == ListKind::None || cursor.hasSelection() || !cursor.atBlockStart())
        return false;
    commands_.ToggleList(kind);
    return true;
}

void RichTextEdit::keyPressEvent(QKeyEvent* event) {
    const bool plain = !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
    bool done = false;
    const bool isTab = event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab;
    // Tab writes here, so that Ctrl+Tab leaves.
    if (isTab && event->modifiers().testFlag(Qt::ControlModifier)) {
        const bool back = event->key() == Qt::Key_Backtab || event->modifiers().testFlag(Qt::ShiftModifier);
        // Past the text control, which would take the key for itself. NOLINTNEXTLINE(bugprone-parent-virtual-call)
        event->setAccepted(QWidget::focusNextPrevChild(!back));
        return;
    }
    if (isReadOnly())
        return QTextEdit::keyPressEvent(event);
    if (isTab && plain)
        done = HandleTab(event->key() == Qt::Key_Tab && !(event->modifiers() & Qt::ShiftModifier));
    else if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && plain)
        done = HandleEnter(event->modifiers() & Qt::ShiftModifier);
    else if (event->key() == Qt::Key_Backspace && plain)
        done = HandleBackspace();
    else if (event->key() == Qt::Key_V && event->modifiers() == (Qt::ControlModifier | Qt::ShiftModifier)) {
        PastePlain();
        done = true;
    }
    if (done)
        return event->accept();
    if (IsTyping(*event)) {
        PrepareTyping();
        if (stepEnded_ || event->text() == u" ") {
            InsertStep(event->text());
            return event->accept();
        }
        QTextEdit::keyPressEvent(event);
        stepEnded_ = false;  // what was selected has gone with the letter
        return;
    }
    QTextEdit::keyPressEvent(event);
}

void RichTextEdit::inputMethodEvent(QInputMethodEvent* event) {
    if (!event->commitString().isEmpty())
        PrepareTyping();
    QTextEdit::inputMethodEvent(event);
    // What is being composed takes the place of all that is laid over the text.
    if (isRecolored_ && event->preeditString().isEmpty()) {
        const QTextBlock block = textCursor().block();
        Recolor(block);
        document()->markContentsDirty(block.position(), block.length());
    }
}

QMimeData* RichTextEdit::createMimeDataFromSelection() const {
    return CopyOf(textCursor(), formats_).release();
}

bool RichTextEdit::canInsertFromMimeData(const QMimeData* source) const {
    return source->hasUrls() || source->hasImage() || source->hasHtml() || source->hasText() ||
           source->hasFormat(QStringLiteral("text/rtf")) || source->hasFormat(QStringLiteral("application/rtf"));
}

bool RichTextEdit::InsertFiles(const QMimeData& mime) {
    QStringList others;
    bool any = false;
    for (const QUrl& url : mime.urls()) {
        if (!url.isLocalFile() || !QFileInfo(url.toLocalFile()).isFile())
            continue;
        any = true;
        const QByteArray bytes = PictureFileBytes(url.toLocalFile());
        if (bytes.isEmpty() || !InsertPictureBytes(bytes))
            others.append(url.toLocalFile());
    }
    if (!others.isEmpty())
        emit FilesDropped(others);
    return any;
}

void RichTextEdit::insertFromMimeData(const QMimeData* source) {
    if (source->hasUrls() && InsertFiles(*source))
        return;
    PrepareTyping();
    QTextCursor cursor = textCursor();
    if (std::optional<Document> document = PastedText(*source, formats_, TextWidth());
        document && !(document->text.empty() && document->pictures.empty())) {
        for (const Picture& picture : document->pictures)
            addedSize_ += static_cast<qint64>(picture.bytes.size()) * 2;
        InsertNote(std::move(*document), cursor, formats_, IsCopyOf(*source, formats_));
        CheckSize();
    } else if (source->hasImage()) {
        const std::optional<Picture> picture = PastedPicture(*source, TextWidth());
        if (!picture) {
            // A drop ends first, for which another program waits.
            QTimer::singleShot(0, this, [this] {
                QMessageBox::warning(this, tr("Insert picture"), tr("The picture could not be read."));
            });
            return;
        }
        InsertPicture(*picture, commands_.CharactersNow(), cursor, formats_);
        addedSize_ += static_cast<qint64>(picture->bytes.size()) * 2;
        CheckSize();
    } else {
        InsertStep(PastedPlainText(*source));
        cursor = textCursor();
    }
    setTextCursor(cursor);
    ensureCursorVisible();
    stepEnded_ = true;
}

void RichTextEdit::PastePlain() {
    const QMimeData* const mime = QGuiApplication::clipboard()->mimeData();
    if (!mime || isReadOnly())
        return;
    PrepareTyping();
    InsertStep(PastedPlainText(*mime));
    stepEnded_ = true;
}

void RichTextEdit::contextMenuEvent(QContextMenuEvent* event) {
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    const QTextCursor at = byKey ? textCursor() : cursorForPosition(event->pos());
    const std::unique_ptr<QMenu> menu(createStandardContextMenu(event->pos()));
    // The menu is made without the keys that a command of the window has.
    for (const auto& [name, keys] : {std::pair("edit-undo", QKeySequence::Undo), {"edit-redo", QKeySequence::Redo}}) {
        auto* const entry = menu->findChild<QAction*>(QLatin1String(name));
        if (entry && !entry->text().contains(u'\t'))
            entry->setText(entry->text() + u'\t' + QKeySequence(keys).toString(QKeySequence::NativeText));
    }
    spelling_->AddToMenu(*menu, spelling_->MarkedWordAt(at));
    menu->exec(byKey ? viewport()->mapToGlobal(cursorRect().bottomLeft()) : event->globalPos());
}

void RichTextEdit::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        if (const QTextCursor picture = SelectedPicture();
            !picture.isNull() && frame_->IsOnHandle(picture, event->pos())) {
            frame_->BeginDrag(picture);
            return event->accept();
        }
        const QTextCursor link = cursorForPosition(event->pos());
        const std::string target = formats_.LinkTarget(formats_.Characters(link.charFormat()));
        if ((event->modifiers() & Qt::ControlModifier) && !target.empty()) {
            emit LinkOpened(QString::fromStdString(target));
            return event->accept();
        }
    }
    QTextEdit::mousePressEvent(event);
}

void RichTextEdit::mouseMoveEvent(QMouseEvent* event) {
    if (frame_->IsDragging()) {
        frame_->DragTo(event->pos(), TextWidth());
        viewport()->update();
        return event->accept();
    }
    QTextEdit::mouseMoveEvent(event);
    const QTextCursor picture = SelectedPicture();
    const bool onHandle = !picture.isNull() && frame_->IsOnHandle(picture, event->pos());
    viewport()->setCursor(onHandle ? Qt::SizeFDiagCursor : Qt::IBeamCursor);
}

void RichTextEdit::mouseReleaseEvent(QMouseEvent* event) {
    if (frame_->IsDragging()) {
        if (const std::optional<QSizeF> size = frame_->EndDrag())
            ResizePicture(SelectedPicture(), *size);
        viewport()->update();
        return event->accept();
    }
    QTextEdit::mouseReleaseEvent(event);
    if (event->button() != Qt::LeftButton || textCursor().hasSelection())
        return;
    if (const QTextCursor picture = frame_->PictureAt(event->pos()); picture.hasSelection())
        setTextCursor(picture);
}

}  // namespace lore
