#pragma once

#include <atomic>
#include <thread>
#include <vector>
#include <vela/thread/Errands.hpp>

namespace vela::testing_support {

/// Threads that have nothing to do but errands.
class ErrandHelpers {
public:
    ErrandHelpers(thread::Errands& errands, int nr_helpers) {
        for (int i = 0; i < nr_helpers; ++i)
            helpers_.emplace_back([this, &errands] {
                while (!is_over_)
                    if (!errands.run_one()) std::this_thread::yield();
            });
    }
    ErrandHelpers(const ErrandHelpers&) = delete;
    ErrandHelpers& operator=(const ErrandHelpers&) = delete;
    ~ErrandHelpers() {
        is_over_ = true;
        for (auto& helper : helpers_)
            helper.join();
    }

private:
    std::atomic<bool> is_over_ = false;
    std::vector<std::thread> helpers_;
};

}  // namespace vela::testing_support
