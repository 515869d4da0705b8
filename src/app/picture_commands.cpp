#include "app/picture_commands.h"

#include <algorithm>
#include <cmath>

#include "notes/note_finder.h"
#include "notes/note_store.h"
#include "notes/sync_stamp.h"

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
    OpenNoteBook& book = app.NoteBook();
    FaultNotice& faults = app.Ports().faults;
    const ReadContext context = app.Context();
    std::optional<CNote> note = FindNote(book.index, noteId, context, faults);
    if (!note || attachment >= note->attachments.size() ||
        !ChangePicture(note->attachments[attachment], command, room) ||
        !NoteStore(book, context, faults, &app.Texts()).SaveNote(*note))
        return;
    if (StampSyncRecord(book.syncLog, note->guid, [&](CSyncInfo& info) { info.Change1 = context.nowUtc; }))
        WriteSyncLog(book, faults);
    app.RefreshNote(noteId);
}

}  // namespace lore
