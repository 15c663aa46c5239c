#include <cstddef>
#include <cstdint>
#include <string>

#include "pia.h"
#include "tools/platen/commands.h"
#include "tools/platen/json_lines.h"
#include "tools/platen/recognise.h"
#include "tools/platen/table_text.h"
#include "utcore.h"

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
    } else {
        out << "  holds          " << topLevelNames(*input.root()) << '\n';
    }
}

ExitCode infoOf(const std::string& file, bool json, const Console& console) {
    PiaInput input;
    if (!input.open(ut::decodePath(file).c_str())) {
        return fail(console, file, input.report());
    }
    const Content content = recognise(input);
    if (json) {
        console.out << infoLine(file, input.container(), content) << '\n';
    } else {
        describeFile(file, input, content, console.out);
    }
    const ExitCode warned = warn(console, file, input.report());
    if (content.rejected) {
        return fail(console, file, input.report());
    }
    return warned;
}

}  // namespace

ExitCode info(const InfoOptions& options, const Console& console) {
    ExitCode worst = ExitCode::Ok;
    for (const std::string& file : options.files) {
        worst = worse(worst, infoOf(file, options.json, console));
    }
    return worst;
}

}  // namespace platen
