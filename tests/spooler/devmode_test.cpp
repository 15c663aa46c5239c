#include <gmock/gmock.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>

#include <platen/utcore.h>
#include "tests/spooler/support.h"

using testing::HasSubstr;
using testing::StartsWith;

namespace {

class SpoolerDevmodeTest : public SpoolerTest {
protected:
    static std::string dumpOf(const DEVMODEW& mode) {
        OdString text(L"before");
        wut::dumpDevMode(mode, text);
        return ut::encodeUtf8(text.text());
    }
};

TEST_F(SpoolerDevmodeTest, ADumpHasTheFieldsAndThePrivateBytes) {
    for (const std::wstring name : {L"Plotter", L"Office"}) {
        const wut::DevModePtr mode(wut::getDevMode(name.c_str()));
        ASSERT_NE(mode, nullptr);
        EXPECT_EQ(mode->dmDeviceName, name);
        ASSERT_GT(mode->dmDriverExtra, 0);
        const std::string dump = dumpOf(*mode);
        EXPECT_THAT(dump, StartsWith("dmDeviceName = " + ut::encodeUtf8(name) + "\n"));
        EXPECT_THAT(dump, HasSubstr("\ndmSize = " + std::to_string(mode->dmSize) + "\n"));
        EXPECT_THAT(dump, HasSubstr("\ndmPaperSize = " + std::to_string(mode->dmPaperSize) + "\n"));
        const std::string heading = "\n\nprivate data:\n";
        const std::size_t at = dump.find(heading);
        ASSERT_NE(at, std::string::npos);
        EXPECT_EQ(std::count(dump.begin(), dump.begin() + static_cast<std::ptrdiff_t>(at), '\n'),
                  33);
        std::string bytes;
        for (std::size_t index = 0; index < mode->dmDriverExtra; ++index) {
            char text[4];
            std::snprintf(text, sizeof(text), "%02X ",
                          reinterpret_cast<const unsigned char*>(mode.get())[mode->dmSize + index]);
            bytes += text;
            bytes += index % 16 == 15 || index + 1 == mode->dmDriverExtra ? "\n" : "";
        }
        EXPECT_EQ(dump.substr(at + heading.size()), bytes);
    }
}

TEST_F(SpoolerDevmodeTest, ANamedPrinterThatIsNotTheDefaultGivesItsOwnSettings) {
    const wut::DevModePtr expected(wut::getDevMode(L"Plotter"));
    ASSERT_NE(expected, nullptr);
    wut::PrintData data(L"Plotter");
    EXPECT_EQ(data.GetPrinterName(), L"Plotter");
    short paper = 0;
    EXPECT_TRUE(data.getDmPaperSize(paper));
    EXPECT_EQ(paper, expected->dmPaperSize);
    wut::DEVMODE_RAII mode(data);
    ASSERT_TRUE(mode);
    EXPECT_STREQ(mode->dmDeviceName, L"Plotter");
    EXPECT_EQ(mode->dmDriverExtra, expected->dmDriverExtra);
    EXPECT_EQ(mode->dmPaperSize, expected->dmPaperSize);
}

TEST_F(SpoolerDevmodeTest, SettingsReachTheDeviceModeAndComeBack) {
    wut::PrintData data(L"Plotter");
    data.setDmPaperSize(DMPAPER_A4, nullptr);
    data.SetOrientation(wxLANDSCAPE);
    data.SetNoCopies(3);
    wut::DEVMODE_RAII mode(data);
    ASSERT_TRUE(mode);
    EXPECT_EQ(mode->dmPaperSize, DMPAPER_A4);
    EXPECT_EQ(mode->dmOrientation, DMORIENT_LANDSCAPE);
    EXPECT_EQ(mode->dmCopies, 3);
    mode->dmPaperSize = DMPAPER_A3;
    mode->dmFields |= DM_PAPERSIZE;
    mode.updatePrintData();
    short paper = 0;
    EXPECT_TRUE(data.getDmPaperSize(paper));
    EXPECT_EQ(paper, DMPAPER_A3);
    EXPECT_EQ(data.GetPaperSize(), wxSize(297, 420));
    EXPECT_EQ(data.GetOrientation(), wxLANDSCAPE);
    EXPECT_EQ(data.GetNoCopies(), 3);
}

TEST_F(SpoolerDevmodeTest, APaperLongerThanADeviceModeStatesTakesItsSettingsAlong) {
    wut::PrintData data(L"Plotter");
    CPrnHelper printer(L"Plotter");
    const int index = printer.findPaperName(L"A0D - 841x4756mm");
    ASSERT_GE(index, 0);
    const auto id = static_cast<short>(printer.getPaperId(static_cast<unsigned>(index)));
    data.setDmPaperSize(id, nullptr);
    ASSERT_TRUE(data.ResolveConflicts());
    EXPECT_EQ(data.GetPaperSize(), wxSize(841, 4756));
    const wxSize longer(841, 4757);
    for (const wxSize* size : {static_cast<const wxSize*>(nullptr), &longer}) {
        if (size != nullptr) {
            data.setDmPaperSize(id, size);
        }
        data.SetNoCopies(data.GetNoCopies() + 2);
        data.SetOrientation(wxLANDSCAPE);
        EXPECT_EQ(wut::DEVMODE_RAII(data)->dmCopies, data.GetNoCopies());
        ASSERT_TRUE(data.ResolveConflicts());
        EXPECT_EQ(data.GetOrientation(), wxLANDSCAPE);
        EXPECT_EQ(data.GetPaperSize(), wxSize(841, 4756));
        short paper = 0;
        EXPECT_TRUE(data.getDmPaperSize(paper));
        EXPECT_EQ(paper, id);
    }
}

TEST_F(SpoolerDevmodeTest, TheDriverCorrectsAPaperThatItLacks) {
    wut::PrintData data(L"Office");
    short before = 0;
    ASSERT_TRUE(data.getDmPaperSize(before));
    constexpr short unknown = 300;
    ASSERT_EQ(CPrnHelper(L"Office").findPaperId(unknown), -1);
    data.setDmPaperSize(unknown, nullptr);
    EXPECT_TRUE(data.ResolveConflicts());
    short after = 0;
    EXPECT_TRUE(data.getDmPaperSize(after));
    EXPECT_EQ(after, before);
}

}  // namespace
