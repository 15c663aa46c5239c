#include "tests/support/files.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <random>

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() {
    std::random_device source;
    do {
        folder_ = fs::temp_directory_path() / ("platen-test-" + std::to_string(source()));
    } while (!fs::create_directory(folder_));
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
}

std::vector<std::string> TemporaryFolder::files() const {
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder_)) {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::string readBytes(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void writeBytes(const fs::path& path, std::string_view bytes) {
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}
