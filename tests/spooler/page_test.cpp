#include <gmock/gmock.h>
#include <wx/dcprint.h>

#include <chrono>
#include <functional>
#include <memory>
#include <string_view>
#include <thread>

#include <platen/plotcfg.h>
#include <platen/print.h>
#include "tests/spooler/support.h"
#include "tests/support/files.h"
#include "tests/support/postscript_page.h"

using testing::ElementsAre;
using testing::HasSubstr;

namespace fs = std::filesystem;

namespace {

constexpr double pointsPerMillimetre = 72 / 25.4;
/// Half a millimetre, in points.
constexpr double tolerance = 0.5 * pointsPerMillimetre;

struct Settings {
    const wchar_t* printer;
    const wchar_t* paper;
    wxPrintOrientation orientation;
    int copies;
};

class SpoolerPageTest : public SpoolerTest {
protected:
    /// A configuration for the printer takes the settings, is saved and read again.
    std::unique_ptr<CPlotCfg3> configurationWith(const Settings& settings) {
        std::unique_ptr<CPlotCfg3> config(CPlotCfg3::create(settings.printer));
        CPrnHelper printer(settings.printer);
        const int paper = printer.findPaperName(settings.paper);
        wut::PrintData data(settings.printer);
        if (!config || paper < 0 || !config->toPrintData(data)) {
            return nullptr;
        }
        data.setDmPaperSize(static_cast<short>(printer.getPaperId(static_cast<unsigned>(paper))),
                            nullptr);
        data.SetOrientation(settings.orientation);
        data.SetNoCopies(settings.copies);
        bool changed = false;
        EXPECT_TRUE(data.ResolveConflicts() &&
                    config->fromPrintData(data, settings.printer, false, changed) && changed);
        const std::wstring file = files_.wide("page.pc3");
        bool moved = true;
        config.reset(config->write(file.c_str()) ? CPlotCfg3::read(file.c_str(), moved) : nullptr);
        return moved ? nullptr : std::move(config);
    }

    /// Prints a border around the printable area and a line of text as the configuration says.
    static void print(const CPlotCfg3& config) {
        wut::PrintData data(config.meta.winDeviceName.c_str());
        ASSERT_TRUE(config.toPrintData(data));
        const std::unique_ptr<wxPrinterDC> dc(data.createPrinterDC());
        ASSERT_NE(dc, nullptr);
        ASSERT_TRUE(dc->IsOk());
        ASSERT_TRUE(dc->StartDoc("Border"));
        dc->StartPage();
        dc->SetPen(*wxBLACK_PEN);
        dc->SetBrush(*wxTRANSPARENT_BRUSH);
        dc->DrawRectangle(wxPoint(0, 0), dc->GetSize());
        dc->DrawText("Sheet", 300, 300);
        dc->EndPage();
        dc->EndDoc();
    }

    /// The content of a file once it is whole.
    static std::string arrived(const fs::path& file,
                               const std::function<bool(const std::string&)>& isWhole) {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
        std::string content;
        do {
            content = fs::exists(file) ? readBytes(file) : "";
            if (isWhole(content)) {
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

    /// The number of copies that the attributes of a job ask for: d00001-001 has them in c00001.
    static int copiesOf(const fs::path& job) {
        const std::string number = job.filename().string().substr(1, 5);
        constexpr std::string_view name("\0\6copies\0\4", 10);
        const auto hasCopies = [&](const std::string& attributes) {
            const std::size_t at = attributes.find(name);
            return at != std::string::npos && at + name.size() + 4 <= attributes.size();
        };
        const std::string attributes = arrived(job.parent_path() / ("c" + number), hasCopies);
        return hasCopies(attributes) ? attributes[attributes.find(name) + name.size() + 3] : 0;
    }

    static void expectBorder(const PostScriptBox& border, const PostScriptBox& printable) {
        EXPECT_NEAR(border.left, printable.left, tolerance);
        EXPECT_NEAR(border.bottom, printable.bottom, tolerance);
        EXPECT_NEAR(border.right, printable.right, tolerance);
        EXPECT_NEAR(border.top, printable.top, tolerance);
    }

private:
    TemporaryFolder files_;
};

TEST_F(SpoolerPageTest, APostScriptPrinterGetsThePageThatTheConfigurationSays) {
    const fs::path printed = folder() / "out" / "office.ps";
    fs::remove(printed);
    const std::unique_ptr<CPlotCfg3> config = configurationWith({L"Office", L"A3", wxLANDSCAPE, 3});
    ASSERT_NE(config, nullptr);
    EXPECT_EQ(config->media.size.name, L"A3");
    ASSERT_NO_FATAL_FAILURE(print(*config));
    const PostScriptPage page = readPostScriptPage(arrived(printed, [](const std::string& content) {
        return content.find("\n%%EOF") != std::string::npos;
    }));
    EXPECT_EQ(page.orientation, "Landscape");
    EXPECT_THAT(page.paperSizes, ElementsAre("842 1191"));
    EXPECT_EQ(page.copies, 3);
    EXPECT_EQ(page.pages, 1);
    EXPECT_EQ(page.characters, "S h e e t");
    // 12 points on each side are the margins that the queue's description has.
    expectBorder(page.border, {12, 12, 830, 1179});
}

TEST_F(SpoolerPageTest, APlotterGetsAPaperOfItsOwnDriver) {
    const fs::path printed = folder() / "out" / "plotter.prn";
    fs::remove(printed);
    const std::unique_ptr<CPlotCfg3> config = configurationWith({L"Plotter", L"A1", wxPORTRAIT, 2});
    ASSERT_NE(config, nullptr);
    ASSERT_NO_FATAL_FAILURE(print(*config));
    const std::string plotted = arrived(printed, [](const std::string& content) {
        return content.find("@PJL EOJ") != std::string::npos;
    });
    // In tenths of a point.
    EXPECT_THAT(plotted, HasSubstr("@PJL SET PAPERWIDTH=16840\r\n"));
    EXPECT_THAT(plotted, HasSubstr("@PJL SET PAPERLENGTH=23840\r\n"));
    EXPECT_EQ(copiesOf(newestJob()), 2);
    const PostScriptPage page = readPostScriptPage(readBytes(newestJob()));
    EXPECT_EQ(page.orientation, "Portrait");
    EXPECT_THAT(page.paperSizes, ElementsAre("1684 2384"));
    EXPECT_EQ(page.pages, 1);
    EXPECT_EQ(page.characters, "S h e e t");
    expectBorder(page.border, {14.4, 28.8, 1669.6, 2355.2});
    // The configuration says the same: its upper bounds are the width and height of the area.
    const auto& paper = config->media.size.mediaDescription;
    constexpr double point = 1 / pointsPerMillimetre;
    EXPECT_NEAR(paper.mediaBounds.urx, 1684 * point, 0.5);
    EXPECT_NEAR(paper.mediaBounds.ury, 2384 * point, 0.5);
    EXPECT_NEAR(paper.printableBoundsLlx, page.border.left * point, 0.5);
    EXPECT_NEAR(paper.printableBoundsLly, page.border.bottom * point, 0.5);
    EXPECT_NEAR(paper.printableBoundsUrx, (page.border.right - page.border.left) * point, 0.5);
    EXPECT_NEAR(paper.printableBoundsUry, (page.border.top - page.border.bottom) * point, 0.5);
}

}  // namespace
