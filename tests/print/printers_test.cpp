#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include <platen/print.h>
#include "print/spooler_data.h"
#include "tests/support/fake_spooler.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Printers : public testing::Test {
protected:
    std::vector<std::wstring> listed() {
        OdArray<OdString> names;
        wut::getSystemPrinters(names);
        std::vector<std::wstring> texts;
        for (const OdString& name : names) {
            texts.push_back(name.text());
        }
        return texts;
    }

    test_support::FakeSpooler fake_;
    wut::SpoolerForTest inPlace_{fake_};
};

TEST_F(Printers, AreListedLocalOnesFirstAndTwiceWhenBothPassesSeeThem) {
    EXPECT_THAT(listed(), IsEmpty());
    fake_.add(L"Remote").local = false;
    fake_.printers.back()->shared = true;
    fake_.add(L"Plotter").shared = true;
    fake_.add(L"Büro");
    EXPECT_THAT(listed(), ElementsAre(L"Plotter", L"Büro", L"Remote", L"Plotter"));

    OdArray<OdString> names;
    names.append(L"before");
    wut::getSystemPrinters(names);
    EXPECT_EQ(names.size(), 5u);
    EXPECT_EQ(names[0].text(), L"before");
}

TEST_F(Printers, ThatComeWhileTheyAreListedAreListedUnlessTheyNeverStop) {
    fake_.add(L"First");
    fake_.whenListing = [this] {
        if (fake_.calls["enumerate"] == 2) {
            fake_.add(L"Second, of a long name");
        }
    };
    EXPECT_THAT(listed(), ElementsAre(L"First", L"Second, of a long name"));
    fake_.calls.clear();
    fake_.whenListing = [this] { fake_.add(L"One more"); };
    EXPECT_THAT(listed(), IsEmpty());
    EXPECT_LT(fake_.calls["enumerate"], 10);
}

TEST_F(Printers, HaveNoDefaultOrTheFirst) {
    EXPECT_EQ(wut::getDefaultSystemPrinter(true).text(), L"");
    fake_.add(L"Plotter");
    fake_.add(L"Office");
    EXPECT_EQ(wut::getDefaultSystemPrinter(false).text(), L"");
    EXPECT_EQ(wut::getDefaultSystemPrinter(true).text(), L"Plotter");
    // Where there was no default, the new one stays.
    { const wut::ChangeDefaultPrinter change(L"Office"); }
    EXPECT_EQ(fake_.defaultName, L"Office");
}

TEST_F(Printers, TellPortsAndCommentByNameOrWhenTheyAreOpen) {
    test_support::FakePrinter& plotter = fake_.add(L"Plotter");
    plotter.port = L"FILE:,LPT2:";
    plotter.comment = L"2nd floor";
    EXPECT_EQ(wut::getPrinterPorts(L"Plotter").text(), L"FILE:,LPT2:");
    EXPECT_EQ(wut::getPrinterComment(OdString(L"Plotter")).text(), L"2nd floor");
    EXPECT_EQ(wut::getPrinterPorts(L"Gone").text(), L"");
    const wut::PrinterHandle printer(L"Plotter");
    plotter.port.clear();
    EXPECT_EQ(wut::getPrinterPorts(printer).text(), L"");
    // It has vanished since.
    fake_.remove(L"Plotter");
    EXPECT_EQ(wut::getPrinterComment(printer).text(), L"");
}

TEST_F(Printers, AreClosedOnce) {
    fake_.add(L"Plotter");
    {
        wut::PrinterHandle printer(L"Plotter");
        printer = wut::PrinterHandle(L"Plotter");
        EXPECT_EQ(fake_.handles.size(), 1u);
        EXPECT_FALSE(printer.open(L"Gone"));
        EXPECT_THAT(fake_.handles, IsEmpty());
        EXPECT_TRUE(printer.open(L"Plotter"));
    }
    EXPECT_THAT(fake_.handles, IsEmpty());
    EXPECT_EQ(fake_.calls["close"], 3);
}

TEST_F(Printers, HelperTakesTheFirstOfANameAndThrowsBeyondTheLast) {
    test_support::FakePrinter& plotter = fake_.add(L"Plotter");
    plotter.papers.push_back({300, L"A4", {100, 100}});
    CPrnHelper helper(L"plotter");
    EXPECT_EQ(helper.findPaperName(L"a4"), 0);
    EXPECT_EQ(helper.findPaperName(L"A4 "), -1);
    EXPECT_EQ(helper.getPaperId(2), 300);
    EXPECT_EQ(helper.getPaperName(2), OdString(L"A4"));
    EXPECT_THROW(helper.getPaperId(3), OdError_InvalidIndex);
    EXPECT_THROW(helper.getPaperName(3), OdError_InvalidIndex);
    EXPECT_EQ(CPrnHelper(nullptr).name(), L"");
    CPrnHelper gone(L"Gone");
    std::wstring text = L"before";
    EXPECT_FALSE(gone.isValid() || gone.getPrinterDriver(text) || gone.getPorts(text));
    EXPECT_EQ(text, L"");
    EXPECT_EQ(gone.findPaperName(L"A4"), -1);
}

TEST_F(Printers, HelperAsksForPapersUntilBothListsCome) {
    test_support::FakePrinter& plotter = fake_.add(L"Late");
    plotter.counts[DC_PAPERNAMES] = -1;
    CPrnHelper helper(L"Late");
    EXPECT_EQ(helper.findPaperId(9), -1);
    EXPECT_EQ(helper.paperCount(), 0u);
    plotter.counts.clear();
    EXPECT_EQ(helper.findPaperId(9), 0);
    const int asked = fake_.calls["deviceCapabilities"];
    EXPECT_EQ(helper.findPaperName(L"Letter"), 1);
    EXPECT_EQ(fake_.calls["deviceCapabilities"], asked);
    wut::onPrinterSettingsChanged(OdString());
}

TEST_F(Printers, TakePostScriptWhenTheySaySoInEitherWay) {
    const std::pair<DWORD, std::vector<DWORD>> cases[] = {
        {4117, {4117}}, {4115, {4117, 4115}}, {0, {4117, 4115}}};
    for (const auto& [taken, asked] : cases) {
        fake_.escapesAsked.clear();
        fake_.escapeTaken = taken;
        EXPECT_EQ(wut::takesPostScript(nullptr), taken != 0);
        EXPECT_EQ(fake_.escapesAsked, asked);
    }
}

}  // namespace
