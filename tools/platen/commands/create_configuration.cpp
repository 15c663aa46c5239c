#include "tools/platen/commands/create_configuration.h"

#include <wx/log.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <platen/plotcfg.h>
#include <platen/pmp.h>
#include <platen/utcore.h>
#include "tools/platen/arguments/device_papers.h"
#include "tools/platen/arguments/suggest.h"
#include "tools/platen/printers/installed_printers.h"
#include "tools/platen/printers/printer_names.h"

namespace platen {
namespace {

ExitCode refuse(const CreateOptions& options, const std::string& reason, const Console& console) {
    return fail(console, options.out, "nothing was written: " + reason);
}

std::vector<std::wstring> deviceNames() {
    std::vector<std::wstring> names;
    for (const BuiltInPlotDevice& device : BuiltInPlotDevice::s_cBuiltInPlotDevices) {
        names.push_back(device.name.text());
    }
    return names;
}

/// Null when there is no such device. Built-in devices get the name that their table has.
std::unique_ptr<CPlotCfg3> configurationFor(const std::wstring& device) {
    const BuiltInPlotDevice* builtIn = BuiltInPlotDevice::getByName(OdString(device));
    // The library logs what the caller says in more words.
    const wxLogNull quiet;
    return std::unique_ptr<CPlotCfg3>(
        CPlotCfg3::create(builtIn != nullptr ? builtIn->name.c_str() : device.c_str()));
}

ExitCode choosePaper(const CreateOptions& options, const std::wstring& paper, CPlotCfg3& config,
                     const Console& console) {
    if (config.builtInDevice() == nullptr) {
        return refuse(options, "--paper chooses among the papers of built-in devices; leave it out",
                      console);
    }
    const bool pdf = CPlotCfg3::isBuiltInPDF(&config);
    const PaperTable papers = tableOf(pdf ? DevicePapers::Pdf : DevicePapers::Image);
    const std::optional<std::size_t> index = indexOf(papers, paper);
    if (!index) {
        return refuse(options,
                      "the device has no paper \"" + options.paper + '"' +
                          suggestion(paper, displayNames(papers),
                                     std::string("platen papers --device ") +
                                         (pdf ? "pdf" : "image") + " lists them"),
                      console);
    }
    bool changed = false;
    config.setPaperSize(*index, pdf, changed);
    return ExitCode::Ok;
}

/// Null after a message.
std::unique_ptr<CPlotCfg3> ofDevice(const CreateOptions& options, const Console& console) {
    std::wstring device;
    if (!ut::decodeUtf8(options.device, device)) {
        refuse(options, "the name of the device must be UTF-8", console);
        return nullptr;
    }
    std::unique_ptr<CPlotCfg3> config = configurationFor(device);
    if (!config) {
        refuse(options,
               "there is no device \"" + options.device + '"' + suggestion(device, deviceNames()),
               console);
    }
    return config;
}

/// Likewise.
std::unique_ptr<CPlotCfg3> ofPrinter(const CreateOptions& options, const Console& console) {
    std::wstring printer;
    if (const std::string fault = printersFault(); !fault.empty()) {
        refuse(options, "--printer cannot be used: " + fault, console);
        return nullptr;
    }
    if (!ut::decodeUtf8(options.printer, printer)) {
        refuse(options, "the name of the printer must be UTF-8", console);
        return nullptr;
    }
    if (!askPrinter(printer)) {
        refuse(
            options,
            "there is no printer \"" + options.printer + '"' + suggestion(printer, printerNames()),
            console);
        return nullptr;
    }
    std::unique_ptr<CPlotCfg3> config = configurationOf(printer);
    if (!config) {
        refuse(options,
               "the printer's settings cannot be taken; print a test page to see whether "
               "its driver works",
               console);
    }
    return config;
}

}  // namespace

ExitCode makeConfiguration(const CreateOptions& options, PiaBlock& root, const Console& console) {
    std::wstring paper;
    if (!ut::decodeUtf8(options.paper, paper)) {
        return refuse(options, "the name of the paper must be UTF-8", console);
    }
    const std::unique_ptr<CPlotCfg3> config =
        options.printer.empty() ? ofDevice(options, console) : ofPrinter(options, console);
    if (!config) {
        return ExitCode::Error;
    }
    if (!paper.empty() && choosePaper(options, paper, *config, console) != ExitCode::Ok) {
        return ExitCode::Error;
    }
    if (!config->writeToBlock(root)) {
        return refuse(options, "the configuration cannot be written", console);
    }
    return ExitCode::Ok;
}

ExitCode makeParameters(const CreateOptions& options, PiaBlock& root, const Console& console) {
    PiaInput input;
    bool printerChanged = false;
    std::unique_ptr<CPlotCfg3> config;
    if (input.open(ut::decodePath(options.from).c_str())) {
        config = CPlotCfg3::fromInput(input, printerChanged);
    }
    if (!config) {
        fail(console, options.from, input.report());
        return refuse(options, "the parameters need a sound configuration", console);
    }
    const ExitCode read = warn(console, options.from, input.report());
    const std::unique_ptr<PlotModelParam> parameters(PlotModelParam::create(config->meta));
    return parameters->writeToBlock(root)
               ? read
               : refuse(options, "the parameters cannot be written", console);
}

}  // namespace platen
