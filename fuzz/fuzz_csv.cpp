// A table's body and, behind a line "----", a CSV text. "@" and pairs of bytes in its place change
// single bytes of the CSV of the table itself: a place and what stands there then.
//
// Slow: a table is read three times, written four times and looked at as CSV twice.

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include <platen/edit.h>
#include "edit/csv.h"
#include "fuzz/counted_memory.h"
#include "fuzz/oracle.h"
#include "fuzz/sound_file.h"

namespace {

/// A table in an editor.
class Opened {
public:
    explicit Opened(std::string_view body) {
        ut::ByteBuffer bytes;
        bytes.reserve(body.size());
        std::copy(body.begin(), body.end(), bytes.data());
        bytes.setSize(body.size());
        opened_ = file_.readBytes(std::move(bytes)) && editor.open();
    }
    explicit operator bool() const { return opened_; }

    std::string before() const { return piaBodyText(*file_.input().root()); }
    /// Empty when it cannot be written.
    std::string written() {
        PiaTree tree;
        return editor.writeTo(tree.root()) ? piaBodyText(tree.root()) : std::string();
    }

private:
    platen::SourceFile file_;
    bool opened_ = false;

public:
    platen::TableEditor editor{file_};
};

/// Cells come back, whatever is in them, and no program takes one for a formula.
void requireCells(std::string_view text) {
    const std::string safe = platen::csv::defused(text);
    require(platen::csv::restored(safe) == text);
    std::string row;
    platen::csv::addRow({safe, std::string(text)}, row);
    platen::csv::Reader reader(row);
    std::vector<std::string> cells;
    if (reader.next(cells)) {
        require(cells == (std::vector{safe, std::string(text)}));
    } else {
        require(!ut::isUtf8(text) || text.find('\0') != std::string_view::npos ||
                text.size() > platen::csv::Reader::longestCell / 2);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const InputParts parts = partsOf({reinterpret_cast<const char*>(data), size});
    requireCells(parts.second);
    Opened table(parts.first);
    if (!table) {
        return 0;
    }
    std::string csv = platen::tableCsv(table.editor.table());
    const std::string before = table.before();
    const platen::EditResult own = table.editor.readCsv(csv);
    if (!own) {
        std::fprintf(stderr, "%s\n", own->reason.c_str());
    }
    require(static_cast<bool>(own));
    require(table.written() == before && !table.editor.changed());

    std::string hostile(parts.second);
    if (hostile.starts_with('@')) {
        for (std::size_t at = 1; at + 1 < hostile.size(); at += 2) {
            const auto place = static_cast<unsigned char>(hostile[at]) * std::size_t{257};
            csv[place % csv.size()] = hostile[at + 1];
        }
        hostile = csv;
    }
    bool done = false;
    {
        const BoundedMemory bounded(hostile.size() + parts.first.size(), 400, 4.0);
        done = static_cast<bool>(table.editor.readCsv(hostile));
    }
    const std::string after = table.written();
    if (!done) {
        require(after == before);
        return 0;
    }
    Opened again(after);
    if (again) {
        require(platen::tableCsv(again.editor.table()) == platen::tableCsv(table.editor.table()));
    }
    return 0;
}
