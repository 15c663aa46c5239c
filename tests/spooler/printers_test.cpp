#include <gmock/gmock.h>

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
        std::wstring text = L"before";
        EXPECT_TRUE(printer.getPrinterDriver(text));
        EXPECT_EQ(text, name);
        text = L"before";
        EXPECT_TRUE(printer.getPorts(text));
        EXPECT_EQ(text, L"CUPS:" + name);
        EXPECT_EQ(wut::getPrinterComment(printer.handle()), OdString(comment));
    }
}

TEST_F(SpoolerPrintersTest, AMissingPrinterHasNothing) {
    CPrnHelper printer(L"Gone");
    EXPECT_FALSE(printer.isValid());
    std::wstring text = L"before";
    EXPECT_FALSE(printer.getPrinterDriver(text));
    EXPECT_FALSE(printer.getPorts(text));
    EXPECT_EQ(text, L"");
    EXPECT_EQ(printer.paperCount(), 0U);
    EXPECT_EQ(printer.findPaperName(L"A4"), -1);
    EXPECT_TRUE(wut::PrintData(L"Gone").GetPrinterName().empty());
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
