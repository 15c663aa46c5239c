#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <string>
#include <vector>

#include <platen/print.h>
#include "tests/support/fake_spooler.h"

namespace {

using test_support::FakePrinter;

class DevModes : public testing::Test {
protected:
    wut::DevModePtr get(const wchar_t* name = L"Plotter") {
        return wut::DevModePtr(wut::getDevMode(name));
    }

    test_support::FakeSpooler fake_;
    FakePrinter& plotter_ = fake_.add(L"Plotter");
    wut::SpoolerForTest inPlace_{fake_};
};

TEST_F(DevModes, AreTheDriversDefaultWithItsPrivateBytes) {
    const wut::DevModePtr mode = get(L"PLOTTER");
    ASSERT_TRUE(mode);
    EXPECT_EQ(std::wstring(mode->dmDeviceName), L"Plotter");
    EXPECT_EQ(mode->dmPaperSize, DMPAPER_A4);
    ASSERT_EQ(mode->dmDriverExtra, 8);
    const auto* privateBytes = reinterpret_cast<const unsigned char*>(mode.get()) + mode->dmSize;
    EXPECT_EQ(std::vector<unsigned char>(privateBytes, privateBytes + 8), plotter_.privateBytes);
    EXPECT_TRUE(fake_.handles.empty());
    EXPECT_FALSE(get(L"Gone"));
    EXPECT_FALSE(get(nullptr));
}

TEST_F(DevModes, OfDriversThatAreWrongAreRefused) {
    struct Fault {
        const char* what;
        void (*make)(FakePrinter&);
    };
    const Fault faults[] = {
        {"properties fail", [](FakePrinter& printer) { printer.propertiesFail = true; }},
        {"only the size is told", [](FakePrinter& printer) { printer.fillFails = true; }},
        {"negative size", [](FakePrinter& printer) { printer.size = -220; }},
        {"no size", [](FakePrinter& printer) { printer.size = 0; }},
        {"absurd size", [](FakePrinter& printer) { printer.size = 0x7FFFFFFF; }},
        {"claims more than there is", [](FakePrinter& printer) { printer.growsBy = 60000; }},
        {"public part too short", [](FakePrinter& printer) { printer.devMode.dmSize = 100; }},
        {"public part too long", [](FakePrinter& printer) { printer.devMode.dmSize = 0xFFFF; }},
    };
    for (const Fault& fault : faults) {
        fault.make(fake_.add(L"Wrong"));
        EXPECT_FALSE(get(L"Wrong")) << fault.what;
        EXPECT_TRUE(fake_.handles.empty()) << fault.what;
        fake_.remove(L"Wrong");
    }
}

TEST_F(DevModes, OfDriversThatWriteALittleMoreThanTheyAskForAreTaken) {
    plotter_.size = sizeof(DEVMODEW);
    const wut::DevModePtr mode = get();
    ASSERT_TRUE(mode);
    EXPECT_EQ(mode->dmDriverExtra, 8);
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
    DEVMODEW mode = {};
    // A name that fills its array has no terminator.
    std::wmemset(mode.dmDeviceName, L'P', CCHDEVICENAME);
    mode.dmSpecVersion = 0x0401;
    mode.dmDriverVersion = 65535;
    mode.dmFields = 0xFEDCBA98;
    mode.dmOrientation = 2;
    mode.dmPaperSize = 256;
    mode.dmPaperLength = -1;
    mode.dmPaperWidth = 32767;
    mode.dmScale = 100;
    mode.dmCopies = 3;
    mode.dmDefaultSource = 15;
    mode.dmPrintQuality = -4;
    mode.dmColor = 2;
    mode.dmDuplex = 1;
    mode.dmYResolution = 600;
    mode.dmTTOption = 4;
    mode.dmCollate = 1;
    std::wcscpy(mode.dmFormName, L"ISO A4");
    mode.dmLogPixels = 96;
    mode.dmBitsPerPel = 0x18;
    mode.dmPelsWidth = 0x1000;
    mode.dmPelsHeight = 0x2000;
    mode.dmNup = 0xAB;
    mode.dmDisplayFrequency = 0x3C;
    mode.dmICMMethod = 1;
    mode.dmICMIntent = 2;
    mode.dmMediaType = 0x101;
    mode.dmDitherType = 5;
    mode.dmReserved1 = 6;
    mode.dmReserved2 = 7;
    mode.dmPanningWidth = 8;
    mode.dmPanningHeight = 0xFFFFFFFF;
    EXPECT_EQ(dump(withPrivateBytes(mode, sizeof(DEVMODEW), 0)),
              L"dmDeviceName = PPPPPPPPPPPPPPPPPPPPPPPPPPPPPPPP\ndmSpecVersion = 1025\n"
              L"dmDriverVersion = 65535\ndmSize = 220\ndmDriverExtra = 0\ndmFields = FEDCBA98\n"
              L"dmOrientation = 2\ndmPaperSize = 256\ndmPaperLength = -1\ndmPaperWidth = 32767\n"
              L"dmScale = 100\ndmCopies = 3\ndmDefaultSource = 15\ndmPrintQuality = -4\n"
              L"dmColor = 2\ndmDuplex = 1\ndmYResolution = 600\ndmTTOption = 4\ndmCollate = 1\n"
              L"dmFormName = ISO A4\ndmLogPixels = 96\ndmBitsPerPel = 18\ndmPelsWidth = 1000\n"
              L"dmPelsHeight = 2000\ndmDisplayFlags/dmNup = AB\ndmDisplayFrequency = 3C\n"
              L"dmICMMethod = 1\ndmICMIntent = 2\ndmMediaType = 101\ndmDitherType = 5\n"
              L"dmReserved1 = 6\ndmReserved2 = 7\ndmPanningWidth = 8\ndmPanningHeight = FFFFFFFF\n"
              L"\nprivate data:\nNo\n");
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
