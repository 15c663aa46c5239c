#include <cstdarg>
#include <cwchar>

#include <platen/log.h>
#include "tests/support/documents.h"
#include "tests/support/files.h"

namespace {

namespace fs = std::filesystem;

/// "E:" or "W:" and the text of each message.
std::vector<std::string> messages;

void keepMessage(wut::LogLevel level, const wut::LogPlace&, const wchar_t* format,
                 std::va_list arguments) {
    wchar_t text[500] = {};
    std::vswprintf(text, std::size(text), format, arguments);
    messages.push_back((level == wut::LogLevel::Error ? "E:" : "W:") + ut::encodeUtf8(text));
}

/// Printers "Ink" and "Laser"; the second refuses to say what it can.
class FakePrinters : public PrinterSystem {
public:
    std::wstring chosen = L"Ink";
    bool resetWorks = true;
    bool resetChanges = true;
    bool resolves = true;
    mutable int resolved = 0;

    std::wstring defaultPrinter() const override { return chosen; }
    bool hasPrinter(const std::wstring& name) const override {
        return name == L"Ink" || name == L"Laser";
    }
    bool fillNew(CPlotCfg3& config, const std::wstring& printer) const override {
        config.meta.configDescription = L"filled\r\nfor\n" + printer + L"\r\x7F";
        return printer == L"Ink";
    }
    bool reset(CPlotCfg3& config, bool& changed) const override {
        config.media.numberOfCopies = 9;
        changed = resetChanges;
        return resetWorks;
    }
    bool resolveByDriver(CPlotCfg3& config) const override {
        ++resolved;
        if (resolves) {
            config.meta.winDeviceName = L"Laser";
        }
        return resolves;
    }
};

class PlotConfigurationFile : public testing::Test {
protected:
    void SetUp() override { wut::registerLogTarget(keepMessage); }
    void TearDown() override {
        registerPrinterSystem(nullptr);
        wut::registerLogTarget(nullptr);
        messages.clear();
    }

    std::wstring put(const char* name, const std::string& body) const {
        writeBytes(folder_.path(name), fileAround(body, PiaKind::Pc3));
        return folder_.wide(name);
    }
    Config read(const std::wstring& path) {
        printerChanged_ = true;
        return Config(CPlotCfg3::read(path.c_str(), printerChanged_, &report_));
    }
    static std::string bodyIn(const std::wstring& path) {
        return bodyOf(readBytes(fs::path(path)));
    }
    using Texts = std::vector<std::string>;
    Texts takeMessages() { return std::exchange(messages, {}); }

