#include <gmock/gmock.h>
#include <wx/dcprint.h>

#include <chrono>
#include <memory>
#include <sstream>
#include <string_view>
#include <thread>

#include <platen/pia_report.h>
#include <platen/plotcfg.h>
#include "tests/print/device_modes.h"
#include "tests/spooler/support.h"
#include "tests/support/files.h"

using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace fs = std::filesystem;

namespace {

class SpoolerPageTest : public SpoolerTest {
protected:
    /// A configuration for the printer, which is its defaults, takes the settings, is saved and
    /// read again.
    std::unique_ptr<CPlotCfg3> configurationWith(const wchar_t* name, const wchar_t* paperName,
                                                 wxPrintOrientation orientation, int copies) {
        std::unique_ptr<CPlotCfg3> config(CPlotCfg3::create(name));
        CPrnHelper printer(name);
        const int paper = printer.findPaperName(paperName);
        wut::PrintData defaults(name);
        wut::PrintData data(name);
        PiaReport report;
        if (!config || paper < 0 || !config->toPrintData(data, &report)) {
            return nullptr;
        }
        EXPECT_EQ(report.warningCount(), 0U);
        EXPECT_THAT(differences(deviceModeOf(defaults), deviceModeOf(data)), IsEmpty());
        EXPECT_FALSE(config->media.emptyBounds());
        EXPECT_GE(config->resColorMem.colorDepth, 1);
        bool changed = true;
        EXPECT_TRUE(config->fromPrintData(data, name, false, changed) && !changed);
        data.setDmPaperSize(static_cast<short>(printer.getPaperId(static_cast<unsigned>(paper))),
                            nullptr);
        data.SetOrientation(orientation);
        data.SetNoCopies(copies);
        EXPECT_TRUE(data.ResolveConflicts() && config->fromPrintData(data, name, false, changed) &&
                    changed);
        const std::wstring file = files_.wide("page.pc3");
        bool moved = true;
        config.reset(config->write(file.c_str()) ? CPlotCfg3::read(file.c_str(), moved) : nullptr);
        return moved ? nullptr : std::move(config);
    }

    /// Prints a line of text as the configuration says.
    static void print(const CPlotCfg3& config) {
        wut::PrintData data(config.meta.winDeviceName.c_str());
        ASSERT_TRUE(config.toPrintData(data));
        const std::unique_ptr<wxPrinterDC> dc(data.createPrinterDC());
        ASSERT_NE(dc, nullptr);
        ASSERT_TRUE(dc->IsOk());
        ASSERT_TRUE(dc->StartDoc("Text"));
        dc->StartPage();
        dc->DrawText("Sheet", 300, 300);
        dc->EndPage();
        dc->EndDoc();
    }

    /// The content of a file once it has its end.
    static std::string arrived(const fs::path& file, std::string_view end) {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
        std::string content;
        do {
            content = fs::exists(file) ? readBytes(file) : "";
            if (content.find(end) != std::string::npos) {
                return content;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
        } while (std::chrono::steady_clock::now() < deadline);
        ADD_FAILURE() << file << " is not whole, it has " << content.size() << " bytes";
        return content;
    }

    /// The data of the newest job as the spooler got them, before the queue's filters.
    static fs::path newestJob() {
        fs::path newest;
        for (const auto& entry : fs::directory_iterator(folder() / "spool")) {
            if (entry.path().filename().string().starts_with('d') && newest < entry.path()) {
                newest = entry.path();
            }
        }
        return newest;
    }

    /// What stands between two texts of one line, of each such line.
    static std::vector<std::string> between(std::string_view start, const std::string& document,
                                            std::string_view end) {
        std::vector<std::string> found;
        std::istringstream lines(document);
        for (std::string line; std::getline(lines, line);) {
            line += '\n';
            const std::size_t at = line.find(start);
            const std::size_t to = line.find(end, at);
            if (at != std::string::npos && to != std::string::npos) {
                found.push_back(line.substr(at + start.size(), to - at - start.size()));
            }
        }
        return found;
    }

    /// One page with the text.
    static void expectPage(const std::string& document, const char* orientation, const char* size) {
        EXPECT_THAT(between("%%Orientation: ", document, "\n"), ElementsAre(orientation));
        EXPECT_THAT(between("<</PageSize[", document, "]"), AllOf(Not(IsEmpty()), Each(size)));
        EXPECT_THAT(between("%%Page: ", document, "\n"), ElementsAre("1 1"));
        EXPECT_THAT(between("/", document, " glyphshow\n"), ElementsAre("S", "h", "e", "e", "t"));
    }

private:
    TemporaryFolder files_;
};

TEST_F(SpoolerPageTest, APostScriptPrinterGetsThePageThatTheConfigurationSays) {
    const fs::path printed = folder() / "out" / "office.ps";
    fs::remove(printed);
    const std::unique_ptr<CPlotCfg3> config = configurationWith(L"Office", L"A3", wxLANDSCAPE, 3);
    ASSERT_NE(config, nullptr);
    EXPECT_EQ(config->media.size.name, L"A3");
    ASSERT_NO_FATAL_FAILURE(print(*config));
    const std::string page = arrived(printed, "\n%%EOF");
    expectPage(page, "Landscape", "842 1191");
    EXPECT_THAT(between("%RBIBeginNonPPDFeature: *NumCopies ", page, "\n"), ElementsAre("3"));
}

TEST_F(SpoolerPageTest, APlotterGetsAPaperOfItsOwnDriver) {
    const fs::path printed = folder() / "out" / "plotter.prn";
    fs::remove(printed);
    const std::unique_ptr<CPlotCfg3> config = configurationWith(L"Plotter", L"A1", wxPORTRAIT, 2);
    ASSERT_NE(config, nullptr);
    ASSERT_NO_FATAL_FAILURE(print(*config));
    const std::string plotted = arrived(printed, "@PJL EOJ");
    // In tenths of a point.
    EXPECT_THAT(plotted, HasSubstr("@PJL SET PAPERWIDTH=16840\r\n"));
    EXPECT_THAT(plotted, HasSubstr("@PJL SET PAPERLENGTH=23840\r\n"));
    expectPage(readBytes(newestJob()), "Portrait", "1684 2384");
    // The configuration says the same, with the margins that the queue's description has: its upper
    // bounds are the width and height of the area.
    const auto& paper = config->media.size.mediaDescription;
    constexpr double point = 25.4 / 72;
    EXPECT_NEAR(paper.mediaBounds.urx, 1684 * point, 0.5);
    EXPECT_NEAR(paper.mediaBounds.ury, 2384 * point, 0.5);
    EXPECT_NEAR(paper.printableBoundsLlx, 14.4 * point, 0.5);
    EXPECT_NEAR(paper.printableBoundsLly, 28.8 * point, 0.5);
    EXPECT_NEAR(paper.printableBoundsUrx, 1655.2 * point, 0.5);
    EXPECT_NEAR(paper.printableBoundsUry, 2326.4 * point, 0.5);
}

}  // namespace
