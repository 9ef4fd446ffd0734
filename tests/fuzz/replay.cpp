// Puts each file of the folders that are named to a target, once: what was ever found stays found.
#include "fuzz/target.h"
#include "platform/qt/application.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

int main(int argc, char** argv) {
    vantrel::SetUpApplication();
    int inputs = 0;
    for (int i = 1; i < argc; ++i) {
        for (const auto& file : std::filesystem::directory_iterator(argv[i])) {
            std::cout << file.path().string() << std::endl;
            std::ifstream in(file.path(), std::ios::binary);
            Try(std::string(std::istreambuf_iterator<char>(in), {}));
            ++inputs;
        }
    }
    std::cout << inputs << " inputs" << std::endl;
    vantrel::ExitNow(inputs > 0 ? 0 : 1);
}
