#include "base/free_ids.h"

#include <gtest/gtest.h>
#include <iterator>
#include <set>

namespace lore {
namespace {

TEST(FreeIDs, GiveTheWantedIdOrTheLowestFreeOne) {
    struct Case {
        const char* what;
        int32_t first;
        int64_t wanted;
        std::set<int32_t> used;
        int32_t id;
    };
    constexpr int64_t kBeyond = int64_t{kHighestID} + 1;
    for (const Case& c :
         {Case{"the next one", 1001, 1002, {1001}, 1002}, Case{"gaps stay", 1001, 5000, {1001, 4999}, 5000},
          Case{"below the first one as well", 1001, 8, {7}, 8},
          Case{"the highest", 1001, kHighestID, {1001}, kHighestID},
          Case{"behind the highest", 1001, kBeyond, {kHighestID}, 1001}, Case{"in use", 1001, 1003, {1001, 1003}, 1002},
          Case{"the first ones in use", 4, kBeyond, {1, 4, 5, 7}, 6}, Case{"no id", 4, 0, {}, 4},
          Case{"below all ids", 4, -7, {4}, 5},
          Case{"the last free one", kHighestID - 2, kBeyond, {kHighestID - 2, kHighestID - 1}, kHighestID},
          Case{"none", kHighestID - 1, kBeyond, {kHighestID - 1, kHighestID}, 0}})
        EXPECT_EQ(FreeIDs(c.first).Find(c.wanted, [&](int32_t id) { return c.used.contains(id); }), c.id) << c.what;
}

TEST(FreeIDs, WalkOnceForManyIds) {
    FreeIDs free(1001);
    std::set<int32_t> used{kHighestID};
    for (int32_t id = 1001; id <= 3000; id += 2)
        used.insert(id);
    const size_t before = used.size();
    size_t asked = 0;
    for (int i = 0; i < 5000; ++i) {
        const int32_t id = free.Find(int64_t{kHighestID} + 1, [&](int32_t other) {
            ++asked;
            return used.contains(other);
        });
        ASSERT_TRUE(id >= 1001 && used.insert(id).second) << id;
    }
    EXPECT_EQ(*std::prev(used.end(), 2), 7000);
    EXPECT_LE(asked, 2 * (before + 5000));
}

}  // namespace
}  // namespace lore
