/// The installed printers as checks ask them.

#include <cstdint>

#include <platen/inspect.h>
#include <platen/print.h>

namespace platen {
namespace {

class SpoolerPrinters final : public InstalledPrinters {
public:
    std::optional<InstalledPrinter> ask(const std::wstring& name) const override {
        CPrnHelper helper(name.c_str());
        if (!helper.isValid()) {
            return std::nullopt;
        }
        InstalledPrinter printer;
        static_cast<void>(helper.getPrinterDriver(printer.driver));
        printer.deviceModeBytes =
            static_cast<std::int64_t>(wut::getDevModeBytes(helper.handle(), name.c_str()));
        const auto count = static_cast<unsigned>(helper.paperCount());
        for (unsigned index = 0; index < count; ++index) {
            printer.papers.push_back(helper.getPaperName(index).text());
        }
        return printer;
    }
    bool moveByDriver(CPlotCfg3& config) const override {
        return wut::installedPrinters().resolveByDriver(config);
    }
    void apply(const CPlotCfg3& config, PiaReport& report) const override {
        wut::PrintData data(config.meta.winDeviceName.c_str());
        static_cast<void>(config.toPrintData(data, &report));
    }
};

}  // namespace

const InstalledPrinters& installedPrinters() {
    static const SpoolerPrinters printers;
    return printers;
}

}  // namespace platen
