// Replays files, and the files of directories, through a fuzz target.
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <vector>

#include "target.h"

namespace {

namespace fs = std::filesystem;

int replay(const fs::path& path) {
    if (fs::is_directory(path)) {
        int count = 0;
        for (const fs::directory_entry& entry : fs::directory_iterator(path)) {
            count += replay(entry.path());
        }
        return count;
    }
    std::ifstream file(path, std::ios::binary);
    const std::vector<std::uint8_t> bytes(std::istreambuf_iterator<char>(file), {});
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
    return 1;
}

} // namespace

int main(int argc, char** argv) {
    int count = 0;
    for (int i = 1; i < argc; ++i) {
        // libFuzzer's own options say nothing here.
        count += argv[i][0] == '-' ? 0 : replay(argv[i]);
    }
    std::cout << count << " inputs replayed\n";
    return count > 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