    TemporaryFolder folder_;
    PiaReport report_;
    bool printerChanged_ = false;
};

TEST_F(PlotConfigurationFile, RefusedFilesSaySo) {
    EXPECT_EQ(read(folder_.wide("none.pc3")), nullptr);
    EXPECT_EQ(report_.failure()->code, PiaCode::FileUnreadable);
    EXPECT_FALSE(printerChanged_);
    EXPECT_EQ(read(put("a.pc3", edited(bareConfiguration, "\nio{", "\nIO{"))), nullptr);
    EXPECT_EQ(report_.failure()->path, L"io");
    EXPECT_EQ(report_.failure()->line, 1U);
    PiaInput closed;
    EXPECT_EQ(CPlotCfg3::fromInput(closed, printerChanged_), nullptr);
    EXPECT_EQ(takeMessages(), Texts());
}

TEST_F(PlotConfigurationFile, BothVersionsRead) {
    PiaInput tree;
    std::string json;
    PiaReport written;
    ASSERT_TRUE(tree.openBody(bareConfiguration) && piaWriteJson(*tree.root(), json, written));
    writeBytes(folder_.path("three.pc3"), json);
    const Config fromJson = read(folder_.wide("three.pc3"));
    ASSERT_NE(fromJson, nullptr);
    EXPECT_EQ(bodyOfDocument(*fromJson), bareConfiguration);
    for (const std::string& body : {fullConfiguration, bareConfiguration}) {
        const Config config = read(put("a.pc3", body));
        ASSERT_NE(config, nullptr);
        ASSERT_TRUE(config->write(folder_.wide("b.pc3").c_str()));
        EXPECT_EQ(bodyIn(folder_.wide("b.pc3")), body);
    }
    EXPECT_FALSE(fromJson->write(nullptr, &report_));
    EXPECT_FALSE(fromJson->write(folder_.wide("none/b.pc3").c_str(), &report_));
    EXPECT_EQ(report_.failure()->code, PiaCode::FileUnwritable);
    EXPECT_EQ(folder_.files(), (Texts{"a.pc3", "b.pc3", "three.pc3"}));
}

TEST_F(PlotConfigurationFile, MovesToAPrinterOfItsDriver) {
    const std::wstring printed = put("printer.pc3", bareConfiguration);
    const std::wstring builtIn = put("tif.pc3", edited(bareConfiguration, "canonical_model_name=\"",
                                                       "canonical_model_name=\"TiffComp"));
    FakePrinters printers;
    EXPECT_EQ(registerPrinterSystem(&printers), nullptr);
    EXPECT_EQ(read(printed)->meta.winDeviceName, L"Laser");
    EXPECT_TRUE(printerChanged_);
    printers.resolves = false;
    EXPECT_EQ(read(printed)->meta.winDeviceName, L"");
    EXPECT_FALSE(printerChanged_);
    EXPECT_EQ(printers.resolved, 2);
    EXPECT_NE(read(builtIn)->builtInDevice(), nullptr);
    EXPECT_FALSE(printerChanged_);
    EXPECT_EQ(printers.resolved, 2);
    EXPECT_EQ(registerPrinterSystem(nullptr), &printers);
}

TEST_F(PlotConfigurationFile, DefaultPrinterTakesItsPlace) {
    const std::string marked = edited(fullConfiguration, "system_cfg=FALSE", "system_cfg=TRUE");
    const std::wstring path = put("marked.pc3", marked);
    FakePrinters printers;
    registerPrinterSystem(&printers);
    Config config = read(path);
    ASSERT_NE(config, nullptr);
    EXPECT_FALSE(printerChanged_);
    EXPECT_EQ(config->meta.winDeviceName, L"Ink");
    EXPECT_EQ(config->meta.userDefinedModelPathname, L"");
    EXPECT_FALSE(config->custom || config->media.customPapers);

    printers.chosen = L"Gone";
    EXPECT_EQ(read(path), nullptr);
    EXPECT_FALSE(printerChanged_);
    EXPECT_EQ(report_.failure()->path, L"meta/default_system_cfg");
    EXPECT_TRUE(namesItsLine(marked, *report_.failure()));
    EXPECT_EQ(takeMessages(),
              (Texts{"W:Failed to open Gone.",
                     "E:Failed to create plot configuration for default printer Gone."}));
    registerPrinterSystem(nullptr);
    EXPECT_EQ(read(path), nullptr);

    // A built-in device is no printer that could be replaced.
    config =
        read(put("pdf.pc3", edited(marked, "PdfExport\n  value=FALSE", "PdfExport\n  value=TRUE")));
    ASSERT_NE(config, nullptr);
    EXPECT_TRUE(config->media.customPapers);
}

TEST_F(PlotConfigurationFile, CreatedForAPrinter) {
    FakePrinters printers;
    registerPrinterSystem(&printers);
    const Config config(CPlotCfg3::create(L"Ink"));
    ASSERT_NE(config, nullptr);
    EXPECT_EQ(config->builtInDevice(), nullptr);
    ASSERT_TRUE(config->write(folder_.wide("a.pc3").c_str()));
    const std::string body = bodyIn(folder_.wide("a.pc3"));
    for (const char* items :
         {" driver_pathname=\"gdiplot7.hdi\n driver_version=\"not specified\n"
          " driver_tag_line=\"Windows System Driver from Autodesk\n toolkit_version=1\n"
          " driver_type=1\n",
          " win_device_name=\"Ink\n", " short_net_name=\"Ink\n friendly_net_name=\"Ink\n",
          " config_description=\"filled for Ink  \n"}) {
        EXPECT_NE(body.find(items), std::string::npos) << items;
    }

    for (const auto& [changes, works] : {std::pair(true, true), {false, true}, {true, false}}) {
        printers.resetChanges = changes;
        printers.resetWorks = works;
        EXPECT_EQ(config->setToDefault(), changes && works);
    }
    config->media.numberOfCopies = 1;
    config->meta.winDeviceName = L"Gone";
    EXPECT_FALSE(config->setToDefault());
    EXPECT_EQ(config->media.numberOfCopies, 1);

    EXPECT_EQ(CPlotCfg3::create(L"Laser"), nullptr);
    EXPECT_EQ(CPlotCfg3::create(L"Print As GIF"), nullptr);
    EXPECT_EQ(CPlotCfg3::create(nullptr), nullptr);
    EXPECT_EQ(takeMessages(),
              (Texts{"W:Failed to initialize plot configuration from print data for Laser.",
                     "W:Failed to open Print As GIF.", "W:Failed to open ."}));
}

TEST_F(PlotConfigurationFile, ReadsItsPmp) {
    fs::create_directories(folder_.path("here/PMP"));
    fs::create_directories(folder_.path("setting"));
    PlotModelParam pmp;
    ASSERT_TRUE(pmp.write(folder_.wide("here/PMP/beside.pmp").c_str()));
    ASSERT_TRUE(pmp.write(folder_.wide("setting/far.pmp").c_str()));
    const auto named = [&](const std::string& name) {
        return read(put("here/a.pc3", edited(bareConfiguration, "user_defined_model_pathname=\"",
                                             "user_defined_model_pathname=\"" + name)));
    };
    const Config beside = named("D:\\Plotters\\PMP Files\\beside.pmp");
    ASSERT_NE(beside->pmp(), nullptr);
    EXPECT_TRUE(
        fs::equivalent(beside->meta.userDefinedModelPathname, folder_.path("here/PMP/beside.pmp")));
    EXPECT_EQ(beside->meta.userDefinedModelPathname, beside->pmp()->filePath.text());

    EXPECT_EQ(named("far.pmp")->pmp(), nullptr);
    EXPECT_EQ(takeMessages(), Texts{"E:Failed to read file 'far.pmp'."});
    const std::wstring setting = ut::getSetting(L"PlotCfgPath");
    ut::setSetting(L"PlotCfgPath", folder_.wide("setting"));
    EXPECT_NE(named("far.pmp")->pmp(), nullptr);
    EXPECT_FALSE(report_.failure());
    EXPECT_EQ(report_.warningCount(), 0u);

    const Config lost = named("C:\\lost.pmp");
    ut::setSetting(L"PlotCfgPath", setting);
    ASSERT_NE(lost, nullptr);
    EXPECT_EQ(lost->pmp(), nullptr);
    EXPECT_EQ(lost->meta.userDefinedModelPathname, L"C:\\lost.pmp");
    EXPECT_EQ(takeMessages(), Texts{"E:Failed to read file 'C:\\lost.pmp'."});
    ASSERT_EQ(report_.warnings().size(), 1u);
    EXPECT_EQ(report_.warnings()[0].path, L"meta/user_defined_model_pathname");
    EXPECT_TRUE(namesItsLine(bareConfiguration, report_.warnings()[0]));
    EXPECT_NE(report_.warnings()[0].expected.find(folder_.wide("setting")), std::wstring::npos);

    EXPECT_NE(named(""), nullptr);
    EXPECT_EQ(takeMessages(), Texts());
}

TEST_F(PlotConfigurationFile, APmpThatCannotStayGoesBesideIt) {
    const std::wstring gone = folder_.wide("gone/own.pmp");
    const struct {
        const char* what;
        bool subFolder;
        std::wstring filePath;
        std::wstring pmpName;
        std::wstring metaName;
        const char* file;
    } cases[] = {
        {"into the sub-folder", true, gone, L"C:\\x\\own.dat", L"other.pmp", "PMP/own.pmp"},
        {"beside", false, gone, L"own.dat", L"", "own.pmp"},
        {"by the name of the meta node", false, L"", L"", L"/no/where/other", "other.pmp"},
        {"by its own name", true, L"", L"", L"", "PMP/a.v2.pmp"},
    };
    for (const auto& entry : cases) {
        SCOPED_TRACE(entry.what);
        const TemporaryFolder folder;
        if (entry.subFolder) {
            fs::create_directory(folder.path("PMP"));
        }
        const Config config(CPlotCfg3::create(L"Print As BMP"));
        config->attachPMP(new PlotModelParam);
        config->pmp()->filePath = OdString(entry.filePath);
        config->pmp()->userDefinedModelPathname = entry.pmpName;
        config->meta.userDefinedModelPathname = entry.metaName;
        ASSERT_TRUE(config->write(folder.wide("a.v2.pc3").c_str(), &report_));
        EXPECT_EQ(report_.warningCount(), 0u);
        ASSERT_TRUE(fs::exists(folder.path(entry.file)));
        EXPECT_TRUE(fs::equivalent(config->meta.userDefinedModelPathname, folder.path(entry.file)));
        EXPECT_EQ(config->pmp()->filePath.text(), config->meta.userDefinedModelPathname);
        EXPECT_NE(read(folder.wide("a.v2.pc3"))->pmp(), nullptr);
    }
    // With no place at all for the PMP the configuration is written just the same.
    const Config config(CPlotCfg3::create(L"Print As BMP"));
    config->attachPMP(new PlotModelParam);
    fs::create_directories(folder_.path("PMP/a.pmp"));
    ASSERT_TRUE(config->write(folder_.wide("a.pc3").c_str(), &report_));
    EXPECT_TRUE(config->pmp()->filePath.isEmpty());
    EXPECT_EQ(config->meta.userDefinedModelPathname, L"");
    ASSERT_EQ(report_.warnings().size(), 1u);
    EXPECT_EQ(report_.warnings()[0].code, PiaCode::FileUnwritable);
}

TEST_F(PlotConfigurationFile, APmpIsNamedByItsFullPath) {
    fs::create_directory(folder_.path("a"));
    fs::create_directory(folder_.path("b"));
    const CurrentFolder a(folder_.path("a"));
    const Config config(CPlotCfg3::create(L"Print As BMP"));
    config->attachPMP(new PlotModelParam);
    ASSERT_TRUE(config->write(L"plan.pc3"));
    EXPECT_EQ(config->meta.userDefinedModelPathname, (fs::current_path() / "plan.pmp").wstring());
    // A document that was given a relative path of its own keeps the file, not the words.
    ASSERT_TRUE(config->pmp()->write(L"own.pmp"));
    ASSERT_TRUE(config->write(L"plan.pc3"));
    const Config again = read(folder_.wide("a/plan.pc3"));
    EXPECT_EQ(again->meta.userDefinedModelPathname, (fs::current_path() / "own.pmp").wstring());

    // Older files have relative names, which count from the configuration.
    fs::copy(folder_.path("a/plan.pmp"), folder_.path("b/plan.pmp"));
    put("a/plan.pc3", edited(bareConfiguration, "user_defined_model_pathname=\"",
                             "user_defined_model_pathname=\"plan.pmp"));
    const CurrentFolder b(folder_.path("b"));
    const Config older = read(L"../a/plan.pc3");
    ASSERT_NE(older->pmp(), nullptr);
    EXPECT_TRUE(fs::equivalent(older->pmp()->filePath.text(), folder_.path("a/plan.pmp")));
    EXPECT_EQ(warningsOf(report_), "name-ambiguous meta/user_defined_model_pathname");
    EXPECT_NE(read(folder_.wide("b/../a/plan.pc3"))->pmp(), nullptr);
    const CurrentFolder besideIt(folder_.path("a"));
    EXPECT_NE(read(L"../a/plan.pc3")->pmp(), nullptr);
    EXPECT_EQ(report_.warningCount(), 0u);
}

TEST_F(PlotConfigurationFile, PmpsAreTakenAndLeft) {
    const Config config(CPlotCfg3::create(L"Print As PNG"));
    for (const wchar_t* name : {L"one", L"two"}) {
        config->attachPMP(new PlotModelParam);
        config->pmp()->userDefinedModelPathname = name;
    }
    config->attachPMP(config->pmp());
    EXPECT_EQ(config->meta.userDefinedModelPathname, L"two");
    config->detachPMP();
    EXPECT_EQ(config->pmp(), nullptr);
    EXPECT_EQ(config->meta.userDefinedModelPathname, L"");
}

TEST_F(PlotConfigurationFile, CopiesShareNothing) {
    Config source = read(put("full.pc3", fullConfiguration));
    takeMessages();
    auto pmp = parametersOf(fullParameters);
    ASSERT_NE(pmp, nullptr);
    pmp->userDefinedModelPathname = source->meta.userDefinedModelPathname;
    source->attachPMP(pmp.release());
    CPlotCfg3 copy(*source);
    Config assigned(CPlotCfg3::create(L"Print As PDF"));
    *assigned = copy;
    copy.media.customPapers->papers.clear();
    copy.media.destination->name = L"changed";
    copy.meta.defaultSystemCfg = true;
    copy.resColorMem.linesOverwrite.reset();
    copy.custom->set(1, L"dmSize", false);
    copy.pmp()->udm.media->size.papers.clear();
    copy.pmp()->hidden->media.size->papers.resize(2);
    for (const CPlotCfg3* kept : {source.get(), assigned.get()}) {
        EXPECT_EQ(bodyOfDocument(*kept), fullConfiguration);
        EXPECT_EQ(kept->pmp()->udm.media->size.papers.size(), 1u);
        EXPECT_TRUE(kept->pmp()->hidden->media.size->papers.empty());
        EXPECT_EQ(kept->builtInDevice(), nullptr);
    }
    source.reset();
    const CPlotCfg3 moved(std::move(*assigned));
    EXPECT_EQ(bodyOfDocument(moved), fullConfiguration);
}

}  // namespace
