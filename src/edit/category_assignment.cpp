#include "edit/category_assignment.h"

#include <algorithm>
#include <unordered_set>

#include "base/text.h"

namespace lore {

namespace {

constexpr char kNextLevelText[] = "Click To Assign New Level";

std::vector<CategoryChoice> LevelsOf(const CProCategoryTree& path) {
    std::vector<CategoryChoice> levels;
    if (path.IsEmptyPath())
        return levels;
    for (const CProCategoryTree* node = &path; node; node = node->children.empty() ? nullptr : &node->children[0])
        levels.push_back({node->id, node->name});
    return levels;
}

CProCategoryTree PathOfLevels(const std::vector<CategoryChoice>& levels) {
    CProCategoryTree path;
    CProCategoryTree* end = nullptr;
    for (const CategoryChoice& level : levels) {
        if (end)
            end = &end->children.emplace_back(level.id, level.name);
        else
            end = &(path = CProCategoryTree(level.id, level.name));
    }
    path.LinkChildren();
    return path;
}

/// The one with exactly this name, else the first that has it without regard to case; null if there is none.
const CategoryChoice* FindByName(const std::vector<CategoryChoice>& choices, const std::string& name) {
    auto found =
        std::find_if(choices.begin(), choices.end(), [&](const CategoryChoice& choice) { return choice.name == name; });
    if (found == choices.end())
        found = std::find_if(choices.begin(), choices.end(),
                             [&](const CategoryChoice& choice) { return EqualNoCase(choice.name, name); });
    return found == choices.end() ? nullptr : &*found;
}

}  // namespace

void CategoryAssignment::Fill(const CNote& note) {
    for (size_t i = 0; i < kSetCount; ++i)
        sets_[i] = {note.categories[i], LevelsOf(note.categories[i]), false};
}

void CategoryAssignment::FillUnsaved(const CNote& note, const CNote& stored) {
    Fill(note);
    for (size_t i = 0; i < kSetCount; ++i) {
        if (!sets_[i].stored.IsSameTree(stored.categories[i]))
            MakeAnew(sets_[i]);
    }
}

void CategoryAssignment::MakeAnew(SetPath& path) {
    int32_t parent = -1;
    for (CategoryChoice& level : path.levels) {
        const std::vector<CategoryChoice> siblings = ChildrenOf(parent);
        // The id alone isn't enough: another category may have got it since.
        const auto known = std::find_if(siblings.begin(), siblings.end(), [&](const CategoryChoice& choice) {
            return choice.id == level.id && choice.name == level.name;
        });
        const CategoryChoice* const named = FindByName(siblings, level.name);
        if (known == siblings.end() && named)
            level = *named;
        else if (known == siblings.end())
            level.id = Make(parent, level.name).id;
        parent = level.id;
    }
    path.changed = true;
}

void CategoryAssignment::WriteBack(CNote& note) const {
    for (size_t i = 0; i < kSetCount; ++i)
        note.categories[i] = sets_[i].changed ? PathOfLevels(sets_[i].levels) : sets_[i].stored;
}

std::vector<NewCategory> CategoryAssignment::NewCategories() const {
    std::unordered_set<int32_t> used;
    for (const SetPath& set : sets_) {
        for (const CategoryChoice& level : set.levels)
            used.insert(level.id);
    }
    std::vector<NewCategory> wanted;
    std::copy_if(made_.begin(), made_.end(), std::back_inserter(wanted),
                 [&](const NewCategory& category) { return used.contains(category.id); });
    return wanted;
}

std::string CategoryAssignment::BoxText(int set, size_t level) const {
    if (level >= LevelCount(set))
        return kNextLevelText;
    return "L" + std::to_string(level + 1) + ": " + Levels(set)[level].name + "\n";
}

int32_t CategoryAssignment::ChosenID(int set, size_t level) const {
    return level < LevelCount(set) ? Levels(set)[level].id : -1;
}

int32_t CategoryAssignment::ParentID(int set, size_t level) const {
    return level == 0 ? -1 : ChosenID(set, level - 1);
}

const NewCategory* CategoryAssignment::FindNew(int32_t id) const {
    const auto found =
        std::find_if(made_.begin(), made_.end(), [id](const NewCategory& category) { return category.id == id; });
    return found == made_.end() ? nullptr : &*found;
}

bool CategoryAssignment::IsKnown(int32_t id) const {
    return forest_.FindByID(id) || FindNew(id);
}

std::vector<CategoryChoice> CategoryAssignment::ChildrenOf(int32_t parentID) const {
    std::vector<CategoryChoice> choices;
    const CProCategoryTree* parent = parentID < 0 ? nullptr : forest_.FindByID(parentID);
    // The forest may have got another category of this id since.
    if (const NewCategory* const made = FindNew(parentID); made && parent && made->name != parent->name)
        parent = nullptr;
    if (parentID < 0 || parent) {
        for (const CProCategoryTree& node : parent ? parent->children : forest_.Roots()) {
            if (!node.IsUnassigned())
                choices.push_back({node.id, node.name});
        }
    }
    // The forest holds some of them already after a save whose note could not be written.
    const auto isListed = [&choices](const NewCategory& category) {
        return std::any_of(choices.begin(), choices.end(), [&](const CategoryChoice& choice) {
            return choice.id == category.id && choice.name == category.name;
        });
    };
    for (const NewCategory& category : made_) {
        if (category.parentID == parentID && !isListed(category))
            choices.push_back({category.id, category.name});
    }
    return choices;
}

std::vector<CategoryChoice> CategoryAssignment::Choices(int set, size_t level) const {
    return level > LevelCount(set) ? std::vector<CategoryChoice>() : ChildrenOf(ParentID(set, level));
}

void CategoryAssignment::Choose(int set, size_t level, int32_t id) {
    if (ChosenID(set, level) == id)
        return;
    for (const CategoryChoice& choice : Choices(set, level)) {
        if (choice.id != id)
            continue;
        SetPath& path = sets_[static_cast<size_t>(set - 1)];
        path.levels.resize(level);
        path.levels.push_back(choice);
        path.changed = true;
        return;
    }
}

void CategoryAssignment::ClearFrom(int set, size_t level) {
    SetPath& path = sets_[static_cast<size_t>(set - 1)];
    if (level >= path.levels.size())
        return;
    path.levels.resize(level);
    path.changed = true;
}

const NewCategory& CategoryAssignment::Make(int32_t parentID, const std::string& name) {
    int32_t highest = forest_.HighestID();
    CategoryIDs ids = forest_.UsedIDs();
    for (const NewCategory& category : made_) {
        highest = std::max(highest, category.id);
        ids.MarkUsed(category.id);
    }
    int counter = counter_(0);
    int64_t wanted = int64_t{RaiseToHighest(highest, counter)} + 1;
    made_.push_back({ids.Take(wanted), parentID, name});
    counter_(made_.back().id);
    return made_.back();
}

bool CategoryAssignment::CreateCategory(int set, size_t level) {
    if (level > LevelCount(set) || !CanCreate(set, level))
        return false;
    const std::string title = "Create New Level " + std::to_string(level + 1) + " Category";
    const int32_t parent = ParentID(set, level);
    const auto isTaken = [&](const std::string& name) {
        // `<UNASSIGNED>` is no choice, but it is a sibling of the roots.
        return (level == 0 && EqualNoCase(name, kUnassignedName)) || FindByName(ChildrenOf(parent), name);
    };
    std::string name;
    while (true) {
        name = CleanText(Trim(prompts_.AskText("New Category Name:", title, name).value_or(std::string())));
        if (name.empty())
            return false;
        if (!isTaken(name))
            break;
        prompts_.Message("There is already a category at this level with the same name.", "Invalid Category Name",
                         PromptIcon::Warning);
    }
    Choose(set, level, Make(parent, name).id);
    return true;
}

}  // namespace lore
