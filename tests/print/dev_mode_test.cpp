#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <platen/print.h>
#include "tests/support/fake_spooler.h"

namespace {

using test_support::FakePrinter;

class DevModes : public testing::Test {
protected:
    wut::DevModePtr get(const wchar_t* name) { return wut::DevModePtr(wut::getDevMode(name)); }

    test_support::FakeSpooler fake_;
    FakePrinter& plotter_ = fake_.add(L"Plotter");
    wut::SpoolerForTest inPlace_{fake_};
};

TEST_F(DevModes, AreTheDriversDefaultWithItsPrivateBytes) {
    // Some write a little more than they ask for.
    for (const auto& asked : {std::optional<LONG>(), std::optional<LONG>(sizeof(DEVMODEW))}) {
        plotter_.size = asked;
        const wut::DevModePtr mode = get(L"PLOTTER");
        ASSERT_TRUE(mode);
        EXPECT_EQ(std::wstring(mode->dmDeviceName), L"Plotter");
        EXPECT_EQ(mode->dmPaperSize, DMPAPER_A4);
        ASSERT_EQ(mode->dmDriverExtra, 8);
        const auto* own = reinterpret_cast<const unsigned char*>(mode.get()) + mode->dmSize;
        EXPECT_EQ(std::vector<unsigned char>(own, own + 8), plotter_.privateBytes);
        EXPECT_TRUE(fake_.handles.empty());
    }
    EXPECT_FALSE(get(nullptr) || get(L"Gone"));
}

TEST_F(DevModes, OfDriversThatAreWrongAreRefused) {
    const std::pair<const char*, void (*)(FakePrinter&)> faults[] = {
        {"properties fail", [](FakePrinter& printer) { printer.propertiesFail = true; }},
        {"only the size is told", [](FakePrinter& printer) { printer.fillFails = true; }},
        {"negative size", [](FakePrinter& printer) { printer.size = -220; }},
        {"no size", [](FakePrinter& printer) { printer.size = 0; }},
        {"absurd size", [](FakePrinter& printer) { printer.size = 0x7FFFFFFF; }},
        {"claims more than there is", [](FakePrinter& printer) { printer.growsBy = 60000; }},
        {"public part too short", [](FakePrinter& printer) { printer.devMode.dmSize = 100; }},
        {"public part too long", [](FakePrinter& printer) { printer.devMode.dmSize = 0xFFFF; }},
    };
    for (const auto& [what, make] : faults) {
        make(fake_.add(L"Wrong"));
        EXPECT_FALSE(get(L"Wrong")) << what;
        EXPECT_TRUE(fake_.handles.empty()) << what;
        fake_.remove(L"Wrong");
    }
}

/// A device mode with `extra` private bytes 0xA0, 0xA1, ... after a public part of `size` bytes.
std::vector<std::byte> withPrivateBytes(DEVMODEW mode, WORD size, WORD extra) {
    mode.dmSize = size;
    mode.dmDriverExtra = extra;
    std::vector<std::byte> bytes(std::size_t(size) + extra);
    std::memcpy(bytes.data(), &mode, sizeof(mode));
    for (WORD i = 0; i < extra; ++i) {
        bytes[std::size_t(size) + i] = static_cast<std::byte>(0xA0 + i);
    }
    return bytes;
}

std::wstring dump(const std::vector<std::byte>& bytes) {
    OdString out = L"before";
    wut::dumpDevMode(*reinterpret_cast<const DEVMODEW*>(bytes.data()), out);
    return out.text();
}

TEST(DevModeDump, HasALineForEachField) {
    // Each byte says where it is, with and without the highest bit.
    DEVMODEW mode = {};
    auto* bytes = reinterpret_cast<unsigned char*>(&mode);
    for (std::size_t at = 0; at < sizeof(mode); ++at) {
        bytes[at] = static_cast<unsigned char>(at + 0x80);
    }
    // A name that fills its array has no terminator.
    std::wmemset(mode.dmDeviceName, L'P', CCHDEVICENAME);
    std::wcscpy(mode.dmFormName, L"ISO A4");
    EXPECT_EQ(dump(withPrivateBytes(mode, sizeof(DEVMODEW), 0)),
              L"dmDeviceName = PPPPPPPPPPPPPPPPPPPPPPPPPPPPPPPP\ndmSpecVersion = 49600\n"
              L"dmDriverVersion = 50114\ndmSize = 220\ndmDriverExtra = 0\ndmFields = CBCAC9C8\n"
              L"dmOrientation = -12852\ndmPaperSize = -12338\ndmPaperLength = -11824\n"
              L"dmPaperWidth = -11310\ndmScale = -10796\ndmCopies = -10282\n"
              L"dmDefaultSource = -9768\ndmPrintQuality = -9254\ndmColor = -8740\n"
              L"dmDuplex = -8226\ndmYResolution = -7712\ndmTTOption = -7198\ndmCollate = -6684\n"
              L"dmFormName = ISO A4\ndmLogPixels = 10022\ndmBitsPerPel = 2B2A2928\n"
              L"dmPelsWidth = 2F2E2D2C\ndmPelsHeight = 33323130\n"
              L"dmDisplayFlags/dmNup = 37363534\ndmDisplayFrequency = 3B3A3938\n"
              L"dmICMMethod = 3F3E3D3C\ndmICMIntent = 43424140\ndmMediaType = 47464544\n"
              L"dmDitherType = 4B4A4948\ndmReserved1 = 4F4E4D4C\ndmReserved2 = 53525150\n"
              L"dmPanningWidth = 57565554\ndmPanningHeight = 5B5A5958\n\nprivate data:\nNo\n");
}

TEST(DevModeDump, EndsWithSixteenPrivateBytesALine) {
    const std::wstring line = L"A0 A1 A2 A3 A4 A5 A6 A7 A8 A9 AA AB AC AD AE AF \n";
    const std::wstring heading = L"dmPanningHeight = 0\n\nprivate data:\n";
    // The private bytes follow the public part, however long that is.
    for (const WORD size : {WORD{220}, WORD{240}}) {
        const auto ends = [size](WORD extra, const std::wstring& end) {
            return dump(withPrivateBytes({}, size, extra)).ends_with(end);
        };
        EXPECT_TRUE(ends(1, heading + L"A0 \n"));
        EXPECT_TRUE(ends(16, heading + line));
        EXPECT_TRUE(ends(17, heading + line + L"B0 \n"));
    }
}

}  // namespace
