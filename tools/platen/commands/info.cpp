#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <platen/pia.h>
#include <platen/utcore.h>
#include "tools/platen/commands.h"
#include "tools/platen/files/source.h"
#include "tools/platen/json_lines.h"
#include "tools/platen/lost_items.h"
#include "tools/platen/recognise.h"
#include "tools/platen/words/config_text.h"
#include "tools/platen/words/parameters_text.h"
#include "tools/platen/words/table_text.h"

namespace platen {
namespace {

std::string containerInWords(const PiaContainer& container) {
    constexpr std::uint64_t percent = 100;
    const std::string encoding =
        container.encoding == PiaEncoding::Utf8 ? "UTF-8" : "ANSI (" + ut::ansiCodePage() + ")";
    const std::string body = std::to_string(container.bodyBytes) + " bytes of text, " + encoding;
    if (container.version != 2) {
        return "version 3 (JSON), " + body;
    }
    std::string words = "version 2, header ";
    words += container.kind ? headerLetters(*container.kind) : "unknown";
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

void describeFile(const std::string& file, const PiaInput& input, const Content& content,
                  std::ostream& out) {
    out << printable(file) << ": " << kindName(content.kind) << '\n'
        << "  container      " << containerInWords(input.container()) << '\n';
    if (content.table) {
        describeTable(*content.table, content.kind, out);
    } else if (content.config) {
        describeConfig(content, out);
    } else if (content.parameters) {
        describeParameters(*content.parameters, out);
    } else {
        out << "  holds          " << topLevelNames(*input.root()) << '\n';
    }
}

std::vector<LostItem> lostOf(const PiaInput& input, const Content& content) {
    if (content.config) {
        return lostItems(*input.root(), *content.config, input.report());
    }
    return content.parameters ? lostItems(*input.root(), *content.parameters, input.report())
                              : std::vector<LostItem>();
}

ExitCode warnOfLost(const std::string& file, const std::vector<LostItem>& lost,
                    const Console& console) {
    constexpr std::size_t shown = 20;
    for (std::size_t index = 0; index < std::min(lost.size(), shown); ++index) {
        const std::string path = ut::encodeUtf8(lost[index].path);
        warn(console, file,
             lost[index].reason == LostItem::Reason::NotCarried
                 ? path + " is no part of the document; a program that writes the document drops it"
                 : path + " does not convert and the usual value is taken");
    }
    if (lost.size() > shown) {
        warn(console, file, std::to_string(lost.size() - shown) + " more such items");
    }
    return lost.empty() ? ExitCode::Ok : ExitCode::Warnings;
}

/// Of the PMP that a configuration names.
ExitCode warnOfPmp(const std::string& file, const Content& content, const Console& console) {
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
    const PiaReadOptions reading = readingUpTo(options.maxBody);
    PiaInput input;
    if (!input.open(path.c_str(), reading)) {
        return fail(console, file, input.report());
    }
    const Content content = readContent(input, path, reading);
    if (options.json) {
        console.out << infoLine(file, input.container(), content) << '\n';
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

}  // namespace

ExitCode info(const InfoOptions& options, const Console& console) {
    ExitCode worst = ExitCode::Ok;
    for (const std::string& file : options.files) {
        worst = worse(worst, infoOf(file, options, console));
    }
    return worst;
}

}  // namespace platen
