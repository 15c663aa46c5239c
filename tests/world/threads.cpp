#include <algorithm>
#include <atomic>
#include <exception>
#include <functional>
#include <iostream>
#include <mutex>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <platen/compare.h>
#include <platen/edit_files.h>
#include <platen/inspect.h>
#include <platen/log.h>
#include <platen/plotcfg.h>
#include <platen/utcore.h>
#include "tests/support/files.h"
#include "tests/support/random_documents.h"
#include "tests/world/world.h"
#include "tools/platen/command.h"

namespace world {
namespace {

/// A document of this thread's own, from the first byte to the last.
void ownDocument(RandomDocuments& documents, const fs::path& folder, unsigned thread) {
    const std::unique_ptr<PiaBlock> made =
        documents.make(randomKinds[documents.below(std::size(randomKinds))]);
    const fs::path path = folder / ("own-" + std::to_string(thread));
    const auto store = [&](const PiaBlock& root) {
        require(static_cast<bool>(platen::writeFile(root, platen::FileForm::Compressed,
                                                    PiaKind::Pc3, path.wstring())),
                "a document cannot be written");
    };
    store(*made);
    platen::SourceFile source;
    require(source.read(path.wstring()), "what was written is not read");
    const std::unique_ptr<PiaBlock> changed = copyOfTree(*source.input().root());
    documents.change(*changed, L"new");
    static_cast<void>(platen::describe(platen::compare(*source.input().root(), *changed)));
    require(static_cast<bool>(source.write(path.wstring(), *changed)), "it cannot be written back");
    static_cast<void>(platen::check(path.wstring()));
}

/// A context of this thread's own.
void ownContext(const std::string& shared) {
    const Context context(platen_context_create());
    const Document document(platen_document_open(context.get(), shared.c_str()));
    const Document other(platen_document_create_table(context.get(), "stb", nullptr));
    require(document != nullptr && other != nullptr, platen_context_error(context.get()));
    require(platen_style_set(document.get(), "1-9", "lineweight=0.35") != 0 &&
                platen_style_set(document.get(), "nobody", "lineweight=0.35") == 0,
            "a change went as it should not");
    const Buffer chart(platen_chart(document.get(), "svg", nullptr));
    const Buffer csv(platen_table_csv(document.get()));
    const Buffer differences(platen_compare(document.get(), other.get()));
    const Buffer palette(platen_palette(context.get()));
    const Buffer devices(platen_devices(context.get()));
    require(chart && csv && differences && palette && devices, "something was not made");
}

/// What all threads share: settings, the log, registries.
void sharedThings(RandomDocuments& documents, unsigned thread) {
    ut::setSetting(L"WorldShared", std::to_wstring(thread));
    require(!ut::getSetting(L"WorldShared").empty(), "a setting is gone");
    static_cast<void>(ut::Config::regProduct());
    for (const BuiltInPlotDevice& device : BuiltInPlotDevice::s_cBuiltInPlotDevices) {
        require(BuiltInPlotDevice::getByName(device.name) != nullptr, "a device is gone");
    }
    const std::unique_ptr<CPlotCfg3> config(CPlotCfg3::create(BuiltInPlotDevice::pdfName));
    require(config != nullptr, "there is no configuration");
    PiaInput input;
    // Refused, which goes to the log.
    require(!input.openBytes("PIAFILEVERSION_2.0,ctbVER1," + std::to_string(documents.below(9))),
            "nonsense was read");
}

/// The command, with threads of its own.
void command(const fs::path& folder) {
    std::ostringstream out;
    std::ostringstream err;
    std::istringstream in;
    const int code = cli::run({"check", (folder / "tables").string(), "--recursive", "--jobs", "4"},
                              {out, err, in, false, false});
    require(code == 0 || code == 3, err.str());
}

}  // namespace

void threads(const Settings& settings) {
    const TemporaryFolder temporary;
    const fs::path folder = temporary.path("").parent_path();
    const std::string shared = (folder / "shared.ctb").string();
    fs::create_directory(folder / "tables");
    {
        const Context context(platen_context_create());
        const Document table(platen_document_create_table(context.get(), "ctb", nullptr));
        require(platen_document_save(table.get(), shared.c_str()) != 0, "no table is there");
        for (int number = 0; number < 12; ++number) {
            fs::copy_file(shared, folder / "tables" / (std::to_string(number) + ".ctb"));
        }
    }
    const unsigned count = std::max(4U, std::thread::hardware_concurrency());
    std::mutex mutex;
    std::exception_ptr fault;
    std::vector<std::thread> running;
    for (unsigned thread = 0; thread < count; ++thread) {
        running.emplace_back([&, thread] {
            try {
                RandomDocuments documents(settings.seed + thread);
                for (std::size_t round = 0; round < settings.rounds; ++round) {
                    ownDocument(documents, folder, thread);
                    ownContext(shared);
                    sharedThings(documents, thread);
                    if (round % 8 == 0) {
                        command(folder);
                    }
                }
            } catch (...) {
                const std::lock_guard lock(mutex);
                fault = std::current_exception();
            }
        });
    }
    for (std::thread& thread : running) {
        thread.join();
    }
    if (fault) {
        std::rethrow_exception(fault);
    }
    std::cout << "threads: " << count << " threads, " << settings.rounds
              << " rounds each of own documents, own contexts, what is shared, and the command\n";
}

}  // namespace world
