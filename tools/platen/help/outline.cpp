#include "tools/platen/help/outline.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <string_view>

namespace cli::help {
namespace {

/// The values that are names of files, by what the options' help calls them.
constexpr std::array<std::string_view, 14> filesAreCalled{
    "FILE", "IN",     "OUT",  "TABLE",  "A",       "B",      "PC3",
    "BASE", "THEIRS", "OURS", "BUNDLE", "CHANGES", "SOURCE", "DIR|FILE"};

/// "{svg,html}" as its words.
std::vector<std::string> wordsOf(std::string_view list) {
    std::vector<std::string> words;
    list = list.substr(1, list.size() - 2);
    while (!list.empty()) {
        words.emplace_back(list.substr(0, list.find(',')));
        list.remove_prefix(std::min(list.size(), words.back().size() + 1));
    }
    return words;
}

/// `type` is as the parser shows it: "OUT", "TEXT:{svg,html}", "N:FLOAT in [1 - 9]".
void setValue(Option& option, const std::string& name, std::string_view type) {
    const std::size_t colon = type.find(':');
    const std::string_view check = colon == std::string_view::npos ? "" : type.substr(colon + 1);
    option.value = option.names.empty() ? name : type.substr(0, colon);
    if (check.starts_with('{')) {
        option.words = wordsOf(check);
        option.values = Option::Values::Words;
    } else if (option.value == "DIR") {
        option.values = Option::Values::Folders;
    } else {
        const bool isFile = std::ranges::find(filesAreCalled, option.value) != filesAreCalled.end();
        option.values = isFile ? Option::Values::Files : Option::Values::Anything;
    }
}

Option outlineOf(const CLI::Option& option) {
    Option result;
    for (const std::string& name : option.get_snames()) {
        result.names.push_back('-' + name);
    }
    for (const std::string& name : option.get_lnames()) {
        result.names.push_back("--" + name);
    }
    result.purpose = option.get_description();
    result.required = option.get_required();
    if (option.get_items_expected_max() > 0) {
        result.repeated = option.get_items_expected_max() > 1;
        setValue(result, option.get_name(), option.get_type_name());
    }
    return result;
}

}  // namespace

Command outlineOf(const CLI::App& app) {
    Command result;
    result.name = app.get_name();
    result.purpose = app.get_description();
    result.text = app.get_footer();
    for (const CLI::Option* option : app.get_options()) {
        if (!option->get_group().empty()) {
            (option->get_positional() ? result.operands : result.options)
                .push_back(outlineOf(*option));
        }
    }
    for (const CLI::App* command : app.get_subcommands({})) {
        result.commands.push_back(outlineOf(*command));
    }
    return result;
}

}  // namespace cli::help
