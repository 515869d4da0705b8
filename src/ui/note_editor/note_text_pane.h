#pragma once

#include <QString>
#include <QWidget>
#include <functional>
#include <string>
#include <vector>

#include "edit/note_text_file.h"
#include "settings/spell_settings.h"

class QTextEdit;

namespace lore {

class RichTextEdit;
class SpellChecker;
class Theme;

/// A picture that stands in the text.
struct TextPicture {
    int position = 0;
    size_t bytes = 0;
    QString fileName;
    std::string data;  ///< from TakePictures alone
};

/// The text of the note with its bars, as the editor window uses it.
class NoteTextPane : public QWidget {
    Q_OBJECT

public:
    NoteTextPane(const NewTextLook& look, const Theme& theme, QWidget* parent = nullptr);
    ~NoteTextPane() override;

    void Load(const std::string& rtf);
    bool IsModified() const;
    /// About how many bytes the saved text would have. Written for it while nobody knows, as after pictures.
    qint64 RtfSize() const;
    /// "\r\n" between paragraphs, none after the last.
    std::string PlainText() const;
    /// The stored bytes as long as nothing was changed.
    std::string RtfText() const;
    /// Who checks the spelling, once SetSpellCheck turns it on; null for nobody.
    void SetSpelling(SpellChecker* checker, const MarkStyle& style, const SkippedWords& skipped);
    void SetSpellCheck(bool on);
    /// Hands over the text as it is, without holding up the typing: rich text and plain text.
    void CaptureAside(std::function<void(std::string rtf, std::string plain)> whenReady);
    std::vector<TextPicture> Pictures() const;
    /// Takes pictures out of the text, in one step of undo, and hands over their bytes.
    std::vector<TextPicture> TakePictures(const std::vector<int>& positions);
    QTextEdit* Edit() const;

signals:
    void Changed();
    void FilesDropped(const QStringList& paths);
    void LinkOpened(const QString& address);
    void LanguageChosen(const QString& language);
    void SpellOptionsRequested();
    /// The text has just become larger than a note can hold, or small enough again.
    void SizeLimitPassed(bool passed, qint64 bytes);

private:
    RichTextEdit* edit_;
};

}  // namespace lore
