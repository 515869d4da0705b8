#include "base/long_list.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

namespace lore {
namespace {

/// The same operations on a plain vector, as they are told.
struct Model {
    std::vector<int32_t> values;
    bool Contains(int32_t v) const { return std::find(values.begin(), values.end(), v) != values.end(); }
    bool Remove(int32_t v) {
        bool any = false;
        for (size_t i = 0; i < values.size();) {
            if (values[i] != v) {
                ++i;
                continue;
            }
            values.erase(values.begin() + static_cast<std::ptrdiff_t>(i));
            any = true;
            i = i == 0 ? 1 : i;
        }
        return any;
    }
};

TEST(LongList, AgreesWithAPlainListWhenLong) {
    std::mt19937 random(7);
    LongList list;
    Model model;
    for (int step = 0; step < 20000; ++step) {
        // Among few values equal ones stand at the front and side by side.
        const int32_t value = static_cast<int32_t>(random() % (step < 10000 ? 150 : 4));
        const size_t at = random() % (model.values.size() + 1);
        const bool isThere = at < model.values.size();
        switch (random() % 6) {
            case 0:
                list.AddTail(value);
                model.values.push_back(value);
                break;
            case 1: {
                const bool added = !model.Contains(value);
                if (added)
                    model.values.push_back(value);
                ASSERT_EQ(list.AddUnique(value), added);
                break;
            }
            case 2:
                ASSERT_EQ(list.RemoveValue(value), model.Remove(value));
                break;
            case 3:
                if (isThere) {
                    list.SetAt(at, value);
                    model.values[at] = value;
                }
                break;
            case 4:
                if (step % 50 == 0) {
                    list.Assign(LongList(list));
                    list = *&list;
                }
                break;
            default:
                ASSERT_EQ(list.Contains(value), model.Contains(value));
        }
        ASSERT_EQ(list.Values(), model.values);
    }
}

TEST(LongList, FillsWithManyIdsInLinearTime) {
    LongList list;
    for (int32_t id = 0; id < 1'000'000; ++id)
        ASSERT_TRUE(list.AddUnique(id * 7 % 1'000'003));
    EXPECT_EQ(list.Count(), 1'000'000u);
    LongList few{1, 1, 2};
    few.Merge({2, 3, 3, 1, 4});
    EXPECT_EQ(few, (LongList{1, 1, 2, 3, 4}));
}

}  // namespace
}  // namespace lore
