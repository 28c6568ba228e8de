#pragma once

#include <algorithm>
#include <cstdint>
#include <map>
#include <utility>
#include <vela/api/Frame.hpp>

namespace vela::api {

/// The frames of all channels for one stretch of time, in key order.
template <typename T, typename K>
class Frames {
public:
    /// Get or create; a new frame is empty and has bit depth 0.
    Frame<T, K>& goc(const K& key) {
        auto& frame = frames_[key];
        frame.key = key;
        return frame;
    }

    /// Also makes sure of the size.  A frame that has it keeps its samples and bit depth; any
    /// other becomes zeros with bit depth 0.
    Frame<T, K>& goc(const K& key, std::uint64_t size) {
        auto& frame = frames_[key];
        if (frame.size() != size) frame = Frame<T, K>(size);
        frame.key = key;
        return frame;
    }

    Frame<T, K>& goc(const K& key, std::uint64_t size, std::uint32_t bit_depth) {
        auto& frame = goc(key, size);
        frame.bit_depth = bit_depth;
        return frame;
    }

    /// Stores a copy, sharing the samples, under the frame's own key.
    Frame<T, K>& set(const Frame<T, K>& frame) { return frames_[frame.key] = frame; }
    Frame<T, K>& set(Frame<T, K>&& frame) { return frames_[frame.key] = std::move(frame); }

    /// All samples of that frame become zero; its bit depth stays.
    Frame<T, K>& silence(const K& key, std::uint64_t size) {
        auto& frame = goc(key, size);
        std::ranges::fill(frame.write(), T{});
        return frame;
    }

    /// The frame for `key`, or null; nothing is created.
    [[nodiscard]] const Frame<T, K>* find(const K& key) const {
        const auto at = frames_.find(key);
        return at == frames_.end() ? nullptr : &at->second;
    }

    /// Size that all frames agree on.  False if there is no frame (`out` untouched) or they differ
    /// (`out` has the size of the first).
    template <typename Size>
    [[nodiscard]] bool frame_size(Size& out) const {
        return agreed_(out, [](const auto& frame) { return frame.size(); });
    }

    /// Bit depth that all frames agree on; results as for `frame_size`.
    template <typename Depth>
    [[nodiscard]] bool bit_depth(Depth& out) const {
        return agreed_(out, [](const auto& frame) { return frame.bit_depth; });
    }

    [[nodiscard]] bool empty() const { return frames_.empty(); }
    [[nodiscard]] std::size_t size() const { return frames_.size(); }
    auto begin() { return frames_.begin(); }
    auto end() { return frames_.end(); }
    auto begin() const { return frames_.begin(); }
    auto end() const { return frames_.end(); }

private:
    template <typename Out, typename Get>
    bool agreed_(Out& out, Get get) const {
        if (frames_.empty()) return false;
        const auto first = get(frames_.begin()->second);
        out = static_cast<Out>(first);
        return std::ranges::all_of(frames_, [&](const auto& e) { return get(e.second) == first; });
    }

    std::map<K, Frame<T, K>> frames_;
};

}  // namespace vela::api
