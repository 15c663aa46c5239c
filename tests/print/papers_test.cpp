#include <gtest/gtest.h>
#include <wx/init.h>

#include <string>

#include <platen/print.h>
#include "tests/support/fake_spooler.h"

namespace {

using test_support::FakePrinter;

struct Lists {
    OdArray<unsigned short> ids;
    OdArray<OdString> names;
    OdArray<POINT> dims;
};

class PrinterPapers : public testing::Test {
protected:
    PrinterPapers() { wut::onPrinterSettingsChanged(OdString()); }
    ~PrinterPapers() override { wut::onPrinterSettingsChanged(OdString()); }

    bool ask(Lists& lists, const wchar_t* printer = L"Plotter", const wchar_t* port = L"LPT1:") {
        return wut::PaperSizeGetter(printer, port, nullptr)
            .get(&lists.ids, &lists.names, &lists.dims);
    }
    int asked() { return fake_.calls["deviceCapabilities"]; }

    test_support::FakeSpooler fake_;
    FakePrinter& plotter_ = fake_.add(L"Plotter");
    wut::SpoolerForTest inPlace_{fake_};
};

TEST_F(PrinterPapers, ComeAsTheDriverGivesThem) {
    const std::wstring whole(64, L'W');
    plotter_.papers.push_back({300, whole, {32767, -5}});
    plotter_.papers.push_back({300, L" A4 ", {0, 0}});
    Lists lists;
    ASSERT_TRUE(ask(lists));
    ASSERT_TRUE(lists.ids.size() == 4 && lists.names.size() == 4 && lists.dims.size() == 4);
    EXPECT_EQ(lists.ids[0], 9);
    EXPECT_EQ(lists.names[1].text(), L"Letter");
    EXPECT_EQ(lists.names[2].text(), whole);
    EXPECT_EQ(lists.names[3].text(), L" A4 ");
    EXPECT_EQ(lists.dims[2].x, 32767);
    EXPECT_EQ(lists.dims[2].y, -5);
}

TEST_F(PrinterPapers, AreAskedForOnceAndHandedOutWithoutCopies) {
    Lists first, second;
    ASSERT_TRUE(ask(first));
    const int once = asked();
    ASSERT_TRUE(ask(second, L"PLOTTER", L"lpt1:"));
    EXPECT_EQ(asked(), once);
    const Lists &a = first, &b = second;
    EXPECT_EQ(a.ids.asArrayPtr(), b.ids.asArrayPtr());
    EXPECT_EQ(a.names.asArrayPtr(), b.names.asArrayPtr());
    EXPECT_EQ(a.dims.asArrayPtr(), b.dims.asArrayPtr());
}

TEST_F(PrinterPapers, DependOnPortAndOnEveryByteOfTheSettings) {
    Lists lists;
    ASSERT_TRUE(ask(lists));
    const int once = asked();
    ASSERT_TRUE(ask(lists, L"Plotter", L"LPT2:"));
    EXPECT_EQ(asked(), 2 * once);
    const auto bytes = plotter_.privateBytes;
    plotter_.privateBytes[7] = 99;
    ASSERT_TRUE(ask(lists));
    plotter_.privateBytes.push_back(0);
    ASSERT_TRUE(ask(lists));
    EXPECT_EQ(asked(), 4 * once);
    plotter_.privateBytes = bytes;
    ASSERT_TRUE(ask(lists));
    EXPECT_EQ(asked(), 4 * once);
}

TEST_F(PrinterPapers, AreForgottenWhenSettingsChange) {
    FakePrinter& office = fake_.add(L"Office");
    Lists lists;
    for (const wchar_t* port : {L"LPT1:", L"LPT2:"}) {
        ASSERT_TRUE(ask(lists, L"Plotter", port) && ask(lists, L"Office", port));
    }
    plotter_.papers.pop_back();
    office.papers.clear();
    wut::onPrinterSettingsChanged(L"plotTER");
    for (const wchar_t* port : {L"LPT1:", L"LPT2:"}) {
        ASSERT_TRUE(ask(lists, L"Plotter", port));
        EXPECT_EQ(lists.ids.size(), 1u);
    }
    ASSERT_TRUE(ask(lists, L"Office"));
    EXPECT_EQ(lists.ids.size(), 2u);
    wut::onPrinterSettingsChanged(OdString());
    EXPECT_FALSE(ask(lists, L"Office"));
}

TEST_F(PrinterPapers, WithoutNamesAreNoneWhereNamesAreWanted) {
    plotter_.counts[DC_PAPERNAMES] = 0;
    Lists lists;
    lists.ids.append(1);
    lists.names.append(L"before");
    const wut::PaperSizeGetter getter(L"Plotter", L"LPT1:", nullptr);
    EXPECT_FALSE(getter.get(&lists.ids, &lists.names, nullptr));
    EXPECT_TRUE(lists.ids.isEmpty());
    EXPECT_TRUE(lists.names.isEmpty());
    const int once = asked();
    EXPECT_TRUE(getter.get(&lists.ids, nullptr, nullptr));
    EXPECT_EQ(lists.ids.size(), 2u);
    EXPECT_EQ(asked(), once) << "the ids were kept";
    // What was missing is asked for again.
    plotter_.counts.clear();
    EXPECT_TRUE(getter.get(&lists.ids, &lists.names, nullptr));
}

TEST_F(PrinterPapers, AreAsManyAsWereCountedUnlessNoneCome) {
    Lists lists;
    plotter_.whenAsked = [this](WORD, bool counts) { plotter_.papers.resize(counts ? 2 : 1); };
    ASSERT_TRUE(ask(lists));
    EXPECT_TRUE(lists.ids.size() == 2 && lists.names.size() == 2 && lists.dims.size() == 2);
    wut::onPrinterSettingsChanged(OdString());
    plotter_.whenAsked = [this](WORD, bool counts) { plotter_.papers.resize(counts ? 2 : 5000); };
    ASSERT_TRUE(ask(lists));
    EXPECT_TRUE(lists.ids.size() == 2 && lists.names.size() == 2 && lists.dims.size() == 2);
    wut::onPrinterSettingsChanged(OdString());
    plotter_.whenAsked = [this](WORD, bool counts) { plotter_.papers.resize(counts ? 2 : 0); };
    EXPECT_FALSE(ask(lists));
    for (const int count : {-1, 0, -32768, 65536, 0x7FFFFFFF}) {
        plotter_.counts = {{DC_PAPERS, count}, {DC_PAPERNAMES, count}, {DC_PAPERSIZE, count}};
        EXPECT_FALSE(ask(lists)) << count;
        EXPECT_TRUE(lists.ids.isEmpty() && lists.names.isEmpty() && lists.dims.isEmpty()) << count;
    }
}

TEST_F(PrinterPapers, OfAPrinterThatIsNotThereAreNone) {
    Lists lists;
    lists.dims.append({1, 1});
    EXPECT_FALSE(ask(lists, L"Gone"));
    EXPECT_TRUE(lists.dims.isEmpty());
    EXPECT_FALSE(ask(lists, nullptr, nullptr));
    EXPECT_EQ(asked(), 0);
}

TEST_F(PrinterPapers, OfPrintDataAreThoseOfTheirSettings) {
    const wxInitializer library;
    wut::registerPrintFactory();
    wut::PrintData data(L"Plotter");
    OdArray<unsigned short> ids;
    ASSERT_TRUE(wut::PaperSizeGetter(L"Plotter", L"LPT1:", &data).get(&ids, nullptr, nullptr));
    const int once = asked();
    data.SetNoCopies(7);
    ASSERT_TRUE(wut::PaperSizeGetter(L"Plotter", L"LPT1:", &data).get(&ids, nullptr, nullptr));
    EXPECT_EQ(asked(), 2 * once);
    wut::unRegisterPrintFactory();
}

}  // namespace
