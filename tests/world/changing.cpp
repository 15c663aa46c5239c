#include <atomic>
#include <fstream>
#include <iostream>
#include <random>
#include <string>
#include <thread>

#include <platen/edit_files.h>
#include <platen/pia.h>
#include "tests/support/files.h"
#include "tests/support/random_documents.h"
#include "tests/world/world.h"

namespace world {
namespace {

std::string randomFile(RandomDocuments& documents, RandomKind kind) {
    ut::ByteBuffer bytes;
    const std::unique_ptr<PiaBlock> root = documents.make(kind);
    require(static_cast<bool>(
                platen::encodeFile(*root, platen::FileForm::Compressed, PiaKind::Ctb, bytes)),
            "a document cannot be written");
    return std::string(bytes.view());
}

/// Writes as programs do that know no better: from the beginning, over what there is.
void writeInPlace(const fs::path& path, const std::string& bytes, std::mt19937& random) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t step = std::min<std::size_t>(bytes.size() - at, 1 + random() % 400);
        file.write(bytes.data() + at, static_cast<std::streamsize>(step)).flush();
        at += step;
        if (random() % 8 == 0) {
            std::this_thread::yield();
        }
    }
}

}  // namespace

void changing(const Settings& settings) {
    const TemporaryFolder temporary;
    const fs::path path = temporary.path("table.ctb");
    RandomDocuments documents(settings.seed);
    std::string bodies[2];
    std::string files[2];
    for (int each = 0; each < 2; ++each) {
        files[each] = randomFile(documents, RandomKind::Ctb);
        PiaInput input;
        require(input.openBytes(files[each]), "a document does not read back");
        bodies[each] = piaBodyText(*input.root());
    }
    writeBytes(path, files[0]);
    std::atomic<bool> stopped = false;
    std::thread writer([&] {
        std::mt19937 random(settings.seed);
        for (int round = 1; !stopped; ++round) {
            writeInPlace(path, files[round % 2], random);
            waitMicroseconds(random() % 3000);
        }
    });
    struct Stop {
        std::atomic<bool>& stopped;
        std::thread& thread;
        ~Stop() {
            stopped = true;
            thread.join();
        }
    } stop{stopped, writer};
    std::size_t whole = 0;
    std::size_t refused = 0;
    for (std::size_t round = 0; round < settings.rounds; ++round) {
        platen::SourceFile source;
        if (source.read(path.wstring(), {}, platen::SourceFile::Accept::OnlyFiles)) {
            const std::string body = piaBodyText(*source.input().root());
            require(body == bodies[0] || body == bodies[1], "two files were read as one");
            ++whole;
        } else {
            require(!source.input().report().failure().value_or(PiaFinding{}).describe().empty(),
                    "a file was refused without a word");
            ++refused;
            // The other one may not have a processor in the middle of writing.
            waitMicroseconds(round % 300);
        }
    }
    std::cout << "changing: " << settings.rounds << " reads of a file that is cut and rewritten, "
              << whole << " whole, " << refused << " refused with a reason, none mixed\n";
}

}  // namespace world
