#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "base/rgb.h"
#include "classify/category_tree.h"
#include "notes/notebook_list.h"

namespace lore {

/// What a data folder has to hold, in plain containers and without any of the program's own lists. Texts are bytes of
/// the core.

using Path = std::vector<std::string>;  ///< names of categories from a root on

struct ModelFile {
    std::string title, content;  ///< of a link the address, which is its title too
    bool isLink = false;
    bool operator==(const ModelFile&) const = default;
};

struct ModelNote {
    int32_t id = -1;  ///< -1 until it has been looked up
    std::string guid;
    std::string words;  ///< lines are parted by "\n"
    std::vector<std::string> keyWords;
    Rgb color = 0;
    std::vector<std::string> sources;            ///< GUIDs, the first one decides the file
    std::map<std::string, std::string> remarks;  ///< by GUID of a source
    std::array<Path, kSetCount> paths;
    std::vector<ModelFile> files;
    int64_t created = 0, edited = 0;
    uint64_t version = 0;  ///< another one whenever the note is written in another form
};

struct ModelSource {
    std::string title;
    int32_t type = 1;
    std::vector<std::string> authors;  ///< last names
    bool operator==(const ModelSource&) const = default;
};

using ModelNotes = std::map<std::string, ModelNote>;  ///< by GUID
using ModelSources = std::map<std::string, ModelSource>;

/// A note before a panel has given it something, and after it.
struct ModelChange {
    ModelNote former, given;
    bool formerIsGone = false;  ///< the category that the note had in the place of the given one was deleted since
    enum class Part { Color, KeyWords, Paths, Sources };
    Part What() const;
    /// Of a change of paths: that of the changed set before.
    const Path& FormerPath() const;
};

/// A deletion, an import with what it has replaced, or what a panel has given to notes.
struct ModelUndo {
    bool isImport = false;
    ModelNotes notes;
    std::vector<ModelChange> changes;    ///< empty for a deletion and an import
    ModelSources sources;                ///< those of the notes
    std::map<int32_t, uint64_t> landed;  ///< versions by id
    std::set<int32_t> listed;
    bool isShown = false;  ///< an import whose notes took the place of the list
};

struct ModelBook {
    CDatabase record;
    ModelNotes notes;
    ModelSources sources;
    std::set<Path> categories;
    std::set<int32_t> listed;
    bool listIsStored = true;  ///< false once it was deleted while it was open: it has an earlier list then
    std::vector<ModelUndo> undoables;
    bool undoIsBlocked = false;  ///< the next thing to undo meets changes that the model doesn't follow

    ModelNote* FindByID(int32_t id);
    /// Nobody knows here whether undoing an import, or what a panel has given, would find the note as it was.
    void BlockUndoOf(int32_t note);
    void AddCategory(const Path& path);
    void AddCategoriesOf(const ModelNote& note);
    ModelSources SourcesOf(const ModelNotes& some) const;
    /// The notes of a set at or below a category; for kAllSets of any set.
    std::set<int32_t> NotesBelow(const Path& path, int set) const;
    /// The notes without category in a set; for kAllSets in none.
    std::set<int32_t> Unassigned(int set) const;
};

struct ModelArchive {
    std::filesystem::path file;
    ModelNotes notes;
    ModelSources sources;
    bool hasAllSources = false;
};

struct ModelEvent {
    std::string label, description, series;
    int64_t start = 0, end = 0;
    int32_t color = 1;
    std::set<int32_t> popups;  ///< minutes before the start
    bool operator==(const ModelEvent&) const = default;
};

bool StartsWith(const Path& path, const Path& start);

}  // namespace lore
