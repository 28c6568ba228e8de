#pragma once

#include <utility>
#include <vela/file/Name.hpp>
#include <vela/file/Range.hpp>
#include <vela/wav/Parser.hpp>

namespace vela::wav {

/// A `Parser` that knows which file it is to read.
template <typename T>
class FileParser : public Parser<T, file::Range> {
public:
    explicit FileParser(file::Name name) : name_(std::move(name)) {}

    [[nodiscard]] const file::Name& name() const { return name_; }
    [[nodiscard]] bool parse() { return Parser<T, file::Range>::parse(name_); }

private:
    file::Name name_;
};

}  // namespace vela::wav
