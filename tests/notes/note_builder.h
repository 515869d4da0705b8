#pragma once

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "bibliography/source_list.h"
#include "classify/category_list.h"
#include "classify/category_record.h"
#include "notes/note.h"
#include "notes/note_file.h"
#include "notes/notebook_paths.h"
#include "notes/open_notebook.h"
#include "support/raw_record.h"
#include "support/read_world.h"
#include "support/scripted_ports.h"

namespace lore {

/// A path of categories from a root down, given as ids and names.
inline CProCategoryTree PathOf(const std::vector<std::pair<int32_t, std::string>>& nodes) {
    CProCategoryTree path;
    CProCategoryTree* end = nullptr;
    for (const auto& [id, name] : nodes) {
        end = end ? &end->children.emplace_back() : &path;
        end->id = id;
        end->name = name;
    }
    path.LinkChildren();
    return path;
}

/// A note that uses every field.
inline CNote FullNote(int32_t id) {
    CNote note;
    note.id = id;
    note.spellCheck = false;
    note.guid = "{0A1B2C3D-0000-1111-abcd-22223333" + std::to_string(10000000 + id) + "}";
    note.keyWords = "lamp, Fresnel, fog \xFC";
    note.reserved = "kept";
    note.plainText = "First\r\nSecond";
    note.rtfText = "{\\rtf1\\ansi First\\par\r\nSecond}";
    note.dateCreated = DateTime(2011, 7, 12, 14, 20, 24);
    note.dateEdited = DateTime(2012, 1, 2, 3, 4, 5);
    note.borderColor = MakeRgb(255, 128, 1);
    note.sources = {1011, 1013};
    note.sourceInfo = {{"{S1}", "p. 7"}, {"{S3}", ""}};
    note.categories[0] = PathOf({{3, "Lights"}, {4, "Lenses"}});
    note.categories[2] = PathOf({{9, "Places"}});
    note.attachments.push_back({-12, 1.25, "A lamp", "0000001.png", "C:\\Pictures\\lamp.png", 1, true});
    note.attachments.push_back({0, 1.0, "Site", "", "http://example.org", 12, false});
    return note;
}

/// A note without a source, made at noon of a day in January 2020.
inline CNote DayNote(int32_t id, int day = 1) {
    CNote note;
    note.id = id;
    note.guid = "{G" + std::to_string(id) + "}";
    note.dateCreated = note.dateEdited = DateTime(2020, 1, day, 12, 0, 0);
    return note;
}

inline CNote SourceNote(int32_t id, LongList sources) {
    CNote note = DayNote(id);
    note.sources = std::move(sources);
    return note;
}

inline CNote WithKeyWords(CNote note, const std::string& keyWords) {
    note.keyWords = keyWords;
    return note;
}

/// A record of version 10.9, whose three paths of categories stand in the old form.
inline void AddOldNote(RawRecord& raw, int32_t id, const std::vector<std::vector<std::string>>& paths) {
    raw.Int(id).Int(0).Text("2011-07-12-14-20-24").Text("2011-07-13-01-02-03").Text("{N}").Text("").Text("");
    raw.Int(2112).Int(0).Text("plain").Text("rich");
    for (const std::vector<std::string>& path : paths) {
        raw.Int(static_cast<int32_t>(path.size()));
        for (size_t level = 0; level < path.size(); ++level)
            raw.Int(static_cast<int32_t>(level)).Text(path[level]).Text("");
    }
}

/// The bytes of a note's record, which hold every stored field.
inline std::string RecordOf(const CNote& note) {
    return NoteFileBytes({&note, 1});
}

/// Writes the file of sources.
inline void PutSources(const NoteBookPaths& paths, const std::vector<CSource>& sources,
                       const AuthorList& authors = {}) {
    SourceList list;
    for (const CSource& source : sources)
        list.AddTail(source);
    EXPECT_TRUE(list.SaveSources(paths.Sources(), authors).Ok());
}

/// Writes the file of categories.
inline void PutCategories(const NoteBookPaths& paths, const std::vector<CProCategoryTree>& roots) {
    CProCategoryList forest;
    for (const CProCategoryTree& root : roots)
        forest.AddRoot(root);
    EXPECT_TRUE(forest.Save(paths.Categories()).Ok());
}

/// A data root with the main NoteBook in it.
struct NoteBookFolder {
    TempFolder folder{MemoryFolder()};
    DataPaths data{folder.Path()};
    NoteBookPaths paths{data, "_LBMAIN_"};

    NoteBookFolder() { CreateNoteBookFolders(paths); }
    /// Writes a note file under any name.
    void Put(const std::string& name, const std::vector<CNote>& notes) const {
        PutBytes(paths.NoteFile(name), NoteFileBytes(notes));
    }
    std::string Bytes(const std::string& name) const { return BytesOf(paths.NoteFile(name)); }
};

/// A NoteBook on the disk, the picture of it, and what reading takes and tells.
class NoteBookTest : public testing::Test {
protected:
    NoteBookTest() { book.paths = disk.paths; }

    NoteBookFolder disk;
    OpenNoteBook book;
    ReadWorld world;
    NotedFaults faults;
};

}  // namespace lore
