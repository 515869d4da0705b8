#include "classify/category_list.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <limits>
#include <map>

#include "classify/category_record.h"
#include "classify/forest_builder.h"
#include "support/raw_record.h"
#include "support/read_world.h"

namespace lore {
namespace {

std::string Bytes(const CProCategoryList& forest) {
    RecordWriter writer;
    forest.Write(&writer);
    return writer.DiskBytes();
}

CProCategoryList FromBytes(std::string bytes) {
    RecordReader reader(std::move(bytes));
    CProCategoryList forest;
    forest.Read(&reader);
    return forest;
}

std::string Fields(const std::vector<int32_t>& numbers) {
    return RawRecord().Ints(numbers).Bytes();
}

const std::string kVersion = "0000000011.560000000";

TEST(CategoryList, WritesTheFileByteForByte) {
    const TempFolder folder;
    const std::filesystem::path path = folder / "Categories.dat";
    const std::string bytes =
        RawRecord().Add(11.56, 2, kUnassignedID, -1, "<UNASSIGNED>", 0, 5, -1, "A\nBC", 1, 9, 5, "", 0).Bytes();
    ASSERT_TRUE(WriteFileAtomically(path, bytes).Ok());
    CProCategoryList forest;
    ASSERT_TRUE(forest.Load(path).Ok());
    EXPECT_EQ(Shape(forest), "21122112:<UNASSIGNED> 5:A\nBC(9:)");
    ASSERT_TRUE(RemoveFile(path).Ok());
    ASSERT_TRUE(forest.Save(path).Ok());
    EXPECT_EQ(BytesOf(path), bytes);
    ASSERT_TRUE(RemoveFile(path).Ok());
    EXPECT_TRUE(forest.Load(path).Missing());
    EXPECT_EQ(Shape(forest), "21122112:<UNASSIGNED>");
}

TEST(CategoryList, WhatIsAssignedBringsNoMarkOfItsFileButThatItIsUnread) {
    const TempFolder folder;
    const auto loaded = [&](const std::string& state) {
        const std::filesystem::path path = folder / state;
        const std::string whole = Bytes(Forest({Node(5, state)}));
        const std::map<std::string, std::string> files = {
            {"whole", whole}, {"junk", whole + "junk"}, {"cut", whole.substr(0, whole.size() - 9)}};
        std::filesystem::remove(path);
        if (state == "unread")
            std::filesystem::create_symlink(path, path);
        if (const auto file = files.find(state); file != files.end())
            PutBytes(path, file->second);
        CProCategoryList forest;
        forest.Load(path);
        return forest;
    };
    const struct {
        const char* state;
        bool readWhole, isWritable;
    } cases[] = {{"whole", true, true},
                 {"missing", true, true},
                 {"junk", false, true},
                 {"cut", false, true},
                 {"unread", true, false}};
    const std::filesystem::path written = folder / "written";
    for (const auto& to : cases) {
        for (const auto& from : cases) {
            SCOPED_TRACE(std::string(from.state) + " into " + to.state);
            CProCategoryList forest = loaded(to.state);
            const CProCategoryList other = loaded(from.state);
            forest.Assign(other);
            EXPECT_EQ(Shape(forest), Shape(other));
            EXPECT_EQ(forest.ReadWhole(), to.readWhole);
            EXPECT_EQ(forest.Save(written).Ok(), to.isWritable && from.isWritable);
            CProCategoryList copy;
            copy = forest;
            for (const CProCategoryList& same : {copy, CProCategoryList(forest)}) {
                EXPECT_EQ(same.ReadWhole(), to.readWhole);
                EXPECT_EQ(same.Save(written).Ok(), to.isWritable && from.isWritable);
            }
            if (!to.isWritable || !from.isWritable) {
                PutBytes(written, "seen by nobody");
                EXPECT_EQ(forest.Save(written).error, ELOOP);
                EXPECT_EQ(BytesOf(written), "seen by nobody");
            }
            forest.MarkWhole();
            EXPECT_TRUE(forest.ReadWhole());
            EXPECT_EQ(forest.Save(written).Ok(), to.isWritable && from.isWritable) << "a mark opens no unread file";
        }
    }
}

TEST(CategoryList, LinksWhatItReadsWhateverTheFileSays) {
    const CProCategoryList forest =
        FromBytes(RawRecord().Add(3.0, 1, 9, 999, "n", 2, 7, 999, "n", 0, 7, 999, "n", 0).Bytes());
    EXPECT_EQ(forest.version, 3.0);
    EXPECT_EQ(forest.Roots()[0].parentID, -1);
    EXPECT_TRUE(IsLinked(forest.Roots()[0]));
    EXPECT_EQ(Shape(forest), "9:n(7:n,7:n) 21122112:<UNASSIGNED>");
}

TEST(CategoryList, IsBoundedOnCountsThatNoFileHolds) {
    const std::string node = Fields({1, -1, 0, 2'000'000'000});
    std::string nested;
    for (int i = 0; i < 50; ++i)
        nested += node;
    for (const std::string& bytes : {kVersion + Fields({2'000'000'000}), kVersion + Fields({2'000'000'000}) + nested,
                                     kVersion + Fields({-5}), kVersion + Fields({1, 5, -1, 2'000'000'000})}) {
        const CProCategoryList forest = FromBytes(bytes);
        EXPECT_LE(Bytes(forest).size(), 1100u * 64 + 100);
        EXPECT_NE(forest.FindByID(kUnassignedID), nullptr);
    }
}

TEST(CategoryRecord, ReadsOverWhatNestsTooDeep) {
    std::string bytes;
    for (int level = 1; level <= 1'000'000; ++level)
        bytes += Fields({level, level - 1, 0, level == 1'000'000 ? 0 : 1});
    bytes += Fields({4711});
    RecordReader reader(std::move(bytes));
    CProCategoryTree node;
    ReadCategoryRecord(&reader, node);
    EXPECT_EQ(LevelsBelow(node), kMaxNesting - 1);
    EXPECT_EQ(ReadFixedInt(&reader), 4711);
}

TEST(CategoryRecord, KeepsTheDeepestLevelThatIsAllowed) {
    CProCategoryTree chain = Chain(std::vector<std::string>(kMaxNesting, "n"), 1);
    RecordWriter writer;
    WriteCategoryRecord(&writer, chain);
    RecordReader reader(writer.DiskBytes());
    CProCategoryTree read = Node(3, "old", {Node(4, "old")});
    ReadCategoryRecord(&reader, read);
    EXPECT_TRUE(read.IsSameTree(chain));
    EXPECT_TRUE(IsLinked(read));
    EXPECT_TRUE(reader.AtEnd() && !reader.RanOut());
}

TEST(CategoryList, NeverGivesAnIDTwice) {
    const CProCategoryTree reserved = Node(kUnassignedID, kUnassignedName, {Node(500, "below")});
    const std::tuple<CProCategoryList, int, int, int, int> cases[] = {
        {Forest({Node(5, "a"), Node(7, "b")}), 3, 7, 7, 8},
        {Forest({Node(5, "a", {Node(70, "b")})}), 90, 90, 90, 91},
        {Forest({reserved}), -1, 0, 0, 1},
        {Forest({reserved, Node(7, "b")}), 21122112, 21122117, 21122112, 21122118},
        {Forest({}), -5, -1, -1, 0},
        {Forest({Node(21122118, "a")}), 3, 21122118, 21122118, 21122119}};
    for (const auto& [forest, before, max, after, afterLoad] : cases) {
        int stored = before;
        EXPECT_EQ(forest.GetMaxCategoryID(stored), max);
        EXPECT_EQ(stored, after);
        stored = before;
        forest.RaiseMaxCategoryID(stored);
        EXPECT_EQ(stored, afterLoad) << Shape(forest);
    }
    int stored = std::numeric_limits<int>::max();
    Forest({}).RaiseMaxCategoryID(stored);
    EXPECT_EQ(stored, std::numeric_limits<int>::max());
}

TEST(CategoryList, GivesNoIDThatNotesNameThoughTheForestHasLostIt) {
    CProCategoryList forest = Forest({Node(5, "a")});
    for (const int32_t lost : {7, 8, 2147483647})
        forest.IndexNote(50, Node(lost, "lost"), 1);
    const CProCategoryList copy = forest;
    for (const auto& [counter, id] : {std::pair(3, 6), {6, 9}, {9, 10}, {2147483646, 4}}) {
        int stored = counter;
        EXPECT_EQ(forest.NewId(stored), id);
        EXPECT_EQ(copy.NewId(stored), id);
    }
}

TEST(CategoryList, FilesANoteByItsDeepestID) {
    const std::pair<CProCategoryTree, int32_t> cases[] = {
        {CProCategoryTree(), kUnassignedID},
        {Node(0, "named"), kUnassignedID},
        {Chain({"wrong", "names", "all"}, 1), 3},
        {Node(1, "A", {Node(-1, "B")}), 1},
        {Node(-1, "", {Node(2, "B")}), 2},
        {Node(1, "A", {Node(2, "B"), Node(4, "D")}), 4},
        {Node(1, "A", {Node(2, "B", {Node(-1, "C")}), Node(4, "D")}), 2},
        {Node(77, "unknown"), -1},
        {Node(1, "A", {Node(77, "unknown")}), -1}};
    for (const auto& [path, category] : cases) {  // -1: nowhere
        CProCategoryList forest = Forest({Node(1, "A", {Node(2, "B", {Node(3, "C")}), Node(4, "D")}),
                                          CProCategoryTree(kUnassignedID, kUnassignedName)});
        forest.IndexNote(50, path, 2);
        forest.IndexNote(0, path, 2);
        for (const int32_t id : {1, 2, 3, 4, kUnassignedID}) {
            bool holds = false;
            for (const CProCategoryTree* at = forest.FindByID(category); at; at = at->parent)
                holds = holds || at->id == id;
            EXPECT_EQ(forest.FindByID(id)->notes, (SetLists{LongList{}, holds ? LongList{50} : LongList{}, LongList{}}))
                << Shape(path) << " in " << id;
        }
    }
    CProCategoryList twice = Forest({Node(1, "A", {Node(kUnassignedID, "below")}), Node(kUnassignedID, "root")});
    twice.IndexNote(50, CProCategoryTree(), 1);
    EXPECT_EQ(twice.Roots()[1].notes[0], LongList{50});
}

TEST(CategoryList, FindsTheFirstOfEqualIDsAlsoAfterChanges) {
    CProCategoryList forest = Forest({Node(1, "A", {Node(2, "first")}), Node(2, "second")});
    EXPECT_EQ(forest.FindByID(2)->name, "first");
    forest.FindByID(1)->AddChild(Node(3, "new"));
    forest.LinkAll();
    EXPECT_EQ(forest.FindByID(3)->name, "new");
    CProCategoryList copy;
    copy.Assign(forest);
    forest.EditRoots().erase(forest.Roots().begin());
    EXPECT_EQ(forest.FindByID(2)->name, "second");
    EXPECT_EQ(forest.FindByID(3), nullptr);
    EXPECT_EQ(copy.FindByID(3)->parent->name, "A");
}

}  // namespace
}  // namespace lore
