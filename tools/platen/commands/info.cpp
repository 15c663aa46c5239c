#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <platen/inspect.h>
#include <platen/pia.h>
#include <platen/utcore.h>
#include "tools/platen/arguments/arguments.h"
#include "tools/platen/commands/list.h"
#include "tools/platen/files/batch.h"
#include "tools/platen/files/source.h"
#include "tools/platen/words/config_text.h"
#include "tools/platen/words/parameters_text.h"
#include "tools/platen/words/table_text.h"

namespace cli::commands {
namespace {

constexpr const char* help =
    R"(Examples:
  platen info pens.ctb                  a summary: container, settings, colours by equal styles
  platen info --json a.ctb b.stb        one JSON object a line, schema platen.info/1
  platen info -r plotters               every plotter file in a folder
  platen info plotter.pc3               device, paper, resolution, PMP, custom papers, properties
  platen info --json pens.ctb | python3 -m json.tool)";

struct InfoOptions {
    files::Selection selection;
    bool json = false;
    std::uint64_t maxBody = files::usualMaxBody;
};

std::string containerInWords(const PiaContainer& container) {
    constexpr std::uint64_t percent = 100;
    const std::string encoding =
        container.encoding == PiaEncoding::Utf8 ? "UTF-8" : "ANSI (" + ut::ansiCodePage() + ")";
    const std::string body = std::to_string(container.bodyBytes) + " bytes of text, " + encoding;
    if (container.version != 2) {
        return "version 3 (JSON), " + body;
    }
    std::string words = "version 2, header ";
    words += container.kind ? platen::headerLetters(*container.kind) : "unknown";
    words += ", " + body + ", compressed to " + std::to_string(container.compressedBytes);
    if (container.bodyBytes != 0) {
        const std::uint64_t ratio = container.compressedBytes * percent / container.bodyBytes;
        words += " (" + std::to_string(ratio) + " %)";
    }
    return words + (container.checksumHolds() ? ", checksum ok" : ", checksum mismatch");
}

std::string topLevelNames(const PiaBlock& root) {
    constexpr std::size_t shown = 20;
    std::string words;
    for (std::size_t index = 0; index < root.items.size() && index < shown; ++index) {
        words += (index == 0 ? "" : ", ") + ut::encodeUtf8(root.items[index]->name);
    }
    if (root.items.size() > shown) {
        words += " and " + std::to_string(root.items.size() - shown) + " more";
    }
    return words.empty() ? "nothing" : printable(words);
}

void describeFile(const std::string& file, const PiaInput& input, const platen::Content& content,
                  std::ostream& out) {
    out << printable(file) << ": " << platen::kindName(content.kind) << '\n'
        << "  container      " << containerInWords(input.container()) << '\n';
    if (content.table) {
        words::describeTable(*content.table, content.kind, out);
    } else if (content.config) {
        words::describeConfig(content, out);
    } else if (content.parameters) {
        words::describeParameters(*content.parameters, out);
    } else {
        out << "  holds          " << topLevelNames(*input.root()) << '\n';
    }
}

std::vector<platen::LostItem> lostOf(const PiaInput& input, const platen::Content& content) {
    if (content.config) {
        return platen::lostItems(*input.root(), *content.config, input.report());
    }
    return content.parameters
               ? platen::lostItems(*input.root(), *content.parameters, input.report())
               : std::vector<platen::LostItem>();
}

ExitCode warnOfLost(const std::string& file, const std::vector<platen::LostItem>& lost,
                    const Console& console) {
    constexpr std::size_t shown = 20;
    for (std::size_t index = 0; index < std::min(lost.size(), shown); ++index) {
        const std::string path = ut::encodeUtf8(lost[index].path);
        warn(console, file,
             lost[index].reason == platen::LostItem::Reason::NotCarried
                 ? path + " is no part of the document; a program that writes the document drops it"
                 : path + " does not convert and the usual value is taken");
    }
    if (lost.size() > shown) {
        warn(console, file, std::to_string(lost.size() - shown) + " more such items");
    }
    return lost.empty() ? ExitCode::Ok : ExitCode::Warnings;
}

/// Of the PMP that a configuration names.
ExitCode warnOfPmp(const std::string& file, const platen::Content& content,
                   const Console& console) {
    const PiaReport& report = content.pmpReport;
    if (content.pmpPath.empty()) {
        return report.failure()
                   ? warn(console, file, "the PMP is missing: " + report.failure()->describe())
                   : ExitCode::Ok;
    }
    const std::string pmp = ut::encodePath(content.pmpPath);
    const ExitCode warned = warn(console, pmp, report);
    return report.failure()
               ? warn(console, file, pmp + " cannot be used: " + report.failure()->describe())
               : warned;
}

ExitCode infoOf(const std::string& file, const InfoOptions& options, const Console& console) {
    const std::wstring path = ut::decodePath(file);
    const PiaReadOptions reading = platen::readingUpTo(options.maxBody);
    PiaInput input;
    std::string bytes;
    const bool isStandard = file == files::standardStream;
    if (isStandard && !files::readStandardInput(bytes, options.maxBody, console)) {
        return ExitCode::Error;
    }
    if (!(isStandard ? input.openBytes(bytes, reading) : input.open(path.c_str(), reading))) {
        return fail(console, file, input.report());
    }
    const platen::Content content =
        platen::readContent(input, isStandard ? std::wstring() : path, reading);
    if (options.json) {
        console.out << platen::infoJson(file, input.container(), content) << '\n';
    } else {
        describeFile(file, input, content, console.out);
    }
    ExitCode warned = warn(console, file, input.report());
    warned = worse(warned, warnOfPmp(file, content, console));
    warned = worse(warned, warnOfLost(file, lostOf(input, content), console));
    if (content.rejected) {
        return fail(console, file, input.report());
    }
    return warned;
}

/// Says what files are and hold.
ExitCode run(const InfoOptions& options, const Console& console) {
    return files::forEachSelected(
        options.selection, {.doing = "reading"}, console,
        [&](const std::string& file, const Console& own) { return infoOf(file, options, own); });
}

}  // namespace

CommandEntry addInfo(CLI::App& program) {
    CLI::App* command =
        arguments::addCommand(program, "info", "Say what files are and what they hold", help);
    const auto options = std::make_shared<InfoOptions>();
    files::addFiles(command, options->selection);
    command->add_flag("--json", options->json, "One JSON object a line");
    arguments::addMaxBody(command, options->maxBody);
    return entryOf(command, options, run);
}

}  // namespace cli::commands
