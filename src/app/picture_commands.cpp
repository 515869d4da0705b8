#include "app/picture_commands.h"

#include <algorithm>
#include <cmath>

#include "notes/note_file.h"
#include "notes/sync_log.h"

namespace lore {

namespace {

constexpr double kZoomStep = 0.05;
constexpr double kSmallestZoom = 0.05;
constexpr int32_t kShiftStep = 10;

/// Zooms are kept to hundredths, so that steps forth and back meet.
double Rounded(double zoom) {
    return std::round(zoom * 100.0) / 100.0;
}

int32_t Shifted(const CAttachment& picture, int32_t by, const PictureRoom& room) {
    const double taken = room.width * picture.zoom;
    // Written so that a scale that is no number, as a damaged file may hold, shifts nothing.
    if (!(taken >= 0 && taken < room.cardWidth))
        return picture.shift;
    const int half = (room.cardWidth - static_cast<int>(taken)) / 2;
    return std::clamp(std::clamp(picture.shift, -half, half) + by, -half, half);
}

/// The sync log of a linked NoteBook takes the change of a note that it holds.
void StampChange(CLorebinderApp& app, const CNote& note) {
    OpenNoteBook& book = app.NoteBook();
    const CSyncInfo* const found = book.syncLog.FindSyncInfo(note.guid);
    if (!book.syncLog.link.IsLinked() || !found || found->SyncState != kStoredTrue)
        return;
    CSyncInfo info = *found;
    info.Changed = true;
    info.Change1 = app.Ports().clock.NowUtc();
    book.syncLog.ReplaceSyncInfo(info);
    if (const FileResult result = SaveSyncLogTo(book.paths.SyncLog(), book.syncLog); !result.Ok()) {
        app.Ports().faults.Tell({"The sync log could not be written", book.paths.SyncLog().string(), result.Reason()});
    }
}

/// Reads all notes of a file that is to be rewritten. False, and told, for a file that can't be read to its end: what
/// stands behind the damage would be lost.
bool ReadWholeFile(CLorebinderApp& app, const std::string& path, std::vector<CNote>& notes) {
    const ReadContext context = app.Context();
    NoteFileReader reader(context);
    const FileResult result = reader.Open(path);
    while (result.Ok() && reader.Next())
        notes.push_back(reader.TakeNote());
    if (result.Ok() && !reader.IsDamaged())
        return true;
    app.Ports().faults.Tell({"The note was not changed, since its file could not be read whole", path,
                             result.Ok() ? "the file is damaged" : result.Reason()});
    return false;
}

}  // namespace

bool ChangePicture(CAttachment& picture, PictureCommand command, const PictureRoom& room) {
    const CAttachment before = picture;
    switch (command) {
        case PictureCommand::ZoomIn:
            picture.zoom = Rounded(picture.zoom + kZoomStep);
            break;
        case PictureCommand::ZoomOut:
            picture.zoom = std::max(Rounded(picture.zoom - kZoomStep), kSmallestZoom);
            break;
        case PictureCommand::ShiftLeft:
            picture.shift = Shifted(picture, -kShiftStep, room);
            break;
        case PictureCommand::ShiftRight:
            picture.shift = Shifted(picture, kShiftStep, room);
            break;
        case PictureCommand::Restore:
            picture.zoom = 1.0;
            picture.shift = 0;
            break;
    }
    return picture.zoom != before.zoom || picture.shift != before.shift;
}

void RunPictureCommand(CLorebinderApp& app, int32_t noteId, size_t attachment, PictureCommand command,
                       const PictureRoom& room) {
    const std::string* const path = app.NoteBook().index.FindPath(noteId);
    if (!path)
        return;
    std::vector<CNote> notes;
    if (!ReadWholeFile(app, *path, notes))
        return;
    const auto note = std::find_if(notes.begin(), notes.end(), [&](const CNote& n) { return n.id == noteId; });
    if (note == notes.end() || attachment >= note->attachments.size() ||
        !ChangePicture(note->attachments[attachment], command, room))
        return;
    if (const FileResult result = SaveNoteFile(*path, notes); !result.Ok()) {
        app.Ports().faults.Tell({"The note could not be saved", *path, result.Reason()});
        return;
    }
    StampChange(app, *note);
    app.RefreshNote(noteId);
}

}  // namespace lore
