#include "tests/support/documents.h"
#include "tests/support/files.h"

namespace {

namespace fs = std::filesystem;

using Document = std::unique_ptr<PlotModelParam>;

OdArray<OdString> folders(const std::vector<std::wstring>& list) {
    OdArray<OdString> array;
    for (const std::wstring& folder : list) {
        array.append(OdString(folder));
    }
    return array;
}

TEST(PmpDocument, IsWrittenBackAsItWas) {
    for (const std::string& body : {fullParameters, bareParameters}) {
        PiaReport report;
        const Document document = parametersOf(body, &report);
        ASSERT_NE(document, nullptr);
        EXPECT_EQ(report.warningCount(), 0u);
        EXPECT_EQ(bodyOfDocument(*document), body);
    }
    EXPECT_EQ(bodyOfDocument(PlotModelParam()), bareParameters);
}

TEST(PmpDocument, AnyKeyMayBeMissing) {
    expectOthersAreNeeded(
        fullParameters,
        {"mod/media/def", "mod/media/size/", "mod/media/desc", "udm/media/", "hidden/"},
        parametersOf);
}

TEST(PmpDocument, HiddenPartIsOptional) {
    const std::string hidden = fullParameters.substr(fullParameters.find("hidden{"));
    const struct {
        const char* instead;
        const char* warnings;
        const char* written;
    } cases[] = {
        {"hidden{\n media=1\n}\n", "block-dropped hidden", ""},
        {"hidden{\n media{\n }\n}\n", "", "hidden{\n media{\n }\n}\n"},
        {"seen{\n media{\n }\n}\n", "", ""},
    };
    for (const auto& [instead, warnings, written] : cases) {
        PiaReport report;
        const Document document = parametersOf(edited(fullParameters, hidden, instead), &report);
        ASSERT_NE(document, nullptr);
        EXPECT_EQ(warningsOf(report), warnings);
        EXPECT_EQ(bodyOfDocument(*document), edited(fullParameters, hidden, written));
    }
}

TEST(PmpDocument, PartsAreDocumentsOfTheirOwn) {
    PiaInput input;
    ASSERT_TRUE(input.openBody(fullParameters));
    expectReadAndWritten<ModNode>(input, L"mod");
    expectReadAndWritten<ModNode::MediaNode>(input, L"mod/media");
    expectReadAndWritten<PmpSizeNode>(input, L"mod/media/size");
    expectReadAndWritten<PmpSizeNode::PaperSize>(input, L"mod/media/size/0");
    expectReadAndWritten<PmpDescriptionNode>(input, L"mod/media/description");
    expectReadAndWritten<PmpDescriptionNode::PaperSizeDescription>(input,
                                                                   L"mod/media/description/0");
    expectReadAndWritten<UdmNode>(input, L"udm");
    expectReadAndWritten<UdmNode::CalibrationNode>(input, L"udm/calibration");
    expectReadAndWritten<UdmNode::MediaNode>(input, L"udm/media");
    expectReadAndWritten<HiddenNode>(input, L"hidden");
    expectReadAndWritten<HiddenNode::MediaNode>(input, L"hidden/media");
}

TEST(PmpDocument, ListsTakeEveryBlock) {
    PiaInput input;
    ASSERT_TRUE(
        input.openBody("0{\ncaps_type=7\nname=\"A\nlocalized_name=\"B\n"
                       "media_description_name=\"C\nlandscape_mode=TRUE\n}\nn=1\n"
                       "x{\ncaps_type= 12abc\nname=\"X\nlocalized_name=\"\n"
                       "media_description_name=\"\nmedia_group=4\nlandscape_mode=TRUE\n}\n"));
    PmpSizeNode list;
    PiaTree tree;
    ASSERT_TRUE(list.init(*input.root()) && list.write(tree.root()));
    // Without a group, all before it is read and all from there on is the default.
    EXPECT_EQ(piaBodyText(tree.root()),
              "0{\n caps_type=7\n name=\"A\n localized_name=\"B\n media_description_name=\"C\n"
              " media_group=0\n landscape_mode=FALSE\n}\n"
              "1{\n caps_type=12\n name=\"X\n localized_name=\"\n media_description_name=\"\n"
              " media_group=4\n landscape_mode=TRUE\n}\n");
}

TEST(PmpDocument, NodesKeepWhatComesBeforeAFault) {
    PiaInput input;
    ASSERT_TRUE(input.openBody("calibration{\n_x=2\n}\n"));
    UdmNode node;
    EXPECT_FALSE(node.init(*input.root()));
    EXPECT_EQ(node.calibration.x, 2);
    ASSERT_TRUE(input.openBody("calibration{\n_x=2\n_y=3\n}\nmedia{\nsize{\n}\n}\n"));
    EXPECT_TRUE(node.init(*input.root()));
    EXPECT_EQ(node.media, nullptr);
    ASSERT_TRUE(
        input.openBody("calibration{\n_x=2\n_y=3\n}\n"
                       "media{\nmax_roll_height=abc\nsize{\n}\ndescription{\n}\n}\n"));
    EXPECT_TRUE(node.init(*input.root()));
    ASSERT_NE(node.media, nullptr);
    EXPECT_EQ(node.media->maxRollHeight, 0);
}

TEST(PmpDocument, LastNameBecomesUnique) {
    // The last is what becomes of the one before it.
    const std::vector<std::vector<std::wstring>> cases = {
        {L"A", L"A"},
        {L"A", L"B", L"B"},
        {L"A", L"a", L"a_1"},
        {L"A_1", L"A", L"A", L"A_1"},
        {L"A", L"A_1", L"a_3", L"A", L"A_2"},
        {L"A", L"A_01", L"A_x", L"A_", L"A", L"A_1"},
        {L"A_1", L"A", L"A_2", L"A_1", L"A", L"A_3"},
        {L"A_2", L"A", L"A_1", L"A", L"A_2"},
        {L"\u00C4", L"\u00E4", L"\u00E4_1"},
    };
    for (std::vector<std::wstring> names : cases) {
        const std::wstring expected = names.back();
        names.pop_back();
        PmpSizeNode sizes;
        PmpDescriptionNode descriptions;
        for (const std::wstring& name : names) {
            sizes.papers.emplace_back().name = name;
            descriptions.papers.emplace_back().name = name;
        }
        sizes.makeLastNameUnique();
        descriptions.makeLastNameUnique();
        EXPECT_EQ(sizes.papers.back().name, expected);
        EXPECT_EQ(descriptions.papers.back().name, expected);
    }
    PmpSizeNode().makeLastNameUnique();
}

TEST(PmpDocument, Margins) {
    ModNode::MediaNode media;
    double left = -1;
    double right = -1;
    double top = -1;
    double bottom = -1;
    const auto margins = [&](const wchar_t* name, OdDbPlotSettings::PlotPaperUnits units) {
        return media.getMargins(name, left, right, top, bottom, units);
    };
    EXPECT_FALSE(margins(L"A4", OdDbPlotSettings::kMillimeters));
    media.size = std::make_shared<PmpSizeNode>();
    for (const auto& [name, description] :
         {std::pair(L"A4", L"D"), {L"Lost", L"E"}, {L"Plain", L""}}) {
        auto& paper = media.size->papers.emplace_back();
        paper.name = name;
        paper.mediaDescriptionName = description;
    }
    EXPECT_FALSE(margins(L"A4", OdDbPlotSettings::kMillimeters));
    media.description = std::make_shared<PmpDescriptionNode>();
    for (const wchar_t* name : {L"", L"d"}) {
        media.description->papers.emplace_back().name = name;
    }
    media.description->papers.push_back({3, L"D", 210, 297, 5, 4, 204, 290, 0, true});
    for (const wchar_t* name : {L"a4", L"A4 ", L"Lost", L"Plain", L""}) {
        EXPECT_FALSE(margins(name, OdDbPlotSettings::kMillimeters));
    }
    EXPECT_EQ(left, -1);
    for (const auto& [units, scale] :
         {std::pair(OdDbPlotSettings::kMillimeters, 1.0), std::pair(OdDbPlotSettings::kPixels, 1.0),
          std::pair(OdDbPlotSettings::kInches, 25.4)}) {
        ASSERT_TRUE(margins(L"A4", units));
        EXPECT_DOUBLE_EQ(left, 5 / scale);
        EXPECT_DOUBLE_EQ(right, 6 / scale);
        EXPECT_DOUBLE_EQ(top, 7 / scale);
        EXPECT_DOUBLE_EQ(bottom, 4 / scale);
    }
}

TEST(PmpDocument, ListsWriteAroundTakenNames) {
    PmpSizeNode sizes;
    sizes.papers.resize(3);
    PiaTree tree;
    ASSERT_NE(tree.root().addBlock(L"1"), nullptr);
    EXPECT_TRUE(sizes.write(tree.root()));
    const std::string body = piaBodyText(tree.root());
    EXPECT_TRUE(body.starts_with("1{\n}\n0{\n caps_type=") && body.find("\n2{\n caps_type=") < 200);
}

TEST(PmpDocument, CopiesShareByDesignAndClonesDoNot) {
    Document source = parametersOf(fullParameters);
    ASSERT_NE(source, nullptr);
    auto copy = std::make_unique<PlotModelParam>(*source);
    const Document clone = source->clone();
    EXPECT_EQ(bodyOfDocument(*clone), fullParameters);
    source->udm.media->size.papers.clear();
    source->mod.media.size->papers.clear();
    source->mod.media.description->papers.clear();
    source->hidden->media.size->papers.resize(3);
    source->udm.calibration.x = 7;
    EXPECT_TRUE(copy->udm.media->size.papers.empty() && copy->mod.media.size->papers.empty());
    EXPECT_EQ(copy->udm.calibration.x, 1.001);
    source.reset();
    EXPECT_EQ(copy->hidden->media.size->papers.size(), 3u);
    EXPECT_EQ(bodyOfDocument(*clone), fullParameters);
}

TEST(PmpDocument, IsFoundInTheSearchFolders) {
    const TemporaryFolder folder;
    fs::create_directories(folder.path("F/PMP"));
    fs::create_directories(folder.path("G"));
    for (const char* name : {"F/both.pmp", "F/PMP/both.pmp", "F/PMP/below.pmp", "G/both.pmp",
                             "G/below.pmp", "G/last.pmp"}) {
        PlotModelParam document;
        document.canonicalFamilyName = ut::decodePath(name);
        ASSERT_TRUE(document.write(folder.wide(name).c_str()));
    }
    writeBytes(folder.path("F/broken.pmp"), "no container");
    const OdArray<OdString> search = folders({L"", folder.wide("F"), folder.wide("G")});
    const std::wstring absolute = folder.wide("G/both.pmp");
    const std::pair<std::wstring, const char*> cases[] = {
        {L"both.pmp", "F/both.pmp"},
        {L"below.pmp", "F/PMP/below.pmp"},
        {L"last.pmp", "G/last.pmp"},
        {L"no such folder/last.pmp", "G/last.pmp"},
        {L"C:\\Plotters\\PMP Files\\below.pmp", "F/PMP/below.pmp"},
        {L"c:last.pmp", "G/last.pmp"},
        {L"\\\\server\\share\\last.pmp", "G/last.pmp"},
        {absolute, "G/both.pmp"},
        {L"nowhere.pmp", nullptr},
        {L"", nullptr},
        {L"broken.pmp", nullptr},
    };
    for (const auto& [name, found] : cases) {
        SCOPED_TRACE(ut::encodeUtf8(name));
        PiaReport report;
        const Document document(PlotModelParam::read(name.c_str(), search, &report));
        ASSERT_EQ(document != nullptr, found != nullptr);
        EXPECT_EQ(report.failure().has_value(), found == nullptr);
        if (document) {
            EXPECT_EQ(document->canonicalFamilyName, ut::decodePath(found));
            EXPECT_TRUE(fs::equivalent(document->filePath.text(), folder.path(found)));
            EXPECT_EQ(document->userDefinedModelPathname, document->filePath.text());
        }
    }
    PiaReport report;
    EXPECT_EQ(PlotModelParam::read(L"nowhere.pmp", search, &report), nullptr);
    EXPECT_TRUE(report.failure()->expected.starts_with(L"a file of that name or in "));
    EXPECT_NE(report.failure()->expected.find(L", " + folder.wide("G")), std::wstring::npos);
    EXPECT_EQ(PlotModelParam::read(nullptr, search), nullptr);
    EXPECT_EQ(PlotModelParam::read(L"last.pmp", {}), nullptr);
}

TEST(PmpDocument, WhereTheProgramRunsDecidesNothing) {
    const TemporaryFolder folder;
    fs::create_directories(folder.path("F"));
    const CurrentFolder current(folder.path("."));
    for (const char* name : {"both.pmp", "F/both.pmp"}) {
        ASSERT_TRUE(PlotModelParam().write(folder.wide(name).c_str()));
    }
    const OdArray<OdString> search = folders({folder.wide("F")});
    const struct {
        std::wstring name;
        const char* found;
        const char* warnings;
    } cases[] = {
        {L"both.pmp", "F/both.pmp", "name-ambiguous "},
        {folder.wide("both.pmp"), "both.pmp", ""},
    };
    for (const auto& [name, found, warnings] : cases) {
        PiaReport report;
        const Document document(PlotModelParam::read(name.c_str(), search, &report));
        ASSERT_NE(document, nullptr);
        EXPECT_TRUE(fs::equivalent(document->filePath.text(), folder.path(found)));
        EXPECT_EQ(warningsOf(report), warnings);
    }
}

TEST(PmpDocument, KnowsWhereItWasWritten) {
    const TemporaryFolder folder;
    PlotModelParam document;
    document.userDefinedModelPathname = L"before";
    PiaReport report;
    EXPECT_FALSE(document.write(nullptr, &report));
    EXPECT_EQ(report.failure()->code, PiaCode::FileUnwritable);
    EXPECT_FALSE(document.write(folder.wide("no folder/x.pmp").c_str(), &report));
    EXPECT_NE(report.failure()->expected, L"a path");
    EXPECT_TRUE(document.filePath.isEmpty());
    EXPECT_EQ(document.userDefinedModelPathname, L"before");

    const std::wstring path = folder.wide("x.pmp");
    ASSERT_TRUE(document.write(path.c_str(), &report));
    EXPECT_FALSE(report.failure());
    EXPECT_EQ(document.filePath.text(), path);
    EXPECT_EQ(document.userDefinedModelPathname, path);
    PiaInput input;
    ASSERT_TRUE(input.open(path.c_str()));
    EXPECT_EQ(input.container().kind, PiaKind::Pc3);
}

TEST(PmpDocument, IsCreatedFromAMetaNode) {
    CMetaNode meta;
    meta.configDescription = L"described";
    meta.configAutospool = true;
    meta.defaultSystemCfg = true;
    meta.driverType = 5;
    const Document document(PlotModelParam::create(meta));
    EXPECT_EQ(
        bodyOfDocument(*document),
        edited(edited(bareParameters, "driver_type=0", "driver_type=5"), " friendly_net_name=\"\n",
               " friendly_net_name=\"\n default_system_cfg=TRUE\n"));
    EXPECT_TRUE(document->filePath.isEmpty());
}

}  // namespace
