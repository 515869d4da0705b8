#include "app/status_panes.h"

#include "app/lorebinder_app.h"
#include "base/program_version.h"
#include "calendar/date_arithmetic.h"

namespace lore {

namespace {

std::string LastSyncText(const SyncLink& link, const DateTime& nowUtc) {
    if (!link.IsLinked())
        return {};
    if (!link.LastSync.IsValid() || link.LastSync == DateTime(1900, 1, 1))
        return "Never Synced";
    return "Last Sync:  " + std::to_string(SpanBetween(link.LastSync, nowUtc).WholeDays()) + " days";
}

}  // namespace

std::string PaneText(const CLorebinderApp& app, StatusPane pane) {
    const OpenNoteBook& book = app.NoteBook();
    const SyncLink& link = book.syncLog.link;
    switch (pane) {
        case StatusPane::NoteBook:
            return "NoteBook:   < " + (book.database.IsMain() ? kMainNoteBookName : book.database.name) + " >";
        case StatusPane::Link:
            return link.IsLinked() ? "Linked With:   < " + link.OnlineName + " >" : "Not Linked";
        case StatusPane::LastSync:
            return LastSyncText(link, app.Ports().clock.NowUtc());
        case StatusPane::Notes:
            return "Notes:    " + std::to_string(book.TotalNoteCount());
        case StatusPane::List:
            return "In List:    " + std::to_string(app.List().Count());
    }
    return {};
}

const char* EarlyPaneText(StatusPane pane) {
    switch (pane) {
        case StatusPane::NoteBook:
            return "NoteBook:      <>";
        case StatusPane::Link:
            return "Not Linked";
        case StatusPane::LastSync:
            break;
        case StatusPane::Notes:
            return "Notes:        0";
        case StatusPane::List:
            return "In List:        0";
    }
    return "";
}

std::string MainWindowTitle() {
    return std::string("<Lorebinder Premium> - Ver. ") + ProgramVersion() + " - Fennelworks, Inc.";
}

}  // namespace lore
