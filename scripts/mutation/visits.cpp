// Linked into the tests once: writes which pieces of the code a run has come to into the file that
// PLATEN_VISITS names, as addresses. clang calls the first two functions before main.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <utility>
#include <vector>

namespace {

struct Piece {
    std::uintptr_t address;
    std::uintptr_t isEntry;
};

std::vector<std::pair<char*, char*>>& counters() {
    static auto* all = new std::vector<std::pair<char*, char*>>;
    return *all;
}

std::vector<const Piece*>& pieces() {
    static auto* all = new std::vector<const Piece*>;
    return *all;
}

void writeVisits() {
    const char* path = std::getenv("PLATEN_VISITS");
    std::FILE* file = path != nullptr ? std::fopen(path, "w") : nullptr;
    if (file == nullptr) {
        return;
    }
    for (std::size_t module = 0; module < counters().size(); ++module) {
        const auto [first, last] = counters()[module];
        for (std::ptrdiff_t index = 0; index < last - first; ++index) {
            if (first[index] != 0) {
                std::fprintf(file, "%zx\n",
                             static_cast<std::size_t>(pieces()[module][index].address));
            }
        }
    }
    std::fclose(file);
}

const int registered = std::atexit(writeVisits);

}  // namespace

extern "C" void __sanitizer_cov_8bit_counters_init(char* first, char* last) {
    counters().emplace_back(first, last);
}

extern "C" void __sanitizer_cov_pcs_init(const std::uintptr_t* first, const std::uintptr_t*) {
    pieces().push_back(reinterpret_cast<const Piece*>(first));
}
