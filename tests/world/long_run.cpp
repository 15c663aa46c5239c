#include <algorithm>
#include <array>
#include <iostream>
#include <string>

#include <platen/compare.h>
#include <platen/edit_apply.h>
#include <platen/edit_files.h>
#include <platen/inspect.h>
#include "tests/support/random_documents.h"
#include "tests/world/world.h"

namespace world {
namespace {

ut::ByteBuffer written(const PiaBlock& root, platen::FileForm form) {
    ut::ByteBuffer bytes;
    require(static_cast<bool>(platen::encodeFile(root, form, PiaKind::Pc3, bytes)),
            "a document cannot be written");
    return bytes;
}

// Tables of all colours take as long as all others together.
RandomKind anyKind(RandomDocuments& documents) {
    return documents.oneIn(100)
               ? randomKinds[documents.below(std::size(randomKinds))]
               : std::array{RandomKind::Stb, RandomKind::Pc3, RandomKind::Pmp}[documents.below(3)];
}

/// Reads, edits, compares and writes one document, and looks whether what it was told is true.
void useDocument(RandomDocuments& documents, RandomKind kind, std::size_t& bytesWritten) {
    using platen::FileForm;
    constexpr FileForm forms[] = {FileForm::Compressed, FileForm::Json, FileForm::BodyText};
    const FileForm form = forms[documents.below(std::size(forms))];
    const std::unique_ptr<PiaBlock> made = documents.make(kind);
    platen::SourceFile before;
    require(before.readBytes(written(*made, form)), "what was written is not read");

    const std::unique_ptr<PiaBlock> changed = copyOfTree(*before.input().root());
    documents.change(*changed, L"new");
    platen::SourceFile after;
    ut::ByteBuffer bytes = written(*changed, form);
    bytesWritten += bytes.size();
    require(after.readBytes(std::move(bytes)), "what was edited is not read");
    const platen::Comparison comparison = platen::compare(before.input(), after.input());
    const std::unique_ptr<PiaBlock> applied = copyOfTree(*before.input().root());
    require(platen::applyChanges(*applied, comparison.differences).misfits == 0 &&
                platen::compare(*applied, *after.input().root()).equal(),
            "the differences do not lead from one document to the other");
    if (documents.oneIn(8)) {
        static_cast<void>(platen::checkBytes(after.bytes()));
    }
}

}  // namespace

void longRun(const Settings& settings) {
    RandomDocuments documents(settings.seed);
    // Less than this is what allocation and the size of a document vary by.
    constexpr std::size_t allowance = 4 << 20;
    const std::size_t tenth = std::max<std::size_t>(settings.rounds / 10, 1);
    Resources early;
    std::size_t most = 0;
    std::size_t bytesWritten = 0;
    // What the largest take is taken before anything is measured.
    for (const RandomKind kind : randomKinds) {
        useDocument(documents, kind, bytesWritten);
    }
    for (std::size_t round = 0; round < settings.rounds; ++round) {
        useDocument(documents, anyKind(documents), bytesWritten);
        if ((round + 1) % tenth != 0) {
            continue;
        }
        const Resources now = resourcesNow();
        if (round + 1 == tenth) {
            early = now;
        }
        most = std::max(most, now.residentBytes);
        require(now.heapBytes < early.heapBytes + settings.rounds / 2 + 65536 &&
                    now.residentBytes < early.residentBytes + allowance &&
                    now.handles <= early.handles,
                "memory grows: " + std::to_string(early.residentBytes) + " bytes after a tenth, " +
                    std::to_string(now.residentBytes) + " after " + std::to_string(round + 1) +
                    " documents");
        std::cerr << round + 1 << " documents, " << now.residentBytes / 1024 << " KB resident\n";
    }
    const Resources end = resourcesNow();
    std::cout << "long-run: " << settings.rounds
              << " documents read, edited, compared and written, " << bytesWritten / 1000000
              << " MB; resident " << early.residentBytes / 1024 << " KB after a tenth, "
              << end.residentBytes / 1024 << " KB at the end, " << most / 1024
              << " KB at most; heap " << early.heapBytes / 1024 << " and " << end.heapBytes / 1024
              << " KB\n";
}

}  // namespace world
