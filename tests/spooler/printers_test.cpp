#include <gmock/gmock.h>

#include <cstdlib>
#include <set>
#include <string>

#include "tests/spooler/support.h"

using testing::ElementsAre;

namespace {

using SpoolerPrintersTest = SpoolerTest;

TEST_F(SpoolerPrintersTest, BothQueuesAreListedAndOfficeIsTheDefault) {
    OdArray<OdString> names;
    wut::getSystemPrinters(names);
    std::set<std::wstring> each;
    for (const OdString& name : names) {
        each.insert(name.text());
    }
    EXPECT_THAT(each, ElementsAre(L"Office", L"Plotter"));
    EXPECT_EQ(wut::getDefaultSystemPrinter(false), OdString(L"Office"));
    EXPECT_EQ(wut::getDefaultSystemPrinter(true), OdString(L"Office"));
    EXPECT_EQ(wut::PrintData(wut::PrintData::kInitFromSystem).GetPrinterName(), L"Office");
}

TEST_F(SpoolerPrintersTest, AQueueTellsItsDriverPortAndComment) {
    for (const auto& [name, comment] :
         {std::pair<std::wstring, const wchar_t*>(L"Plotter", L"Roll plotter"),
          {L"Office", L"Office printer"}}) {
        const CPrnHelper printer(name.c_str());
        ASSERT_TRUE(printer.isValid());
        std::wstring driver = L"before", port = driver;
        EXPECT_TRUE(printer.getPrinterDriver(driver) && printer.getPorts(port));
        EXPECT_EQ(driver, name);
        EXPECT_EQ(port, L"CUPS:" + name);
        EXPECT_EQ(wut::getPrinterComment(printer.handle()), OdString(comment));
    }
}

TEST_F(SpoolerPrintersTest, AQueueHasThePapersOfItsDescription) {
    const struct {
        const wchar_t* queue;
        const wchar_t* paper;
        /// Tenths of a millimetre. The queue has them in whole points.
        POINT size;
    } cases[] = {{L"Plotter", L"A4", {2100, 2970}},
                 {L"Plotter", L"A0D - 841x4756mm", {8410, 47560}},
                 {L"Office", L"A3", {2970, 4200}}};
    for (const auto& [queue, paper, size] : cases) {
        OdArray<unsigned short> ids;
        OdArray<OdString> names;
        OdArray<POINT> sizes;
        const OdString port = wut::getPrinterPorts(queue);
        ASSERT_TRUE(wut::PaperSizeGetter(queue, port.c_str(), nullptr).get(&ids, &names, &sizes));
        EXPECT_GT(ids.size(), 10U);
        EXPECT_EQ(names.size(), ids.size());
        ASSERT_EQ(sizes.size(), ids.size());
        EXPECT_EQ(std::set<unsigned short>(ids.begin(), ids.end()).size(), ids.size());
        const int index = CPrnHelper(queue).findPaperName(paper);
        ASSERT_GE(index, 0) << testing::PrintToString(paper);
        EXPECT_LE(std::abs(sizes[static_cast<unsigned>(index)].x - size.x), 10);
        EXPECT_LE(std::abs(sizes[static_cast<unsigned>(index)].y - size.y), 10);
    }
}

TEST_F(SpoolerPrintersTest, AnotherDefaultPrinterLastsForAScope) {
    {
        wut::ChangeDefaultPrinter change(OdString(L"Plotter"));
        EXPECT_EQ(change.oldDefaultPrinter(), OdString(L"Office"));
        EXPECT_EQ(wut::getDefaultSystemPrinter(false), OdString(L"Plotter"));
        EXPECT_EQ(wut::PrintData(wut::PrintData::kInitFromSystem).GetPrinterName(), L"Plotter");
        EXPECT_FALSE(change.setDefaultPrinter(OdString(L"Gone")));
        EXPECT_EQ(wut::getDefaultSystemPrinter(false), OdString(L"Plotter"));
    }
    EXPECT_EQ(wut::getDefaultSystemPrinter(false), OdString(L"Office"));
}

}  // namespace
