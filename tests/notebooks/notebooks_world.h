#pragma once

#include <algorithm>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "notebooks/notebook_manager.h"
#include "notes/note_book_loader.h"
#include "notes/note_builder.h"
#include "notes/note_record.h"
#include "support/each.h"
#include "support/read_world.h"
#include "support/scripted_ports.h"

namespace lore {

/// A data root, scripted ports and a manager whose random numbers and online calls a test lays out.
struct NoteBooksWorld : ReadWorld, UserPorts {
    TempFolder folder;
    DataPaths data{folder.Path()};
    std::vector<int> waits;
    int random = 0;
    std::vector<std::string> cleared;  ///< "guid/online id" of each online call
    CDatabase main = MainNoteBook("{LOCAL}");

    NoteBooksWorld() { CreateNoteBookFolders(PathsOf(main)); }

    ManagerPorts Ports() {
        return {prompts,
                progress,
                faults,
                [this](int milliseconds) { waits.push_back(milliseconds); },
                [this](int highest) { return std::min(random, highest); },
                [this](const CDatabase& noteBook, const SyncLink& link) {
                    cleared.push_back(noteBook.guid + "/" + std::to_string(link.OnlineNoteBookID));
                }};
    }
    NoteBookManager Manager() {
        NoteBookManager manager(data, main.guid, Ports());
        manager.Load(context);
        return manager;
    }
    NoteBookPaths PathsOf(const CDatabase& noteBook) const { return {data, noteBook.folder}; }

    /// A NoteBook as it is on the disk.
    OpenNoteBook Open(const CDatabase& noteBook) {
        OpenNoteBook book;
        book.database = noteBook;
        book.paths = PathsOf(noteBook);
        IdCounters unused;
        LoadOptions options;
        options.mode = LoadMode::ReadOnly;
        LoadNoteBook(book, unused, context, faults, options);
        return book;
    }
    /// A NoteBook with folders and notes of its own, at the end of the list.
    CDatabase Add(const std::string& name, int32_t id, const std::vector<CNote>& notes = {}) {
        const std::string number = std::to_string(id);
        CDatabase entry{id, 0, name, "Folder" + number, "", DateTime(2011, 7, 12, 14, 20, 24), "{NB" + number + "}"};
        CreateNoteBookFolders(PathsOf(entry));
        PutNotes(entry, notes);
        auto list = Stored();
        list.push_back(entry);
        SaveDatabases(data.DatabasesFile(), list);
        return entry;
    }
    /// Each note in the file that it belongs into.
    void PutNotes(const CDatabase& noteBook, const std::vector<CNote>& notes) const {
        std::map<std::string, std::vector<CNote>> files;
        for (const CNote& note : notes)
            files[GetNoteFileName(note)].push_back(note);
        for (const auto& [name, held] : files)
            PutBytes(PathsOf(noteBook).NoteFile(name), NoteFileBytes(held));
    }
    /// The list as the file holds it.
    std::vector<CDatabase> Stored() {
        std::vector<CDatabase> list;
        LoadDatabases(data.DatabasesFile(), context, list);
        return list;
    }
    std::set<std::string> Folders() const { return NamesIn(data.Databases()); }
};

}  // namespace lore
