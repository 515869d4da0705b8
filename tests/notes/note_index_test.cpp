#include "notes/note_index.h"

#include <random>

#include "notes/note_copies.h"
#include "support/matchers.h"

namespace lore {
namespace {

TEST(NoteIndex, GivesNoIdTwice) {
    NoteIndex index;
    for (const int32_t id : {1001, 1003, 2147483647})
        index.AddToIndex("a", id);
    index.MarkTaken(1004);
    index.RemoveFromIndex(1003);
    int last = 2147483645;
    for (const int32_t id : {2147483646, 1002, 1005, 1006}) {
        EXPECT_EQ(index.GiveID(last), id);
        EXPECT_EQ(last, 2147483646) << "it stays at its end";
    }
    last = 8;
    EXPECT_EQ(index.GiveID(last), 9);
    EXPECT_EQ(last, 9);
}

TEST(NoteIndex, BehavesAsPlainListsUnderRandomChanges) {
    std::mt19937 random(7);
    NoteIndex index;
    std::vector<std::vector<int32_t>> model(5);
    for (int step = 0; step < 20000; ++step) {
        const auto id = static_cast<int32_t>(random() % 202) - 1;
        const size_t file = random() % model.size();
        bool known = id <= 0;
        for (const auto& ids : model)
            known = known || std::find(ids.begin(), ids.end(), id) != ids.end();
        if (random() % 2 == 0) {
            index.AddToIndex(std::to_string(file), id);
            if (!known)
                model[file].push_back(id);
        } else {
            index.RemoveFromIndex(id);
            for (auto& ids : model)
                std::erase(ids, id);
        }
    }
    size_t count = 0;
    for (const CNoteIDsPath& entry : index.Entries()) {
        EXPECT_EQ(entry.ids.Values(), model[std::stoul(entry.path)]);
        count += entry.ids.Count();
        for (const int32_t id : entry.ids)
            EXPECT_EQ(*index.FindPath(id), entry.path);
    }
    EXPECT_EQ(count, index.Count());
    for (const int32_t id : index.AllIDs())
        index.RemoveFromIndex(id);
    EXPECT_EQ(index.FindPath(5), nullptr);
    EXPECT_TRUE(index.Entries().empty());
}

TEST(NoteCopies, TheFirstAtHomeShowsElseTheFirstMet) {
    EXPECT_THAT(ShownCopies({{1, false}, {2, false}, {1, true}, {1, true}, {2, false}, {3, true}}),
                ElementsAre(false, true, true, false, false, true));
    EXPECT_TRUE(ShownCopies({}).empty());
}

TEST(NoteCopies, OfTwoAtHomeTheOneThatWasWrittenLastShows) {
    EXPECT_THAT(
        ShownCopies({{1, true, true, 50, 1}, {1, true, true, 60, 2}, {1, true, true, 60, 3}, {1, false, true, 70, 4}}),
        ElementsAre(false, true, false, false));
    EXPECT_THAT(
        ShownCopies({{1, true, false, 9, 1}, {1, true, true, 5, 2}, {2, false, true, 5, 1}, {2, false, true, 6, 2}}),
        ElementsAre(false, true, true, false));
}

TEST(NoteCopies, WithinAFileTheFirstShowsWheneverItWasWritten) {
    EXPECT_THAT(ShownCopies({{1, true, true, 50, 1}, {1, true, true, 70, 1}}), ElementsAre(true, false));
    EXPECT_THAT(ShownCopies({{1, true, true, 60, 2}, {1, true, true, 50, 1}, {1, true, true, 70, 1}}),
                ElementsAre(true, false, false));
    EXPECT_THAT(ShownCopies({{1, true, true, 50, 1}, {1, true, true, 70, 1}, {1, true, true, 60, 2}}),
                ElementsAre(false, false, true))
        << "the one that a file doesn't show doesn't count";
    EXPECT_THAT(ShownCopies({{1, true, false, 90, 1}, {1, false, true, 70, 1}, {1, true, true, 60, 1}}),
                ElementsAre(false, false, true));
}

TEST(NoteCopies, AWholeOneShowsBeforeABrokenOneWhereverItStands) {
    EXPECT_THAT(ShownCopies({{1, false, true}, {1, true, false}, {2, true, false}, {2, false, false}}),
                ElementsAre(true, false, true, false));
}

}  // namespace
}  // namespace lore
