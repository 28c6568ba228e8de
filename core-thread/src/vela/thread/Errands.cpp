#include <algorithm>
#include <iterator>
#include <utility>
#include <vela/thread/Errands.hpp>
#include <vela/thread/awake.hpp>

namespace vela::thread {

void Errands::post(Errand errand) {
    const Lock lock = lock_awake(mutex_);
    waiting_.push_back(std::move(errand));
    ++nr_waiting_;
}

void Errands::post(std::vector<Errand> errands) {
    const Lock lock = lock_awake(mutex_);
    std::ranges::move(errands, std::back_inserter(waiting_));
    nr_waiting_ += errands.size();
}

bool Errands::run_one() {
    if (nr_waiting_ == 0) return false;
    Lock lock = lock_awake(mutex_);
    return run_one_(lock);
}

void Errands::finish() {
    Lock lock = lock_awake(mutex_);
    while (nr_waiting_ != 0 || nr_under_way_ != 0)
        if (!run_one_(lock)) wait_awake(lock, all_done_cv_, [this] { return nr_under_way_ == 0; });
}

bool Errands::run_one_(Lock& lock) {
    if (waiting_.empty()) return false;
    const Errand errand = std::move(waiting_.front());
    waiting_.pop_front();
    --nr_waiting_;
    ++nr_under_way_;

    lock.unlock();
    errand();
    lock = lock_awake(mutex_);

    if (--nr_under_way_ == 0) all_done_cv_.notify_all();
    return true;
}

}  // namespace vela::thread
