#include <info.hpp>
#include <vela/codec/Version.hpp>

namespace info {

const std::string& name() {
    static const std::string text = "Vela-Codec v3.2";
    return text;
}

const std::string& version() {
    static const std::string text = vela::codec::version_text;
    return text;
}

const std::string& git_hash() {
    static const std::string text = vela::codec::build_hash_text;
    return text;
}

const std::string& build_date() {
    static const std::string text = "2016-12-19T09:00:00+01:00";
    return text;
}

}  // namespace info
