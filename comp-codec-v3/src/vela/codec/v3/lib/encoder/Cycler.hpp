#pragma once

#include <cstdint>
#include <optional>
#include <vela/api/SampleSpan.hpp>

namespace vela::codec::v3::encoder {

/// A value that goes into a record now and again.
///
///     at < 0     frames still to wait
///     at >= 0    sample from which the value is next due
///
/// A new value is due at once, or after its delay; from then on it returns every `period` samples,
/// rounded up to a frame boundary.  Period 0 keeps it out of the records.
template <typename T>
class Cycler {
public:
    void set_period(std::uint32_t samples) { period_ = samples; }

    /// Takes over another value than before, to be sent after `delay` frames.  The same value again
    /// lets the period run on.
    void set_value(const T& value, int delay = 0) {
        if (value_ == value) return;
        value_ = value;
        at_ = -delay;
    }

    /// The value, if it shall go into the record of this frame.
    [[nodiscard]] std::optional<T> due(const api::SampleSpan& span) const {
        return is_due_(span) ? value_ : std::nullopt;
    }

    /// Ends a frame: what was due has gone out.
    void update(const api::SampleSpan& span) {
        if (is_due_(span))
            at_ = period_ + span.stop - 1;
        else if (at_ < 0)
            ++at_;
    }

private:
    [[nodiscard]] bool is_due_(const api::SampleSpan& span) const {
        return period_ != 0 && value_ && at_ >= 0 && at_ < span.stop;
    }

    std::optional<T> value_;
    std::int64_t at_ = 0;
    std::uint32_t period_ = 0;
};

}  // namespace vela::codec::v3::encoder
