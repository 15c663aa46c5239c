#include "tools/platen/help/manual.h"

#include <algorithm>
#include <string_view>

namespace cli::help {
namespace {

/// The text as it stands, wherever it is in a line.
std::string escaped(std::string_view text) {
    std::string result;
    for (const char letter : text) {
        switch (letter) {
            case '\\':
                result += "\\e";
                break;
            case '-':
                result += "\\-";
                break;
            case '\'':
                result += "\\(aq";
                break;
            case '^':
                result += "\\(ha";
                break;
            case '~':
                result += "\\(ti";
                break;
            case '`':
                result += "\\(ga";
                break;
            default:
                result += letter;
        }
    }
    // Such a line would be a request.
    return result.starts_with('.') ? "\\&" + result : result;
}

std::string bold(std::string_view text) { return "\\fB" + escaped(text) + "\\fR"; }
std::string italic(std::string_view text) { return "\\fI" + escaped(text) + "\\fR"; }

std::vector<std::string_view> linesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        lines.push_back(line);
        text.remove_prefix(std::min(text.size(), line.size() + 1));
    }
    return lines;
}

/// Lines that are indented stand as they are, others flow. Empty lines part paragraphs.
std::string flowing(const std::vector<std::string_view>& lines) {
    std::string roff;
    bool literal = false;
    for (const std::string_view line : lines) {
        if (line.starts_with(' ') != literal) {
            literal = !literal;
            roff += literal ? ".RS 2\n.nf\n" : ".fi\n.RE\n";
        }
        if (line.empty()) {
            roff += roff.ends_with(".RE\n") ? "" : ".PP\n";
        } else {
            roff += escaped(line.substr(literal ? 2 : 0)) + '\n';
        }
    }
    return roff + (literal ? ".fi\n.RE\n" : "");
}

/// The text below the options, by where it goes.
struct Text {
    std::string description;
    std::string examples;
    std::string exitCodes;
};

Text sorted(std::string_view text) {
    using Lines = std::vector<std::string_view>;
    Lines description;
    Lines examples;
    Lines exitCodes;
    Lines* place = &description;
    for (const std::string_view line : linesOf(text)) {
        if (line == "Examples:") {
            place = &examples;
            continue;
        }
        if (line.starts_with("Exit codes: ")) {
            place = &exitCodes;
        } else if (line.empty() || (place == &examples && !line.starts_with(' '))) {
            place = &description;
        }
        if (!line.empty() || (!description.empty() && !description.back().empty())) {
            place->push_back(line);
        }
    }
    while (!description.empty() && description.back().empty()) {
        description.pop_back();
    }
    return {flowing(description), flowing(examples), flowing(exitCodes)};
}

std::string valueOf(const Option& option) {
    std::string value;
    for (const std::string& word : option.words) {
        value += (value.empty() ? "" : "|") + bold(word);
    }
    return value.empty() ? italic(option.value) : value;
}

std::string entryOf(const Option& option) {
    std::string head;
    for (const std::string& name : option.names) {
        head += (head.empty() ? "" : ", ") + bold(name);
    }
    if (option.names.empty()) {
        head = italic(option.value);
    }
    if (!option.value.empty() && !option.names.empty()) {
        head += ' ' + valueOf(option);
    }
    std::string purpose = escaped(option.purpose);
    if (option.names.empty() && !option.words.empty()) {
        purpose += ": " + valueOf(option);
    }
    return ".TP\n" + head + '\n' + purpose + (option.required ? " (needed)" : "") + '\n';
}

std::string entriesOf(const Command& command) {
    std::string roff;
    for (const std::vector<Option>* list : {&command.operands, &command.options}) {
        for (const Option& option : *list) {
            roff += entryOf(option);
        }
    }
    return roff;
}

/// "platen chart [OPTION...] IN"
std::string usageOf(const std::string& name, const Command& command) {
    std::string line = bold(name) + " [" + italic("OPTION") + "...]";
    for (const Option& option : command.options) {
        line += option.required ? ' ' + bold(option.names.back()) + ' ' + valueOf(option) : "";
    }
    for (const Option& operand : command.operands) {
        const std::string shown = italic(operand.value) + (operand.repeated ? "..." : "");
        line += operand.required ? ' ' + shown : " [" + shown + ']';
    }
    return line + '\n';
}

std::string actionsOf(const std::string& name, const Command& command) {
    std::string roff;
    for (const Command& action : command.commands) {
        roff += ".SS " + escaped(name + ' ' + action.name) + '\n' + escaped(action.purpose) +
                ".\n" + entriesOf(action);
    }
    return roff;
}

std::string sectionOf(const char* title, const std::string& text) {
    return text.empty() ? "" : std::string(".SH ") + title + '\n' + text;
}

std::string headOf(const std::string& page, std::string purpose) {
    purpose.resize(purpose.size() - (purpose.ends_with('.') ? 1 : 0));
    // No date, so that the same sources give the same pages. Neither even margins nor hyphens.
    return ".TH " + escaped(page) + " 1 \"\" \"platen " PLATEN_VERSION "\" \"User Commands\"\n" +
           ".ad l\n.nh\n.SH NAME\n" + escaped(page) + " \\- " + escaped(purpose) +
           "\n.SH SYNOPSIS\n";
}

Page pageOf(const std::string& program, const Command& command) {
    const std::string page = program + '-' + command.name;
    const std::string name = program + ' ' + command.name;
    const Text text = sorted(command.text);
    std::string roff = headOf(page, command.purpose);
    if (command.commands.empty()) {
        roff += usageOf(name, command);
    }
    for (const Command& action : command.commands) {
        roff += (&action == command.commands.data() ? "" : ".br\n") +
                usageOf(name + ' ' + action.name, action);
    }
    roff += sectionOf("DESCRIPTION", text.description);
    roff += command.commands.empty() ? sectionOf("OPTIONS", entriesOf(command))
                                     : sectionOf("ACTIONS", actionsOf(name, command));
    roff += sectionOf("EXAMPLES", text.examples) + sectionOf("EXIT STATUS", text.exitCodes);
    return {page + ".1",
            roff + sectionOf("SEE ALSO", bold(program) + (text.exitCodes.empty()
                                                              ? "(1), which has the exit codes\n"
                                                              : "(1)\n"))};
}

Page pageOf(const Command& program) {
    const Text text = sorted(program.text);
    std::string commands;
    for (const Command& command : program.commands) {
        commands += ".TP\n" + bold(program.name + '-' + command.name) + "(1)\n" +
                    escaped(command.purpose) + '\n';
    }
    return {program.name + ".1",
            headOf(program.name, program.purpose) + bold(program.name) + ' ' + italic("COMMAND") +
                " [" + italic("OPTION") + "...] [" + italic("OPERAND") + "...]\n" +
                sectionOf("DESCRIPTION", text.description) + sectionOf("COMMANDS", commands) +
                sectionOf("OPTIONS", entriesOf(program)) + sectionOf("EXAMPLES", text.examples) +
                sectionOf("EXIT STATUS", text.exitCodes)};
}

}  // namespace

std::vector<Page> manualOf(const Command& program) {
    std::vector<Page> pages{pageOf(program)};
    for (const Command& command : program.commands) {
        pages.push_back(pageOf(program.name, command));
    }
    return pages;
}

}  // namespace cli::help
