#include "sample/Sample.h"

#include <exception>
#include <iostream>
#include <string>
#include <vector>

using namespace quillbay::sample;

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    try {
        if (arguments.size() == 2 && arguments[0] == "demo") {
            MakeDemo(arguments[1]);
            return 0;
        }
        if (arguments.size() == 4 && arguments[0] == "game") {
            MakeGame(arguments[1], std::stoul(arguments[2]), std::stoull(arguments[3]));
            return 0;
        }
    } catch (const std::exception& error) {
        std::cerr << "make_sample: " << error.what() << "\n";
        return 1;
    }
    std::cerr << "make_sample demo FOLDER\nmake_sample game FOLDER FILES BYTES\n";
    return 2;
}
