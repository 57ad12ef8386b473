// Replays files, and the files of directories, through a fuzz target.
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <vector>

#include "target.h"

int refused(const std::string& why) {
    std::cerr << why << '\n';
    return -1;
}

int main(int argc, char** argv) {
    namespace fs = std::filesystem;
    int count = 0;
    for (int i = 1; i < argc; ++i) {
        std::vector<fs::path> paths{argv[i]};
        if (argv[i][0] == '-') {
            // libFuzzer's own options say nothing here.
            paths.clear();
        } else if (fs::is_directory(argv[i])) {
            paths.assign(fs::directory_iterator(argv[i]), {});
        }
        for (const fs::path& path : paths) {
            std::ifstream file(path, std::ios::binary);
            const std::vector<std::uint8_t> bytes(std::istreambuf_iterator<char>(file), {});
            if (LLVMFuzzerTestOneInput(bytes.data(), bytes.size()) != 0) {
                std::cerr << path.string() << " is not an input of this target\n";
                return EXIT_FAILURE;
            }
            ++count;
        }
    }
    std::cout << count << " inputs replayed\n";
    return count > 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
