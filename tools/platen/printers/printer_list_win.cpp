#include <cstddef>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include <platen/print.h>
#include <platen/utcore.h>
#include "tools/platen/printers/printer_names.h"
#include "tools/platen/printers/printing.h"
#include "tools/platen/words/columns.h"

namespace cli::printers {
namespace {

struct ShownPrinter {
    std::wstring name;
    std::wstring driver;
    std::wstring port;
    std::wstring comment;
    bool isDefault = false;
    std::size_t papers = 0;
};

/// False when the printer cannot be asked any more.
bool ask(const std::wstring& name, const std::wstring& defaultName, ShownPrinter& printer) {
    printer.name = name;
    printer.isDefault = sameNoCase(name, defaultName);
    CPrnHelper helper(name.c_str());
    if (!helper.isValid()) {
        return false;
    }
    helper.getPrinterDriver(printer.driver);
    helper.getPorts(printer.port);
    printer.comment = wut::getPrinterComment(helper.handle()).text();
    printer.papers = helper.paperCount();
    return true;
}

std::string lineOf(const ShownPrinter& printer) {
    nlohmann::ordered_json json;
    json["schema"] = "platen.printers/1";
    json["name"] = ut::encodeUtf8(printer.name);
    json["driver"] = ut::encodeUtf8(printer.driver);
    json["port"] = ut::encodeUtf8(printer.port);
    json["comment"] = ut::encodeUtf8(printer.comment);
    json["default"] = printer.isDefault;
    json["papers"] = printer.papers;
    return json.dump();
}

std::vector<std::string> rowOf(const ShownPrinter& printer) {
    return {ut::encodeUtf8(printer.name),   printer.isDefault ? "yes" : "",
            ut::encodeUtf8(printer.driver), ut::encodeUtf8(printer.port),
            std::to_string(printer.papers), ut::encodeUtf8(printer.comment)};
}

}  // namespace

ExitCode listPrinters(bool json, const Console& console) {
    const std::wstring defaultName = wut::getDefaultSystemPrinter(false).text();
    std::vector<std::vector<std::string>> rows{
        {"printer", "default", "driver", "port", "papers", "comment"}};
    ExitCode code = ExitCode::Ok;
    for (const std::wstring& name : printerNames()) {
        ShownPrinter printer;
        if (!ask(name, defaultName, printer)) {
            code = warn(console, ut::encodeUtf8(name),
                        "the printer is listed but cannot be opened; see whether it was removed");
        }
        if (json) {
            console.out << lineOf(printer) << '\n';
        } else {
            rows.push_back(rowOf(printer));
        }
    }
    if (!json && rows.size() > 1) {
        words::printColumns(rows, console);
    } else if (!json) {
        console.out << "no printer is installed\n";
    }
    return code;
}

}  // namespace cli::printers
