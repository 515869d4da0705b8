#include "base/work_beside.h"

#include <algorithm>
#include <atomic>
#include <future>
#include <gmock/gmock.h>
#include <memory>
#include <optional>
#include <set>
#include <string>

#include "base/helper_threads.h"
#include "support/refused_threads.h"

namespace lore {
namespace {

/// A system that gives threads, or none.
class WorkBesideTest : public testing::TestWithParam<bool> {
protected:
    void SetUp() override {
        if (!GetParam() && !RefusedThreads::Work())
            GTEST_SKIP() << "threads can't be refused in this build";
        if (!GetParam())
            refused_.emplace();
    }
    std::optional<RefusedThreads> refused_;
};

TEST_P(WorkBesideTest, AllIsDoneInItsOrderAndHandedOver) {
    std::vector<int> done;
    std::set<std::thread::id> threads;
    {
        WorkBeside beside;
        for (int i = 0; i < 1000; ++i)
            beside.Run([&, i] {
                done.push_back(i);
                threads.insert(std::this_thread::get_id());
            });
        beside.Wait();
        EXPECT_EQ(done.size(), 1000u);
        for (int i = 1000; i < 2000; ++i)
            beside.Run([&, i] { done.push_back(i); });
    }
    ASSERT_EQ(done.size(), 2000u) << "the end waits";
    EXPECT_TRUE(std::is_sorted(done.begin(), done.end()));
    EXPECT_EQ(threads.size(), 1u);
    EXPECT_EQ(threads.contains(std::this_thread::get_id()), !GetParam());
}

TEST_P(WorkBesideTest, WhatItHoldsIsGoneOnceItIsDone) {
    WorkBeside beside(2);
    auto held = std::make_shared<int>(7);
    const std::weak_ptr<int> look = held;
    beside.Run([held = std::move(held)] { EXPECT_EQ(*held, 7); });
    beside.Wait();
    EXPECT_TRUE(look.expired());
}

INSTANTIATE_TEST_SUITE_P(Threads, WorkBesideTest, testing::Bool());

TEST(WorkBesideLimitTest, ForgetsOnlyWhatHasNotBegun) {
    std::promise<void> begun, go;
    std::atomic<int> done = 0;
    WorkBeside beside;
    beside.Run([&] {
        begun.set_value();
        go.get_future().wait();
        ++done;
    });
    begun.get_future().wait();
    beside.Run([&] { ++done; });
    beside.Forget();
    go.set_value();
    beside.Wait();
    EXPECT_EQ(done, 1);
}

TEST(WorkBesideLimitTest, AThreadThatWasRefusedIsAskedForAgain) {
    if (!RefusedThreads::Work())
        GTEST_SKIP() << "threads can't be refused in this build";
    WorkBeside beside;
    std::thread::id first, second;
    {
        const RefusedThreads refused;
        beside.Run([&] { first = std::this_thread::get_id(); });
    }
    beside.Run([&] { second = std::this_thread::get_id(); });
    beside.Wait();
    EXPECT_EQ(first, std::this_thread::get_id());
    EXPECT_NE(second, first);
}

}  // namespace
}  // namespace lore
