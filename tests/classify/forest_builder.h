#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "base/record_file.h"
#include "classify/category_list.h"

namespace lore {

/// A node with children, for forests written as one expression.
inline CProCategoryTree Node(int32_t id, const std::string& name, const std::vector<CProCategoryTree>& children = {}) {
    CProCategoryTree node(id, name);
    for (const CProCategoryTree& child : children)
        node.AddChild(child);
    return node;
}

/// A path of names from a root down, numbered from `first` on (all -1 when it is below 1).
inline CProCategoryTree Chain(const std::vector<std::string>& names, int32_t first = -1) {
    CProCategoryTree chain;
    CProCategoryTree* end = nullptr;
    for (const std::string& name : names) {
        end = end ? &end->children.emplace_back() : &chain;
        end->name = name;
        end->id = first > 0 ? first++ : -1;
    }
    chain.LinkChildren();
    return chain;
}

inline CProCategoryList Forest(const std::vector<CProCategoryTree>& roots) {
    CProCategoryList forest;
    for (const CProCategoryTree& root : roots)
        forest.AddRoot(root);
    forest.LinkAll();
    return forest;
}

/// The structure with ids and names, such as "1:A(2:B,3:C)".
inline std::string Shape(const CProCategoryTree& node) {
    std::string text = std::to_string(node.id) + ":" + node.name;
    for (size_t i = 0; i < node.children.size(); ++i)
        text += (i == 0 ? "(" : ",") + Shape(node.children[i]);
    return node.children.empty() ? text : text + ")";
}

inline std::string Shape(const CProCategoryList& forest) {
    std::string text;
    for (const CProCategoryTree& root : forest.Roots())
        text += (text.empty() ? "" : " ") + Shape(root);
    return text;
}

/// How many levels a node has below it.
inline int LevelsBelow(const CProCategoryTree& node) {
    int levels = 0;
    for (const CProCategoryTree& child : node.children)
        levels = std::max(levels, 1 + LevelsBelow(child));
    return levels;
}

/// True if every parent pointer and parent id below a node is true.
inline bool IsLinked(const CProCategoryTree& node) {
    for (const CProCategoryTree& child : node.children)
        if (child.parent != &node || child.parentID != node.id || !IsLinked(child))
            return false;
    return true;
}

}  // namespace lore
