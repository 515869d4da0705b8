#include "notes/sort_order.h"

#include <algorithm>
#include <array>
#include <map>
#include <random>

#include "notes/note_builder.h"
#include "support/matchers.h"

namespace lore {
namespace {

using Paths = std::array<CProCategoryTree, kSetCount>;

using Texts = std::vector<std::string>;

ListedNote Note(int32_t id, const DateTime& created = DateTime(2011, 7, 12), const Texts& citations = {},
                const Paths& paths = {}) {
    auto note = std::make_shared<CNote>();
    note->id = id;
    note->dateCreated = created;
    note->dateEdited = created;
    note->categories = paths;
    return {std::move(note), std::make_shared<Citations>(citations.begin(), citations.end())};
}

ListedNote Filed(int32_t id, const CProCategoryTree& path, int set = 1,
                 const DateTime& created = DateTime(2011, 7, 12)) {
    Paths paths;
    paths[static_cast<size_t>(set - 1)] = path;
    return Note(id, created, {}, paths);
}

std::vector<int32_t> SortedIds(const std::vector<ListedNote>& notes, int32_t sortId) {
    std::vector<int32_t> ids;
    for (const uint32_t position : SortedOrder(notes, sortId))
        ids.push_back(notes[position].Id());
    return ids;
}

/// The selection as it is told, without any speed. By source or category, what can't come before the limit is selected
/// behind all others, as if there were none.
std::vector<int32_t> SelectedIds(const std::vector<ListedNote>& notes, int32_t sortId) {
    const bool descending = sortId >= 800;
    const std::string name = descending ? "" : std::string(23, 'z');
    const ListedNote limit = Note(0, descending ? DateTime(1900, 1, 1, 1, 1, 1) : DateTime(2099, 1, 1, 1, 1, 1),
                                  descending ? Texts() : Texts{name}, {CProCategoryTree(21122112, name)});
    const auto replaces = [&](const ListedNote& note, const ListedNote& best) {
        return descending ? CompareNotes(note, best, sortId) : CompareNotes(best, note, sortId);
    };
    std::vector<ListedNote> left = notes;
    std::vector<int32_t> ids;
    bool hasLimit = true;
    while (!left.empty()) {
        const ListedNote* best = hasLimit ? &limit : &left.front();
        for (const ListedNote& note : left) {
            if (replaces(note, *best))
                best = &note;
        }
        if (best == &limit) {
            hasLimit = false;
            if (SortKeyOf(sortId) == SortBy::Sources || SortKeyOf(sortId) == SortBy::Categories)
                continue;
            break;
        }
        ids.push_back(best->Id());
        left.erase(left.begin() + (best - left.data()));
    }
    for (const ListedNote& note : left)
        ids.push_back(note.Id());
    return ids;
}

class NoteMaker {
public:
    explicit NoteMaker(unsigned seed) : random_(seed) {}

    /// `odd`: with ids and dates that only damaged files hold.
    std::vector<ListedNote> List(size_t count, bool odd) {
        std::vector<ListedNote> notes;
        for (size_t i = 0; i < count; ++i)
            notes.push_back(One(static_cast<int32_t>(i + 1), odd));
        return notes;
    }

private:
    template <typename T>
    T Choose(std::initializer_list<T> values) {
        return values.begin()[random_() % values.size()];
    }

    DateTime Date(bool odd) {
        if (odd && random_() % 4 == 0)
            return Choose({DateTime(), DateTime::Invalid(), DateTime(2150, 1, 1), DateTime(1850, 1, 1)});
        return DateTime(2011, 7, static_cast<int>(1 + random_() % 3));
    }

    CProCategoryTree RandomPath(bool odd) {
        std::vector<std::pair<int32_t, std::string>> nodes;
        const size_t depth = random_() % 4;
        for (size_t i = 0; i < depth; ++i) {
            const int32_t id = odd ? Choose({0, -1, -7, 1, 2, 3, 21122112}) : Choose({1, 2});
            nodes.emplace_back(id, Choose<std::string>({"a", "A", " a ", "b", "B", "", std::string(24, 'z')}));
        }
        return PathOf(nodes);
    }

