#include <app/main_.hpp>
#include <iostream>
#include <vela/log/Settings.hpp>

int main(int argc, char** argv) {
    if (argc > 0) vela::log::Settings::set_prefix(argv[0]);

    const int code = app::main_(argc, argv);
    if (code == 0) {
        std::cout << "Everything went OK" << std::endl;
        return 0;
    }
    std::cout << "Failure with ReturnCode " << code << std::endl;
    return -1;
}
