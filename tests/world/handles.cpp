#include <algorithm>
#include <functional>
#include <iostream>
#include <string>
#include <vector>

#include "tests/support/files.h"
#include "tests/world/world.h"

namespace world {
namespace {

/// Opens and closes handles, of which it says how many are of the type that it is about.
struct Opening {
    const char* type;
    std::function<void()> openAndClose;
};

Document opened(const Context& context, const std::string& file) {
    Document document(platen_document_open(context.get(), file.c_str()));
    require(document != nullptr, platen_context_error(context.get()));
    return document;
}

}  // namespace

void handles(const Settings& settings) {
    const TemporaryFolder temporary;
    const std::string table = temporary.path("table.ctb").string();
    const std::string plan = temporary.path("plan.pc3").string();
    const std::string torn = temporary.path("torn.ctb").string();
    const Context owner(platen_context_create());
    {
        const Document document(platen_document_create_table(owner.get(), "stb", nullptr));
        require(platen_document_save(document.get(), table.c_str()) != 0, "no table is there");
        const Document config(platen_document_create_configuration(owner.get(), "Print As PDF"));
        require(platen_document_save(config.get(), plan.c_str()) != 0, "no configuration is there");
        const Papers papers(platen_papers_open(owner.get(), plan.c_str()));
        require(platen_papers_add(papers.get(), "Roll", 900, 2000, nullptr, "mm") != 0 &&
                    Buffer(platen_papers_save(papers.get())) != nullptr,
                platen_context_error(owner.get()));
        const std::string bytes = readBytes(table);
        writeBytes(torn, std::string_view(bytes).substr(0, bytes.size() / 2));
    }
    const Document known = opened(owner, table);
    const std::vector<Opening> openings{
        {"context", [] { require(Context(platen_context_create()) != nullptr, "no context"); }},
        {"document", [&] { opened(owner, table); }},
        {"document that a failure refuses",
         [&] {
             require(platen_document_open(owner.get(), torn.c_str()) == nullptr, "it was read");
         }},
        {"document and its context",
         [&] {
             Context context(platen_context_create());
             const Document document = opened(context, table);
             context.reset();
         }},
        {"document that is changed and saved",
         [&, number = 0]() mutable {
             const Document document = opened(owner, table);
             require(platen_document_set(document.get(), "description",
                                         number++ % 2 == 0 ? "one" : "two") != 0,
                     platen_context_error(owner.get()));
             // Most do not wait for the disk.
             require(number % 64 != 0 || platen_document_save(document.get(), nullptr) != 0,
                     platen_context_error(owner.get()));
         }},
        {"papers",
         [&] {
             const Papers papers(platen_papers_open(owner.get(), plan.c_str()));
             require(papers != nullptr, platen_context_error(owner.get()));
         }},
        {"buffer",
         [&] { require(!textOf(Buffer(platen_document_bytes(known.get()))).empty(), "no bytes"); }},
    };
    std::cout << "handles: " << settings.rounds << " of each type opened and closed";
    for (const Opening& opening : openings) {
        const std::size_t warmUp = std::max<std::size_t>(settings.rounds / 10, 20);
        for (std::size_t round = 0; round < warmUp; ++round) {
            opening.openAndClose();
        }
        const Resources before = resourcesNow();
        for (std::size_t round = 0; round < settings.rounds; ++round) {
            opening.openAndClose();
        }
        const Resources after = resourcesNow();
        const auto growth = static_cast<std::ptrdiff_t>(after.heapBytes - before.heapBytes);
        // A byte a handle would be more than that in many rounds.
        require(growth < static_cast<std::ptrdiff_t>(settings.rounds / 2 + 1024) &&
                    after.handles <= before.handles,
                std::string(opening.type) + ": " + std::to_string(growth) + " bytes and " +
                    std::to_string(static_cast<std::ptrdiff_t>(after.handles - before.handles)) +
                    " handles of the system are not given back");
        std::cout << "; " << opening.type << ": " << growth << " bytes more";
    }
    std::cout << '\n';
}

}  // namespace world
