#include <cmath>
#include <iterator>
#include <regex>

#include "tests/support/documents.h"

namespace {

TEST(PlotConfiguration, IsWrittenBackAsItWas) {
    for (const std::string& body : {fullConfiguration, bareConfiguration}) {
        PiaReport report;
        const Config config = configOf(body, &report);
        ASSERT_NE(config, nullptr);
        EXPECT_EQ(report.warningCount(), 0u);
        EXPECT_EQ(bodyOfDocument(*config), body);
    }
}

TEST(PlotConfiguration, PartsAreDocumentsOfTheirOwn) {
    PiaInput input;
    ASSERT_TRUE(input.openBody(fullConfiguration));
    expectReadAndWritten<CMetaNode>(input, L"meta");
    expectReadAndWritten<CMediaNode>(input, L"media");
    expectReadAndWritten<CMediaNode::CSizeNode>(input, L"media/size");
    expectReadAndWritten<CMediaNode::CSizeNode::CMediaDescriptionNode>(
        input, L"media/size/media_description");
    expectReadAndWritten<CMediaNode::CDestinationNode>(input, L"media/destination");
    expectReadAndWritten<CMediaNode::CustomPapersNode>(input, L"media/custom_papers");
    expectReadAndWritten<CIoNode>(input, L"io");
    expectReadAndWritten<CResColorMemNode>(input, L"res_color_mem");
    expectReadAndWritten<CResColorMemNode::CResolutionNode>(input, L"res_color_mem/resolution");
}

TEST(PlotConfiguration, AnyKeyMayBeMissing) {
    expectOthersAreNeeded(
        fullConfiguration,
        {"media/size/longplot_reduction", "media/size/dm_", "media/destination/",
         "media/custom_papers/", "res_color_mem/ic", "res_color_mem/ism", "res_color_mem/ole",
         "res_color_mem/ha", "res_color_mem/pref", "res_color_mem/lines",
         "res_color_mem/color_mono", "res_color_mem/resolution/phys", "custom/"},
        configOf);
    for (const char* block : {"meta{", "media{", "io{", "res_color_mem{"}) {
        EXPECT_EQ(configOf(edited("\n" + bareConfiguration, std::string("\n") + block, "\nx{")),
                  nullptr);
    }
}

/// What is read in another way than it is written, and what is written only when it says something.
TEST(PlotConfiguration, ReadingAndWritingDiffer) {
    const std::string destination =
        " destination{\n  name=\"Default\n  collating_type=1\n  collating_name=\"Regular\n }\n";
    const std::string width = "   width=36.000000\n";
    const std::string fromWidth = fullConfiguration.substr(
        fullConfiguration.find(width),
        fullConfiguration.find("  }\n }\n}\nio{") - fullConfiguration.find(width));
    const struct {
        const char* what;
        std::string from;
        std::string to;
        std::string written;
        const char* warnings;
    } cases[] = {
        {"alias", " type=\"roll\n", " type_name=\"rolle\n", " type=\"rolle\n", ""},
        {"no reduction", "  longplot_reduction=0.500000\n", "  longplot_reduction=-1\n", "", ""},
        {"full scale", "  dm_scale=50\n", "  dm_scale=100\n", "", ""},
        {"no version", " dm_driver_version=1025\n", " dm_driver_version=0\n", "", ""},
        {"odd version", " dm_driver_version=1025\n", " dm_driver_version=x\n", "", ""},
        {"text as version", " dm_driver_version=1025\n", " dm_driver_version=\"1025\n", "", ""},
        {"no device", " win_driver_name=\"Driver name\n", " win_driver_name=\"\n", "", ""},
        {"empty net name", " short_net_name=\"short\n", "", " short_net_name=\"\n", ""},
        {"false", "default_system_cfg=FALSE", "default_system_cfg=false",
         "default_system_cfg=FALSE", ""},
        {"absent", " config_autospool=TRUE\n", "", "", ""},
        {"method 0", " icm_method=2\n", " icm_method=0\n", "", ""},
        {"no method", " icm_intent=3\n", "", "", ""},
        {"no maximum", " ism_max=0\n", " ism_max=-1\n", "", ""},
        {"maximum 0", " ole_max=1\n", " ole_max=0\n", " ole_max=0\n", ""},
        {"no maximum given", " ole_max=1\n", "", " ole_max=6\n", ""},
        {"no preference", " preference=75\n", "", " preference=50\n", ""},
        {"preference 0", " preference=75\n", " preference=0\n", "", ""},
        {"resolution", "  phys_resolution_x=600.0\n", "", "  phys_resolution_x=1.0\n", ""},
        {"rounded", "addr_resolution_x=601.5", "addr_resolution_x=1e2", "addr_resolution_x=100.0",
         ""},
        {"packed colours", "num_colors=16777216", "num_colors=4294967295", "num_colors=-1", ""},
        {"destination", destination, edited(destination, "  collating_type=1\n", ""), "",
         "block-dropped media/destination"},
        {"destination text", destination, edited(destination, "type=1", "type=on"), "",
         "block-dropped media/destination"},
        {"paper without width", fromWidth, "",
         "   width=0.000000\n   height=0.000000\n   left=0.000000\n   bottom=0.000000\n"
         "   right=0.000000\n   top=0.000000\n",
         "entry-partly-read media/custom_papers/0"},
        {"no block", " custom_papers{\n", " custom_papers{\n  1=5\n", " custom_papers{\n", ""},
        {"empty list",
         "  0{\n   global_name=\"Roll\n   local_name=\"Rolle\n   units=0\n" + fromWidth + "  }\n",
         "", "", ""},
        {"renumbered", " custom_papers{\n  0{\n", " custom_papers{\n  seven{\n",
         " custom_papers{\n  0{\n", ""},
    };
    for (const auto& entry : cases) {
        SCOPED_TRACE(entry.what);
        PiaReport report;
        const Config config = configOf(edited(fullConfiguration, entry.from, entry.to), &report);
        ASSERT_NE(config, nullptr);
        EXPECT_EQ(warningsOf(report), entry.warnings);
        EXPECT_EQ(bodyOfDocument(*config), edited(fullConfiguration, entry.from, entry.written));
    }
}

TEST(PlotConfiguration, CustomBlocks) {
    const std::string head = fullConfiguration.substr(0, fullConfiguration.find("custom{\n 0{"));
    const auto property = [](const std::string& name, const std::string& items) {
        return name + "{\n" + items + "}\n";
    };
    const std::string sound = property("0", "name=\"A\nvalue=1\n");
    const struct {
        const char* what;
        std::string content;
        /// The properties that are written; the first one at fault when none are.
        const char* written;
    } cases[] = {
        {"empty", "", "custom{\n}\n"},
        {"no blocks", "0=1\nname=\"A\n", "custom{\n}\n"},
        {"any name of the value, any case of the name", property("0", "NAME=\"A\nx=1\n"),
         "custom{\nA=1 }\n"},
        {"last wins", sound + property("1", "name=\"A\nvalue=2\n"), "custom{\nA=2 }\n"},
        {"a name in every map",
         sound + property("a", "name=\"A\nvalue=TRUE\n") + property("b", "name=\"A\nvalue=\"t\n") +
             property("c", "name=\"A\nvalue=\\00\\\n"),
         "custom{\nA=1 A=\\00\\ A=\"t A=TRUE }\n"},
        {"number by the text", property("0", "name=\"A\nvalue=abc\n"), "custom{\nA=abc }\n"},
        {"by units", property("0", "name=\"b\nvalue=1\n") + property("1", "name=\"B\nvalue=2\n"),
         "custom{\nB=2 b=1 }\n"},
        {"one item", property("0", "name=\"A\n"), "0"},
        {"three items", sound + property("1", "name=\"A\nvalue=1\nvalue=\"2\n"), "1"},
        {"name is no text", property("0", "name=5\nvalue=1\n"), "0"},
        {"other order", property("0", "value=\"A\nname=\"1\n"), "0"},
        {"block as value", property("0", "name=\"A\nvalue{\n}\n"), "0"},
    };
    const std::regex written(" \\d+\\{\n  name=\"(.*)\n  value=(.*)\n \\}\n");
    for (const auto& entry : cases) {
        SCOPED_TRACE(entry.what);
        PiaReport report;
        const Config config = configOf(head + property("custom", entry.content), &report);
        ASSERT_NE(config, nullptr);
        const std::string custom = bodyOfDocument(*config).substr(head.size());
        if (config->custom) {
            EXPECT_EQ(std::regex_replace(custom, written, "$1=$2 "), entry.written);
            EXPECT_EQ(report.warningCount(), 0u);
            continue;
        }
        EXPECT_EQ(custom, "");
        ASSERT_EQ(warningsOf(report), "block-dropped custom");
        EXPECT_TRUE(namesItsLine(head + property("custom", entry.content), report.warnings()[0]));
        EXPECT_EQ(ut::encodeUtf8(report.warnings()[0].found),
                  std::string("value-invalid at custom/") + entry.written);
    }
}

TEST(PlotConfiguration, PropertiesConvert) {
    PiaInput input;
    ASSERT_TRUE(
        input.openBody("0{\nname=\"odd\nvalue=12abc\n}\n1{\nname=\"text\nvalue=abc\n}\n"
                       "5{\nname=\"half\nvalue=1.0000000596046447753906251\n}\n"
                       "6{\nname=\"huge\nvalue=1e39\n}\n"
                       "2{\nname=\"tenth\nvalue=0.1\n}\n3{\nname=\"big\nvalue=4294967295\n}\n"
                       "4{\nname=\"bin\nvalue=\\0Fa\\\n}\n"));
    CCustomNode node;
    ASSERT_TRUE(node.init(*input.root()));
    int integer = -7;
    double real = -7;
    long wide = -7;
    unsigned long bits = 7;
    for (const wchar_t* name : {L"text", L"absent", L"ODD", L"bin"}) {
        EXPECT_FALSE(node.get(integer, name) || node.get(real, name) || node.get(wide, name) ||
                     node.get(bits, name));
        EXPECT_TRUE(integer == -7 && real == -7 && wide == -7 && bits == 7);
    }
    EXPECT_TRUE(node.get(integer, L"odd") && integer == 12);
    EXPECT_TRUE(node.get(real, L"tenth") && real == static_cast<double>(0.1F));
    // Half-way between two floats but for a bit that a double does not hold.
    EXPECT_TRUE(node.get(real, L"half") && real == static_cast<double>(std::nextafter(1.F, 2.F)));
    EXPECT_FALSE(node.get(real, L"huge"));
    EXPECT_TRUE(node.get(bits, L"big") && bits == 4294967295UL);
    EXPECT_TRUE(node.get(wide, L"big") && wide == -1L);
    std::wstring text;
    EXPECT_TRUE(node.getBin(text, L"bin") && text == L"0Fa");
    EXPECT_FALSE(node.getStr(text, L"bin"));
    bool flag = true;
    EXPECT_FALSE(node.get(flag, L"absent"));
}

TEST(PlotConfiguration, PropertiesAreAddedOnDemandOnly) {
    CCustomNode node;
    EXPECT_FALSE(node.set(5, L"n", false) || node.set(5L, L"n", false) ||
                 node.set(5UL, L"n", false) || node.set(5.0, L"n", false) ||
                 node.set(true, L"n", false) || node.setStr(L"5", L"n", false) ||
                 node.setBin(L"05", L"n", false));
    PiaTree tree;
    ASSERT_TRUE(node.write(tree.root()));
    EXPECT_TRUE(tree.root().items.empty());

    const auto number = [&] { return node.numbers().at(L"n"); };
    EXPECT_TRUE(node.set(-5, L"n", true) && number() == L"-5");
    EXPECT_TRUE(node.set(0.1, L"n", false) && number() == L"0.100000");
    EXPECT_TRUE(node.set(4294967295UL, L"n", false) && number() == L"4294967295");
    EXPECT_TRUE(node.set(-1L, L"n", false) && number() == L"-1");
    EXPECT_TRUE(node.set(true, L"n", true) && node.set(false, L"n", false));
    EXPECT_FALSE(node.bools().at(L"n"));

    OdCmColor color;
    color.setRGB(255, 255, 255);
    EXPECT_EQ(node.getRasterBkgColor(), color);
    color.setRGB(1, 2, 3);
    node.setRasterBkgColor(color);
    EXPECT_EQ(node.numbers().at(L"RASTER_RGB_Back_Color"), L"197121");
    EXPECT_EQ(node.getRasterBkgColor(), color);
}

TEST(PlotConfiguration, Bounds) {
    CMediaNode media;
    EXPECT_TRUE(media.emptyBounds());
    auto& description = media.size.mediaDescription;
    double* const lengths[] = {&media.actualPrintableBoundsLlx, &media.actualPrintableBoundsLly,
                               &media.actualPrintableBoundsUrx, &media.actualPrintableBoundsUry,
                               &description.printableBoundsLlx, &description.printableBoundsLly,
                               &description.printableBoundsUrx, &description.printableBoundsUry,
                               &description.mediaBounds.urx,    &description.mediaBounds.ury};
    double next = 1;
    for (double* length : lengths) {
        *length = next++;
    }
    description.printableArea = 1e-8;
    EXPECT_FALSE(media.emptyBounds());
    for (double* length : lengths) {
        const double kept = std::exchange(*length, 0.00009);
        EXPECT_TRUE(media.emptyBounds());
        *length = 0.0001;
        EXPECT_FALSE(media.emptyBounds());
        *length = kept;
    }
    description.printableArea = 0.9e-8;
    EXPECT_TRUE(media.emptyBounds());

    media.swapBounds();
    std::vector<double> swapped;
    std::transform(std::begin(lengths), std::end(lengths), std::back_inserter(swapped),
                   [](const double* length) { return *length; });
    EXPECT_EQ(swapped, (std::vector<double>{2, 1, 4, 3, 6, 5, 8, 7, 10, 9}));
}

TEST(PlotConfiguration, SettersTellWhetherTheyChangedAnything) {
    CMediaNode::CSizeNode size;
    EXPECT_FALSE(size.setName(L"A4"));
    EXPECT_TRUE(size.setName(L"A4"));
    EXPECT_FALSE(size.setName(L"a4"));
    CMediaNode::CDestinationNode destination;
    EXPECT_FALSE(destination.setCollating(false));
    EXPECT_EQ(destination.collatingName, L"None");
    EXPECT_TRUE(destination.setCollating(true));
    EXPECT_EQ(destination.collatingName, L"Regular");
}

}  // namespace
