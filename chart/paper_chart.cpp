#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include <platen/chart.h>
#include <platen/utcore.h>
#include "chart/paper_layout.h"
#include "chart/paper_list.h"
#include "chart/sheet.h"
#include "platform/utcore/markup.h"

namespace platen {
namespace {

using namespace chart;

/// A file may name any number of papers; nobody looks at more.
constexpr std::size_t mostPapers = 1000;

using Papers = std::vector<const ChartPaper*>;

double longestSide(const ChartPaper& paper) {
    return paper.hasSize ? std::max(paper.width, paper.height) : 0;
}

/// Papers of one scale each: pixels apart from lengths, the small apart from the large.
std::vector<Papers> sheetsOf(const std::vector<ChartPaper>& papers) {
    // What does not go on one page anyway may as well be drawn larger.
    constexpr std::size_t few = 24;
    const double mostRatio = papers.size() <= few ? 16 : 6;
    std::array<Papers, 2> kinds;
    for (const ChartPaper& paper : papers) {
        kinds[paper.inPixels ? 1 : 0].push_back(&paper);
    }
    std::vector<Papers> sheets;
    for (Papers& kind : kinds) {
        std::ranges::stable_sort(kind, std::greater(),
                                 [](const ChartPaper* paper) { return longestSide(*paper); });
        for (std::size_t first = 0; first < kind.size();) {
            const double largest = longestSide(*kind[first]);
            std::size_t end = first + 1;
            // What has no size goes with the rest.
            while (end < kind.size() && (longestSide(*kind[end]) == 0 ||
                                         longestSide(*kind[end]) * mostRatio >= largest)) {
                ++end;
            }
            sheets.emplace_back(kind.begin() + static_cast<std::ptrdiff_t>(first),
                                kind.begin() + static_cast<std::ptrdiff_t>(end));
            first = end;
        }
    }
    for (Papers& sheet : sheets) {
        // Higher ones first, so that those of a shelf are alike.
        std::ranges::stable_sort(sheet, [](const ChartPaper* left, const ChartPaper* right) {
            return std::pair(!left->custom && !left->chosen, -left->height) <
                   std::pair(!right->custom && !right->chosen, -right->height);
        });
    }
    return sheets;
}

/// 1, 2, 2.5, 5, 10 and so on.
double niceScale(std::size_t index) {
    constexpr std::array<double, 4> steps{1, 2, 2.5, 5};
    return steps[index % steps.size()] * std::pow(10.0, static_cast<double>(index / steps.size()));
}

/// The largest drawing for which one page does, unless papers become too small to be seen.
double scaleOf(const Papers& papers, const PaperPrint& print, const Room& room, bool& onePage) {
    constexpr std::size_t scales = 28;
    constexpr double longestDrawn = 130;
    double largest = 0;
    for (const ChartPaper* paper : papers) {
        largest = std::max(largest, longestSide(*paper));
    }
    double smallestThatFits = niceScale(0);
    bool anyFits = false;
    for (std::size_t index = 0; index < scales; ++index) {
        const double scale = niceScale(index);
        if (largest / scale > longestDrawn) {
            continue;
        }
        const bool visible = largest / scale >= print.leastSide;
        const PaperLayout layout(papers, print, room, scale);
        if (!layout.fits()) {
            continue;
        }
        if (layout.pages() == 1 && (visible || !anyFits || largest == 0)) {
            onePage = visible || !anyFits || largest == 0;
            return scale;
        }
        if (!visible && anyFits) {
            break;
        }
        anyFits = true;
        smallestThatFits = scale;
    }
    onePage = false;
    return smallestThatFits;
}

struct Plan {
    ChartSheet sheet;
    PaperPrint print{};
    std::vector<double> scales;
};

void setBar(Frame& frame, const ChartSheet& sheet, double scale, bool inPixels) {
    constexpr double wide = 250;
    const double room = std::max(sheet.width, sheet.height) > wide ? 100 : 60;
    double length = 1;
    for (std::size_t index = 0; niceScale(index) / scale <= room; ++index) {
        length = niceScale(index);
    }
    const std::string unit = inPixels ? " pixels" : " mm";
    frame.bar = {
        length / scale, ut::formatRounded(length, 1) + unit,
        inPixels
            ? "1 mm on the page stands for " + ut::formatRounded(scale, 1) + " pixels."
            : "Scale 1 : " + ut::formatRounded(scale, 1) + " when printed at actual size (100 %)."};
}

Frame frameOf(const PaperList& list, const ChartOptions& options) {
    Frame frame;
    frame.heading.title = options.title.empty() ? "Papers" : ut::visibleText(options.title);
    frame.heading.subtitle = list.subtitle;
    if (list.papers.empty()) {
        frame.heading.notes.emplace_back("It names no paper.");
    } else if (list.papers.size() > mostPapers) {
        frame.heading.notes.push_back("Only the first " + std::to_string(mostPapers) + " of " +
                                      std::to_string(list.papers.size()) + " papers are drawn.");
    }
    using Picture = KeySign::Picture;
    const auto any = [&list](bool (*holds)(const ChartPaper&)) {
        return std::ranges::any_of(list.papers, holds);
    };
    if (any([](const ChartPaper& paper) { return paper.chosen; })) {
        frame.key.push_back({Picture::Chosen, "chosen"});
    }
    if (any([](const ChartPaper& paper) { return paper.custom; })) {
        frame.key.push_back({Picture::Custom, "custom"});
    }
    if (any([](const ChartPaper& paper) { return !paper.custom && !paper.chosen; })) {
        frame.key.push_back({Picture::Device, "of the device"});
    }
    if (any([](const ChartPaper& paper) { return paper.hasPrintable; })) {
        frame.key.push_back({Picture::Printable, "printable area"});
    }
    return frame;
}

Plan planOf(const std::vector<Papers>& sheets, Frame& frame, const ChartOptions& options) {
    const std::optional<ChartSheet> chosen = chosenSheet(options);
    std::vector<ChartSheet> tried =
        chosen ? std::vector<ChartSheet>{*chosen} : usualSheets(options);
    Plan plan;
    for (const ChartSheet& sheet : tried) {
        for (const PaperPrint& print : paperPrints) {
            const bool last = &sheet == &tried.back();
            if (!last && &print == &paperPrints.back()) {
                continue;
            }
            plan = {sheet, print, {}};
            bool onePageEach = true;
            for (const Papers& papers : sheets) {
                setBar(frame, sheet, 1, false);
                bool onePage = false;
                plan.scales.push_back(scaleOf(papers, print, roomIn(frame, sheet), onePage));
                onePageEach = onePageEach && onePage;
            }
            if (onePageEach) {
                return plan;
            }
        }
    }
    return plan;
}

std::string descriptionOf(const PaperList& list) {
    constexpr std::size_t mostNamed = 40;
    std::string words = list.subtitle + ". " + std::to_string(list.papers.size()) +
                        (list.papers.size() == 1 ? " paper" : " papers") + " to scale";
    for (std::size_t index = 0; index < std::min(list.papers.size(), mostNamed); ++index) {
        const ChartPaper& paper = list.papers[index];
        words += (index == 0 ? ": " : "; ") + paper.name + ", " + paper.sizeWords + ", " +
                 paper.marginWords + (paper.chosen ? ", chosen" : "");
    }
    return words + (list.papers.size() > mostNamed ? "; and others." : ".");
}

Scene sceneOf(PaperList list, const ChartOptions& options) {
    Frame frame = frameOf(list, options);
    Scene scene{frame.heading.title, descriptionOf(list), {}};
    list.papers.resize(std::min(list.papers.size(), mostPapers));
    const std::vector<Papers> sheets = sheetsOf(list.papers);
    const Plan plan = planOf(sheets, frame, options);

    std::vector<PaperLayout> layouts;
    std::size_t pages = 0;
    for (std::size_t index = 0; index < sheets.size(); ++index) {
        layouts.emplace_back(sheets[index], plan.print, roomIn(frame, plan.sheet),
                             plan.scales[index]);
        pages += layouts.back().pages();
    }
    std::size_t first = 0;
    for (std::size_t index = 0; index < sheets.size(); ++index) {
        setBar(frame, plan.sheet, plan.scales[index], sheets[index].front()->inPixels);
        for (std::size_t page = 0; page < layouts[index].pages(); ++page) {
            scene.pages.push_back(framedPage(frame, plan.sheet, scene.pages.size() + 1, pages));
            Pencil pencil(scene.pages.back());
            layouts[index].draw(pencil, page, first);
        }
        first += sheets[index].size();
    }
    if (sheets.empty()) {
        setBar(frame, plan.sheet, 1, false);
        scene.pages.push_back(framedPage(frame, plan.sheet, 1, 1));
    }
    return scene;
}

}  // namespace

Scene papersChart(const CPlotCfg3& config, const ChartOptions& options) {
    return sceneOf(papersOf(config, options.devicePapers), options);
}

Scene papersChart(const PlotModelParam& parameters, const ChartOptions& options) {
    return sceneOf(papersOf(parameters), options);
}

}  // namespace platen
