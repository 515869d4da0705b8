#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "classify/category_list.h"
#include "edit/new_category.h"
#include "notes/note.h"
#include "ports/prompts.h"

namespace lore {

inline constexpr char kCreateCategoryText[] = "<---Create New Category--->";

/// A category that a box offers.
struct CategoryChoice {
    int32_t id = -1;
    std::string name;
};

/// The paths of the note that is being edited, one box a level. Categories made here are kept aside: the save puts
/// those into the forest that the note uses. Sets are 1, 2 and 3, levels count from 0.
class CategoryAssignment {
public:
    /// Raises the stored counter to an id, and gives it.
    using Counter = std::function<int32_t(int32_t id)>;

    /// `forest` outlives the assignment. `maxCategoryID` is the stored counter.
    CategoryAssignment(const CProCategoryList& forest, int32_t maxCategoryID, Prompts& prompts)
        : CategoryAssignment(
              forest, [maxCategoryID](int32_t id) { return std::max(maxCategoryID, id); }, prompts) {}
    /// For one of several that are open at a time: `counter` keeps what another one has given out.
    CategoryAssignment(const CProCategoryList& forest, Counter counter, Prompts& prompts)
        : forest_(forest), counter_(std::move(counter)), prompts_(prompts) {}

    void Fill(const CNote& note);
    /// Fill for a note that was never saved: categories that the forest doesn't hold at their place, but that stand in
    /// no path of `stored`, are made anew.
    void FillUnsaved(const CNote& note, const CNote& stored);
    /// A path that wasn't changed goes back as it was, whether or not the forest knows it.
    void WriteBack(CNote& note) const;
    /// The categories made here that a path leads through, parents first.
    std::vector<NewCategory> NewCategories() const;

    /// How many levels the path has; the box behind them is the free one.
    size_t LevelCount(int set) const { return Levels(set).size(); }
    /// "L2: Lenses", or the text of the free box.
    std::string BoxText(int set, size_t level) const;
    /// The id that stands in a box, -1 in the free one.
    int32_t ChosenID(int set, size_t level) const;
    /// What a box offers, new categories behind the others. Nothing below a category that the forest doesn't know.
    std::vector<CategoryChoice> Choices(int set, size_t level) const;
    bool CanCreate(int set, size_t level) const { return level == 0 || IsKnown(ParentID(set, level)); }

    /// Puts an offered category into a box. What stood there and behind it goes.
    void Choose(int set, size_t level, int32_t id);
    /// Takes the boxes from a level on away.
    void ClearFrom(int set, size_t level);
    /// Asks for a name and puts a new category into the box. A name that a sibling holds is told, and stays in the
    /// field to be changed. False if the user cancels.
    bool CreateCategory(int set, size_t level);

private:
    struct SetPath {
        CProCategoryTree stored;
        std::vector<CategoryChoice> levels;
        bool changed = false;
    };
    const std::vector<CategoryChoice>& Levels(int set) const { return sets_[static_cast<size_t>(set - 1)].levels; }
    int32_t ParentID(int set, size_t level) const;
    bool IsKnown(int32_t id) const;
    const NewCategory* FindNew(int32_t id) const;
    std::vector<CategoryChoice> ChildrenOf(int32_t parentID) const;
    const NewCategory& Make(int32_t parentID, const std::string& name);
    void MakeAnew(SetPath& path);

    const CProCategoryList& forest_;
    Counter counter_;
    Prompts& prompts_;
    std::array<SetPath, kSetCount> sets_;
    std::vector<NewCategory> made_;
};

}  // namespace lore
