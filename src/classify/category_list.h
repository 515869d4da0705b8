#pragma once

#include <filesystem>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/file_io.h"
#include "base/free_ids.h"
#include "base/id_marks.h"
#include "base/record_file.h"
#include "classify/category_tree.h"

namespace lore {

/// The category forest of a NoteBook, with the notes of every category.
/// Whoever adds, removes, moves or renumbers nodes through a pointer or EditRoots() calls LinkAll() afterwards; until
/// then FindByID may give a node that has gone.
class CProCategoryList {
public:
    double version = 0.0;  ///< as the file had it; never tested

    CProCategoryList() = default;
    CProCategoryList(const CProCategoryList& other)
        : version(other.version),
          roots_(other.roots_),
          unread_(other.unread_),
          isWhole_(other.isWhole_),
          lost_(other.lost_),
          fresh_(false) {}
    CProCategoryList(CProCategoryList&&) = default;
    CProCategoryList& operator=(const CProCategoryList& other);
    CProCategoryList& operator=(CProCategoryList&&) = default;
    ~CProCategoryList() = default;

    const std::vector<CProCategoryTree>& Roots() const { return roots_; }
    std::vector<CProCategoryTree>& EditRoots();
    void RemoveAll();

    /// Replaces the forest by the file's. A file that doesn't open leaves no category but `<UNASSIGNED>`, which is
    /// appended wherever the file lacks it.
    FileResult Load(const std::filesystem::path& path);
    /// False if the file of the last load broke off or holds more than its records show. Who writes it anew keeps it
    /// beside first, as WriteCategories does.
    bool ReadWhole() const { return isWhole_; }
    /// What the file held is kept beside; from here on the forest is whole.
    void MarkWhole() { isWhole_ = true; }
    /// Writes the file in the current version. Gives the failure of Load instead if the file was there and could not be
    /// read: it holds categories that this forest has never seen.
    FileResult Save(const std::filesystem::path& path) const;
    /// The same as Load and Save on a stream.
    void Read(RecordReader* stream);
    void Write(RecordWriter* stream) const;

    /// Appends a copy as the last root and links it.
    CProCategoryTree& AddRoot(const CProCategoryTree& root);
    /// Makes parent ids and parent pointers of all nodes true, and the ids findable again, for several threads too.
    void LinkAll();
    /// Copies version and roots of another list. Whether the own file was read whole stays as it is; if the file of
    /// either could not be read, neither may be written.
    void Assign(const CProCategoryList& other);

    /// The first node with this id, depth first in list order; null if there is none. Constant time after LinkAll();
    /// after another change the first call makes the look-up, so that only one thread may call.
    const CProCategoryTree* FindByID(int32_t id) const;
    CProCategoryTree* FindByID(int32_t id);
    /// Among the roots, `<UNASSIGNED>` too, without regard to case.
    const CProCategoryTree* FindRootByName(std::string_view name) const;

    /// The highest id of the forest, where the reserved node counts as 0 and nothing below it counts; -1 without roots.
    int32_t HighestID() const;
    /// Raises the stored counter to the highest id and gives it, or 21122117 where it has become the reserved id. The
    /// next category gets one more than this.
    int32_t GetMaxCategoryID(int& maxCategoryID) const;
    /// That id for one new category.
    int32_t NewId(int& maxCategoryID) const;
    /// To give out ids to several; those of the forest are used, those that it lacks though notes name them are lost.
    CategoryIDs UsedIDs() const;
    /// Moves the stored counter on after a load or a conversion: the larger of itself and what GetMaxCategoryID gives,
    /// plus 1.
    void RaiseMaxCategoryID(int& maxCategoryID) const;

    /// Takes a note out of every category.
    void RemoveNote(int32_t note, int set);
    /// The same for many notes in one walk.
    void RemoveNotes(const LongList& notes, int set);
    /// Files a note in one set (1, 2 or 3) by the id of the deepest node of its path: in that category and all above
    /// it; an empty path files it under `<UNASSIGNED>`; an unknown id leaves it out.
    void IndexNote(int32_t note, const CProCategoryTree& path, int set);

private:
    using NodesByID = std::unordered_map<int32_t, const CProCategoryTree*>;
    const NodesByID& Nodes() const;
    void Touch();

    std::vector<CProCategoryTree> roots_;
    FileResult unread_;
    bool isWhole_ = true;
    PassedIDs lost_;           // of categories that IndexNote was asked for and that aren't here
    mutable NodesByID nodes_;  // empty from a change to LinkAll() or the first search
    // From reading the file to the first change by others the note lists hold what IndexNote filed and nothing else.
    // Then one look at the marks replaces a search of each list.
    bool fresh_ = true;
    std::array<IDMarks, kSetCount> filed_;
};

/// HighestID of one tree.
int32_t HighestCategoryID(const CProCategoryTree& tree);
/// GetMaxCategoryID for a forest whose highest id is known.
int32_t RaiseToHighest(int32_t highest, int& maxCategoryID);

/// The id of the category that a path leads to: the last of its deepest nodes, or of its nearest ancestor with an id
/// above 0; -1 if there is none.
int32_t DeepestCategoryID(const CProCategoryTree& path);

/// True if the path's first node bears the id or the name of `<UNASSIGNED>`. A path from elsewhere then counts as
/// empty.
bool IsUnassignedPath(const CProCategoryTree& path);

}  // namespace lore
