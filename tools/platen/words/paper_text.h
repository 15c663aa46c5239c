/// Papers in words.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

#include <platen/plotcfg.h>
#include <platen/pmp.h>

namespace cli::words {

/// "210 x 297 mm"
std::string sizeInWords(double width, double height, std::int32_t units);
/// "papers up to 914 x 5080 mm" for largest sides, of which 0 means that there is no limit.
std::string limitsInWords(double width, double height, std::int32_t units);
/// The size of the chosen paper, in inches too when its name stands for a paper in inches.
std::string chosenPaperInWords(const CPlotCfg3& config);

/// The number of the papers and a line for each, as far as people read.
void describePapers(std::string_view label, const std::vector<CustomPaperSize>& papers,
                    std::ostream& out);
/// The same for the lists of a PMP.
void describePapers(std::string_view label, const PmpSizeNode& sizes,
                    const PmpDescriptionNode& descriptions, std::ostream& out);

}  // namespace cli::words
