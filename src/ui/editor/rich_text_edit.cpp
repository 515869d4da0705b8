#include "ui/editor/rich_text_edit.h"

#include <QPainter>
#include <algorithm>
#include <unordered_set>
#include <utility>

#include "rtf/paper.h"
#include "rtf/rtf.h"
#include "ui/editor/block_colors.h"
#include "ui/editor/block_place.h"
#include "ui/editor/document_capture.h"
#include "ui/editor/document_fill.h"
#include "ui/editor/kept_object.h"
#include "ui/editor/note_block_data.h"
#include "ui/editor/picture_frame.h"
#include "ui/editor/picture_import.h"
#include "ui/editor/picture_object.h"
#include "ui/editor/spell_marks.h"
#include "ui/editor/table_commands.h"
#include "ui/editor/table_fit.h"
#include "ui/look/theme.h"

namespace lore {
namespace {

constexpr double kTabStop = kTabTwips / RichTextFormats::kTwipsPerPixel;
constexpr int kTextMargin = 3 * kSpace;
constexpr int kMeasureAgain = 1500;  // milliseconds after the last change
constexpr int kFitAgain = 100;       // milliseconds after the last change of the width
constexpr int kNarrowest = 200;      // pixels of text for which tables are laid out
constexpr double kMarkGap = 4;       // pixels between a mark that is wider than its place and the text

/// Bytes that a character takes in RTF, on average.
qint64 RtfBytesOf(QStringView text) {
    qint64 bytes = 0;
    for (const QChar c : text)
        bytes += c.unicode() < 0x80 ? 1 : c.unicode() < 0x100 ? 4 : 8;
    return bytes;
}

bool IsPicture(const QTextDocument& document, const QTextCharFormat& format, int position) {
    return format.hasProperty(kPictureProperty) && document.characterAt(position) == QChar::ObjectReplacementCharacter;
}

QString FileNameOf(const Picture& picture, int number) {
    static constexpr const char* kEndings[] = {"png", "jpg", "wmf", "emf", "dib"};
    return QStringLiteral("Picture %1.%2").arg(number).arg(QLatin1String(kEndings[static_cast<size_t>(picture.kind)]));
}

}  // namespace

RichTextEdit::RichTextEdit(const Theme& theme, QWidget* parent)
    : QTextEdit(parent),
      theme_(theme),
      formats_(theme),
      commands_(*this, formats_),
      beside_(new CaptureBeside(formats_, this)),
      spelling_(new SpellMarks(*this, theme)),
      frame_(std::make_unique<PictureFrame>(*this, theme)) {
    setObjectName("noteText");
    setAccessibleName(tr("Note text"));
    setAcceptRichText(true);
    setTabChangesFocus(false);
    setLineWrapMode(QTextEdit::WidgetWidth);
    setMouseTracking(true);
    formats_.SetDefault("Times New Roman", 27);
    sizeTimer_.setObjectName("sizeTimer");
    sizeTimer_.setSingleShot(true);
    sizeTimer_.setInterval(kMeasureAgain);
    connect(&sizeTimer_, &QTimer::timeout, this, &RichTextEdit::MeasureSize);
    fitTimer_.setSingleShot(true);
    fitTimer_.setInterval(kFitAgain);
    connect(&fitTimer_, &QTimer::timeout, this, &RichTextEdit::FitToWidth);
    connect(this, &QTextEdit::textChanged, this, &RichTextEdit::LookAsNew);
    connect(&theme, &Theme::Changed, this, &RichTextEdit::Restyle);
    Load({});
}

RichTextEdit::~RichTextEdit() = default;

void RichTextEdit::SetDefaultFont(const std::string& name, int halfPoints) {
    formats_.SetDefault(name, halfPoints);
}

void RichTextEdit::Load(const std::string& rtf) {
    stored_ = rtf;
    knownSize_ = static_cast<qint64>(rtf.size());
    addedSize_ = 0;
    ShowDocument(ReadRtf(rtf));
    isSizeGuess_ = stepEnded_ = false;
    CheckSize();
}

void RichTextEdit::ShowDocument(const Document& document) {
    beside_->Stop();
    TakeColors();
    formats_.SetLook({theme_.Color(ColorRole::Card), 1.0, logicalDpiY(), std::max(TextWidth(), kNarrowest)});
    formats_.Reset(document);
    auto shown = std::make_unique<QTextDocument>();
    shown->setUndoRedoEnabled(false);
    shown->setDocumentMargin(kTextMargin);
    QTextOption option;
    option.setTabStopDistance(kTabStop);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    shown->setDefaultTextOption(option);
    shown->documentLayout()->registerHandler(kKeptObject, new KeptObject(shown.get()));
    shown->documentLayout()->registerHandler(QTextFormat::ImageObject, new PictureObject(shown.get()));
    FillNote(document, *shown, formats_);
    if (document.runs.empty() && document.rows.empty()) {
        QTextCursor all(shown.get());
        all.select(QTextCursor::Document);
        all.setBlockCharFormat(formats_.Shown(formats_.Default(), formats_.Look().ground));
    }
    shown->setUndoRedoEnabled(true);
    shown->setModified(false);
    setDocument(shown.get());
    shown_ = std::move(shown);
    listMarksKnown_ = false;
    isRecolored_ = false;
    blockCount_ = shown_->blockCount();
    isEmpty_ = shown_->isEmpty();
    connect(shown_.get(), &QTextDocument::contentsChange, this, &RichTextEdit::OnContentsChange);
    spelling_->Attach();
    moveCursor(QTextCursor::Start);
    if (document.runs.empty())
        setCurrentCharFormat(formats_.Shown(formats_.Default(), formats_.Look().ground));
}

void RichTextEdit::TakeColors() {
    QPalette colors = palette();
    colors.setColor(QPalette::Base, theme_.Color(ColorRole::Card));
    setPalette(colors);
    RichTextLook look = formats_.Look();
    look.ground = theme_.Color(ColorRole::Card);
    formats_.SetLook(look);
}

// The colours of the screen are made for the palette, so another one shows the text anew. That would forget the steps
// of undo; where there are any, the text keeps its formats, and gets the new colours laid over it. Cells of tables then
// keep the ground that they have.
void RichTextEdit::Restyle() {
    if (!shown_->isUndoAvailable() && !shown_->isRedoAvailable())
        return ShowAnew();
    TakeColors();
    isRecolored_ = true;
    for (QTextBlock block = shown_->begin(); block.isValid(); block = block.next())
        Recolor(block);
    shown_->markContentsDirty(0, shown_->characterCount());
}

// What is laid over is painted with the change of the text that it follows.
void RichTextEdit::Recolor(const QTextBlock& block) {
    QList<QTextLayout::FormatRange> colors = ColorsOver(block, commands_.GroundAt(QTextCursor(block)), formats_);
    const bool hadColors = block.userData() && !NoteBlockData::Of(block).colors.isEmpty();
    if (colors.isEmpty() && !hadColors)
        return;
    NoteBlockData::Of(block).colors = std::move(colors);
    spelling_->LayOver(block);
}

void RichTextEdit::ShowAnew() {
    const bool modified = IsModified();
    const int position = textCursor().position();
    const int scrolled = verticalScrollBar()->value();
    const Document document = modified ? Assemble(CaptureNote(*shown_, formats_)) : ReadRtf(stored_);
    CaptureBeside::Callback waiting = beside_->Stop();
    ShowDocument(document);
    shown_->setModified(modified);
    QTextCursor cursor(shown_.get());
    cursor.setPosition(std::min(position, shown_->characterCount() - 1));
    setTextCursor(cursor);
    verticalScrollBar()->setValue(scrolled);
    if (waiting)
        beside_->Start(*shown_, std::move(waiting));
}

std::string RichTextEdit::Rtf() const {
    return IsModified() ? WriteRtf(Assemble(CaptureNote(*shown_, formats_))) : stored_;
}

std::string RichTextEdit::PlainText() const {
    return WithCrLf(Assemble(CaptureNote(*shown_, formats_)).text);
}

void RichTextEdit::CaptureAside(CaptureBeside::Callback callback) {
    const qint64 before = addedSize_;
    beside_->Start(*shown_, [this, before, callback = std::move(callback)](CapturedTexts texts) {
        if (!IsModified())
            texts.rtf = stored_;
        knownSize_ = static_cast<qint64>(texts.rtf.size());
        addedSize_ -= before;
        isSizeGuess_ = sizeTimer_.isActive();
        CheckSize(true);
        if (callback)
            callback(std::move(texts));
    });
}

// It never takes the place of a capture that somebody waits for.
void RichTextEdit::MeasureSize() {
    if (beside_->IsUnderWay())
        sizeTimer_.start();
    else
        CaptureAside({});
}

void RichTextEdit::OnContentsChange(int position, int removed, int added) {
    ForgetCaptured(position, position + added);
    const bool atOnce = added > 1 || removed > 1;
    if (blockCount_ != shown_->blockCount() || atOnce)
        listMarksKnown_ = false;
    blockCount_ = shown_->blockCount();
    stepEnded_ = stepEnded_ || atOnce;
    CountSize(position, removed, added);
}

void RichTextEdit::ForgetCaptured(int from, int to) {
    for (QTextBlock block = shown_->findBlock(from); block.isValid() && block.position() <= to; block = block.next()) {
        if (block.userData())
            NoteBlockData::Of(block).captured.reset();
        if (isRecolored_)
            Recolor(block);
    }
}

// A guess; the text is measured soon where that isn't good enough.
void RichTextEdit::CountSize(int position, int removed, int added) {
    const bool isLetter = added == 1 && removed == 0;
    const bool atOnce = added > 1 || removed > 1;
    const QChar letter = shown_->characterAt(position);
    const bool isObject = isLetter && letter == QChar::ObjectReplacementCharacter;
    if (isLetter)
        addedSize_ += RtfBytesOf(QString(letter));
    else if (added > removed)
        addedSize_ += 2 * qint64{added - removed};
    else
        addedSize_ -= removed - added;
    // What came in at once may be a picture, of which the count of characters says nothing.
    isSizeGuess_ = isSizeGuess_ || atOnce || isObject;
    if (atOnce || isObject || RtfSize() > kNearLargestRtf)
        sizeTimer_.start();
    CheckSize();
}

// A text that has become empty looks like a new one. That is part of the step that emptied it; steps that are undone or
// done again bring it along.
void RichTextEdit::LookAsNew() {
    const bool wasEmpty = std::exchange(isEmpty_, document()->isEmpty());
    if (wasEmpty || !isEmpty_)
        return;
    const QTextCharFormat look = formats_.Shown(formats_.Default(), formats_.Look().ground);
    QTextCursor cursor(document());
    if (cursor.blockCharFormat() != look && document()->isUndoAvailable() && !document()->isRedoAvailable()) {
        cursor.joinPreviousEditBlock();
        cursor.setBlockCharFormat(look);
        cursor.endEditBlock();
    }
    setCurrentCharFormat(look);
}

void RichTextEdit::TakeWidth() {
    RichTextLook look = formats_.Look();
    look.dotsPerInch = logicalDpiY();
    look.widestPicture = std::max(TextWidth(), kNarrowest);
    formats_.SetLook(look);
}

// Pictures and tables keep within the text by themselves. Tables get the exact share of its width here; that would be a
// step of undo, so it is left out while there are any.
void RichTextEdit::FitToWidth() {
    if (shown_->isUndoAvailable() || shown_->isRedoAvailable())
        return;
    const bool modified = IsModified();
    const QSignalBlocker quiet(shown_.get());
    shown_->setUndoRedoEnabled(false);
    FitTables(*shown_->rootFrame(), formats_.Look().widestPicture);
    shown_->setUndoRedoEnabled(true);
    shown_->setModified(modified);
}

void RichTextEdit::CheckSize(bool isMeasured) {
    const bool over = RtfSize() >= kLargestRtf;
    if (over == overLimit_ && !(over && isMeasured))
        return;
    overLimit_ = over;
    emit SizeLimitPassed(over, RtfSize());
}

int RichTextEdit::TextWidth() const {
    return std::max(100, viewport()->width() - 2 * kTextMargin);
}

void RichTextEdit::InsertTableHere(int rows, int columns) {
    QTextCursor cursor = textCursor();
    InsertTable(cursor, rows, columns, TextWidth() - 2, formats_);
    setTextCursor(cursor);
}

bool RichTextEdit::InsertPictureBytes(const QByteArray& bytes) {
    const std::optional<Picture> picture = PictureFromBytes(bytes, TextWidth());
    if (!picture)
        return false;
    QTextCursor cursor = textCursor();
    cursor.beginEditBlock();
    cursor.removeSelectedText();
    InsertPicture(*picture, commands_.CharactersNow(), cursor, formats_);
    cursor.endEditBlock();
    addedSize_ += static_cast<qint64>(picture->bytes.size()) * 2;
    setTextCursor(cursor);
    CheckSize();
    return true;
}

QTextCursor RichTextEdit::SelectedPicture() const {
    QTextCursor cursor = textCursor();
    const int from = cursor.selectionStart();
    if (cursor.selectionEnd() - from == 1) {
        cursor.setPosition(from);
        cursor.setPosition(from + 1, QTextCursor::KeepAnchor);
        if (IsPicture(*shown_, cursor.charFormat(), from))
            return cursor;
    }
    return QTextCursor();
}

void RichTextEdit::ResizePicture(const QTextCursor& picture, const QSizeF& size) {
    const auto old = picture.isNull() ? nullptr : formats_.PictureOf(picture.charFormat());
    if (!old || !old->object.empty())
        return;
    QTextCursor cursor(picture);
    cursor.setCharFormat(ShownPicture(std::make_shared<const Picture>(Resized(*old, size)),
                                      formats_.Characters(cursor.charFormat()), *shown_, formats_));
    viewport()->update();
}

std::vector<NotePicture> RichTextEdit::Pictures() const {
    std::vector<NotePicture> pictures;
    for (QTextBlock block = shown_->begin(); block.isValid(); block = block.next())
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            const auto picture = formats_.PictureOf(fragment.charFormat());
            for (int i = 0; picture && i < fragment.length(); ++i) {
                const int position = fragment.position() + i;
                if (IsPicture(*shown_, fragment.charFormat(), position))
                    pictures.push_back({position,
                                        picture->bytes.size(),
                                        FileNameOf(*picture, static_cast<int>(pictures.size()) + 1),
                                        {}});
            }
        }
    return pictures;
}

