#include "classify/category_list.h"

#include <algorithm>
#include <utility>

#include "base/text.h"
#include "classify/category_record.h"
#include "classify/note_lists.h"

namespace lore {

namespace {

/// What GetMaxCategoryID gives instead of the reserved id.
constexpr int32_t kBehindReserved = 21122117;

template <typename Take>
void ForIDs(const CProCategoryTree& node, const Take& take) {
    take(node.IsUnassigned() ? 0 : node.id);
    if (node.IsUnassigned())
        return;
    for (const CProCategoryTree& child : node.children)
        ForIDs(child, take);
}

template <typename Take>
void ForNodes(const CProCategoryTree& node, const Take& take) {
    take(node);
    for (const CProCategoryTree& child : node.children)
        ForNodes(child, take);
}

void RemoveFromTree(CProCategoryTree& node, const LongList& notes, int set) {
    for (int i = 0; i < kSetCount; ++i)
        if (SelectsSet(set, i))
            RemoveEach(node.notes[static_cast<size_t>(i)], notes);
    for (CProCategoryTree& child : node.children)
        RemoveFromTree(child, notes, set);
}

struct Deepest {
    int level = -1;
    int32_t id = -1;
};

void SeekDeepest(const CProCategoryTree& node, int level, Deepest& deepest) {
    if (level >= deepest.level) {
        deepest.level = level;
        if (node.id > 0)
            deepest.id = node.id;
    }
    for (const CProCategoryTree& child : node.children)
        SeekDeepest(child, level + 1, deepest);
}

}  // namespace

CProCategoryList& CProCategoryList::operator=(const CProCategoryList& other) {
    version = other.version;
    unread_ = other.unread_;
    isWhole_ = other.isWhole_;
    lost_ = other.lost_;
    EditRoots() = other.roots_;
    return *this;
}

void CProCategoryList::Touch() {
    if (!fresh_)
        return;
    fresh_ = false;
    filed_ = {};
}

std::vector<CProCategoryTree>& CProCategoryList::EditRoots() {
    Touch();
    nodes_.clear();
    return roots_;
}

void CProCategoryList::RemoveAll() {
    EditRoots().clear();
}

FileResult CProCategoryList::Load(const std::filesystem::path& path) {
    std::unique_ptr<RecordReader> reader;
    const FileResult result = OpenRecordFile(path, reader);
    Read(result.Ok() ? reader.get() : nullptr);
    unread_ = result.Missing() ? FileResult{} : result;
    isWhole_ = !result.Ok() || reader->ReadWhole();
    return result;
}

FileResult CProCategoryList::Save(const std::filesystem::path& path) const {
    if (!unread_.Ok())
        return unread_;
    RecordWriter writer;
    Write(&writer);
    return SaveRecordFile(path, writer);
}

void CProCategoryList::Read(RecordReader* stream) {
    RemoveAll();
    lost_.Clear();
    if (stream) {
        version = ReadFixedDouble(stream);
        ReadCounted(stream, [&] { ReadCategoryRecord(stream, roots_.emplace_back()); });
    }
    LinkAll();
    if (!FindByID(kUnassignedID)) {
        roots_.emplace_back(kUnassignedID, kUnassignedName);
        LinkAll();
    }
    fresh_ = true;
}

void CProCategoryList::Write(RecordWriter* stream) const {
    WriteFixedDouble(stream, kDataVersion);
    WriteFixedInt(stream, static_cast<int32_t>(roots_.size()));
    for (const CProCategoryTree& root : roots_)
        WriteCategoryRecord(stream, root);
}

CProCategoryTree& CProCategoryList::AddRoot(const CProCategoryTree& root) {
    CProCategoryTree& added = EditRoots().emplace_back(root);
    added.LinkChildren();
    return added;
}

void CProCategoryList::LinkAll() {
    for (CProCategoryTree& root : EditRoots()) {
        root.parentID = -1;
        root.parent = nullptr;
        root.LinkChildren();
    }
    Nodes();
}

void CProCategoryList::Assign(const CProCategoryList& other) {
    version = other.version;
    if (unread_.Ok())
        unread_ = other.unread_;
    EditRoots() = other.roots_;
    LinkAll();
}

const CProCategoryList::NodesByID& CProCategoryList::Nodes() const {
    if (nodes_.empty())
        for (const CProCategoryTree& root : roots_)
            ForNodes(root, [&](const CProCategoryTree& node) { nodes_.emplace(node.id, &node); });
    return nodes_;
}

const CProCategoryTree* CProCategoryList::FindByID(int32_t id) const {
    const auto hit = Nodes().find(id);
    return hit == nodes_.end() ? nullptr : hit->second;
}

const CProCategoryTree* CProCategoryList::FindRootByName(std::string_view name) const {
    const auto hit = std::find_if(roots_.begin(), roots_.end(),
                                  [&](const CProCategoryTree& root) { return EqualNoCase(root.name, name); });
    return hit == roots_.end() ? nullptr : &*hit;
}

CProCategoryTree* CProCategoryList::FindByID(int32_t id) {
    Touch();
    return const_cast<CProCategoryTree*>(std::as_const(*this).FindByID(id));
}

int32_t HighestCategoryID(const CProCategoryTree& tree) {
    int32_t highest = -1;
    ForIDs(tree, [&](int32_t id) { highest = std::max(highest, id); });
    return highest;
}

int32_t CProCategoryList::HighestID() const {
    int32_t highest = -1;
    for (const CProCategoryTree& root : roots_)
        highest = std::max(highest, HighestCategoryID(root));
    return highest;
}

int32_t RaiseToHighest(int32_t highest, int& maxCategoryID) {
    maxCategoryID = std::max(maxCategoryID, highest);
    return maxCategoryID == kUnassignedID ? kBehindReserved : maxCategoryID;
}

int32_t CProCategoryList::GetMaxCategoryID(int& maxCategoryID) const {
    return RaiseToHighest(HighestID(), maxCategoryID);
}

void CProCategoryList::RaiseMaxCategoryID(int& maxCategoryID) const {
    const int32_t given = GetMaxCategoryID(maxCategoryID);
    maxCategoryID = CounterAfter(std::max(given, maxCategoryID));
}

int32_t CProCategoryList::NewId(int& maxCategoryID) const {
    int64_t wanted = int64_t{GetMaxCategoryID(maxCategoryID)} + 1;
    return UsedIDs().Take(wanted);
}

CategoryIDs CProCategoryList::UsedIDs() const {
    CategoryIDs ids(lost_);
    for (const CProCategoryTree& root : roots_)
        root.MarkIDs(ids);
    return ids;
}

void CProCategoryList::RemoveNote(int32_t note, int set) {
    Touch();
    for (CProCategoryTree& root : roots_)
        root.RemoveNote(note, set);
}

void CProCategoryList::RemoveNotes(const LongList& notes, int set) {
    Touch();
    for (CProCategoryTree& root : roots_)
        RemoveFromTree(root, notes, set);
}

void CProCategoryList::IndexNote(int32_t note, const CProCategoryTree& path, int set) {
    const bool empty = path.IsEmptyPath();
    const int32_t id = empty ? kUnassignedID : DeepestCategoryID(path);
    const CProCategoryTree* found = std::as_const(*this).FindByID(id);
    if (!found && id > 0)
        lost_.Add(id);
    if (empty && found && found->parent) {  // only a root counts
        const auto root =
            std::find_if(roots_.begin(), roots_.end(), [](const auto& one) { return one.IsUnassigned(); });
        found = root == roots_.end() ? nullptr : &*root;
    }
    if (!found || note < 1 || set < 1 || set > kSetCount)
        return;
    auto* node = const_cast<CProCategoryTree*>(found);
    const auto index = static_cast<size_t>(set - 1);
    if (!fresh_ || !filed_[index].Add(note))
        return node->AddNoteUpward(note, set);
    for (; node; node = node->parent)
        node->notes[index].AddTail(note);
}

int32_t DeepestCategoryID(const CProCategoryTree& path) {
    Deepest deepest;
    SeekDeepest(path, 0, deepest);
    return deepest.id;
}

bool IsUnassignedPath(const CProCategoryTree& path) {
    return path.IsUnassigned() || path.name == kUnassignedName;
}

}  // namespace lore
