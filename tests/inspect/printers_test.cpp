#include <gmock/gmock.h>

#include "tests/inspect/found.h"
#include "tests/support/documents.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

/// The driver "Driver name" whose device mode of 220 bytes has `own` bytes of its own behind it.
Config configWith(int own, const wchar_t* paper = L"") {
    Config config = configOf(fullConfiguration);
    config->media.size.name = paper;
    EXPECT_TRUE(config->custom->set(own, L"dmDriverExtra", true));
    return config;
}

TEST(Misfits, SayWhatADriverWillNotTake) {
    const std::string differs = "the driver was \"Driver name\" and is now \"Other\"";
    const auto has = [](const char* bytes) {
        return std::string("the driver's device mode has ") + bytes +
               " bytes, the stored one 224; the driver's own settings are kept and will not be "
               "applied";
    };
    const struct {
        int own;
        const wchar_t* driver;
        std::int64_t bytes;
        std::vector<std::string> reasons;
    } cases[] = {
        {4, L"DRIVER NAME", 224, {}},
        {4, L"", 224, {}},
        {0, L"Other", 220, {differs}},
        {1,
         L"Other",
         221,
         {differs + ", which will take the 1 bytes of the old one's own settings for its own; "
                    "choose the printer again in a program that plots"}},
        {4, L"Other", 225, {differs, has("225")}},
        {4, L"", 223, {has("223")}},
        // A driver that does not say.
        {4, L"Driver name", 0, {}},
    };
    for (const auto& [own, driver, bytes, reasons] : cases) {
        EXPECT_EQ(platen::misfits(*configWith(own), {driver, bytes, {}}), reasons) << own;
    }
    Config without = configWith(4);
    without->custom.reset();
    EXPECT_THAT(platen::misfits(*without, {L"Other", 999, {}}), ElementsAre(differs));
}

TEST(Misfits, SayWhichPaperIsNotThere) {
    const platen::InstalledPrinter printer{L"", 0, {L"A4", L"Roll"}};
    for (const wchar_t* paper : {L"", L"A4", L"roll", L"User300"}) {
        EXPECT_THAT(platen::misfits(*configWith(0, paper), printer), IsEmpty());
    }
    EXPECT_THAT(platen::misfits(*configWith(0, L"A\n3"), printer),
                ElementsAre("the printer has no paper \"A\\x0A3\"; it will use its own default"));
}

/// Moves configurations to "Second", and applies them with what `report` says.
class FakePrinters : public platen::InstalledPrinters {
public:
    std::optional<platen::InstalledPrinter> ask(const std::wstring&) const override {
        return std::nullopt;
    }
    bool moveByDriver(CPlotCfg3& config) const override {
        if (moves) {
            config.meta.winDeviceName = L"Second";
        }
        return moves;
    }
    void apply(const CPlotCfg3& config, PiaReport& report) const override {
        report = found;
        appliedTo = config.meta.winDeviceName;
    }

    bool moves = false;
    PiaReport found;
    mutable std::wstring appliedTo;
};

TEST(CheckPrinters, TellsWhatAPrinterSays) {
    const std::string body = edited(fullConfiguration, "C:\\Plotters\\PMP Files\\no such.pmp", "");
    FakePrinters printers;
    const platen::CheckSettings settings{.printers = &printers};
    EXPECT_EQ(foundIn(body, PiaKind::Pc3, settings), "");
    EXPECT_EQ(printers.appliedTo, L"\\\\server\\plotter");
    printers.moves = true;
    printers.found.warn({.code = PiaCode::PaperLeftOut, .path = L"media/size/name"});
    EXPECT_FALSE(printers.found.fail({.code = PiaCode::PrinterMissing}));
    EXPECT_EQ(foundIn(body, PiaKind::Pc3, settings),
              "warning printer-moved meta/win_device_name| win_device_name=\"\\\\server\\plotter\n"
              "warning paper-left-out media/size/name|  name=\"ISO_A4_(210.00_x_297.00_MM)\n"
              "error printer-missing ");
    EXPECT_EQ(printers.appliedTo, L"Second");
    // A built-in device needs no printer.
    EXPECT_EQ(foundIn(edited(body, "canonical_model_name=\"Model", "canonical_model_name=\"pdf"),
                      PiaKind::Pc3, settings),
              "");
}

}  // namespace
