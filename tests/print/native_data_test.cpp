#include <gtest/gtest.h>
#include <wx/init.h>

#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <platen/print.h>
#include <platen/wx_layer.h>
#include "tests/support/fake_spooler.h"
#include "tests/support/log_keeper.h"

namespace {

using test_support::FakePrinter;
using wut::WindowsPrintNativeData;

class NativeData : public testing::Test {
protected:
    NativeData() {
        // Warnings go through the library's log.
        wut::registerWxLayer();
        wut::registerPrintFactory();
        data_.emplace();
    }
    ~NativeData() override {
        data_.reset();
        wut::unRegisterPrintFactory();
        wut::unregisterWxLayer();
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

    wxInitializer library_;
    LogKeeper log_;
    test_support::FakeSpooler fake_;
    FakePrinter& plotter_ = fake_.add(L"Plotter");
    wut::SpoolerForTest inPlace_{fake_};
    std::optional<wut::PrintData> data_;
};

TEST_F(NativeData, InitialisesFromTheNamedPrinterOnly) {
    fake_.defaultName = fake_.add(L"Office").name;
    ASSERT_TRUE(native().Initialize(*data_, "Plotter"));
    EXPECT_EQ(native().driverVersion, 0x0102);
    EXPECT_EQ(native().size, sizeof(DEVMODEW));

    // What cannot be had leaves everything as it is.
    EXPECT_FALSE(native().Initialize(*data_, "Gone"));
    plotter_.fillFails = true;
    EXPECT_FALSE(native().Initialize(*data_, "Plotter"));
    EXPECT_EQ(data_->GetPrinterName(), "Plotter");
    EXPECT_EQ(fake_.calls["printDialog"], 0);
    ASSERT_TRUE(native().Initialize(*data_, ""));
    EXPECT_EQ(data_->GetPrinterName(), "Office");
}

TEST_F(NativeData, InitialisesFromTheFirstPrinterWithoutADefault) {
    EXPECT_EQ(wut::PrintData(wut::PrintData::kInitFromSystem).GetPrinterName(), "Plotter");
    fake_.printers.clear();
    EXPECT_EQ(wut::PrintData(wut::PrintData::kInitFromSystem).GetPrinterName(), "");
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

TEST_F(NativeData, CarriesFieldsThatArePresent) {
    constexpr DWORD bits = DM_SCALE | DM_YRESOLUTION | DM_TTOPTION | DM_FORMNAME | DM_NUP |
                           DM_ICMMETHOD | DM_ICMINTENT | DM_DITHERTYPE;
    plotter_.devMode.dmFields |= bits;
    plotter_.devMode.dmScale = 50;
    plotter_.devMode.dmNup = 4;
    plotter_.devMode.dmDitherType = 5;
    std::wmemset(plotter_.devMode.dmFormName, L'F', CCHFORMNAME);  // not terminated
    ASSERT_TRUE(native().Initialize(*data_, "Plotter"));
    EXPECT_EQ(native().formName, std::wstring(32, L'F'));
    EXPECT_EQ(native().pagesPerSheet, 4u);

    native().driverVersion = 0x7777;
    native().formName = std::wstring(40, L'N');
    native().yResolution = native().ttOption = 1;
    native().icmMethod = native().icmIntent = 1;
    data_->SetQuality(wxPRINT_QUALITY_LOW);
    ASSERT_TRUE(native().TransferFrom(*data_));
    EXPECT_EQ(mode().dmDriverVersion, 0x0102);
    EXPECT_EQ(std::wstring(mode().dmFormName), std::wstring(31, L'N'));
    EXPECT_EQ(mode().dmFields & bits, bits);

    // What is absent loses its bit; the value stays.
    native().scale = 100;
    native().yResolution = native().ttOption = 0;
    native().formName.clear();
    native().pagesPerSheet = native().icmMethod = native().icmIntent = native().ditherType = 0;
    ASSERT_TRUE(native().TransferFrom(*data_));
    EXPECT_EQ(mode().dmFields & bits, 0u);
    EXPECT_EQ(mode().dmScale, 50);
    EXPECT_EQ(mode().dmDitherType, 5u);
    EXPECT_EQ(std::wstring(mode().dmFormName), std::wstring(31, L'N'));

    // And what has no bit is absent.
    ASSERT_TRUE(native().TransferTo(*data_));
    EXPECT_EQ(native().scale, 100);
    EXPECT_EQ(native().ditherType, 0u);
    EXPECT_EQ(native().formName, L"");
}

TEST_F(NativeData, StoresPapersThatWxWidgetsDoesNotKnow) {
    // 16 bits of tenths with a sign end at 3276 mm.
    constexpr DWORD id = DM_PAPERSIZE, width = DM_PAPERWIDTH, length = DM_PAPERLENGTH;
    const std::tuple<short, wxSize, short, DWORD, std::size_t> cases[] = {
        {300, {0, 0}, 300, id, 0},
        {300, {914, 3276}, 300, id | width | length, 0},
        // Without a number of the driver's only the size counts.
        {DMPAPER_USER, {914, 2000}, DMPAPER_USER, width | length, 0},
        {300, {914, 3277}, 300, id | width, 1},
        {300, {3277, 3277}, 300, id, 1},
        {300, {-5, 100}, 300, id | length, 1},
        {300, {2147483647, 914}, 300, id | length, 1},
        {0, {914, 4756}, DMPAPER_USER, width, 1},
        {0, {7000, -1798}, DMPAPER_A4, id, 1},
    };
    for (const auto& [number, size, expected, fields, warnings] : cases) {
        ASSERT_TRUE(native().Initialize(*data_, "Plotter"));
        data_->setDmPaperSize(number, &size);
        data_->SetNoCopies(7);
        log_.records.clear();
        EXPECT_TRUE(native().TransferFrom(*data_));
        EXPECT_EQ(log_.records.size(), warnings) << size.y;
        EXPECT_EQ(mode().dmCopies, 7);
        EXPECT_EQ(mode().dmPaperSize, expected) << size.y;
        EXPECT_EQ(mode().dmFields & (id | width | length), fields) << size.y;
        EXPECT_EQ(mode().dmPaperWidth, (fields & width) != 0 ? size.x * 10 : 0);
        EXPECT_EQ(mode().dmPaperLength, (fields & length) != 0 ? size.y * 10 : 0);
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
    EXPECT_TRUE(log_.records.empty());
    EXPECT_EQ(mode().dmCopies, 3);
    EXPECT_EQ(mode().dmPaperSize, 300);
    EXPECT_EQ(data_->GetPaperSize(), wxSize(841, 4756));
}

TEST_F(NativeData, TransfersGetTheDeviceModeThatIsMissing) {
    data_->SetPrinterName("Gone");
    EXPECT_FALSE(native().ResolveConflicts(*data_));
    EXPECT_FALSE(native().TransferTo(*data_));
    EXPECT_FALSE(data_->ResolveConflicts());
    EXPECT_EQ(handle(), nullptr);
    data_->SetPrinterName(fake_.add(L"Office").name);
    data_->SetNoCopies(3);
    ASSERT_TRUE(native().TransferFrom(*data_));
    EXPECT_EQ(std::wstring(mode().dmDeviceName), L"Office");
    EXPECT_EQ(mode().dmCopies, 3);
}

TEST_F(NativeData, RefusesPrivateBytesAndDeviceModesThatDoNotFit) {
    ASSERT_TRUE(native().Initialize(*data_, "Plotter"));
    data_->SetNoCopies(3);
    std::vector<char> bytes(70000, 'x');
    for (const int length : {2000, 65535, 65536, 70000}) {
        data_->SetPrivData(bytes.data(), length);
        EXPECT_FALSE(native().TransferFrom(*data_)) << length;
        EXPECT_EQ(mode().dmCopies, 1) << length;
        EXPECT_EQ(mode().dmDriverExtra, 8) << length;
    }
    data_->SetPrivData(nullptr, 0);
    for (const auto& [size, claimed] : {std::pair<WORD, WORD>(220, 60000), {220, 65535}, {0, 8}}) {
        auto* devMode = static_cast<DEVMODEW*>(GlobalLock(handle()));
        devMode->dmSize = size;
        devMode->dmDriverExtra = claimed;
        GlobalUnlock(handle());
        EXPECT_FALSE(native().TransferTo(*data_));
        EXPECT_FALSE(native().TransferFrom(*data_));
        EXPECT_FALSE(native().ResolveConflicts(*data_));
        EXPECT_EQ(wut::DEVMODE_RAII(*data_).get(), nullptr);
        EXPECT_EQ(data_->GetPrivDataLen(), 0);
        EXPECT_EQ(locks(), 0u);
    }
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
    EXPECT_EQ(locks(), 2u) << "it stays locked";
    fake_.printers.push_back(std::move(away));
    EXPECT_TRUE(data_->ResolveConflicts()) << "it is back";
    data_->SetPrinterName(fake_.add(L"Office").name);
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
    ASSERT_EQ(data_->GetPrivDataLen(), 9);
    EXPECT_EQ(data_->GetPrivData()[0], 1) << "the bytes that were there";
    // A driver that writes other than it says changes nothing, and one that fails has nothing to
    // correct.
    fake_.find(L"Office")->growsBy = 60000;
    EXPECT_FALSE(data_->ResolveConflicts());
    EXPECT_EQ(mode().dmDriverExtra, 9);
    fake_.find(L"Office")->fillFails = true;
    EXPECT_TRUE(data_->ResolveConflicts());
    EXPECT_EQ(data_->GetNoCopies(), 6);
    EXPECT_EQ(locks(), 0u);
    EXPECT_TRUE(fake_.handles.empty());
}

TEST_F(NativeData, IsLockedForAScope) {
    ASSERT_TRUE(native().Initialize(*data_, "Plotter"));
    plotter_.correct = [](DEVMODEW& mode) { mode.dmPaperSize = DMPAPER_LETTER; };
    {
        wut::DEVMODE_RAII locked(*data_);
        EXPECT_EQ(locks(), 1u);
        EXPECT_EQ(locked->dmPaperSize, DMPAPER_LETTER);

        wut::DEVMODE_RAII copy(locked);
        // Uses of the pointer do not lock, those of a bool do.
        EXPECT_TRUE(copy == NULL && locked != copy && (*locked).dmCopies == locked[0].dmCopies);
        EXPECT_EQ(locks(), 1u);
        EXPECT_TRUE(!!locked && locked);
        const bool isLocked = copy;
        EXPECT_TRUE(isLocked);
        EXPECT_EQ(copy.get(), locked.get());
        EXPECT_EQ(locks(), 2u);

        locked.release();
        EXPECT_EQ(static_cast<DEVMODEW*>(locked), nullptr);
        data_->SetNoCopies(6);
        locked.updatePrintData();
        EXPECT_EQ(data_->GetNoCopies(), 6) << "not locked";
        locked.release();
        EXPECT_EQ(locks(), 1u);
        EXPECT_NE(locked.get(), nullptr);
        plotter_.correct = [](DEVMODEW& mode) { mode.dmCopies = 4; };
        locked.updatePrintData();
        EXPECT_EQ(data_->GetNoCopies(), 4);
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
