#include "classify/old_category.h"

#include <unordered_map>

namespace lore {

void ReadOldPathRecord(RecordReader* stream, CCategoryTree& tree) {
    tree.entries.clear();
    ReadCounted(stream, [&] {
        CCategory& entry = tree.entries.emplace_back();
        entry.level = ReadFixedInt(stream);
        ReadCountedString(stream, entry.name);
        ReadCountedString(stream, entry.parentName);
    });
}

bool ChainFromOldPath(const CCategoryTree& tree, CProCategoryTree& chain) {
    std::unordered_map<int32_t, const CCategory*> byLevel;
    for (const CCategory& entry : tree.entries)
        byLevel.emplace(entry.level, &entry);
    CProCategoryTree* end = nullptr;
    for (int level = 0; level < kMaxNesting; ++level) {
        const auto found = byLevel.find(level);
        if (found == byLevel.end() || found->second->name == kUnassignedName)
            break;
        end = end ? &end->children.emplace_back() : &chain;
        end->name = found->second->name;
    }
    chain.LinkChildren();
    return end != nullptr;
}

CProCategoryTree ReadOldPathAsChain(RecordReader* stream) {
    CCategoryTree tree;
    ReadOldPathRecord(stream, tree);
    CProCategoryTree chain;
    ChainFromOldPath(tree, chain);
    return chain;
}

FileResult LoadEmptyCategories(const std::filesystem::path& path, std::vector<CCategoryTree>& trees) {
    trees.clear();
    std::unique_ptr<RecordReader> reader;
    const FileResult result = OpenRecordFile(path, reader);
    if (!result.Ok())
        return result;
    ReadFixedDouble(reader.get());
    ReadCounted(reader.get(), [&] { ReadOldPathRecord(reader.get(), trees.emplace_back()); });
    return result;
}

}  // namespace lore
