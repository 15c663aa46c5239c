#include "tests/support/json_seen.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <set>
#include <string>
#include <string_view>

namespace {

std::string runningTest() {
    const testing::TestInfo* test = testing::UnitTest::GetInstance()->current_test_info();
    std::string name =
        test == nullptr ? "none" : std::string(test->test_suite_name()) + '.' + test->name();
    std::ranges::replace(name, '/', '-');
    return name;
}

}  // namespace

const std::string& keepJson(const std::string& text) {
    static std::mutex mutex;
    static std::set<std::string> begun;
    // CTest names it; programs have no paths of the build in them, which others run elsewhere.
    const char* const named = std::getenv("PLATEN_TEST_JSON");
    if (named == nullptr) {
        return text;
    }
    const std::lock_guard lock(mutex);
    std::ofstream kept;
    for (std::string_view rest = text; !rest.empty();) {
        const std::string_view line = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(rest.size(), line.size() + 1));
        if (!line.starts_with(R"({"schema":)")) {
            continue;
        }
        if (!kept.is_open()) {
            const std::filesystem::path folder(named);
            const std::string name = runningTest();
            std::filesystem::create_directories(folder);
            kept.open(folder / (name + ".jsonl"), begun.insert(name).second
                                                      ? std::ios::binary
                                                      : std::ios::binary | std::ios::app);
        }
        kept << line << '\n';
    }
    return text;
}