    ListedNote One(int32_t id, bool odd) {
        Texts citations;
        for (size_t i = random_() % 3; i > 0; --i) {
            const std::string last(23, 'z');
            citations.push_back(Choose<std::string>({"", "Adams", "adams", "b", "\xC4 x", "\xE4 x", last, last + "z"}));
        }
        Paths paths;
        std::ranges::generate(paths, [&] { return RandomPath(odd); });
        ListedNote note = Note(id, Date(odd), citations, paths);
        note.note->dateEdited = Date(odd);
        if (note.sortPath && random_() % 2 == 0)
            note.sortPath = sharedPaths_.try_emplace(note.sortPath->Identity(), note.sortPath).first->second;
        if (random_() % 2 == 0)
            note.citations = sharedCitations_.try_emplace(citations, note.citations).first->second;
        return note;
    }

    std::mt19937 random_;
    std::map<std::string, std::shared_ptr<const CProCategoryTree>> sharedPaths_;
    std::map<Texts, std::shared_ptr<const Citations>> sharedCitations_;
};

TEST(SortOrder, IsThatOfTheSelectionForRandomLists) {
    for (unsigned seed = 1; seed <= 700; ++seed) {
        const auto notes = NoteMaker(seed).List(1 + seed % 14, seed % 3 != 0);
        for (const int32_t id : {701, 801, 702, 802, 703, 803, 704, 804, 710, 799, 800, 850})
            ASSERT_EQ(SortedIds(notes, id), SelectedIds(notes, id)) << "seed " << seed << ", order " << id;
    }
}

TEST(SortOrder, IsThatOfTheSelectionWhereFewNotesHaveChangedSinceTheLastSort) {
    for (unsigned seed = 1; seed <= 120; ++seed) {
        const auto notes = NoteMaker(seed).List(50, seed % 4 == 0);
        auto changed = NoteMaker(seed + 1000).List(50, false);
        for (const int32_t id : {701, 801, 702, 802, 703, 803, 704, 804}) {
            std::vector<ListedNote> sorted;
            for (const uint32_t position : SortedOrder(notes, id))
                sorted.push_back(notes[position]);
            for (unsigned i = 0; i < seed % 5; ++i) {
                const size_t at = (seed * 31 + i * i * 17) % sorted.size();
                sorted[at] = changed[static_cast<size_t>(sorted[at].Id()) - 1];
            }
            ASSERT_EQ(SortedIds(sorted, id), SelectedIds(sorted, id)) << "seed " << seed << ", order " << id;
        }
    }
}

TEST(SortOrder, IsThatOfTheSelectionForAlternatingReservedAndBlankPathsAndNotesWithoutCategory) {
    std::mt19937 random(7);
    for (int round = 0; round < 300; ++round) {
        std::vector<ListedNote> notes;
        for (int32_t id = 1; id <= 12; ++id) {
            const CProCategoryTree paths[] = {CProCategoryTree(),           PathOf({{21122112, "m"}}),
                                              PathOf({{21122112, "c"}}),    PathOf({{4, "d"}}),
                                              PathOf({{5, "x"}, {6, "y"}}), PathOf({{7, " "}})};
            notes.push_back(Filed(id, paths[random() % std::size(paths)]));
        }
        for (const int32_t id : {704, 804})
            ASSERT_EQ(SortedIds(notes, id), SelectedIds(notes, id)) << "round " << round << ", order " << id;
    }
}

TEST(SortOrder, SortsTitlesOfOtherScriptsBehindLatinOnes) {
    const auto dated = [](int32_t id, const char* title, int day) {
        return Note(id, DateTime(2011, 7, day), Texts{title});
    };
    const std::vector<ListedNote> notes = {dated(1, "\u0412\u043E\u0434\u0430", 3),
                                           dated(2, "\u00C4pfel", 1),
                                           dated(3, "\u0410\u0437\u0431\u0443\u043A\u0430", 1),
                                           dated(4, "Zebra", 1),
                                           dated(5, "\u0432\u043E\u0434\u0430", 2),
                                           dated(6, "Apfel", 1)};
    EXPECT_THAT(SortedIds(notes, kSourceUp), ElementsAre(6, 4, 2, 3, 5, 1));
    EXPECT_THAT(SortedIds(notes, kSourceDown), ElementsAre(1, 5, 3, 2, 4, 6));
}

TEST(SortOrder, TakesThePathOfTheFirstSetThatHasOne) {
    const ListedNote second = Filed(1, PathOf({{5, "beta"}}), 2);
    const ListedNote both = Note(2, DateTime(2011, 7, 12), {}, {PathOf({{6, "gamma"}}), PathOf({{7, "alpha"}})});
    const std::vector<ListedNote> notes = {both, second, Filed(3, PathOf({{-1, "alpha"}})),
                                           Filed(4, PathOf({{8, "Beta"}}))};
    EXPECT_THAT(SortedIds(notes, kCategoryUp), ElementsAre(3, 1, 4, 2));
    EXPECT_THAT(SortedIds(notes, kCategoryDown), ElementsAre(2, 1, 4, 3));
}

TEST(SortOrder, ComparesPathsLevelByLevelAndTiesByDateOnlyTheSamePath) {
    const ListedNote early = Filed(1, PathOf({{5, "a"}, {6, "b"}}), 1, DateTime(2001, 1, 1));
    const ListedNote late = Filed(2, PathOf({{5, "a"}, {6, "b"}}));
    const ListedNote otherId = Filed(3, PathOf({{5, "a"}, {9, "B "}}), 1, DateTime(1999, 1, 1));
    const ListedNote shorter = Filed(4, PathOf({{5, "a"}}));
    EXPECT_THAT(SortedIds({late, otherId, early, shorter}, kCategoryUp), ElementsAre(4, 1, 2, 3));
    EXPECT_THAT(SortedIds({late, otherId, early, shorter}, kCategoryDown), ElementsAre(2, 3, 1, 4));
}

TEST(SortOrder, ComparesNotesByTheRulesOfEachOrder) {
    const DateTime day(2011, 7, 12);
    const ListedNote none = Filed(1, CProCategoryTree()), reserved = Filed(2, PathOf({{21122112, "<UNASSIGNED>"}}));
    const ListedNote blank = Filed(3, PathOf({{4, "  "}})), open = Filed(4, PathOf({{4, "a"}, {0, "b"}}));
    const ListedNote closed = Filed(5, PathOf({{4, "a"}})), longer = Filed(6, PathOf({{4, "a"}, {7, "b"}}));
    // Whether the second note may stand before the first.
    const std::tuple<ListedNote, ListedNote, int32_t, bool> cases[] = {
        {Note(1, day), Note(2, day), 701, true},
        {Note(1, day), Note(2, day.PlusSeconds(1)), 701, false},
        {Note(1, DateTime::Invalid()), Note(2, DateTime::Invalid()), 701, false},
        {Note(1, DateTime()), Note(2, DateTime()), 702, true},
        {Note(1, day, {"b"}), Note(2, day), 703, true},
        {Note(1, day), Note(2, day, {"b"}), 703, false},
        {Note(1, day, {"b"}), Note(2, day, {"A", "c"}), 703, true},
        {Note(1, day, {"b"}), Note(2, day, {"B", "a"}), 703, false},
        {Note(1, day, {"b", "a"}), Note(2, day, {"B"}), 703, true},
        {Note(1, day, {"b"}), Note(2, DateTime::Invalid(), {"B"}), 703, false},
        {blank, none, 704, true},
        {none, blank, 704, false},
        {none, reserved, 704, true},
        {reserved, none, 704, true},
        {longer, closed, 704, true},
        {longer, open, 704, false},
        {open, longer, 704, false},
        {Note(1, day), Note(2, day), 710, false},
    };
    for (const auto& [note, other, sortId, before] : cases)
        EXPECT_EQ(CompareNotes(note, other, sortId), before) << note.Id() << other.Id() << " " << sortId;
}

TEST(SortOrder, TakesALongListWithOneKeyAtOnce) {
    std::vector<ListedNote> notes;
    for (int32_t id = 1; id <= 100000; ++id)
        notes.push_back(Filed(id, PathOf({{id % 2 + 1, "same"}})));
    const auto order = SortedOrder(notes, kCategoryDown);
    // The tree of the first note left is taken whole, latest note first; then comes the other tree's turn.
    EXPECT_EQ(notes[order.front()].Id(), 99999);
    EXPECT_EQ(notes[order.back()].Id(), 2);
}

}  // namespace
}  // namespace lore
