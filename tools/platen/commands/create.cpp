#include <CLI/CLI.hpp>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <platen/edit_table_presets.h>
#include <platen/pia.h>
#include <platen/plotcfg.h>
#include <platen/plotstyle.h>
#include <platen/pmp.h>
#include <platen/utcore.h>
#include "tools/platen/arguments/arguments.h"
#include "tools/platen/arguments/device_papers.h"
#include "tools/platen/arguments/suggest.h"
#include "tools/platen/commands/list.h"
#include "tools/platen/files/losses.h"
#include "tools/platen/files/output.h"
#include "tools/platen/printers/installed_printers.h"
#include "tools/platen/printers/printer_names.h"

namespace cli::commands {
namespace {

constexpr const char* help =
    R"text(OUT is replaced in one step when it exists; what is lost with the old file is a
warning. The first word decides what is made, not the name of OUT. Devices and papers are found
without regard to case.

Examples:
  platen create ctb -o pens.ctb                   a style for each of the 255 colours
  platen create ctb -o iso.ctb --preset iso-0.25  line widths of ISO 128 for colours 1 to 7
  platen create stb -o named.stb --description "Named pens"     one style, "Normal"
  platen create pc3 --device "Print As PDF" -o pdf.pc3
  platen create pc3 --device "Print As PNG" --paper "XGA (1024.00 x 768.00 Pixels)" -o png.pc3
  platen create pc3 --printer "Office" -o office.pc3     its defaults (Windows)
  platen create pmp --from pdf.pc3 -o pdf.pmp     no papers yet; platen paper has them)text";

struct CreateOptions {
    /// "ctb", "stb", "pc3" or "pmp".
    std::string kind;
    std::string out;
    /// Of a table.
    std::string description;
    std::string preset;
    /// The device and, unless empty, the paper of a configuration.
    std::string device;
    std::string paper;
    /// The printer of a configuration, instead of a device.
    std::string printer;
    /// The configuration that plot model parameters are made for.
    std::string from;
};

/// Which option does not go with the kind, or is missing; empty when none.
std::string usageFault(const CreateOptions& options) {
    const bool configuration = options.kind == "pc3";
    const bool parameters = options.kind == "pmp";
    if (configuration && options.device.empty() == options.printer.empty()) {
        return "a configuration needs either --device NAME, such as --device \"Print As PDF\", or "
               "--printer NAME";
    }
    if (parameters && options.from.empty()) {
        return "plot model parameters are made for a configuration: add --from FILE.pc3";
    }
    const struct {
        const std::string& value;
        bool fits;
        const char* reason;
    } rules[] = {
        {options.device, configuration, "--device goes with pc3 only; leave it out"},
        {options.printer, configuration, "--printer goes with pc3 only; leave it out"},
        {options.paper, configuration, "--paper goes with pc3 only; leave it out"},
        {options.from, parameters, "--from goes with pmp only; leave it out"},
        {options.description, !configuration && !parameters,
         "--description goes with ctb and stb only; leave it out"},
        {options.preset, !configuration && !parameters,
         "--preset goes with ctb and stb only; leave it out"},
    };
    for (const auto& rule : rules) {
        if (!rule.value.empty() && !rule.fits) {
            return rule.reason;
        }
    }
    return {};
}

ExitCode makeTable(const CreateOptions& options, PiaBlock& root, const Console& console) {
    std::wstring description;
    if (!ut::decodeUtf8(options.description, description)) {
        return fail(console, options.out, "the description is not UTF-8; nothing was written");
    }
    const std::unique_ptr<CPlotStyleTable> table(
        CPlotStyleTable::create(options.kind == "ctb", description.c_str()));
    if (!options.preset.empty()) {
        if (const platen::EditResult made = platen::applyPreset(options.preset, *table); !made) {
            return fail(console, options.out, made->reason);
        }
    }
    if (!table->writeToBlock(root)) {
        return fail(console, options.out, "the table cannot be written");
    }
    return ExitCode::Ok;
}

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
    const arguments::PaperTable papers =
        arguments::tableOf(pdf ? arguments::DevicePapers::Pdf : arguments::DevicePapers::Image);
    const std::optional<std::size_t> index = arguments::indexOf(papers, paper);
    if (!index) {
        return refuse(options,
                      "the device has no paper \"" + options.paper + '"' +
                          arguments::suggestion(paper, arguments::displayNames(papers),
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
               "there is no device \"" + options.device + '"' +
                   arguments::suggestion(device, deviceNames()),
               console);
    }
    return config;
}

/// Likewise.
std::unique_ptr<CPlotCfg3> ofPrinter(const CreateOptions& options, const Console& console) {
    std::wstring printer;
    if (const std::string fault = printers::printersFault(); !fault.empty()) {
        refuse(options, "--printer cannot be used: " + fault, console);
        return nullptr;
    }
    if (!ut::decodeUtf8(options.printer, printer)) {
        refuse(options, "the name of the printer must be UTF-8", console);
        return nullptr;
    }
    if (!printers::askPrinter(printer)) {
        refuse(options,
               "there is no printer \"" + options.printer + '"' +
                   arguments::suggestion(printer, printers::printerNames()),
               console);
        return nullptr;
    }
    std::unique_ptr<CPlotCfg3> config = printers::configurationOf(printer);
    if (!config) {
        refuse(options,
               "the printer's settings cannot be taken; print a test page to see whether "
               "its driver works",
               console);
    }
    return config;
}

/// Writes the configuration of a device into `root`. `Error` after a message.
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

/// Writes the parameters for the configuration `options.from` into `root`. `Error` after a
/// message, `Warnings` when the configuration has some.
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

ExitCode make(const CreateOptions& options, PiaBlock& root, const Console& console) {
    if (options.kind == "pc3") {
        return makeConfiguration(options, root, console);
    }
    return options.kind == "pmp" ? makeParameters(options, root, console)
                                 : makeTable(options, root, console);
}

std::vector<std::string> presetNames() {
    std::vector<std::string> names;
    for (const platen::TablePreset& preset : platen::tablePresets()) {
        names.emplace_back(preset.name);
    }
    return names;
}

PiaKind headerOf(const std::string& kind) {
    if (kind == "ctb") {
        return PiaKind::Ctb;
    }
    return kind == "stb" ? PiaKind::Stb : PiaKind::Pc3;
}

/// Makes a fresh document.
ExitCode run(const CreateOptions& options, const Console& console) {
    if (const std::string fault = usageFault(options); !fault.empty()) {
        return fail(console, options.out, fault);
    }
    PiaTree tree;
    const ExitCode made = make(options, tree.root(), console);
    if (made == ExitCode::Error) {
        return made;
    }
    const std::vector<std::wstring> lost = files::lostWith(options.out, tree.root());
    const ExitCode written = files::writeTree(tree.root(), platen::FileForm::Compressed,
                                              headerOf(options.kind), options.out, console);
    if (written == ExitCode::Error) {
        return written;
    }
    return worse(worse(made, written), files::warnOfLosses(lost, options.out, console));
}

}  // namespace

