#include <gtest/gtest.h>
#include <wx/init.h>
#include <wx/log.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <platen/print.h>
#include "tests/support/fake_spooler.h"

namespace {

using test_support::FakePrinter;
using wut::WindowsPrintNativeData;

class Warnings : public wxLog {
public:
    int count = 0;

protected:
    void DoLogTextAtLevel(wxLogLevel level, const wxString&) override {
        count += level == wxLOG_Warning ? 1 : 0;
    }
};

class NativeData : public testing::Test {
protected:
    NativeData() {
        wut::registerPrintFactory();
        data_.emplace();
    }
    ~NativeData() override {
        data_.reset();
        wut::unRegisterPrintFactory();
        wxLog::SetActiveTarget(logBefore_);
    }

    WindowsPrintNativeData& native() { return *WindowsPrintNativeData::GetNativeData(*data_); }
    HGLOBAL handle() { return native().GetDevMode(); }
    UINT locks() { return GlobalFlags(handle()) & GMEM_LOCKCOUNT; }
    /// A copy of the device mode as it is in memory.
    DEVMODEW mode() {
        const DEVMODEW copy = *static_cast<DEVMODEW*>(GlobalLock(handle()));
        GlobalUnlock(handle());
        return copy;
    }
    template <class Edit>
    void edit(const Edit& edit) {
        edit(*static_cast<DEVMODEW*>(GlobalLock(handle())));
        GlobalUnlock(handle());
    }

