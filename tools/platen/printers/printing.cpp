#include <algorithm>
#include <string>
#include <string_view>

#include "tools/platen/commands.h"
#include "tools/platen/printers/printing.h"

namespace platen {
namespace {

/// Printers may have any name; files of other names are not taken for configurations.
bool namesConfiguration(std::string_view source) {
    constexpr std::string_view extension = ".pc3";
    return source.size() >= extension.size() &&
           std::equal(extension.begin(), extension.end(), source.end() - extension.size(),
                      [](char expected, char given) {
                          return given == expected ||
                                 (given >= 'A' && given <= 'Z' && given - 'A' + 'a' == expected);
                      });
}

}  // namespace

ExitCode printers(const PrintersOptions& options, const Console& console) {
    return listPrinters(options.json, console);
}

ExitCode devmode(const DevmodeOptions& options, const Console& console) {
    return namesConfiguration(options.source)
               ? showDevModeOfConfiguration(options.source, options.json, console)
               : showDevMode(options.source, options.json, console);
}

}  // namespace platen
