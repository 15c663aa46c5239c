/// Tests against a real spooler: the private queues Plotter and Office that scripts/test-printers
/// starts. Each test is a process of its own, since Windows keeps what a driver merged.
#pragma once

#include <gtest/gtest.h>
#include <wx/init.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <platen/print.h>

/// A paper as the queue's own description has it.
struct DescribedPaper {
    std::wstring name;
    /// Tenths of a millimetre.
    double width;
    double height;
};

class SpoolerTest : public testing::Test {
protected:
    SpoolerTest() { wut::registerPrintFactory(); }
    ~SpoolerTest() override { wut::unRegisterPrintFactory(); }

    /// Of the spooler; without it there is nothing to test, which is a failure.
    static std::filesystem::path folder() {
        const char* folder = std::getenv("PLATEN_TEST_PRINTERS");
        EXPECT_NE(folder, nullptr) << "start the printers with scripts/test-printers";
        return folder == nullptr ? "" : folder;
    }

    /// The papers of a queue by the PPD file that the spooler made it from, past Windows.
    static std::vector<DescribedPaper> describedPapers(const char* queue) {
        constexpr double tenthsOfMillimetreInPoint = 254.0 / 72;
        std::ifstream file(folder() / "etc" / "ppd" / (std::string(queue) + ".ppd"));
        std::vector<DescribedPaper> papers;
        for (std::string line; std::getline(file, line);) {
            const std::string key = "*PaperDimension ";
            const std::size_t slash = line.find('/');
            const std::size_t colon = line.find(": \"");
            if (!line.starts_with(key) || slash == std::string::npos ||
                colon == std::string::npos) {
                continue;
            }
            const std::string name = line.substr(slash + 1, colon - slash - 1);
            std::istringstream size(line.substr(colon + 3));
            DescribedPaper paper{std::wstring(name.begin(), name.end()), 0, 0};
            size >> paper.width >> paper.height;
            paper.width *= tenthsOfMillimetreInPoint;
            paper.height *= tenthsOfMillimetreInPoint;
            papers.push_back(paper);
        }
        return papers;
    }

private:
    wxInitializer library_;
};
