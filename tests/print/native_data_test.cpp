#include <gtest/gtest.h>
#include <wx/init.h>

#include <optional>
#include <string>
#include <vector>

#include <platen/print.h>
#include "tests/support/fake_spooler.h"

namespace {

using test_support::FakePrinter;
using wut::WindowsPrintNativeData;

class NativeData : public testing::Test {
protected:
    NativeData() {
        wut::registerPrintFactory();
        data_.emplace();
    }
    ~NativeData() override {
        data_.reset();
        wut::unRegisterPrintFactory();
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

    // 16 bits of tenths end at 3276 mm.
    for (const wxSize size : {wxSize(914, 3277), wxSize(-5, 100)}) {
        data_->setDmPaperSize(DMPAPER_USER, &size);
        EXPECT_FALSE(native().TransferFrom(*data_)) << size.x << " x " << size.y;
        EXPECT_EQ(mode().dmPaperSize, DMPAPER_A4);
    }
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
