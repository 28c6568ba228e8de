#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>
#include <vela/Cache.hpp>

namespace vela {
namespace {

// Writes down when values come and go.
class Logged {
public:
    Logged(std::vector<std::string>& log, std::string name) : log_(&log), name_(std::move(name)) {}
    Logged(const Logged& other) : log_(other.log_), name_(other.name_) {
        if (name_ == "throws") throw std::runtime_error(name_);
        log_->push_back("+" + name_);
    }
    Logged& operator=(const Logged&) = delete;
    ~Logged() { log_->push_back("-" + name_); }

private:
    std::vector<std::string>* log_;
    std::string name_;
};

TEST(Cache, HoldsNothingAtFirst) {
    const Cache<int> cache;
    EXPECT_FALSE(cache);
    EXPECT_FALSE(cache.has_value());
}

TEST(Cache, HoldsWhatWasSetUntilReset) {
    Cache<std::string> cache;
    EXPECT_EQ(cache.set("first"), "first");
    EXPECT_TRUE(cache);
    EXPECT_EQ(*cache, "first");
    const std::string second = "second";
    cache.set(second);
    EXPECT_EQ(cache->size(), 6u);
    EXPECT_EQ(*std::as_const(cache), "second");
    cache.reset();
    EXPECT_FALSE(cache.has_value());
}

// A plot writes itself when it ends: two must not be open on one file.
TEST(Cache, EndsTheHeldValueBeforeTheNewOneIsMade) {
    std::vector<std::string> log;
    Cache<Logged> cache;
    const Logged a(log, "a");
    const Logged b(log, "b");
    cache.set(a);
    cache.set(b);
    EXPECT_EQ(log, (std::vector<std::string>{"+a", "-a", "+b"}));
}

TEST(Cache, IsLeftEmptyIfTheNewValueCannotBeMade) {
    std::vector<std::string> log;
    Cache<Logged> cache;
    const Logged good(log, "good");
    const Logged bad(log, "throws");
    cache.set(good);
    EXPECT_THROW(cache.set(bad), std::runtime_error);
    EXPECT_FALSE(cache.has_value());
    EXPECT_EQ(log, (std::vector<std::string>{"+good", "-good"}));
}

TEST(Cache, MoveAssignmentTakesOverTheValueOrTheEmptiness) {
    Cache<std::string> full;
    full.set("value");
    Cache<std::string> target;
    target = std::move(full);
    EXPECT_EQ(*target, "value");

    target = Cache<std::string>();
    EXPECT_FALSE(target.has_value());

    target.set("again");
    auto& same = target;
    target = std::move(same);
    EXPECT_EQ(*target, "again");
}

TEST(Cache, CopiesAreIndependent) {
    Cache<std::string> original;
    original.set("value");
    auto copy = original;
    copy.set("other");
    EXPECT_EQ(*original, "value");
    const auto moved = std::move(copy);
    EXPECT_EQ(*moved, "other");
}

}  // namespace
}  // namespace vela
