#include "classify/category_record.h"

#include <algorithm>

namespace lore {

namespace {

/// Reads over records with all below them. The loop counts the records still to come, since input may nest without end.
void SkipRecords(RecordReader* stream, int32_t count) {
    for (int64_t pending = count; pending > 0 && stream->WantsEntry(); --pending) {
        ReadFixedInt(stream);
        ReadFixedInt(stream);
        ReadCountedView(stream);
        pending += std::max(ReadFixedInt(stream), 0);
    }
}

void ReadNode(RecordReader* stream, CProCategoryTree& node, int level) {
    node.id = ReadFixedInt(stream);
    node.parentID = ReadFixedInt(stream);
    ReadCountedString(stream, node.name);
    if (level + 1 >= kMaxNesting)
        return SkipRecords(stream, ReadFixedInt(stream));
    ReadCounted(stream, [&] { ReadNode(stream, node.children.emplace_back(), level + 1); });
}

}  // namespace

void WriteCategoryRecord(RecordWriter* stream, const CProCategoryTree& node) {
    WriteFixedInt(stream, node.id);
    WriteFixedInt(stream, node.parentID);
    WriteCountedString(stream, node.name);
    WriteFixedInt(stream, static_cast<int32_t>(node.children.size()));
    for (const CProCategoryTree& child : node.children)
        WriteCategoryRecord(stream, child);
}

void ReadCategoryRecord(RecordReader* stream, CProCategoryTree& node) {
    node = CProCategoryTree();
    ReadNode(stream, node, 0);
    node.LinkChildren();
}

void SkipCategoryRecord(RecordReader* stream) {
    SkipRecords(stream, 1);
}

}  // namespace lore
