#include "core/ordered_tasks.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace kcp {
namespace {

// Tasks of uneven length, so that later ones often finish first.
void Uneven_work(const std::size_t& i) {
  std::this_thread::sleep_for(std::chrono::microseconds((i * 7919) % 5 * 300));
}

TEST(OrderedTasks, DeliverInOrderWithinTheBoundAndStopAtTheFirstFailureInOrder) {
  for (const unsigned threads : {1u, 3u, 8u}) {
    for (const std::size_t fail_at : {std::size_t{40}, std::size_t{7}}) {
      SCOPED_TRACE("threads " + std::to_string(threads) + " failing task " +
                   std::to_string(fail_at));
      std::mutex mutex;
      std::vector<std::size_t> delivered;
      std::vector<std::size_t> dropped;
      std::vector<char> ran(40, 0);
      std::atomic<int> running{0};
      std::atomic<int> most_running{0};
      std::size_t most_ahead = 0;
      std::size_t started = 0;
      const OrderedTasks tasks{
          [&](const std::size_t& i) {
            {
              const std::lock_guard<std::mutex> lock(mutex);
              ran[i] = 1;
              ++started;
              most_ahead = std::max(most_ahead, started - delivered.size());
            }
            const int now = ++running;
            int seen = most_running;
            while (now > seen && !most_running.compare_exchange_weak(seen, now)) {
            }
            Uneven_work(i);
            --running;
            // Task 9 fails by throwing, task fail_at by its delivery.
            if (i == 9 && fail_at == 7) throw std::runtime_error("not reached");
            if (i == 9 && fail_at == 40) throw std::runtime_error("task 9");
          },
          [&](const std::size_t& i) {
            if (i == fail_at) throw std::runtime_error("delivery 7");
            const std::lock_guard<std::mutex> lock(mutex);
            delivered.push_back(i);
          },
          [&](const std::size_t& i) { dropped.push_back(i); }};
      std::string error;
      try {
        Run_in_order(40, threads, threads, tasks);
      } catch (const std::runtime_error& e) {
        error = e.what();
      }
      const std::size_t first_failure = fail_at == 7 ? 7 : 9;
      EXPECT_EQ(error, fail_at == 7 ? "delivery 7" : "task 9");
      ASSERT_EQ(delivered.size(), first_failure);
      for (std::size_t i = 0; i < delivered.size(); ++i) EXPECT_EQ(delivered[i], i);
      // Every task started after the failing one is dropped, and none later starts.
      std::vector<std::size_t> expected_dropped;
      for (std::size_t i = first_failure + 1; i < ran.size(); ++i) {
        if (ran[i] != 0) expected_dropped.push_back(i);
      }
      EXPECT_EQ(dropped, expected_dropped);
      EXPECT_LE(most_ahead, std::size_t{threads});
      EXPECT_LE(most_running, static_cast<int>(threads));
      if (threads == 1) {
        EXPECT_TRUE(dropped.empty());
      }
    }
  }
}

}  // namespace
}  // namespace kcp