CommandEntry addCreate(CLI::App& program) {
    CLI::App* command = arguments::addCommand(program, "create", "Make a fresh document", help);
    std::string presets = "\n\nPresets:";
    for (const platen::TablePreset& preset : platen::tablePresets()) {
        presets += "\n  " + std::string(preset.name);
        presets.append(std::size_t{12} - preset.name.size(), ' ').append(preset.purpose);
    }
    command->footer(help + presets);
    const auto options = std::make_shared<CreateOptions>();
    command
        ->add_option("KIND", options->kind,
                     "Colour-dependent (ctb) or named (stb) plot styles, a plot configuration "
                     "(pc3), plot model parameters (pmp)")
        ->required()
        ->check(arguments::oneOf({"ctb", "stb", "pc3", "pmp"}));
    arguments::addOutput(command, options->out)->required();
    arguments::takeText(
        command->add_option("--description", options->description, "Description of a table"));
    command->add_option("--preset", options->preset, "What a table begins with")
        ->check(arguments::oneOf(presetNames()));
    arguments::takeText(command->add_option("--device", options->device,
                                            "Device of a configuration, such as \"Print As PDF\""))
        ->type_name("NAME");
    arguments::takeText(
        command->add_option("--printer", options->printer,
                            "Printer of a configuration, instead of a device (Windows)"))
        ->type_name("NAME");
    arguments::takeText(
        command->add_option("--paper", options->paper,
                            "Paper of a configuration; the device's first by default"))
        ->type_name("NAME");
    arguments::takeText(
        command->add_option("--from", options->from, "Configuration that parameters are made for"))
        ->type_name("PC3");
    return entryOf(command, options, run);
}

}  // namespace cli::commands
