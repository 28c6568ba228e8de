#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vela/file/Name.hpp>

namespace vela::testing_support {

/// A file of the running test alone, gone when the test is.
class TempFile {
public:
    /// A name for which there is no file yet.
    TempFile() : path_(next_path_()) { std::filesystem::remove(path_); }
    explicit TempFile(const std::string& bytes) : path_(next_path_()) { write(bytes); }
    TempFile(const TempFile&) = delete;
    TempFile& operator=(const TempFile&) = delete;
    ~TempFile() { std::filesystem::remove(path_); }

    void write(const std::string& bytes) const {
        std::ofstream(path_, std::ios::binary | std::ios::trunc) << bytes;
    }
    [[nodiscard]] std::string bytes() const {
        std::ostringstream out;
        out << std::ifstream(path_, std::ios::binary).rdbuf();
        return out.str();
    }
    [[nodiscard]] const std::string& path() const { return path_; }
    [[nodiscard]] file::Name name() const { return file::Name(path_); }

private:
    static std::string next_path_() {
        static int count = 0;
        return testing::TempDir() + "core-io-" + std::to_string(getpid()) + "-" +
               std::to_string(count++);
    }

    std::string path_;
};

/// Bytes from numbers, so that tables of files stay readable.
template <typename... Byte>
std::string bytes_of(Byte... byte) {
    return {static_cast<char>(byte)...};
}

}  // namespace vela::testing_support
