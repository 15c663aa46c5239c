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
#include <system_error>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

/// The regular files of a folder in order of name; empty when it cannot be read.
std::vector<std::filesystem::path> filesOf(const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> files;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        if (entry->is_regular_file(error)) {
            files.push_back(entry->path());
        }
    }
    if (error) {
        files.clear();
    }
    std::sort(files.begin(), files.end());
    return files;
}

bool replay(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(stream), {}};
    if (!stream) {
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
    if (argc < 2) {
        std::fprintf(stderr, "usage: %s FOLDER...\n", argv[0]);
        return 2;
    }
    std::size_t count = 0;
    for (int i = 1; i < argc; ++i) {
        const auto files = filesOf(argv[i]);
        if (files.empty()) {
            std::fprintf(stderr, "no file in %s\n", argv[i]);
            return 1;
        }
        for (const auto& file : files) {
            if (!replay(file)) {
                std::fprintf(stderr, "cannot read %s\n", file.string().c_str());
                return 1;
            }
            ++count;
        }
    }
    std::printf("%zu files replayed\n", count);
    return 0;
}
