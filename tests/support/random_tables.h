/// Plot style tables that no person would make.
#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

enum class TableShape { ByColour, Named, NamedWithColours };

/// The body of a sound table. An odd one has items that no document knows, numbers in several
/// spellings, and values that make no sense.
class RandomTable {
public:
    RandomTable(std::uint32_t seed, TableShape shape, bool odd)
        : random_(seed), shape_(shape), odd_(odd) {}

    std::string body() {
        const bool colours = shape_ != TableShape::Named;
        const int count = shape_ == TableShape::ByColour ? 255 : 1 + below(12);
        std::string text = "description=\"" + words() +
                           "\naci_table_available=" + (colours ? "TRUE" : "FALSE") +
                           "\nscale_factor=" + number(below(500)) +
                           "\napply_factor=" + (below(2) == 0 ? "TRUE" : "FALSE") + '\n';
        text += odd_ ? "vendor{\n deep{\n  x=\"y\n }\n}\n" : "";
        text += "custom_lineweight_display_units=" + std::to_string(below(2)) + '\n';
        if (colours) {
            text += "aci_table{\n";
            for (int entry = 0; entry < 255; ++entry) {
                const int used = shape_ == TableShape::ByColour ? entry : below(count);
                text += ' ' + std::to_string(entry) + "=\"Style_" + std::to_string(used) + '\n';
            }
            text += "}\n";
        }
        text += "plot_style{\n";
        for (int index = 0; index < count; ++index) {
            text += ' ' + std::to_string(index) + "{\n" + style(index) + " }\n";
        }
        text += "}\ncustom_lineweight_table{\n";
        for (int index = 0; index < 27; ++index) {
            text += ' ' + std::to_string(index) + '=' + number(below(30) * 5) + '\n';
        }
        return text + "}\n";
    }

private:
    int below(int bound) { return static_cast<int>(random_() % static_cast<std::uint32_t>(bound)); }
    template <class Value>
    Value oneOf(const std::vector<Value>& values) {
        return values[random_() % values.size()];
    }
    std::string words() {
        return oneOf<std::string>({"", "plain", "=1+1", "a;=cmd|x", "'t", "-2,\"q\"", "@x", "\xE4",
                                   "\"=\"", " blank ", "a,+b", "''", "\"", "x\ty"});
    }
    /// Hundredths.
    std::string number(int value) {
        const std::string zero = value % 100 < 10 ? "0" : "";
        return std::to_string(value / 100) + '.' + zero + std::to_string(value % 100) +
               (odd_ && below(2) == 0 ? "" : "0000");
    }
    std::string colors() {
        const std::int32_t byIndex = static_cast<std::int32_t>(0xC3000000U) + 1 + below(255);
        const std::int32_t value = static_cast<std::int32_t>(0xC2000000U) + below(0x1000000);
        const std::int32_t shown = static_cast<std::int32_t>(0xC3000000U) + below(0x1000000);
        const std::int32_t color = oneOf<std::int32_t>({-1, byIndex, value, shown, -1006632961});
        const std::int32_t mode = oneOf<std::int32_t>({color, value, byIndex});
        return "  color=" + std::to_string(color) +
               (color != mode || below(2) == 0 ? "\n  mode_color=" + std::to_string(mode) : "") +
               "\n  color_policy=" + std::to_string(below(odd_ ? 20 : 8)) + '\n';
    }
    std::string style(int index) {
        const std::string name = std::to_string(index);
        std::string text = "  name=\"Style_" + name + "\n  localized_name=\"" + words() + name +
                           "\n  description=\"" + words() + '\n' + colors();
        text += odd_ && below(3) == 0 ? "  vendor=\"" + words() + '\n' : "";
        const std::string zeros = odd_ && below(2) == 0 ? "00" : "";
        const int beyond = odd_ ? 20 : 0;
        const std::pair<const char*, int> numbers[] = {{"physical_pen_number", 33},
                                                       {"virtual_pen_number", 256},
                                                       {"screen", 101 + beyond},
                                                       {"linetype", 32},
                                                       {"lineweight", 27 + beyond},
                                                       {"fill_style", 74},
                                                       {"end_style", 5},
                                                       {"join_style", 6}};
        for (const auto& [key, bound] : numbers) {
            text += std::string("  ") + key + '=' + zeros + std::to_string(below(bound)) + '\n';
        }
        return text + "  linepattern_size=" + number(below(300)) +
               "\n  adaptive_linetype=" + (below(2) == 0 ? "TRUE" : "FALSE") + '\n';
    }

    std::mt19937 random_;
    TableShape shape_;
    bool odd_;
};
