#include <wx/string.h>

#include <iterator>

#include <platen/print.h>  // which brings the papers on every system
#include "tests/support/documents.h"

namespace {

using enum OdDbPlotSettings::PlotPaperUnits;

Config created(const wchar_t* device) { return Config(CPlotCfg3::create(device)); }

TEST(BuiltInDevices, AreFoundWithoutRegardToCase) {
    const struct {
        const wchar_t* name;
        const wchar_t* extension;
        const wchar_t* modelName;
        const wchar_t* description;
    } devices[] = {
        {L"pRINT aS pdf", L"pdf", L"PDF", L"Built-in direct output to PDF"},
        {L"print as bmp", L"bmp", L"bmp", L"Built-in direct output to BMP"},
        {L"PRINT AS PNG", L"png", L"Png", L"Built-in direct output to PNG"},
        {L"Print As JPG", L"jpg", L"jFIF", L"Built-in direct output to JPG"},
        {L"Print as Tif", L"tif", L"TiffComp", L"Built-in direct output to TIF"},
    };
    ASSERT_EQ(BuiltInPlotDevice::s_cBuiltInPlotDevices.size(), std::size(devices));
    int type = 0;
    for (const auto& [name, extension, modelName, description] : devices) {
        const BuiltInPlotDevice* device = BuiltInPlotDevice::getByName(name);
        ASSERT_NE(device, nullptr);
        EXPECT_EQ(BuiltInPlotDevice::getByModelName(modelName), device);
        EXPECT_EQ(device->type, type++);
        EXPECT_EQ(device->extension, OdString(extension));
        EXPECT_EQ(device->description, OdString(description));
    }
    for (const wchar_t* other : {L"", L"None", L"jpg", L"tiff", L"Print As PDF "}) {
        EXPECT_EQ(BuiltInPlotDevice::getByName(other), nullptr);
    }
    EXPECT_EQ(BuiltInPlotDevice::getByModelName(L"jpg"), nullptr);
}

TEST(BuiltInDevices, AreRecognised) {
    const struct {
        const char* model;
        const char* custom;
        int type;
    } cases[] = {
        {"TIFFCOMP", "", 4},
        {"pdf", "", 0},
        {"tif", "", -1},
        {"jfif", "custom{\n0{\nname=\"PdfExport\nvalue=TRUE\n}\n}\n", 3},
        {"other", "custom{\n0{\nname=\"PdfExport\nvalue=TRUE\n}\n}\n", 0},
        {"other", "custom{\n0{\nname=\"PdfExport\nvalue=FALSE\n}\n}\n", -1},
        {"other", "custom{\n0{\nname=\"PdfExport\nvalue=1\n}\n}\n", -1},
    };
    for (const auto& entry : cases) {
        const Config config =
            configOf(edited(bareConfiguration, "canonical_model_name=\"",
                            std::string("canonical_model_name=\"") + entry.model) +
                     entry.custom);
        ASSERT_NE(config, nullptr);
        EXPECT_EQ(config->builtInDevice() == nullptr ? -1 : config->builtInDevice()->type,
                  entry.type);
        EXPECT_EQ(CPlotCfg3::isBuiltInPDF(config.get()), entry.type == 0);
        EXPECT_EQ(CPlotCfg3::isBuiltInImage(config.get()), entry.type > 0);
        double width = -1;
        double height = -1;
        config->getMaxPaperDimensions(width, height);
        EXPECT_EQ(width, entry.type < 0 ? 0 : entry.type == 0 ? 5080 : 320000);
        EXPECT_EQ(height, width);
    }
    EXPECT_FALSE(CPlotCfg3::isBuiltInPDF(nullptr) || CPlotCfg3::isBuiltInImage(nullptr));
}

TEST(BuiltInDevices, ConfigurationsHoldTheirDefaults) {
    const Config pdf = created(L"print as PDF");
    EXPECT_EQ(pdf->meta.localizedModelName, L"print as PDF");
    EXPECT_EQ(pdf->meta.canonicalModelName, L"pdf");
    EXPECT_EQ(pdf->meta.canonicalFamilyName, L"Autodesk ePlot");
    EXPECT_EQ(pdf->meta.configDescription, L"Built-in direct output to PDF");
    EXPECT_TRUE(pdf->meta.fileOnly && pdf->meta.truetypeAsText && pdf->io.plotToFile);
    EXPECT_TRUE(pdf->resColorMem.numColors == 16777216 && pdf->resColorMem.colorDepth == 24);
    EXPECT_EQ(pdf->resColorMem.linesOverwrite, std::optional(true));
    const auto& resolution = pdf->resColorMem.resolution;
    EXPECT_EQ(resolution.name, L"2400x2400");
    EXPECT_TRUE(resolution.physResolutionY == 2400 && resolution.addrResolutionY == 2400 &&
                resolution.effectiveResolutionX == 1);
    EXPECT_EQ(pdf->media.size.name, L"A0");
    EXPECT_EQ(pdf->custom->bools().size() + pdf->custom->numbers().size(), 10u);
    EXPECT_EQ(pdf->custom->numbers().at(L"PdfImageDPI"), L"300");

    const Config jpg = created(L"Print As JPG");
    EXPECT_EQ(jpg->meta.canonicalModelName, L"jfif");
    EXPECT_EQ(jpg->meta.canonicalFamilyName, L"Raster File Formats");
    EXPECT_EQ(jpg->custom->numbers().at(L"RASTER_RGB_Back_Color"), L"16777215");
    EXPECT_FALSE(!jpg->custom->bools().empty() || jpg->resColorMem.linesOverwrite);
    EXPECT_EQ(jpg->media.size.name, L"VGA_(640.00_x_480.00_Pixels)");
}

TEST(BuiltInDevices, EveryPaperSurvivesItsFile) {
    for (const BuiltInPlotDevice& device : BuiltInPlotDevice::s_cBuiltInPlotDevices) {
        const bool pdf = device.type == BuiltInPlotDevice::Pdf;
        const wut::PaperSizeInfo* papers = pdf ? wut::cPdfPapers : wut::cImagePapers;
        const std::size_t count = pdf ? wut::cPdfPapersCount : wut::cImagePapersCount;
        const Config config = created(device.name.c_str());
        for (std::size_t index = 0; index < count; ++index) {
            const wut::PaperSizeInfo& paper = papers[index];
            SCOPED_TRACE(ut::encodeUtf8(paper.displayName));
            bool changed = false;
            config->setPaperSize(index, pdf, changed);
            EXPECT_EQ(changed, index != 0);
            const Config again = configOf(bodyOfDocument(*config));
            ASSERT_NE(again, nullptr);
            EXPECT_EQ(again->builtInDevice(), &device);
            const CMediaNode& media = again->media;
            EXPECT_EQ(media.size.name, paper.canonicalName);
            const auto& description = media.size.mediaDescription;
            const double scale = paper.units == kInches ? 25.4 : 1;
            const double right = paper.width - paper.right;
            const double top = paper.height - paper.top;
            const std::pair<double, double> lengths[] = {
                {description.mediaBounds.urx, paper.width},
                {description.mediaBounds.ury, paper.height},
                {description.printableBoundsLlx, paper.left},
                {description.printableBoundsLly, paper.bottom},
                {description.printableBoundsUrx, right},
                {description.printableBoundsUry, top},
                {media.actualPrintableBoundsLlx, paper.left},
                {media.actualPrintableBoundsLly, paper.bottom},
                {media.actualPrintableBoundsUrx, right},
                {media.actualPrintableBoundsUry, top},
                {description.printableArea / scale, (right - paper.left) * (top - paper.bottom)}};
            for (const auto& [written, length] : lengths) {
                EXPECT_NEAR(written, length * scale, 0.5e-6);
            }
            EXPECT_EQ(description.dimensional, paper.units != kPixels);
        }
    }
}

TEST(BuiltInDevices, ColorSchemes) {
    const struct {
        int index;
        bool color;
        int depth;
        int colors;
        int undithered;
        int current;
        std::size_t names;
    } cases[] = {
        {0, true, 32, 16777215, 32, 0, 3}, {1, true, 24, 16777215, 24, 1, 3},
        {2, true, 8, 256, 8, 2, 3},        {7, true, 8, 256, 8, 2, 3},
        {0, false, 8, 256, -8, 0, 2},      {1, false, 1, 2, -1, 1, 2},
        {-1, false, 1, 2, -1, 1, 2},       {3, true, 1, 2, 1, 0, 3},
    };
    const Config config = created(L"Print As PNG");
    for (const auto& entry : cases) {
        config->setColorScheme(entry.index, entry.color);
        EXPECT_EQ(config->resColorMem.colorDepth, entry.depth);
        EXPECT_EQ(config->resColorMem.numColors, entry.colors);
        EXPECT_EQ(config->resColorMem.numUnditheredColors, entry.undithered);
        int current = 77;
        EXPECT_EQ(config->getAvailableColorSchemes(current).size(), entry.names);
        EXPECT_EQ(current, entry.current);
    }
    int current = 77;
    config->resColorMem.numUnditheredColors = 0;
    EXPECT_EQ(config->getAvailableColorSchemes(current).size(), 3u);
    EXPECT_EQ(config->getAvailableColorSchemes(current)[0], OdString(L"16777215 colors / 32 bit"));
    const Config pdf = created(L"Print As PDF");
    pdf->setColorScheme(1, false);
    EXPECT_EQ(pdf->resColorMem.colorDepth, 24);
    current = 77;
    EXPECT_TRUE(pdf->getAvailableColorSchemes(current).isEmpty());
    EXPECT_EQ(current, 77);
}

TEST(PdfOptions, ComeBackFromAConfiguration) {
    wut::ExportPdfOptions options;
    options.openInViewer = options.embedTrueType = options.exportHyperlinks = false;
    options.createBookmarks = options.imageAntiAlias = false;
    options.imageCompression = 2;
    options.imageDpi = 150;
    options.pdfA = 3;
    options.layersSetting = 0;
    options.linesMerge = options.trueTypeAsGeometry = true;
    options.resolution = 600;
    const auto written = [](const wut::ExportPdfOptions& from) {
        Config config = created(L"Print As BMP");
        config->custom.reset();
        from.writeToPc3(*config);
        return config;
    };
    const Config config = written(options);
    EXPECT_EQ(config->resColorMem.linesOverwrite, std::optional(false));
    EXPECT_EQ(config->resColorMem.resolution.name, L"600x600");
    EXPECT_FALSE(config->meta.truetypeAsText || config->custom->getPdfOpenInViewer());
    EXPECT_EQ(config->custom->bools().size() + config->custom->numbers().size(), 9u);
    EXPECT_EQ(bodyOfDocument(*written(wut::ExportPdfOptions(*config))), bodyOfDocument(*config));

    // Absent properties leave the record as it was, but for the viewer.
    config->custom.emplace();
    config->resColorMem.linesOverwrite.reset();
    config->resColorMem.resolution.physResolutionX = 1e300;
    options.readFromPc3(*config);
    EXPECT_TRUE(options.openInViewer && !options.embedTrueType && options.imageDpi == 150 &&
                !options.linesMerge && options.resolution > 0);
}

CustomPaperSize paperOf(std::int32_t source, const wchar_t* name, std::int32_t units) {
    return {source, name, name, units, 8.5, 11, 0.25, 0.5, 0.75, 1};
}

TEST(CustomPaper, ComesBackFromAPmpInEveryUnit) {
    const struct {
        std::int32_t units;
        const wchar_t* sizeName;
        const wchar_t* descriptionName;
    } cases[] = {
        {kInches, L"UserDefinedImperial (8.50 x 11.00Inches)",
         L"UserDefinedImperial Portrait 215.90W x 279.40H - (6, 13) x (197, 254) =45968 MM"},
        {kMillimeters, L"UserDefinedMetric (8.50 x 11.00MM)",
         L"UserDefinedMetric Portrait 8.50W x 11.00H - (0, 0) x (8, 10) =71 MM"},
        {kPixels, L"UserDefinedRaster (8.50 x 11.00Pixels)",
         L"UserDefinedRaster Portrait 8.50W x 11.00H - (0, 0) x (8, 10) =71 Pixels"},
    };
    for (const auto& entry : cases) {
        UdmNode udm;
        CustomPaperSize paper = paperOf(1, L"Mine", entry.units);
        paper.writeToPmp(udm);
        paper.writeToPmp(udm);
        const auto& sizes = udm.media->size.papers;
        const auto& descriptions = udm.media->description.papers;
        ASSERT_TRUE(sizes.size() == 2 && descriptions.size() == 2);
        EXPECT_EQ(sizes[0].name, entry.sizeName);
        EXPECT_EQ(sizes[1].name, std::wstring(entry.sizeName) + L"_1");
        EXPECT_EQ(sizes[0].localizedName, L"Mine");
        EXPECT_FALSE(sizes[0].landscapeMode);
        EXPECT_EQ(descriptions[0].name, entry.descriptionName);
        EXPECT_EQ(sizes[1].mediaDescriptionName, descriptions[1].name);
        EXPECT_NE(descriptions[0].name, descriptions[1].name);
        const double scale = entry.units == kInches ? 25.4 : 1;
        EXPECT_DOUBLE_EQ(descriptions[0].printableArea, 7.5 * 9.5 * scale * scale);
        EXPECT_EQ(descriptions[0].dimensional, entry.units != kPixels);

        CustomPaperSize again = paperOf(5, L"", 9);
        again.initFromPmp(udm, 1);
        paper.globalName = sizes[1].name;
        EXPECT_EQ(again, paper);
        // Once it has the name of its unit, it keeps it.
        UdmNode second;
        again.globalName = L"userDefined" + again.globalName.substr(11);
        std::swap(again.width, again.height);
        again.writeToPmp(second);
        EXPECT_EQ(second.media->size.papers[0].name, again.globalName);
        EXPECT_TRUE(second.media->size.papers[0].landscapeMode);
        // So does a paper in millimetres with a name of its own.
        again.globalName = L"Own";
        again.writeToPmp(second);
        EXPECT_EQ(second.media->size.papers[1].name == L"Own", entry.units == kMillimeters);
    }
}

TEST(CustomPaper, ReadsWhatItWrites) {
    PiaInput input;
    ASSERT_TRUE(input.openBody(fullConfiguration));
    PiaBlock copy(L"0");
    CustomPaperSize paper;
    const auto* block = piaFindItems(*input.root(), L"media/custom_papers/0").at(0);
    ASSERT_TRUE(paper.initFromPc3(static_cast<const PiaBlock&>(*block)) && paper.writeToPc3(copy));
    EXPECT_EQ(piaBodyText(copy), piaBodyText(static_cast<const PiaBlock&>(*block)));
}

/// What nothing was done to stays as it is, whatever other programs call their papers.
TEST(CustomPaper, NamesOfAPmpSurviveAnUnchangedList) {
    const Config config = created(L"Print As PDF");
    config->attachPMP(parametersOf(fullParameters).release());
    auto& sizes = config->pmp()->udm.media->size.papers;
    const PmpSizeNode::PaperSize entry = sizes.front();
    sizes.clear();
    for (const wchar_t* name : {L"Roll", L"ROLL_1", L"UserDefinedImperial (1.00 x 1.00Inches)",
                                L"Long roll", L"userdefinedraster x"}) {
        sizes.push_back(entry);
        sizes.back().name = name;
        sizes.back().localizedName = L"Roll";
    }
    // What people call one paper is no other's own name.
    sizes.back().localizedName = L"Roll 2";
    const auto names = [&] {
        std::vector<std::wstring> all;
        for (const auto& size : config->pmp()->udm.media->size.papers) {
            all.push_back(size.name);
        }
        return all;
    };
    const std::vector<std::wstring> before = names();
    wut::CustomPapers papers(config.get());
    papers.load();
    papers.save();
    EXPECT_EQ(names(), before);
    papers.append("Roll 2");
    papers.save();
    ASSERT_EQ(names().size(), before.size() + 1);
    EXPECT_EQ(names().back(), L"UserDefinedMetric (0.00 x 0.00MM)");
}

TEST(CustomPaper, WhatIsNotThereIsNotTaken) {
    CustomPaperSize paper = paperOf(0, L"Paper", kInches);
    UdmNode udm;
    EXPECT_FALSE(paper.initFromPmp(udm, 0));
    paper.writeToPmp(udm);
    EXPECT_FALSE(paper.initFromPmp(udm, 1));
    EXPECT_EQ(paper, paperOf(0, L"Paper", kInches));
    CMediaNode::CSizeNode size;
    size.setName(L"A4");
    EXPECT_FALSE(size.setName(nullptr));
    EXPECT_EQ(size.name, L"A4");
    CCustomNode custom;
    std::wstring text;
    int number = 0;
    EXPECT_FALSE(custom.setStr(L"x", nullptr, true) || custom.set(1, nullptr, true) ||
                 custom.set(true, nullptr, true) || custom.getStr(text, nullptr) ||
                 custom.get(number, nullptr));
}

TEST(CustomPaper, EqualityAllowsForRounding) {
    const CustomPaperSize paper = paperOf(0, L"Paper", kMillimeters);
    for (double CustomPaperSize::*length :
         {&CustomPaperSize::width, &CustomPaperSize::height, &CustomPaperSize::left,
          &CustomPaperSize::bottom, &CustomPaperSize::right, &CustomPaperSize::top}) {
        CustomPaperSize other = paper;
        other.*length += 1e-11;
        EXPECT_EQ(other, paper);
        other.*length += 1.5e-10;
        EXPECT_FALSE(other == paper);
    }
    EXPECT_FALSE(paperOf(1, L"Paper", kMillimeters) == paper);
    CustomPaperSize other = paper;
    other.localName = L"paper";
    EXPECT_FALSE(other == paper);
}

TEST(CustomPaper, GoesWhereItsSourceSays) {
    const Config config = created(L"Print As PDF");
    std::vector<CustomPaperSize> papers = {
        paperOf(1, L"in the PMP", kInches), paperOf(0, L"own", kMillimeters),
        paperOf(2, L"nowhere", kMillimeters), paperOf(1, L"in the PMP, too", kInches)};
    config->meta.userDefinedModelPathname = L"named.pmp";
    config->setCustomPaperSizes(papers);
    ASSERT_NE(config->pmp(), nullptr);
    EXPECT_EQ(config->pmp()->canonicalModelName, L"pdf");
    EXPECT_EQ(config->meta.userDefinedModelPathname, L"named.pmp");
    config->getCustomPaperSizes(papers);
    ASSERT_EQ(papers.size(), 3u);
    EXPECT_EQ(papers[0].localName, L"own");
    EXPECT_EQ(papers[1].localName, L"in the PMP");
    EXPECT_EQ(papers[2].globalName, L"UserDefinedImperial (8.50 x 11.00Inches)_1");
    // Each of the papers that came from the PMP still has a description of its own.
    EXPECT_EQ(papers[2].width, 8.5);

    bool changed = false;
    config->setPaperSize(2, true, changed);
    EXPECT_TRUE(changed);
    EXPECT_EQ(config->media.size.name, papers[2].globalName);
    EXPECT_DOUBLE_EQ(config->media.size.mediaDescription.mediaBounds.urx, 215.9);
    changed = false;
    config->setPaperSize(2, true, changed);
    EXPECT_FALSE(changed);
    config->setPaperSize(3, true, changed);
    EXPECT_TRUE(changed);
    config->setPaperSize(3 + wut::cPdfPapersCount, true, changed);
    EXPECT_EQ(config->media.size.name, L"A0");
    config->setPaperSize(2 + wut::cPdfPapersCount, true, changed);
    EXPECT_EQ(config->media.size.name, wut::cPdfPapers[wut::cPdfPapersCount - 1].canonicalName);

    config->setCustomPaperSizes({});
    EXPECT_NE(config->pmp(), nullptr);
    EXPECT_TRUE(config->media.customPapers->papers.empty());
    EXPECT_TRUE(config->pmp()->udm.media->description.papers.empty());
}

/// Names and descriptions are made and found for the whole list at once: as one by one.
TEST(CustomPaper, ListsAreAsWrittenOneByOne) {
    std::vector<CustomPaperSize> papers;
    for (int number = 0; number < 60; ++number) {
        papers.push_back(paperOf(1, L"A", number % 3));
        papers.back().width += number % 4;
        papers.back().globalName = number % 5 == 0 ? L"UserDefinedMetric A_1" : L"A";
    }
    const Config config = created(L"Print As PDF");
    config->setCustomPaperSizes(papers);
    UdmNode udm;
    for (const CustomPaperSize& paper : papers) {
        paper.writeToPmp(udm);
    }
    PiaTree one;
    PiaTree other;
    ASSERT_TRUE(udm.write(one.root()) && config->pmp()->udm.write(other.root()));
    EXPECT_TRUE(equalTrees(one.root(), other.root()));
    std::vector<CustomPaperSize> read;
    config->getCustomPaperSizes(read);
    ASSERT_EQ(read.size(), papers.size());
    for (std::size_t index = 0; index < read.size(); ++index) {
        CustomPaperSize single;
        single.initFromPmp(udm, index);
        EXPECT_EQ(read[index], single);
    }
    udm.media->description.papers.clear();
    CustomPaperSize lost;
    lost.initFromPmp(udm, 0);
    EXPECT_EQ(lost.width, 0);
}

class CustomPapersTest : public testing::Test {
protected:
    Config config_ = created(L"Print As PDF");
    wut::CustomPapers papers_{config_.get()};
};

TEST_F(CustomPapersTest, ConvertsBetweenUnits) {
    const struct {
        std::int32_t paper;
        OdDbPlotSettings::PlotPaperUnits shown;
        double seen;
        double stored;
    } cases[] = {
        {kMillimeters, kMillimeters, 254, 254},
        {kMillimeters, kInches, 10, 6451.6},
        {kMillimeters, kPixels, 254, 254},
        {kInches, kInches, 254, 254},
        {kInches, kMillimeters, 6451.6, 10},
        {kInches, kPixels, 6451.6, 10},
        {kPixels, kMillimeters, 254, 254},
        {kPixels, kInches, 10, 6451.6},
        {9, kMillimeters, 10, 10},
        {9, kInches, 10, 6451.6},
    };
    for (const auto& entry : cases) {
        // Each length is a multiple of its own.
        int times = 0;
        config_->setCustomPaperSizes(
            {{0, L"A", L"A", entry.paper, 254, 508, 762, 1016, 1270, 1524}});
        papers_.load();
        papers_.setDefaultUnits(entry.shown);
        for (const double seen :
             {papers_.getWidth(0), papers_.getHeight(0), papers_.getLeftMargin(0),
              papers_.getBottomMargin(0), papers_.getRightMargin(0), papers_.getTopMargin(0)}) {
            EXPECT_DOUBLE_EQ(seen, entry.seen * ++times) << entry.paper << entry.shown;
        }
        papers_.setSize(0, 254, 508);
        papers_.setLeftMargin(0, 762);
        papers_.setBottomMargin(0, 1016);
        papers_.setTopMargin(0, 1524);
        // Units that are named win over those that are shown.
        papers_.setDefaultUnits(entry.shown == kInches ? kMillimeters : kInches);
        papers_.setRightMargin(0, 1270, entry.shown);
        papers_.save();
        const CustomPaperSize& stored = config_->media.customPapers->papers[0];
        times = 0;
        for (const double length :
             {stored.width, stored.height, stored.left, stored.bottom, stored.right, stored.top}) {
            EXPECT_DOUBLE_EQ(length, entry.stored * ++times) << entry.paper << entry.shown;
        }
    }
}

TEST_F(CustomPapersTest, EditsACopy) {
    config_->setCustomPaperSizes({{0, L"Global", L"Local", kMillimeters, 1, 1, 0, 0, 0, 0}});
    papers_.load();
    ASSERT_EQ(papers_.size(), 1u);
    EXPECT_TRUE(papers_.isDuplicateName("Local") && papers_.isDuplicateName("Global"));
    EXPECT_FALSE(papers_.isDuplicateName("local"));
    papers_.setName(0, "Renamed");
    papers_.setDefaultUnits(kInches);
    papers_.append("Roll");
    papers_.setSize(1, 36, 100);
    EXPECT_EQ(config_->pmp(), nullptr);
    papers_.save();
    ASSERT_NE(config_->pmp(), nullptr);
    ASSERT_EQ(config_->pmp()->udm.media->size.papers.size(), 1u);
    EXPECT_EQ(config_->pmp()->udm.media->size.papers[0].localizedName, L"Roll");
    EXPECT_DOUBLE_EQ(config_->pmp()->udm.media->description.papers[0].mediaBoundsUrx, 914.4);
    EXPECT_EQ(config_->media.customPapers->papers[0].localName, L"Renamed");
    EXPECT_EQ(config_->media.customPapers->papers[0].globalName, L"Global");
    papers_.remove(0);
    EXPECT_EQ(papers_.getName(0), wxString("Roll"));
    EXPECT_EQ(papers_.size(), 1u);
}

/// The short forms of the setters go through the long ones, which a dialog's own model overrides.
TEST_F(CustomPapersTest, ShortSettersCallTheLongOnes) {
    class Counting : public wut::CustomPapers {
    public:
        using CustomPapers::CustomPapers;
        using CustomPapers::setBottomMargin;
        using CustomPapers::setLeftMargin;
        using CustomPapers::setRightMargin;
        using CustomPapers::setTopMargin;
        void setLeftMargin(unsigned, double, Units units) override { seen += units + 1; }
        void setRightMargin(unsigned, double, Units units) override { seen += units + 1; }
        void setTopMargin(unsigned, double, Units units) override { seen += units + 1; }
        void setBottomMargin(unsigned, double, Units units) override { seen += units + 1; }
        int seen = 0;
    };
    Counting counting(config_.get());
    counting.setDefaultUnits(kPixels);
    counting.setLeftMargin(0, 1);
    counting.setRightMargin(0, 1);
    counting.setTopMargin(0, 1);
    counting.setBottomMargin(0, 1);
    EXPECT_EQ(counting.seen, 12);
}

}  // namespace