    wxInitializer library_;
    Warnings warnings_;
    wxLog* logBefore_ = wxLog::SetActiveTarget(&warnings_);
    test_support::FakeSpooler fake_;
    FakePrinter& plotter_ = fake_.add(L"Plotter");
    wut::SpoolerForTest inPlace_{fake_};
    std::optional<wut::PrintData> data_;
};

TEST_F(NativeData, InitialisesFromTheNamedPrinterOnly) {
    fake_.add(L"Office").devMode.dmCopies = 5;
    fake_.defaultName = L"Office";
    ASSERT_TRUE(native().Initialize(*data_, "Plotter"));
    EXPECT_EQ(data_->GetPrinterName(), "Plotter");
    EXPECT_EQ(data_->GetNoCopies(), 1);
    EXPECT_EQ(data_->GetPaperId(), wxPAPER_A4);
    EXPECT_EQ(data_->GetPrivDataLen(), 8);
    EXPECT_EQ(native().driverVersion, 0x0102);
    EXPECT_EQ(native().size, sizeof(DEVMODEW));

    // What cannot be had leaves everything as it is.
    EXPECT_FALSE(native().Initialize(*data_, "Gone"));
    plotter_.fillFails = true;
    EXPECT_FALSE(native().Initialize(*data_, "Plotter"));
    EXPECT_EQ(data_->GetPrinterName(), "Plotter");
    EXPECT_EQ(mode().dmCopies, 1);
    EXPECT_EQ(fake_.calls["printDialog"], 0);
    EXPECT_TRUE(fake_.handles.empty());

    ASSERT_TRUE(native().Initialize(*data_, ""));
    EXPECT_EQ(data_->GetPrinterName(), "Office");
    EXPECT_EQ(data_->GetNoCopies(), 5);
}

TEST_F(NativeData, InitialisesFromTheSystemAsItCan) {
    EXPECT_EQ(wut::PrintData(wut::PrintData::kInitFromSystem).GetPrinterName(), "Plotter")
        << "the first without a default";
    fake_.add(L"Office");
    fake_.defaultName = L"Office";
    EXPECT_EQ(wut::PrintData(wut::PrintData::kInitFromSystem).GetPrinterName(), "Office");
    fake_.printers.clear();
    const wut::PrintData none(wut::PrintData::kInitFromSystem);
    EXPECT_EQ(none.GetPrinterName(), "");
    EXPECT_EQ(wut::PrintData(L"Gone").GetPrinterName(), "");
    EXPECT_EQ(wut::PrintData().createPrinterDC(), nullptr);
}

TEST_F(NativeData, KeepsNamesThatADeviceModeHasNoRoomFor) {
    const std::wstring name(100, L'n');
    fake_.add(name);
    ASSERT_TRUE(native().Initialize(*data_, name));
    EXPECT_EQ(data_->GetPrinterName().ToStdWstring(), name);
    EXPECT_TRUE(data_->ResolveConflicts());
    EXPECT_EQ(data_->GetPrinterName().ToStdWstring(), name);
}

TEST_F(NativeData, CarriesFieldsBothWays) {
    DEVMODEW& mode = plotter_.devMode;
    mode.dmFields |= DM_SCALE | DM_YRESOLUTION | DM_TTOPTION | DM_FORMNAME | DM_NUP | DM_ICMMETHOD |
                     DM_ICMINTENT | DM_DITHERTYPE;
    mode.dmScale = 50;
    mode.dmYResolution = 300;
    mode.dmTTOption = 2;
    mode.dmNup = 4;
    mode.dmICMMethod = 1;
    mode.dmICMIntent = 3;
    mode.dmDitherType = 5;
    std::wmemset(mode.dmFormName, L'F', CCHFORMNAME);  // not terminated
    ASSERT_TRUE(native().Initialize(*data_, "Plotter"));
    EXPECT_EQ(native().scale, 50);
    EXPECT_EQ(native().yResolution, 300);
    EXPECT_EQ(native().ttOption, 2);
    EXPECT_EQ(native().formName, std::wstring(32, L'F'));
    EXPECT_EQ(native().pagesPerSheet, 4u);
    EXPECT_EQ(native().icmMethod, 1u);
    EXPECT_EQ(native().icmIntent, 3u);
    EXPECT_EQ(native().ditherType, 5u);

    native().scale = 200;
    native().icmIntent = 2;
    native().driverVersion = 0x7777;
    native().formName = std::wstring(40, L'N');
    data_->SetQuality(wxPRINT_QUALITY_LOW);
    ASSERT_TRUE(native().TransferFrom(*data_));
    EXPECT_EQ(this->mode().dmScale, 200);
    EXPECT_EQ(this->mode().dmYResolution, 300);
    EXPECT_EQ(this->mode().dmICMIntent, 2u);
    EXPECT_EQ(this->mode().dmDriverVersion, 0x0102);
    EXPECT_EQ(std::wstring(this->mode().dmFormName), std::wstring(31, L'N'));
    EXPECT_EQ(this->mode().dmFields & mode.dmFields, mode.dmFields);

    // What is absent loses its bit; the value stays.
    native().scale = 100;
    native().yResolution = native().ttOption = 0;
    native().formName.clear();
    native().pagesPerSheet = native().icmMethod = native().icmIntent = native().ditherType = 0;
    ASSERT_TRUE(native().TransferFrom(*data_));
    EXPECT_EQ(this->mode().dmFields & (DM_SCALE | DM_YRESOLUTION | DM_TTOPTION | DM_FORMNAME |
                                       DM_NUP | DM_ICMMETHOD | DM_ICMINTENT | DM_DITHERTYPE),
              0u);
    EXPECT_EQ(this->mode().dmScale, 200);
    EXPECT_EQ(this->mode().dmDitherType, 5u);
    EXPECT_EQ(std::wstring(this->mode().dmFormName), std::wstring(31, L'N'));

    // And what has no bit is absent.
    ASSERT_TRUE(native().TransferTo(*data_));
    EXPECT_EQ(native().scale, 100);
    EXPECT_EQ(native().ditherType, 0u);
    EXPECT_EQ(native().formName, L"");
}

TEST_F(NativeData, StoresPapersThatWxWidgetsDoesNotKnow) {
    ASSERT_TRUE(native().Initialize(*data_, "Plotter"));
    constexpr DWORD sizes = DM_PAPERWIDTH | DM_PAPERLENGTH;

    data_->setDmPaperSize(300, nullptr);
    ASSERT_TRUE(native().TransferFrom(*data_));
    EXPECT_EQ(mode().dmPaperSize, 300);
    EXPECT_EQ(mode().dmFields & (DM_PAPERSIZE | sizes), DWORD{DM_PAPERSIZE});

    const wxSize roll(914, 2000);
    data_->setDmPaperSize(300, &roll);
    ASSERT_TRUE(native().TransferFrom(*data_));
    EXPECT_EQ(mode().dmPaperSize, 300);
    EXPECT_EQ(mode().dmPaperWidth, 9140);
    EXPECT_EQ(mode().dmPaperLength, 20000);
    EXPECT_EQ(mode().dmFields & (DM_PAPERSIZE | sizes), DM_PAPERSIZE | sizes);
    ASSERT_TRUE(native().TransferTo(*data_));
    EXPECT_EQ(native().customWindowsPaperId, 300);
    EXPECT_EQ(data_->GetPaperSize(), roll);

    // Without a number of the driver's only the size counts.
    data_->setDmPaperSize(DMPAPER_USER, &roll);
    ASSERT_TRUE(native().TransferFrom(*data_));
    EXPECT_EQ(mode().dmPaperSize, DMPAPER_USER);
    EXPECT_EQ(mode().dmFields & (DM_PAPERSIZE | sizes), sizes);

    data_->setDmPaperSize(DMPAPER_A4, nullptr);
    ASSERT_TRUE(native().TransferFrom(*data_));
    EXPECT_EQ(mode().dmPaperSize, DMPAPER_A4);
    EXPECT_NE(mode().dmFields & DM_PAPERSIZE, 0u);
}

TEST_F(NativeData, LeavesOutSidesThatADeviceModeCannotState) {
    // 16 bits of tenths with a sign end at 3276 mm.
    constexpr DWORD id = DM_PAPERSIZE, width = DM_PAPERWIDTH, length = DM_PAPERLENGTH;
    const struct {
        short number;
        wxSize size;
        short expected;
        DWORD fields;
    } cases[] = {
        {300, {914, 3276}, 300, id | width | length},
        {300, {914, 3277}, 300, id | width},
        {300, {3277, 3277}, 300, id},
        {300, {-5, 100}, 300, id | length},
        {300, {2147483647, 914}, 300, id | length},
        {0, {914, 4756}, DMPAPER_USER, width},
        {0, {7000, -1798}, DMPAPER_A4, id},
    };
    for (const auto& [number, size, expected, fields] : cases) {
        ASSERT_TRUE(native().Initialize(*data_, "Plotter"));
        data_->setDmPaperSize(number, &size);
        data_->SetNoCopies(7);
        const int warnings = warnings_.count;
        EXPECT_TRUE(native().TransferFrom(*data_));
        EXPECT_EQ(warnings_.count - warnings, fields == (id | width | length) ? 0 : 1) << size.y;
        EXPECT_EQ(mode().dmCopies, 7);
        EXPECT_EQ(mode().dmPaperSize, expected) << size.y;
        EXPECT_EQ(mode().dmFields & (id | width | length), fields) << size.y;
        EXPECT_TRUE(data_->ResolveConflicts());
        EXPECT_EQ(wut::DEVMODE_RAII(*data_)->dmCopies, 7);
    }
}

TEST_F(NativeData, ReadsLengthsAsTheDriverMeansThem) {
    plotter_.devMode.dmPaperSize = 300;
    plotter_.devMode.dmFields |= DM_PAPERWIDTH | DM_PAPERLENGTH;
    plotter_.devMode.dmPaperWidth = 8410;
    plotter_.devMode.dmPaperLength = static_cast<short>(47560);
    ASSERT_TRUE(native().Initialize(*data_, "Plotter"));
    EXPECT_EQ(data_->GetPaperSize(), wxSize(841, 4756));
    data_->SetNoCopies(3);
    EXPECT_TRUE(data_->ResolveConflicts());
    // What the driver has said of the paper stays said.
    EXPECT_EQ(warnings_.count, 0);
    EXPECT_EQ(mode().dmCopies, 3);
    EXPECT_EQ(mode().dmPaperSize, 300);
    EXPECT_EQ(data_->GetPaperSize(), wxSize(841, 4756));
}

TEST_F(NativeData, TransfersGetTheDeviceModeThatIsMissing) {
    fake_.add(L"Office");
    data_->SetPrinterName("Office");
    data_->SetNoCopies(3);
    ASSERT_TRUE(native().TransferFrom(*data_));
    EXPECT_EQ(std::wstring(mode().dmDeviceName), L"Office");
    EXPECT_EQ(mode().dmCopies, 3);

    wut::PrintData other;
    other.SetPrinterName("Gone");
    EXPECT_FALSE(WindowsPrintNativeData::GetNativeData(other)->TransferFrom(other));
    EXPECT_FALSE(WindowsPrintNativeData::GetNativeData(other)->ResolveConflicts(other));
    EXPECT_FALSE(WindowsPrintNativeData::GetNativeData(other)->TransferTo(other));
    EXPECT_FALSE(other.ResolveConflicts());
    EXPECT_EQ(WindowsPrintNativeData::GetNativeData(other)->GetDevMode(), nullptr);
}

TEST_F(NativeData, RefusesPrivateBytesAndDeviceModesThatDoNotFit) {
    ASSERT_TRUE(native().Initialize(*data_, "Plotter"));
    data_->SetNoCopies(2);
    std::vector<char> bytes(70000, 'x');
    data_->SetPrivData(bytes.data(), 8);
    EXPECT_TRUE(native().TransferFrom(*data_));
    for (const int length : {2000, 65535, 65536, 70000}) {
        data_->SetNoCopies(3);
        data_->SetPrivData(bytes.data(), length);
        EXPECT_FALSE(native().TransferFrom(*data_)) << length;
        EXPECT_EQ(mode().dmCopies, 2) << length;
        EXPECT_EQ(mode().dmDriverExtra, 8) << length;
    }
    data_->SetPrivData(nullptr, 0);

    for (const WORD claimed : {WORD{60000}, WORD{65535}}) {
        edit([claimed](DEVMODEW& mode) { mode.dmDriverExtra = claimed; });
        EXPECT_FALSE(native().TransferTo(*data_));
        EXPECT_FALSE(native().TransferFrom(*data_));
        EXPECT_FALSE(native().ResolveConflicts(*data_));
        EXPECT_EQ(wut::DEVMODE_RAII(*data_).get(), nullptr);
        EXPECT_EQ(data_->GetPrivDataLen(), 0);
        EXPECT_EQ(locks(), 0u);
    }
    edit([](DEVMODEW& mode) { mode.dmDriverExtra = 8, mode.dmSize = 0; });
    EXPECT_FALSE(native().TransferTo(*data_));
}

TEST_F(NativeData, IsCorrectedByTheDriver) {
    plotter_.correct = [](DEVMODEW& mode) {
        if (mode.dmCopies > 4) {
            mode.dmCopies = 4;
        }
    };
    ASSERT_TRUE(native().Initialize(*data_, "Plotter"));
    data_->SetNoCopies(99);
    const int closed = fake_.calls["close"];
    ASSERT_TRUE(data_->ResolveConflicts());
    EXPECT_EQ(data_->GetNoCopies(), 4);
    EXPECT_EQ(fake_.modes.back(), DWORD{DM_IN_BUFFER | DM_OUT_BUFFER});
    EXPECT_EQ(fake_.calls["close"], closed + 1);
    EXPECT_EQ(locks(), 0u);

    // A driver that fails then has nothing to correct.
    plotter_.fillFails = true;
    data_->SetNoCopies(3);
    EXPECT_TRUE(data_->ResolveConflicts());
    EXPECT_EQ(data_->GetNoCopies(), 3);
}

TEST_F(NativeData, StaysLockedWhenItsPrinterIsGone) {
    ASSERT_TRUE(native().Initialize(*data_, "Plotter"));
    fake_.remove(L"Plotter");
    EXPECT_FALSE(native().ResolveConflicts(*data_));
    EXPECT_EQ(locks(), 1u);
    EXPECT_FALSE(data_->ResolveConflicts());
    EXPECT_EQ(locks(), 2u);
}

TEST_F(NativeData, IsCorrectedWhereItIsLocked) {
    // A device mode of the default printer has no byte more than its driver needs.
    fake_.defaultName = L"Plotter";
    plotter_.correct = [](DEVMODEW& mode) { mode.dmCopies = 4; };
    ASSERT_TRUE(native().Initialize(*data_, ""));
    ASSERT_EQ(GlobalSize(handle()), sizeof(DEVMODEW) + 8);
    EXPECT_NE(GlobalLock(handle()), nullptr);
    ASSERT_TRUE(data_->ResolveConflicts());
    EXPECT_EQ(data_->GetNoCopies(), 4);

    auto away = std::move(fake_.printers.front());
    fake_.printers.clear();
    EXPECT_FALSE(data_->ResolveConflicts());
    fake_.printers.push_back(std::move(away));
    EXPECT_TRUE(data_->ResolveConflicts()) << "it is back";
    fake_.add(L"Office").devMode.dmScale = 77;
    data_->SetPrinterName("Office");
    EXPECT_TRUE(data_->ResolveConflicts()) << "another one";

    // More than there is room for is left where it is.
    fake_.find(L"Office")->privateBytes.resize(9);
    data_->SetNoCopies(6);
    EXPECT_FALSE(data_->ResolveConflicts());
    EXPECT_EQ(mode().dmCopies, 6);
    EXPECT_EQ(mode().dmDriverExtra, 8);
    while (locks() != 0) {
        GlobalUnlock(handle());
    }
    EXPECT_TRUE(data_->ResolveConflicts());
    EXPECT_EQ(mode().dmDriverExtra, 9);
}

TEST_F(NativeData, GrowsWithItsDriver) {
    ASSERT_TRUE(native().Initialize(*data_, "Plotter"));
    data_->SetNoCopies(7);
    plotter_.privateBytes.assign(5000, 0x5A);
    ASSERT_TRUE(data_->ResolveConflicts());
    EXPECT_EQ(data_->GetNoCopies(), 7);
    ASSERT_EQ(data_->GetPrivDataLen(), 5000);
    EXPECT_EQ(data_->GetPrivData()[4999], 0x5A);
    EXPECT_EQ(data_->GetPrivData()[0], 1) << "the bytes that were there";

    plotter_.privateBytes.resize(4);
    data_->SetPrivData(nullptr, 0);
    ASSERT_TRUE(data_->ResolveConflicts());
    EXPECT_EQ(data_->GetPrivDataLen(), 4);

    // One that writes other than it says changes nothing.
    plotter_.growsBy = 60000;
    data_->SetNoCopies(8);
    EXPECT_FALSE(data_->ResolveConflicts());
    EXPECT_EQ(mode().dmDriverExtra, 4);
    EXPECT_EQ(mode().dmCopies, 8);
    EXPECT_EQ(locks(), 0u);
}

TEST_F(NativeData, IsLockedForAScope) {
    ASSERT_TRUE(native().Initialize(*data_, "Plotter"));
    plotter_.correct = [](DEVMODEW& mode) { mode.dmPaperSize = DMPAPER_LETTER; };
    {
        wut::DEVMODE_RAII locked(*data_);
        ASSERT_TRUE(static_cast<bool>(locked));
        EXPECT_EQ(locks(), 1u);
        EXPECT_EQ(locked.get(), static_cast<DEVMODEW*>(locked));
        EXPECT_EQ(locked->dmPaperSize, DMPAPER_LETTER);

        wut::DEVMODE_RAII copy(locked);
        EXPECT_EQ(static_cast<DEVMODEW*>(copy), nullptr);
        const bool isLocked = copy;
        EXPECT_TRUE(isLocked);
        EXPECT_EQ(copy.get(), locked.get());
        EXPECT_EQ(locks(), 2u);

        locked->dmCopies = 6;
        locked.updatePrintData();
        EXPECT_EQ(data_->GetNoCopies(), 6);
        EXPECT_EQ(data_->GetPaperId(), wxPAPER_LETTER);

        locked.release();
        EXPECT_EQ(static_cast<DEVMODEW*>(locked), nullptr);
        data_->SetNoCopies(1);
        locked.updatePrintData();
        EXPECT_EQ(data_->GetNoCopies(), 1) << "not locked";
        locked.release();
        EXPECT_EQ(locks(), 1u);
        EXPECT_NE(locked.get(), nullptr);
    }
    EXPECT_EQ(locks(), 0u);
}

TEST_F(NativeData, HasNothingToLockWithoutAPrinter) {
    fake_.printers.clear();
    wut::DEVMODE_RAII locked(*data_);
    EXPECT_FALSE(static_cast<bool>(locked));
    locked.updatePrintData();
    EXPECT_EQ(handle(), nullptr);
    // It is looked for again.
    fake_.add(L"Late");
    data_->SetPrinterName("Late");
    EXPECT_TRUE(static_cast<bool>(locked));
}

TEST_F(NativeData, TakesDriversThatSetTheMediaBitForNoMedia) {
    plotter_.devMode.dmFields |= DM_MEDIATYPE;
    data_->SetMedia(5);
    ASSERT_TRUE(native().Initialize(*data_, "Plotter"));
    EXPECT_EQ(data_->GetMedia(), wxPRINTMEDIA_DEFAULT);
    EXPECT_NE(mode().dmFields & DM_MEDIATYPE, 0u);
}

}  // namespace
