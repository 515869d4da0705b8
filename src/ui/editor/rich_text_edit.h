#pragma once

#include <QTextEdit>
#include <QTimer>
#include <memory>
#include <string>
#include <vector>

#include "base/record_file.h"
#include "ui/board/rich_text_formats.h"
#include "ui/editor/capture_beside.h"
#include "ui/editor/note_formats.h"
#include "ui/editor/text_commands.h"

namespace lore {

class PictureFrame;
class SpellMarks;

/// A picture that stands in the text.
struct NotePicture {
    int position = 0;  ///< of the text, until it changes
    size_t bytes = 0;
    QString fileName;  ///< a name for a file of it, such as "Picture 1.png"
    std::string data;  ///< the bytes themselves, from TakePictures alone
};

/// The editor of a note's text: reads and writes RTF through the document of the board, so that what is shown is what
/// is saved and what the board shows.
class RichTextEdit : public QTextEdit {
    Q_OBJECT

public:
    static constexpr qint64 kLargestRtf = kMaxStringLength;  ///< bytes of RTF; a note holds fewer
    /// So near to it the estimate of RtfSize is too rough: the text is written to be measured.
    static constexpr qint64 kNearLargestRtf = kLargestRtf / 10 * 9;

    explicit RichTextEdit(const Theme& theme, QWidget* parent = nullptr);
    ~RichTextEdit() override;

    /// How text looks that has no look yet; for the next Load.
    void SetDefaultFont(const std::string& name, int halfPoints);
    /// Shows a stored text and forgets all steps of undo.
    void Load(const std::string& rtf);
    /// True if the text differs from what was loaded or marked as saved; undoing everything makes it false again.
    bool IsModified() const { return document()->isModified(); }
    /// The text as RTF: the stored bytes as long as nothing was changed.
    std::string Rtf() const;
    /// The text without its look, "\r\n" between paragraphs.
    std::string PlainText() const;
    /// Bytes that Rtf() would have, within some per cent; costs nothing.
    qint64 RtfSize() const { return knownSize_ + addedSize_; }
    /// True from what came in at once, such as a picture, until it was measured: RtfSize() may be wrong by all of it.
    bool IsSizeGuess() const { return isSizeGuess_; }
    /// Hands over the text without holding up the typing. See CaptureBeside.
    void CaptureAside(CaptureBeside::Callback callback);
    const CaptureBeside& Beside() const { return *beside_; }

    TextCommands& Commands() { return commands_; }
    NoteFormats& Formats() { return formats_; }
    SpellMarks& Spelling() { return *spelling_; }

    /// Pixels between the margins.
    int TextWidth() const;
    void InsertTableHere(int rows, int columns);
    /// Puts a picture behind the caret. False if the bytes are no picture.
    bool InsertPictureBytes(const QByteArray& bytes);
    /// The picture that is selected, or an empty cursor.
    QTextCursor SelectedPicture() const;
    /// Gives the selected picture a size in pixels at 96 per inch.
    void ResizePicture(const QTextCursor& picture, const QSizeF& size);
    /// The pictures of the text from front to back.
    std::vector<NotePicture> Pictures() const;
    /// Takes the pictures at these positions out of the text, in one step of undo, and hands over their bytes.
    std::vector<NotePicture> TakePictures(const std::vector<int>& positions);
    void PastePlain();

signals:
    /// Files that are no pictures were dropped or pasted.
    void FilesDropped(const QStringList& paths);
    /// The text would have kLargestRtf bytes or more, or no longer has; again when that size was measured.
    void SizeLimitPassed(bool passed, qint64 bytes);
    /// A link was clicked with Ctrl, or opened by a command.
    void LinkOpened(const QString& target);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void changeEvent(QEvent* event) override;
    QMimeData* createMimeDataFromSelection() const override;
    bool canInsertFromMimeData(const QMimeData* source) const override;
    void insertFromMimeData(const QMimeData* source) override;

private:
    void ShowDocument(const Document& document);
    void TakeColors();
    void Restyle();
    void ShowAnew();
    void Recolor(const QTextBlock& block);
    void MeasureSize();
    void OnContentsChange(int position, int removed, int added);
    void ForgetCaptured(int from, int to);
    void CountSize(int position, int removed, int added);
    void LookAsNew();
    void TakeWidth();
    void FitToWidth();
    void CheckSize(bool isMeasured = false);
    void CountListMarks();
    void PaintListMarks();
    void PaintListMark(QPainter& painter, const QString& mark, const QTextBlock& block, const QPointF& origin);
    void PrepareTyping();
    void InsertStep(const QString& text);
    bool HandleTab(bool forward);
    bool HandleEnter(bool lineBreak);
    bool HandleBackspace();
    bool InsertFiles(const QMimeData& mime);

    const Theme& theme_;
    NoteFormats formats_;
    TextCommands commands_;
    std::unique_ptr<QTextDocument> shown_;
    CaptureBeside* beside_;
    SpellMarks* spelling_;
    std::unique_ptr<PictureFrame> frame_;
    QTimer sizeTimer_{this};
    QTimer fitTimer_;
    std::string stored_;
    qint64 knownSize_ = 0;
    qint64 addedSize_ = 0;
    bool overLimit_ = false;
    bool isSizeGuess_ = false;
    bool stepEnded_ = false;          ///< the next letter begins another step of undo
    bool isRecolored_ = false;        ///< formats of the text are those of another theme
    bool isEmpty_ = true;             ///< the text, after its last change
    std::vector<QString> listMarks_;  ///< by block number; empty when they have to be counted again
    bool listMarksKnown_ = false;
    int blockCount_ = 0;
};

}  // namespace lore
