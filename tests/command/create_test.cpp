#include <cctype>
#include <memory>
#include <utility>

#include <platen/papers.h>
#include <platen/plotcfg.h>
#include "tests/command/support.h"
#include "tests/support/configurations.h"

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

namespace {

using CommandCreateTest = CommandTest;

std::string lower(std::wstring_view text) {
    std::string result = ut::encodeUtf8(text);
    for (char& letter : result) {
        letter = static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
    }
    return result;
}

TEST_F(CommandCreateTest, EveryDeviceAndPaperIsFoundByItsNames) {
    for (const BuiltInPlotDevice& device : BuiltInPlotDevice::s_cBuiltInPlotDevices) {
        const std::string name = lower(device.name.text());
        const std::string file = '@' + name;
        prepare({"create", "pc3", "--device", name, "-o", file});
        const std::unique_ptr<CPlotCfg3> fresh(CPlotCfg3::create(device.name.c_str()));
        EXPECT_EQ(bodyOf(read(name)), bodyOfDocument(*fresh)) << name;
        const bool pdf = device.type == BuiltInPlotDevice::Pdf;
        const wut::PaperSizeInfo* papers = pdf ? wut::cPdfPapers : wut::cImagePapers;
        for (std::size_t index = 0; index < (pdf ? wut::cPdfPapersCount : wut::cImagePapersCount);
             ++index) {
            bool changed = false;
            fresh->setPaperSize(index, pdf, changed);
            const std::string expected = bodyOfDocument(*fresh);
            const wut::PaperSizeInfo& paper = papers[index];
            const std::string spelling =
                lower(index % 2 == 0 ? paper.displayName : paper.canonicalName);
            prepare({"create", "pc3", "--device", name, "--paper", spelling, "-o", file});
            EXPECT_EQ(bodyOf(read(name)), expected) << spelling;
        }
    }
}

TEST_F(CommandCreateTest, ParametersAreThoseOfTheConfiguration) {
    prepare({"create", "pc3", "--device", "Print As JPG", "-o", "@a.pc3"});
    prepare({"set", "@a.pc3", "meta/config_autospool:bool=TRUE", "meta/driver_version=7",
             "--in-place"});
    prepare({"create", "pmp", "--from", "@a.pc3", "-o", "@a.pmp"});
    EXPECT_EQ(run({"get", "@a.pmp", "meta/canonical_model_name", "meta/driver_version",
                   "udm/calibration/_x"})
                  .out,
              "jfif\n7\n1.000000\n");
    // What describes the configuration stays there.
    EXPECT_THAT(bodyOf(read("a.pmp")),
                AllOf(Not(HasSubstr("config_description")), Not(HasSubstr("config_autospool"))));
    EXPECT_THAT(run({"info", "@a.pmp"}).out, HasSubstr("plot model parameters"));
    writeFile("a.pc3", bareConfiguration + "custom{\n x=1\n}\n", PiaKind::Pc3);
    EXPECT_EQ(run({"create", "pmp", "--from", "@a.pc3", "-o", "@b.pmp"}).code, 0);
    writeFile("a.pc3", bareConfiguration + "custom{\n x{\n }\n}\n", PiaKind::Pc3);
    EXPECT_EQ(run({"create", "pmp", "--from", "@a.pc3", "-o", "@b.pmp"}).code, 3);
}

TEST_F(CommandCreateTest, WhatTheOldFileHeldIsNotLostSilently) {
    prepare({"create", "pc3", "--device", "Print As PNG", "-o", "@a.pc3"});
    prepare({"set", "@a.pc3", "vendor:block", "vendor/x:num=1", "custom/0:block", "custom/1:block",
             "custom/1/name:str=Own", "custom/1/value:bool=TRUE", "--in-place"});
    expectWarned({"create", "pc3", "--device", "Print As TIF", "-o", "@a.pc3"},
                 AllOf(HasSubstr("custom/1 (Own)"), HasSubstr("vendor"), Not(HasSubstr("RASTER")),
                       Not(HasSubstr("meta"))));
    prepare({"create", "pc3", "--device", "Print As TIF", "-o", "@a.pc3"});
    // Tables, too; and what is no plotter file is replaced as ever.
    expectWarned({"create", "stb", "-o", "@a.pc3"},
                 HasSubstr("meta, media, io, res_color_mem, custom"));
    write("note", "a note");
    prepare({"create", "stb", "-o", "@note"});
}

TEST_F(CommandCreateTest, RefusalsSayWhatThereIs) {
    prepare({"create", "ctb", "-o", "@a.ctb"});
    const std::pair<std::vector<std::string>, const char*> cases[] = {
        {{"pc3", "--device", "Print As PFD"}, "did you mean \"Print As PDF\"?"},
        {{"pc3", "--device", "Office"}, "\"Print As JPG\", \"Print As TIF\""},
        {{"pc3", "--device", "\xFF"}, "UTF-8"},
        {{"pc3", "--device", "None"}, "there is no device"},
        {{"pc3", "--device", "Print As PDF", "--paper", "ISO A4"},
         "\"ISO A4 (297.00 x 210.00 MM)\""},
        {{"pc3", "--device", "Print As PDF", "--paper", "Foolscap"}, "platen papers --device pdf"},
        {{"pc3", "--device", "Print As PNG", "--paper", "A4"},
         "\"Super VGA (800.00 x 600.00 Pixels)\""},
        {{"pc3"}, "--device"},
        {{"pc3", "--device", "Print As PDF", "--description", "x"}, "--description"},
        {{"pmp"}, "--from"},
        {{"pmp", "--from", "@missing.pc3"}, "missing.pc3"},
        {{"pmp", "--from", "@a.ctb"}, "a.ctb"},
        {{"pmp", "--from", "@a.ctb", "--device", "Print As PDF"}, "--device"},
        {{"ctb", "--paper", "A4"}, "--paper"},
        {{"stb", "--from", "@a.ctb"}, "--from"},
    };
    write("old", "old");
    for (const auto& [arguments, message] : cases) {
        expectRefused(joined({"create", "-o", "@old"}, arguments), message);
    }
    EXPECT_EQ(read("old"), "old");
}

}  // namespace
