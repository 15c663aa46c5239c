#include <CLI/CLI.hpp>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <platen/pia.h>
#include <platen/utcore.h>
#include "tools/platen/arguments/arguments.h"
#include "tools/platen/commands/list.h"
#include "tools/platen/files/selection.h"
#include "tools/platen/files/source.h"

namespace cli::commands {
namespace {

constexpr const char* help =
    R"(A PATH is the names from the outermost block on, joined by "/". When several items
have the name, a type picks one: ":str", ":num", ":bool", ":bin" or ":block" at the end.

Examples:
  platen get pens.ctb                           the whole body text
  platen get pens.ctb plot_style/0/name         one value
  platen get pens.ctb plot_style/0              the lines of one block
  platen get pens.ctb plot_style/0 --json       the block as a JSON body that can be read again
  platen get pens.ctb description:str scale_factor:num)";

struct GetOptions {
    std::string file;
    std::vector<std::string> paths;
    bool json = false;
    std::uint64_t maxBody = files::usualMaxBody;
};

std::wstring valueText(const PiaItem& item) {
    switch (item.type) {
        case PiaItemType::Bool:
            return static_cast<const PiaBool&>(item).value ? L"TRUE" : L"FALSE";
        case PiaItemType::Block:
            return {};
        default:
            return static_cast<const PiaTextItem&>(item).value;
    }
}

std::unique_ptr<PiaItem> copyValue(const PiaItem& item) {
    switch (item.type) {
        case PiaItemType::Bool:
            return std::make_unique<PiaBool>(item.name, static_cast<const PiaBool&>(item).value);
        case PiaItemType::Str:
            return std::make_unique<PiaStr>(item.name, valueText(item));
        case PiaItemType::Num:
            return std::make_unique<PiaNum>(item.name, valueText(item));
        case PiaItemType::Bin:
            return std::make_unique<PiaBin>(item.name, valueText(item));
        case PiaItemType::Block:
            break;
    }
    return nullptr;
}

ExitCode printJson(const GetOptions& options, const PiaBlock& data, const Console& console) {
    std::string text;
    PiaReport report;
    if (!piaWriteJson(data, text, report)) {
        return fail(console, options.file, report);
    }
    writeData(console, text);
    if (!text.ends_with('\n')) {
        console.out << '\n';
    }
    return warn(console, options.file, report);
}

ExitCode printItem(const GetOptions& options, const PiaItem& item, const Console& console) {
    if (item.type == PiaItemType::Block) {
        const auto& block = static_cast<const PiaBlock&>(item);
        if (options.json) {
            return printJson(options, block, console);
        }
        writeData(console, piaBodyText(block));
        return ExitCode::Ok;
    }
    if (options.json) {
        PiaBlock data{L""};
        std::unique_ptr<PiaItem> copy = copyValue(item);
        if (data.addItem(copy.get())) {
            static_cast<void>(copy.release());
        }
        return printJson(options, data, console);
    }
    writeData(console, ut::encodeUtf8(valueText(item)) + '\n');
    return ExitCode::Ok;
}

ExitCode printPath(const GetOptions& options, PiaBlock& root, const std::string& path,
                   const Console& console) {
    const std::string subject = options.file + ": " + path;
    const std::vector<const PiaItem*> found = piaFindItems(root, ut::decodePath(path));
    if (found.empty()) {
        fail(console, subject, "there is no such item; platen get without a path shows them all");
        return ExitCode::Difference;
    }
    const ExitCode printed = printItem(options, *found.front(), console);
    if (found.size() == 1) {
        return printed;
    }
    std::string reason = "several items have this name and the first was printed; add a type:";
    for (const PiaItem* item : found) {
        reason += ' ' + ut::encodeUtf8(piaTypeSuffix(item->type));
    }
    return worse(printed, warn(console, subject, reason));
}

/// Prints items of the raw tree.
ExitCode run(const GetOptions& options, const Console& console) {
    PiaInput input;
    std::string bytes;
    const PiaReadOptions reading = platen::readingUpTo(options.maxBody);
    const bool isStandard = options.file == files::standardStream;
    if (isStandard && !files::readStandardInput(bytes, options.maxBody, console)) {
        return ExitCode::Error;
    }
    if (!(isStandard ? input.openBytes(bytes, reading)
                     : input.open(ut::decodePath(options.file).c_str(), reading))) {
        return fail(console, options.file, input.report());
    }
    ExitCode worst = warn(console, options.file, input.report());
    if (options.paths.empty()) {
        return worse(worst, printItem(options, *input.root(), console));
    }
    for (const std::string& path : options.paths) {
        worst = worse(worst, printPath(options, *input.root(), path, console));
    }
    return worst;
}

}  // namespace

CommandEntry addGet(CLI::App& program) {
    CLI::App* command =
        arguments::addCommand(program, "get", "Print items of a file as they are stored", help);
    const auto options = std::make_shared<GetOptions>();
    arguments::takeText(command->add_option("FILE", options->file, "File; -: standard input"))
        ->required();
    arguments::takeText(
        command->add_option("PATH", options->paths, "Items; all of them when left out"));
    command->add_flag("--json", options->json, "Print JSON bodies");
    arguments::addMaxBody(command, options->maxBody);
    return entryOf(command, options, run);
}

}  // namespace cli::commands