std::vector<NotePicture> RichTextEdit::TakePictures(const std::vector<int>& positions) {
    const std::unordered_set<int> wanted(positions.begin(), positions.end());
    std::vector<NotePicture> taken;
    for (const NotePicture& picture : Pictures())
        if (wanted.contains(picture.position))
            taken.push_back(picture);
    QTextCursor cursor(shown_.get());
    cursor.beginEditBlock();
    for (auto picture = taken.rbegin(); picture != taken.rend(); ++picture) {
        cursor.setPosition(picture->position);
        cursor.setPosition(picture->position + 1, QTextCursor::KeepAnchor);
        picture->data = formats_.PictureOf(cursor.charFormat())->bytes;
        addedSize_ -= static_cast<qint64>(picture->bytes) * 2;
        cursor.removeSelectedText();
    }
    cursor.endEditBlock();
    CheckSize();
    return taken;
}

void RichTextEdit::paintEvent(QPaintEvent* event) {
    QTextEdit::paintEvent(event);
    PaintListMarks();
    if (const QTextCursor picture = SelectedPicture(); !picture.isNull()) {
        QPainter painter(viewport());
        frame_->Paint(painter, picture);
    }
}

void RichTextEdit::CountListMarks() {
    listMarks_.clear();
    ListCounter counter;
    for (QTextBlock block = shown_->begin(); block.isValid(); block = block.next())
        listMarks_.push_back(counter.NextMark(formats_.Paragraph(block.blockFormat())));
    listMarksKnown_ = true;
}

