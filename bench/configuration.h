/// The plot configurations that everything here is measured with.
#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <platen/plotcfg.h>
#include "bench/sample.h"

namespace bench {

inline std::vector<CustomPaperSize> papersOf(int count) {
    std::vector<CustomPaperSize> papers;
    for (int number = 0; number < count; ++number) {
        CustomPaperSize& paper = papers.emplace_back();
        paper.source = 1;
        paper.localName = L"Roll " + std::to_wstring(number);
        paper.globalName = paper.localName;
        paper.units = number % 3 == 0 ? OdDbPlotSettings::kInches : OdDbPlotSettings::kMillimeters;
        paper.width = 200 + number % 700;
        paper.height = 300 + number;
        paper.left = paper.right = paper.bottom = paper.top = 5;
    }
    return papers;
}

/// A configuration of the PDF device and its PMP, which lies beside it.
class Configuration {
public:
    explicit Configuration(int count) : folder_(folder / ("papers" + std::to_string(count))) {
        std::filesystem::create_directory(folder_);
        const std::unique_ptr<CPlotCfg3> config(CPlotCfg3::create(BuiltInPlotDevice::pdfName));
        config->setCustomPaperSizes(papersOf(count));
        if (!config->write(configPath().wstring().c_str()) || !std::filesystem::exists(pmpPath())) {
            throw std::runtime_error("a configuration cannot be written");
        }
    }

    std::wstring name() const { return configPath().wstring(); }
    std::filesystem::path configPath() const { return folder_ / "plot.pc3"; }
    std::filesystem::path pmpPath() const { return folder_ / "plot.pmp"; }

private:
    std::filesystem::path folder_;
};

inline const Configuration& configuration(int count) {
    static std::map<int, Configuration> made;
    return made.try_emplace(count, count).first->second;
}

}  // namespace bench
