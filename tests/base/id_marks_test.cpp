#include "base/id_marks.h"

#include <gtest/gtest.h>
#include <map>
#include <random>
#include <set>
#include <vector>

#include "base/id_table.h"

namespace lore {
namespace {

const std::vector<int32_t> kOdd = {0, 63, 64, 65, 1023, 1024, (1 << 22) - 1, 1 << 22, 2147483647, -1, -2147483647};

TEST(IDMarks, HoldWhatASetHolds) {
    std::mt19937 random(7);
    IDMarks marks;
    std::set<int32_t> set;
    for (int step = 0; step < 20'000; ++step) {
        const int32_t id = random() % 8 == 0 ? kOdd[random() % kOdd.size()] : static_cast<int32_t>(random() % 700);
        ASSERT_EQ(marks.Contains(id), set.contains(id)) << id;
        ASSERT_EQ(marks.Add(id), set.insert(id).second) << id;
        if (random() % 900 == 0) {
            marks.Clear();
            set.clear();
        }
    }
}

TEST(IDTable, HoldsWhatAMapHolds) {
    std::mt19937 random(8);
    IDTable<uint32_t> table;
    std::map<int32_t, uint32_t> map;
    for (int step = 0; step < 20'000; ++step) {
        const int32_t id = random() % 8 == 0 ? kOdd[random() % kOdd.size()] : static_cast<int32_t>(random() % 3'000);
        ASSERT_EQ(table.ValueOf(id), map.contains(id) ? map[id] : 0) << id;
        table[id] = map[id] = static_cast<uint32_t>(step);
        if (random() % 2'000 == 0) {
            const IDTable<uint32_t> copy = table;
            table.Clear();
            ASSERT_EQ(copy.ValueOf(id), step) << id;
            map.clear();
        }
    }
}

}  // namespace
}  // namespace lore