void RichTextEdit::PaintListMarks() {
    if (!listMarksKnown_)
        CountListMarks();
    QPainter painter(viewport());
    QTextBlock block = cursorForPosition(QPoint(0, 0)).block();
    for (; block.isValid(); block = block.next()) {
        const QPointF origin = BlockOrigin(*this, block);
        if (origin.y() > viewport()->height())
            break;
        const auto number = static_cast<size_t>(block.blockNumber());
        if (number < listMarks_.size() && !listMarks_[number].isEmpty() && block.layout()->lineAt(0).isValid())
            PaintListMark(painter, listMarks_[number], block, origin);
    }
}

void RichTextEdit::PaintListMark(QPainter& painter, const QString& mark, const QTextBlock& block,
                                 const QPointF& origin) {
    QTextCharFormat look = block.length() > 1 ? block.begin().fragment().charFormat() : block.charFormat();
    if (isRecolored_)
        look = formats_.Screen().Characters(formats_.Characters(look), commands_.GroundAt(QTextCursor(block)));
    QFont font = look.font();
    font.setUnderline(false);
    font.setStrikeOut(false);
    painter.setFont(font);
    painter.setPen(look.hasProperty(QTextFormat::ForegroundBrush) ? look.foreground().color()
                                                                  : palette().color(QPalette::Text));
    const ParagraphFormat format = formats_.Paragraph(block.blockFormat());
    const double hang = format.firstIndent < 0 && format.leftIndent > 0
                            ? -format.firstIndent / RichTextFormats::kTwipsPerPixel
                            : kTabStop / 2;
    const double width = QFontMetricsF(font).horizontalAdvance(mark);
    const double back = std::max(hang, width + kMarkGap);
    const bool mirrored = block.blockFormat().layoutDirection() == Qt::RightToLeft;
    const QTextLine line = block.layout()->lineAt(0);
    const double x = mirrored ? line.x() + line.width() + back - width : line.x() - back;
    painter.drawText(origin + QPointF(x, line.y() + line.ascent()), mark);
}

void RichTextEdit::resizeEvent(QResizeEvent* event) {
    QTextEdit::resizeEvent(event);
    TakeWidth();
    if (isVisible())
        fitTimer_.start();
}

void RichTextEdit::showEvent(QShowEvent* event) {
    QTextEdit::showEvent(event);
    TakeWidth();
    FitToWidth();
}

void RichTextEdit::changeEvent(QEvent* event) {
    QTextEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        viewport()->update();
}

}  // namespace lore
