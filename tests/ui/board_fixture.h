#pragma once

#include <QString>
#include <QTemporaryDir>
#include <map>
#include <vector>

#include "notes/board_model.h"

class QWidget;

namespace lore {

/// A board's list in memory.
class MemoryBoard : public BoardModel {
public:
    int Count() const override { return static_cast<int>(notes.size()); }
    int32_t IDAt(int row) const override { return NoteAt(row).id; }
    const CNote& NoteAt(int row) const override { return notes[static_cast<size_t>(row)]; }
    const CNote& ShownNoteAt(int row) const override { return ++laidOut, NoteAt(row); }
    int RowOf(int32_t noteId) const override;
    std::vector<const CSource*> SourcesOf(const CNote& note) const override;
    std::string SourceRemark(const CNote& note, const CSource& source) const override;
    std::filesystem::path AttachmentPath(const CAttachment& attachment) const override;

    /// Appends a note with a text; its id is its position from 1.
    CNote& AddText(const std::string& plainText);
    /// Appends a note with a rich text.
    CNote& AddRtf(const std::string& rtf);
    /// Draws a picture and attaches it.
    void AttachPicture(CNote& note, const std::string& title, int width, int height);
    void AttachFile(CNote& note, const std::string& title, int32_t type, int bytes);
    /// Attaches a link, or a file that is there already or not at all.
    CAttachment& Attach(CNote& note, const std::string& title, int32_t type, const std::string& storedFile = {});

    std::vector<CNote> notes;
    std::map<int32_t, CSource> sources;
    mutable int laidOut = 0;  ///< how often a card was made of a note

private:
    QTemporaryDir folder_;
    int files_ = 0;
};

/// A chain of categories.
CProCategoryTree PathOf(const std::vector<std::string>& names);

/// A board of cards of all kinds: formatted text, tables, lists, six scripts, long names, pictures, files, links.
void FillSampleBoard(MemoryBoard& board);

/// Writes a picture of a window into the folder of pictures; the name says in which size it was taken.
void TakeShot(QWidget& window, const QString& name);

class Theme;
/// Pictures of a window in both palettes, "NAME-light" and "NAME-dark". The light one stays.
struct BothLooks {
    Theme& theme;
    void Shoot(QWidget& window, const QString& name) const;
};

}  // namespace lore
