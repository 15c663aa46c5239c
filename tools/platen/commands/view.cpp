#include <CLI/CLI.hpp>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include <platen/utcore.h>
#include "tools/platen/arguments/arguments.h"
#include "tools/platen/commands/list.h"
#include "tools/platen/files/browser.h"
#include "tools/platen/files/source.h"

namespace cli::commands {
namespace {

constexpr const char* help =
    R"(The page runs in the browser, from disk and without a server; what it shows never leaves
this computer. It looks for nothing itself: name the PMP of a configuration, too. What is changed there
is saved from the page. The page with the files in it stays in the folder for temporary files.

platen.html is looked for where PLATEN_PAGE says, beside the program, and in ../share/platen.

Examples:
  platen view pens.ctb
  platen view office.pc3 office.pmp
  platen view pens.ctb -o pens.html      one file to give to others)";

constexpr std::uint64_t largestPage = 64U << 20U;
/// Where the page has a list of files, which is empty.
constexpr std::string_view placeOfFiles = R"(id="platen-files">[]<)";

struct ViewOptions {
    std::vector<std::string> files;
    std::string out;
};

std::string base64(std::string_view bytes) {
    constexpr std::string_view digits =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    constexpr std::size_t group = 3;
    constexpr unsigned int bits = 6;
    std::string text;
    for (std::size_t place = 0; place < bytes.size(); place += group) {
        std::uint32_t value = 0;
        for (std::size_t next = place; next < place + group; ++next) {
            value = (value << 8U) |
                    (next < bytes.size() ? static_cast<unsigned char>(bytes[next]) : 0U);
        }
        for (std::size_t digit = 0; digit <= group; ++digit) {
            text += place + digit > bytes.size()
                        ? '='
                        : digits[(value >> (bits * (group - digit))) % digits.size()];
        }
    }
    return text;
}

/// The page's text; empty when there is none.
std::string readPage() {
    std::vector<std::wstring> places{ut::getSetting(L"Page")};
    if (const std::wstring folder = files::folderOfProgram(); !folder.empty()) {
        places.push_back(folder + L"/platen.html");
        places.push_back(folder + L"/../share/platen/platen.html");
    }
    for (const std::wstring& place : places) {
        ut::ByteBuffer bytes;
        bool tooLarge = false;
        if (!place.empty() && !ut::readFile(place, largestPage, bytes, tooLarge) && !tooLarge) {
            return std::string(bytes.view());
        }
    }
    return {};
}

/// The files as the page takes them, such that no name ends the element that they stand in.
bool listFiles(const std::vector<std::string>& names, std::string& list, const Console& console) {
    nlohmann::ordered_json json = nlohmann::ordered_json::array();
    for (const std::string& name : names) {
        std::string bytes;
        if (!files::readBytes(name, bytes, files::usualMaxBody, console)) {
            return false;
        }
        json.push_back({{"name", ut::encodeUtf8(ut::fileNameOf(ut::decodePath(name)))},
                        {"base64", base64(bytes)}});
    }
    for (const char letter : json.dump(-1, ' ', true, decltype(json)::error_handler_t::replace)) {
        list += letter == '<' ? std::string("\\u003c") : std::string(1, letter);
    }
    return true;
}

ExitCode run(const ViewOptions& options, const Console& console) {
    const std::string page = readPage();
    const std::size_t place = page.find(placeOfFiles);
    if (place == std::string::npos) {
        return fail(console, "",
                    page.empty() ? "platen.html is not there; put it beside the program, or name "
                                   "it in the environment variable PLATEN_PAGE"
                                 : "platen.html is no page of this program; take the one that came "
                                   "with it");
    }
    std::string list;
    if (!listFiles(options.files, list, console)) {
        return ExitCode::Error;
    }
    const std::size_t before = place + placeOfFiles.find("[]");
    const std::array<std::string_view, 3> pieces{std::string_view(page).substr(0, before), list,
                                                 std::string_view(page).substr(before + 2)};

    std::wstring out = ut::decodePath(options.out);
    if (options.out.empty()) {
        const std::wstring folder = files::newTemporaryFolder();
        if (folder.empty()) {
            return fail(console, "", "there is no folder for temporary files; use -o");
        }
        out = folder + L"/platen.html";
    }
    const std::string written = ut::encodePath(out);
    if (const ut::SystemError error = ut::replaceFile(out, pieces)) {
        return fail(console, written, error.message());
    }
    if (options.out.empty() && !files::openInBrowser(out)) {
        return fail(console, written, "no program opens it; open it in a browser yourself");
    }
    return ExitCode::Ok;
}

}  // namespace

CommandEntry addView(CLI::App& program) {
    CLI::App* command = arguments::addCommand(
        program, "view", "Open the page in the browser with files in it", help);
    const auto options = std::make_shared<ViewOptions>();
    arguments::takeText(command->add_option("FILE", options->files, "Files to look at"))
        ->required();
    arguments::takeText(command->add_option("-o,--output", options->out,
                                            "HTML file to write instead of opening the browser"));
    return entryOf(command, options, run);
}

}  // namespace cli::commands
