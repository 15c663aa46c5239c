#include "fuzz/mutation.h"

#include <algorithm>
#include <array>
#include <set>

#include "tests/support/configurations.h"

namespace {

/// Beside those of the configurations.
constexpr std::string_view tableKeys =
    "description aci_table_available scale_factor apply_factor custom_lineweight_display_units "
    "aci_table plot_style custom_lineweight_table name localized_name color mode_color "
    "color_policy physical_pen_number virtual_pen_number screen linepattern_size linetype "
    "adaptive_linetype lineweight fill_style end_style join_style 0 1 2 3 26 27 254 255 data "
    "voidprop value ";

const std::vector<std::string>& keys() {
    static const std::vector<std::string> all = [] {
        std::set<std::string> names;
        for (const std::string* body : {&fullConfiguration, &fullParameters}) {
            for (const BodyItem& item : itemsOf(*body)) {
                names.insert(item.path.substr(item.path.rfind('/') + 1));
            }
        }
        for (std::string_view rest = tableKeys; !rest.empty();) {
            names.emplace(rest.substr(0, rest.find(' ')));
            rest.remove_prefix(rest.find(' ') + 1);
        }
        return std::vector<std::string>(names.begin(), names.end());
    }();
    return all;
}

constexpr std::array<std::string_view, 44> values{"0",
                                                  "1",
                                                  "-1",
                                                  "2",
                                                  "3",
                                                  "100",
                                                  "254",
                                                  "255",
                                                  "256",
                                                  "-0",
                                                  "+7",
                                                  " 5",
                                                  "007",
                                                  "12abc",
                                                  "1e9",
                                                  "1e400",
                                                  "nan",
                                                  "inf",
                                                  "0x10",
                                                  "2147483647",
                                                  "2147483648",
                                                  "4294967295",
                                                  "4294967296",
                                                  "-2147483648",
                                                  "-1023410177",
                                                  "-1006632961",
                                                  "3271557376",
                                                  "0.5",
                                                  "0.500000",
                                                  ".5",
                                                  "5.",
                                                  "1.7976931348623157e308",
                                                  "-0.0000004",
                                                  "99999999999999999999",
                                                  "TRUE",
                                                  "FALSE",
                                                  "true",
                                                  "UserDefinedMetric (100.00 x 200.00MM)",
                                                  "Normal",
                                                  "Style_1",
                                                  "ISO_A4_(210.00_x_297.00_MM)",
                                                  "\xC3\xA9\xE2\x82\xAC",
                                                  "\xE4",
                                                  "C:\\x\\y.pmp"};

std::vector<std::string> linesOf(std::string_view text) {
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        lines.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

bool opens(std::string_view line) {
    return line.find('=') == std::string_view::npos && line.find('{') != std::string_view::npos;
}
bool closes(std::string_view line) {
    return line.find('=') == std::string_view::npos && line.find('}') != std::string_view::npos;
}

std::size_t nameBegin(std::string_view line) {
    return std::min(line.find_first_not_of(' '), line.size());
}
std::size_t nameEnd(std::string_view line) {
    return std::min({line.find('='), line.find('{'), line.size()});
}

}  // namespace

std::string Mutation::key() { return keys()[below(keys().size())]; }

std::string Mutation::value() {
    if (oneIn(8)) {
        return std::to_string(static_cast<std::int32_t>(random_()) >> below(31));
    }
    if (oneIn(32)) {
        constexpr std::array<std::size_t, 6> lengths{64, 255, 499, 510, 511, 513};
        return std::string(lengths[below(lengths.size())], oneIn(2) ? 'x' : '9');
    }
    return std::string(values[below(values.size())]);
}

std::string Mutation::bytes(std::string_view text, std::size_t mostBytes) {
    std::vector<std::uint8_t> room(std::max(text.size(), mostBytes));
    std::copy(text.begin(), text.end(), room.begin());
    const std::size_t size = LLVMFuzzerMutate(room.data(), text.size(), room.size());
    return {room.begin(), room.begin() + static_cast<std::ptrdiff_t>(size)};
}

Mutation::Item Mutation::itemAt(const std::vector<std::string>& lines, std::size_t line) {
    std::size_t end = line;
    std::size_t depth = 0;
    for (; end < lines.size(); ++end) {
        depth += opens(lines[end]) ? 1 : 0;
        if (closes(lines[end])) {
            if (depth <= 1) {
                break;
            }
            --depth;
        }
        if (depth == 0) {
            break;
        }
    }
    return {line, std::min(end + 1, lines.size())};
}

void Mutation::change(std::vector<std::string>& lines, const std::vector<std::string>& others) {
    using std::ptrdiff_t;
    const auto at = [](std::vector<std::string>& all, std::size_t index) {
        return all.begin() + static_cast<ptrdiff_t>(index);
    };
    const auto fresh = [this] {
        constexpr std::array<std::string_view, 5> forms{"=", "=\"", "=\\", "{", "=TRUE"};
        const std::string_view form = forms[below(forms.size())];
        return key()
            .append(form)
            .append(form.size() < 3 && form != "{" ? value() : "")
            .append(form == "=\\" ? "\\" : "");
    };
    const std::size_t where = below(lines.size() + 1);
    if (where == lines.size()) {
        lines.push_back(oneIn(4) ? "}" : fresh());
        return;
    }
    const Item item = itemAt(lines, where);
    std::string& line = lines[where];
    const std::size_t equals = line.find('=');
    switch (below(12)) {
        case 0:
            lines.erase(at(lines, item.begin), at(lines, item.end));
            break;
        case 1: {  // The same once more, as the next entry of a list would stand there.
            std::vector<std::string> copy(at(lines, item.begin), at(lines, item.end));
            const std::size_t begin = nameBegin(copy.front());
            const std::size_t end = std::max(nameEnd(copy.front()), begin);
            const std::string name = copy.front().substr(begin, end - begin);
            const bool numbered = !name.empty() && name.size() < 6 &&
                                  name.find_first_not_of("0123456789") == std::string::npos;
            if (numbered) {
                copy.front().replace(begin, end - begin, std::to_string(std::stoi(name) + 1));
            } else if (oneIn(2)) {
                copy.front().replace(begin, end - begin, key());
            }
            lines.insert(at(lines, item.end), copy.begin(), copy.end());
            break;
        }
        case 2: {  // To another place.
            const std::vector<std::string> copy(at(lines, item.begin), at(lines, item.end));
            lines.erase(at(lines, item.begin), at(lines, item.end));
            lines.insert(at(lines, below(lines.size() + 1)), copy.begin(), copy.end());
            break;
        }
        case 3:
            if (!others.empty()) {
                const Item taken = itemAt(others, below(others.size()));
                const std::vector<std::string> copy(
                    others.begin() + static_cast<ptrdiff_t>(taken.begin),
                    others.begin() + static_cast<ptrdiff_t>(taken.end));
                if (oneIn(2)) {
                    lines.erase(at(lines, item.begin), at(lines, item.end));
                }
                lines.insert(at(lines, std::min(where, lines.size())), copy.begin(), copy.end());
                break;
            }
            [[fallthrough]];
        case 4: {
            const std::size_t begin = nameBegin(line);
            line.replace(begin, std::max(nameEnd(line), begin) - begin, key());
            break;
        }
        case 5: {  // Around it.
            const std::size_t depth = oneIn(16) ? 120 + below(12) : 1 + below(3);
            const std::string name = key();
            lines.insert(at(lines, item.end), depth, "}");
            lines.insert(at(lines, item.begin), depth, name + "{");
            break;
        }
        case 6:
            lines.insert(at(lines, where), fresh());
            break;
        case 7:  // Another type, the value stays.
            if (equals != std::string::npos) {
                const bool marked = line.find_first_of("\"\\", equals) == equals + 1;
                constexpr std::array<std::string_view, 3> marks{"=", "=\"", "=\\"};
                line.replace(equals, marked ? 2 : 1, marks[below(marks.size())]);
                break;
            }
            [[fallthrough]];
        case 8:
            if (equals != std::string::npos) {
                line = line.substr(0, equals + 1) + bytes(line.substr(equals + 1), 600);
                break;
            }
            [[fallthrough]];
        default:
            if (equals != std::string::npos) {
                const bool text = line.compare(equals, 2, "=\"") == 0;
                line.resize(equals + (text ? 2 : 1));
                line += value();
            } else {
                lines.insert(at(lines, where), fresh());
            }
    }
}

std::string Mutation::body(std::string_view text, std::string_view other, std::size_t mostBytes) {
    if (oneIn(12)) {
        return bytes(text, mostBytes);
    }
    std::vector<std::string> lines = linesOf(text);
    const std::vector<std::string> others = linesOf(other);
    for (std::size_t changes = 1 + below(oneIn(4) ? 8 : 2); changes > 0; --changes) {
        change(lines, others);
    }
    std::string result;
    for (const std::string& line : lines) {
        result += line;
        result += '\n';
    }
    return result.size() <= mostBytes ? result : bytes(text, mostBytes);
}

std::size_t putInput(std::string_view input, std::uint8_t* data, std::size_t mostBytes) {
    const std::size_t size = std::min(input.size(), mostBytes);
    std::copy_n(input.begin(), size, data);
    return size;
}
