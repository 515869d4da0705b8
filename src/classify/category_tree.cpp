#include "classify/category_tree.h"

#include <algorithm>
#include <utility>

#include "base/text.h"
#include "base/text_join.h"

namespace lore {

namespace {

const CProCategoryTree* FindPlace(const CProCategoryTree& node, std::string_view name, std::string_view parentName,
                                  int levelsDown) {
    if (levelsDown < 0)
        return nullptr;
    if (levelsDown == 0) {
        const std::string_view above = node.parent ? std::string_view(node.parent->name) : std::string_view();
        return node.name == name && above == parentName ? &node : nullptr;
    }
    for (const CProCategoryTree& child : node.children)
        if (const CProCategoryTree* hit = FindPlace(child, name, parentName, levelsDown - 1))
            return hit;
    return nullptr;
}

int LevelsBelow(const CProCategoryTree& node) {
    int levels = 0;
    for (const CProCategoryTree& child : node.children)
        levels = std::max(levels, 1 + LevelsBelow(child));
    return levels;
}

}  // namespace

CProCategoryTree::CProCategoryTree(const CProCategoryTree& other)
    : id(other.id), parentID(other.parentID), name(other.name), notes(other.notes), children(other.children) {
    AdoptChildren();
}

CProCategoryTree::CProCategoryTree(CProCategoryTree&& other) noexcept
    : id(other.id),
      parentID(other.parentID),
      name(std::move(other.name)),
      parent(other.parent),
      notes(std::move(other.notes)),
      children(std::move(other.children)) {
    AdoptChildren();
}

CProCategoryTree& CProCategoryTree::operator=(const CProCategoryTree& other) {
    if (this != &other)
        *this = CProCategoryTree(other);
    return *this;
}

// The node stays where it is in the forest.
// cppcheck-suppress operatorEqVarError
CProCategoryTree& CProCategoryTree::operator=(CProCategoryTree&& other) noexcept {
    if (this == &other)
        return *this;
    CProCategoryTree taken(std::move(other));  // `other` may stand below this node
    id = taken.id;
    parentID = taken.parentID;
    name = std::move(taken.name);
    notes = std::move(taken.notes);
    children = std::move(taken.children);
    AdoptChildren();
    return *this;
}

void CProCategoryTree::AdoptChildren() noexcept {
    for (CProCategoryTree& child : children)
        child.parent = this;
}

int CProCategoryTree::GetLevel() const {
    int level = 0;
    for (const CProCategoryTree* above = parent; above; above = above->parent)
        ++level;
    return level;
}

int CProCategoryTree::GetDeepestLevel() const {
    return GetLevel() + LevelsBelow(*this);
}

void CProCategoryTree::LinkChildren() {
    for (CProCategoryTree& child : children) {
        child.parentID = id;
        child.parent = this;
        child.LinkChildren();
    }
}

int32_t CProCategoryTree::Renumber(int32_t first) {
    id = first;
    int32_t next = CategoryIDAfter(first);
    for (CProCategoryTree& child : children)
        next = CategoryIDAfter(child.Renumber(next));
    LinkChildren();
    return next;
}

CProCategoryTree& CProCategoryTree::AddChild(const CProCategoryTree& child) {
    children.push_back(child);
    LinkChildren();
    return children.back();
}

const CProCategoryTree* CProCategoryTree::FindByID(int32_t wanted) const {
    if (id == wanted)
        return this;
    for (const CProCategoryTree& child : children)
        if (const CProCategoryTree* hit = child.FindByID(wanted))
            return hit;
    return nullptr;
}

const CProCategoryTree* CProCategoryTree::FindByPlace(std::string_view nodeName, std::string_view parentName,
                                                      int level) const {
    return FindPlace(*this, nodeName, parentName, level - GetLevel());
}

const CProCategoryTree* CProCategoryTree::FindChildByName(std::string_view childName) const {
    const auto hit = std::find_if(children.begin(), children.end(),
                                  [&](const CProCategoryTree& child) { return EqualNoCase(child.name, childName); });
    return hit == children.end() ? nullptr : &*hit;
}

const CProCategoryTree* CProCategoryTree::NodeAtLevel(int level) const {
    const CProCategoryTree* node = this;
    int at = GetLevel();
    if (at > level)
        return nullptr;
    for (; node && at < level; ++at)
        node = node->children.empty() ? nullptr : &node->children.front();
    return node;
}

CProCategoryTree* CProCategoryTree::FindByID(int32_t wanted) {
    return const_cast<CProCategoryTree*>(std::as_const(*this).FindByID(wanted));
}

CProCategoryTree* CProCategoryTree::FindByPlace(std::string_view nodeName, std::string_view parentName, int level) {
    return const_cast<CProCategoryTree*>(std::as_const(*this).FindByPlace(nodeName, parentName, level));
}

CProCategoryTree* CProCategoryTree::FindChildByName(std::string_view childName) {
    return const_cast<CProCategoryTree*>(std::as_const(*this).FindChildByName(childName));
}

CProCategoryTree* CProCategoryTree::NodeAtLevel(int level) {
    return const_cast<CProCategoryTree*>(std::as_const(*this).NodeAtLevel(level));
}

std::string CProCategoryTree::GetPathText() const {
    std::vector<const CProCategoryTree*> upward;
    for (const CProCategoryTree* node = this; node; node = node->parent)
        upward.push_back(node);
    std::string text;
    for (size_t level = 1; level <= upward.size(); ++level)
        text = JoinTexts(text, "L" + std::to_string(level) + ": " + upward[upward.size() - level]->name + "\n");
    return text;
}

bool CProCategoryTree::IsSameTree(const CProCategoryTree& other) const {
    return id == other.id && parentID == other.parentID && name == other.name &&
           std::equal(children.begin(), children.end(), other.children.begin(), other.children.end(),
                      [](const CProCategoryTree& a, const CProCategoryTree& b) { return a.IsSameTree(b); });
}

bool CProCategoryTree::IsLess(const CProCategoryTree& other) const {
    const CProCategoryTree* a = this;
    const CProCategoryTree* b = &other;
    while (true) {
        if (const int order = CompareNoCase(Trim(a->name), Trim(b->name)))
            return order < 0;
        const int32_t below = a->children.empty() ? -1 : a->children.front().id;
        const int32_t otherBelow = b->children.empty() ? -1 : b->children.front().id;
        if (below < 1 || otherBelow < 1)
            return below < 0 && otherBelow > 0;
        a = &a->children.front();
        b = &b->children.front();
    }
}

}  // namespace lore
