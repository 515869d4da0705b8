#include "base/id_marks.h"

#include <gtest/gtest.h>
#include <random>
#include <set>
#include <vector>

namespace lore {
namespace {

TEST(IDMarks, HoldWhatASetHolds) {
    std::mt19937 random(7);
    const std::vector<int32_t> odd = {0, 63, 64, 65, (1 << 22) - 1, 1 << 22, 2147483647, -1, -2147483647};
    IDMarks marks;
    std::set<int32_t> set;
    for (int step = 0; step < 20'000; ++step) {
        const int32_t id = random() % 8 == 0 ? odd[random() % odd.size()] : static_cast<int32_t>(random() % 700);
        ASSERT_EQ(marks.Contains(id), set.contains(id)) << id;
        ASSERT_EQ(marks.Add(id), set.insert(id).second) << id;
        if (random() % 900 == 0) {
            marks.Clear();
            set.clear();
        }
    }
}

}  // namespace
}  // namespace lore
