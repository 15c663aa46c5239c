// What the shared library does when it is loaded into a program that speaks another language. Under
// Wine loading it into a running program does not return; the package's test starts with it there.

#include <platen/plotcfg.h>

#include <gtest/gtest.h>
#include <wx/dynlib.h>
#include <wx/init.h>

#include <vector>

#include "tests/support/german.h"

namespace {

TEST(Translations, OfDevicesAreMadeWhenTheLibraryIsLoaded) {
    const wxInitializer wx;
    const German german{{"Built-in direct output to PDF", "Eingebaute Ausgabe als PDF"}};
    wxDynamicLibrary library(PLATEN_LIBRARY);
    ASSERT_TRUE(library.IsLoaded());
    const auto* devices = reinterpret_cast<const std::vector<BuiltInPlotDevice>*>(
        library.GetSymbol("_ZN17BuiltInPlotDevice21s_cBuiltInPlotDevicesE"));
    ASSERT_NE(devices, nullptr);
    EXPECT_EQ(devices->front().description.text(), L"Eingebaute Ausgabe als PDF");
    // This program has a table of its own, which was made without the layer.
    EXPECT_EQ(BuiltInPlotDevice::s_cBuiltInPlotDevices.front().description.text(),
              L"Built-in direct output to PDF");
}

}  // namespace
