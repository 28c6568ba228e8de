#pragma once

#include <vela/profiler/Stack.hpp>

namespace vela {

/// A storage of booked times, and a guard that opens a mark for a scope.
///
///     static const char* const mark_msg = "Encoding";
///     const Profiler<const char*, profiler::Stack>::Mark mark(profiler, &mark_msg);
template <typename Key, template <typename> class Storage>
class Profiler : public Storage<Key> {
public:
    /// The time of this scope belongs to its mark.
    class Mark {
    public:
        Mark(Profiler& profiler, const Key* key) : profiler_(profiler), key_(key) {
            profiler_.push(key_);
        }
        Mark(const Mark&) = delete;
        Mark& operator=(const Mark&) = delete;
        ~Mark() {
            // Refused after `stop`: the mark then has no effect.
            if (key_) profiler_.pop();
        }

    private:
        Profiler& profiler_;
        const Key* key_;
    };
};

}  // namespace vela
