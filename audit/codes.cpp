#include <array>
#include <cstddef>

#include <platen/audit.h>

namespace platen {
namespace {

struct CodeEntry {
    AuditCode code;
    const char* word;
    const char* title;
    const char* remedy;
};

constexpr std::array<CodeEntry, 20> entries{{
    {AuditCode::Unreadable, "unreadable", "File cannot be opened",
     "see who may read it, and whether the disk is sound; then audit again"},
    {AuditCode::Damaged, "damaged", "File is damaged",
     "see with platen check where; get the file again from its source, or save with platen repair "
     "what "
     "can be saved"},
    {AuditCode::PmpMissing, "pmp-missing", "PMP missing",
     "put the PMP back beside the configuration or into the folder PMP there; without it the "
     "custom "
     "papers and limits of the device are gone"},
    {AuditCode::PmpElsewhere, "pmp-elsewhere", "PMP in another folder than named",
     "see that it is the one that is meant, then have the configuration name it where it is"},
    {AuditCode::PrinterMissing, "printer-missing", "Printer missing",
     "install the printer, or move its configurations to another one with platen migrate"},
    {AuditCode::NameShadowed, "name-shadowed", "File hidden by another one",
     "programs take the file of the earlier folder and never see this one; platen diff shows how "
     "they differ, keep one of them"},
    {AuditCode::NameRepeated, "name-repeated", "File that is there twice",
     "the contents are the same today; delete one of them, so that no edit goes to the wrong one"},
    {AuditCode::PmpUnused, "pmp-unused", "PMP that nobody names",
     "delete it when no configuration elsewhere needs it"},
    {AuditCode::PaperUnused, "paper-unused", "Custom papers that nobody chooses",
     "page setups in drawings may still choose them; remove those that nobody needs with platen "
     "paper remove"},
    {AuditCode::TableUnused, "table-unused", "Table that no drawing names",
     "delete it when the list of drawings was complete"},
    {AuditCode::TableMissing, "table-missing", "Table missing",
     "put the table into one of the folders, or name another one in the drawings: without it they "
     "plot in the colours and line weights of their objects"},
    {AuditCode::PapersAlike, "papers-alike", "Papers of one size with several names",
     "decide on one name, and rename the others with platen paper rename: page setups find papers "
     "by their names"},
    {AuditCode::StandardDeviation, "standard-deviation", "Deviation from the standard",
     "take over what the standard has, or change the standard"},
    {AuditCode::StandardMissing, "standard-missing", "File of the standard missing",
     "copy the file from the standard"},
    {AuditCode::PensAlike, "pens-alike", "Pens that look alike on paper",
     "the device cannot show the difference; give the pens line weights that are further apart, or "
     "make them one"},
    {AuditCode::PrivateSettings, "private-settings", "Settings that only a driver knows",
     "these are lost when the driver is replaced, as third-party drivers are on Windows; note what "
     "the driver's own dialogs show, and set it again after the change"},
    {AuditCode::PrivateSize, "private-size", "Private settings of the wrong length",
     "drivers leave settings of the wrong length out; open the configuration with the driver and "
     "save it again"},
    {AuditCode::AbsolutePath, "absolute-path", "Path of this machine",
     "name a PMP by its file name alone, where it is beside the configuration or in the folder PMP "
     "there; set other paths again on the other machine"},
    {AuditCode::NetworkPrinter, "network-printer", "Printer of a server",
     "on another machine, or after the server is replaced, move the configurations with platen "
     "migrate"},
    {AuditCode::NameNotAscii, "name-not-ascii", "Names that depend on the code page",
     "machines with another code page read other characters; choose names of plain letters, digits "
     "and signs"},
}};

constexpr std::array codes = [] {
    std::array<AuditCode, entries.size()> all{};
    for (std::size_t place = 0; place < all.size(); ++place) {
        all[place] = entries[place].code;
    }
    return all;
}();

constexpr bool inOrder() {
    for (std::size_t place = 0; place < entries.size(); ++place) {
        if (static_cast<std::size_t>(entries[place].code) != place) {
            return false;
        }
    }
    return true;
}
static_assert(inOrder());

const CodeEntry& entryOf(AuditCode code) { return entries[static_cast<std::size_t>(code)]; }

}  // namespace

std::span<const AuditCode> auditCodes() { return codes; }
const char* auditCodeWord(AuditCode code) { return entryOf(code).word; }
const char* auditCodeTitle(AuditCode code) { return entryOf(code).title; }
const char* auditCodeRemedy(AuditCode code) { return entryOf(code).remedy; }

}  // namespace platen
