#include <fstream>
#include <vela/file/exist.hpp>

namespace vela::file {

bool exist(const Name& name) {
    return std::ifstream(name.str(), std::ios::binary).is_open();
}

}  // namespace vela::file
