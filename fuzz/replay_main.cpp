// Gives every file of the folders named on the command line to a fuzzer's entry point, without the
// fuzzer. A folder that is missing or holds no file is an error: nothing would have been tried.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <set>
#include <vector>

#include "fuzz/sound_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

bool replay(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(stream), {}};
    if (!stream) {
        std::fprintf(stderr, "cannot read %s\n", file.string().c_str());
        return false;
    }
    // A block of exactly this size: a sanitizer sees a read past the last byte.
    const auto block = std::make_unique<std::uint8_t[]>(bytes.size());
    std::copy(bytes.begin(), bytes.end(), block.get());
    // Named first, so that a crash tells its file.
    std::printf("%s (%zu bytes)\n", file.filename().string().c_str(), bytes.size());
    std::fflush(stdout);
    LLVMFuzzerTestOneInput(block.get(), bytes.size());
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    isReplay = true;
    for (int i = 1; i < argc; ++i) {
        // A folder that cannot be read ends the program with the exception's words.
        const std::filesystem::directory_iterator folder(argv[i]);
        const std::set<std::filesystem::path> files(begin(folder), end(folder));
        if (files.empty() || !std::ranges::all_of(files, replay)) {
            std::fprintf(stderr, "not all of %s was replayed\n", argv[i]);
            return 1;
        }
        std::printf("%zu files replayed\n", files.size());
    }
    return argc > 1 ? 0 : 2;
}
