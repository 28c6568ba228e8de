#include <algorithm>
#include <vela/file/Range.hpp>
#include <vela/file/read.hpp>

namespace vela::file {

bool read(std::string& out, const Name& name) {
    // In pieces: the length of a folder is said to be 2^63 - 1, which no string can hold.
    constexpr std::uint64_t piece_size = 1 << 20;
    Range rest(name);
    out.clear();
    if (!rest.is_open()) return false;
    std::string piece;
    while (!rest.empty()) {
        if (!rest.pop_slice(piece, std::min(piece_size, rest.size()))) return false;
        out += piece;
    }
    return true;
}

}  // namespace vela::file
