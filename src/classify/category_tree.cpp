#include "classify/category_tree.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "base/text.h"
#include "base/text_join.h"

namespace lore {

namespace {

void AppendIdentity(const CProCategoryTree& node, std::string& bytes) {
    const int64_t numbers[] = {node.id, node.parentID, static_cast<int64_t>(node.name.size()),
                               static_cast<int64_t>(node.children.size())};
    bytes.append(reinterpret_cast<const char*>(numbers), sizeof numbers);
    bytes += node.name;
    for (const CProCategoryTree& child : node.children)
        AppendIdentity(child, bytes);
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

void CProCategoryTree::LinkChildren() {
    for (CProCategoryTree& child : children) {
        child.parentID = id;
        child.parent = this;
        child.LinkChildren();
    }
}

int64_t CProCategoryTree::Renumber(int64_t first, CategoryIDs& ids) {
    int64_t next = first;
    id = ids.Take(next);
    for (CProCategoryTree& child : children)
        next = child.Renumber(next, ids) + 1;
    LinkChildren();
    return next;
}

void CProCategoryTree::MarkIDs(CategoryIDs& ids) const {
    ids.MarkUsed(id);
    for (const CProCategoryTree& child : children)
        child.MarkIDs(ids);
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

const CProCategoryTree* CProCategoryTree::FindChildByName(std::string_view childName) const {
    const auto hit = std::find_if(children.begin(), children.end(),
                                  [&](const CProCategoryTree& child) { return EqualNoCase(child.name, childName); });
    return hit == children.end() ? nullptr : &*hit;
}

CProCategoryTree* CProCategoryTree::FindByID(int32_t wanted) {
    return const_cast<CProCategoryTree*>(std::as_const(*this).FindByID(wanted));
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

std::string CProCategoryTree::Identity() const {
    std::string bytes;
    AppendIdentity(*this, bytes);
    return bytes;
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
