#include "tests/support/postscript_page.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <numbers>
#include <sstream>
#include <vector>

namespace {

std::string_view after(std::string_view line, std::string_view start) {
    return line.starts_with(start) ? line.substr(start.size()) : std::string_view();
}

/// The operators that place and draw a border; whatever else a page does is passed over.
class Painter {
public:
    explicit Painter(PostScriptPage& page) : page_(page) {}

    void run(const std::string& token) {
        char* end = nullptr;
        const double number = std::strtod(token.c_str(), &end);
        if (*end == '\0') {
            operands_.push_back(number);
            return;
        }
        if (token == "div") {
            const auto [dividend, divisor] = two();
            operands_.push_back(dividend / divisor);
            return;
        }
        if (token == "scale") {
            const auto [x, y] = two();
            concatenate({x, 0, 0, y, 0, 0});
        } else if (token == "translate") {
            const auto [x, y] = two();
            concatenate({1, 0, 0, 1, x, y});
        } else if (token == "rotate") {
            const double angle = two()[1] * std::numbers::pi / 180;
            concatenate(
                {std::cos(angle), std::sin(angle), -std::sin(angle), std::cos(angle), 0, 0});
        } else if (!closed_ && token == "moveto") {
            path_.clear();
            current_ = two();
            extend();
        } else if (!closed_ && token == "rlineto") {
            const auto [x, y] = two();
            current_ = {current_[0] + x, current_[1] + y};
            extend();
        } else if (!closed_ && token == "closepath") {
            closed_ = true;
            measure();
        }
        operands_.clear();
    }

private:
    using Point = std::array<double, 2>;

    /// The last two operands, 0 for those that are not there.
    Point two() {
        Point last{};
        for (std::size_t index = 2; index-- > 0 && !operands_.empty(); operands_.pop_back()) {
            last[index] = operands_.back();
        }
        return last;
    }

    void concatenate(const std::array<double, 6>& first) {
        const std::array<double, 6> then = matrix_;
        matrix_ = {first[0] * then[0] + first[1] * then[2],
                   first[0] * then[1] + first[1] * then[3],
                   first[2] * then[0] + first[3] * then[2],
                   first[2] * then[1] + first[3] * then[3],
                   first[4] * then[0] + first[5] * then[2] + then[4],
                   first[4] * then[1] + first[5] * then[3] + then[5]};
    }

    void extend() {
        path_.push_back({current_[0] * matrix_[0] + current_[1] * matrix_[2] + matrix_[4],
                         current_[0] * matrix_[1] + current_[1] * matrix_[3] + matrix_[5]});
    }

    void measure() {
        const auto of = [](std::size_t axis) {
            return [axis](const Point& a, const Point& b) { return a[axis] < b[axis]; };
        };
        const auto [left, right] = std::minmax_element(path_.begin(), path_.end(), of(0));
        const auto [bottom, top] = std::minmax_element(path_.begin(), path_.end(), of(1));
        if (left != path_.end()) {
            page_.border = {(*left)[0], (*bottom)[1], (*right)[0], (*top)[1]};
        }
    }

    PostScriptPage& page_;
    std::vector<double> operands_;
    std::array<double, 6> matrix_{1, 0, 0, 1, 0, 0};
    Point current_{};
    std::vector<Point> path_;
    bool closed_ = false;
};

void readSetup(std::string_view line, PostScriptPage& page) {
    constexpr std::string_view paper = "/PageSize[";
    const std::size_t at = line.find(paper);
    if (at != std::string_view::npos && line.find("setpagedevice") != std::string_view::npos) {
        const std::string_view size = line.substr(at + paper.size());
        page.paperSizes.emplace(size.substr(0, size.find(']')));
    }
    const std::string_view copies = after(line, "%RBIBeginNonPPDFeature: *NumCopies ");
    if (!copies.empty()) {
        page.copies = std::atoi(std::string(copies).c_str());
    }
}

}  // namespace

PostScriptPage readPostScriptPage(std::string_view document) {
    PostScriptPage page;
    Painter painter(page);
    bool inPage = false;
    std::istringstream lines{std::string(document)};
    for (std::string line; std::getline(lines, line);) {
        if (const std::string_view turned = after(line, "%%Orientation: "); !turned.empty()) {
            page.orientation = turned;
        }
        page.pages += line.starts_with("%%Page: ") ? 1 : 0;
        inPage = inPage || line.starts_with("%%Page: ");
        if (!inPage) {
            readSetup(line, page);
            continue;
        }
        if (line.starts_with('%')) {
            continue;
        }
        if (line.ends_with(" glyphshow")) {
            page.characters += page.characters.empty() ? "" : " ";
            page.characters += line.substr(1, line.find(' ') - 1);
        }
        std::istringstream tokens(line);
        for (std::string token; tokens >> token;) {
            painter.run(token);
        }
    }
    return page;
}
