#include <algorithm>

#include <platen/print.h>
#include <platen/utcore.h>
#include "tools/platen/arguments/suggest.h"
#include "tools/platen/printers/printer_names.h"

namespace cli::printers {

bool sameNoCase(const std::wstring& left, const std::wstring& right) {
    return CompareStringOrdinal(left.c_str(), -1, right.c_str(), -1, TRUE) == CSTR_EQUAL;
}

std::vector<std::wstring> printerNames() {
    OdArray<OdString> found;
    wut::getSystemPrinters(found);
    std::vector<std::wstring> names;
    for (const OdString& name : found) {
        // A printer that is local and shared is reported twice.
        if (std::find(names.begin(), names.end(), name.text()) == names.end()) {
            names.push_back(name.text());
        }
    }
    return names;
}

bool findPrinter(const std::string& printer, std::wstring& name, const Console& console) {
    if (!ut::decodeUtf8(printer, name)) {
        fail(console, printer, "the name of a printer must be UTF-8");
        return false;
    }
    if (CPrnHelper(name.c_str()).isValid()) {
        return true;
    }
    const std::vector<std::wstring> names = printerNames();
    fail(console, printer,
         names.empty() ? "there is no such printer; none is installed"
                       : "there is no such printer" +
                             arguments::suggestion(name, names, "platen printers lists them"));
    return false;
}

}  // namespace cli::printers
