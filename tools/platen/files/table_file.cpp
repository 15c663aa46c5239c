#include "tools/platen/files/table_file.h"

#include <memory>
#include <utility>

#include <platen/pia.h>
#include "tools/platen/arguments/suggest.h"
#include "tools/platen/files/source.h"

namespace cli::files {

std::string reasonOf(const platen::EditResult& done) {
    if (done) {
        return {};
    }
    return done->present.empty()
               ? done->reason
               : done->reason + arguments::suggestion(done->wanted, done->present,
                                                      "platen style list shows what is there");
}

ExitCode TableFile::open(const std::string& file, const Console& console) {
    if (!readSource(file, source, console)) {
        return ExitCode::Error;
    }
    const ExitCode read = warn(console, file, source.input().report());
    const platen::EditResult opened = editor.open();
    return opened ? read : fail(console, file, opened->reason);
}

ExitCode TableFile::make(bool byColour, const Console& console) {
    const std::unique_ptr<CPlotStyleTable> fresh(CPlotStyleTable::create(byColour, L""));
    PiaTree tree;
    ut::ByteBuffer bytes;
    const bool made = fresh->writeToBlock(tree.root()) &&
                      platen::encodeFile(tree.root(), platen::FileForm::Compressed,
                                         byColour ? PiaKind::Ctb : PiaKind::Stb, bytes) &&
                      source.readBytes(std::move(bytes)) && editor.open();
    return made ? ExitCode::Ok : fail(console, "", "a fresh table cannot be made");
}

ExitCode TableFile::store(const std::string& file, const Destination& destination,
                          const Console& console) {
    PiaTree tree;
    if (!editor.writeTo(tree.root())) {
        return fail(console, file, "the table cannot be written");
    }
    return storeChanged(file, destination, source, tree.root(), editor.changed(), console);
}

}  // namespace cli::files
