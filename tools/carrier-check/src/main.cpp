#include <check/Options.hpp>
#include <check/run.hpp>
#include <iostream>

int main(int argc, char** argv) {
    check::Options options;
    std::string why;
    if (!options.parse(why, {argv + 1, argv + argc})) {
        std::cerr << "carrier-check: " << why << "\n\n" << check::Options::usage();
        return 2;
    }
    if (options.help) {
        std::cout << check::Options::usage();
        return 0;
    }
    return check::run(options, std::cout, std::cerr) ? 0 : 1;
}
