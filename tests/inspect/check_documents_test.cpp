#include <gmock/gmock.h>

#include <utility>

#include "tests/inspect/found.h"
#include "tests/support/configurations.h"
#include "tests/support/files.h"

using testing::HasSubstr;

namespace {

const std::string pmpKey = "user_defined_model_pathname=\"";

std::string sound() {
    return edited(fullConfiguration, pmpKey + "C:\\Plotters\\PMP Files\\no such.pmp", pmpKey);
}
std::string soundPdf() {
    return edited(sound(), "canonical_model_name=\"Model", "canonical_model_name=\"pdf");
}
std::string soundParameters() { return edited(fullParameters, "  default_size=\"A4\n", ""); }

/// The body is sound but for one finding when `from` becomes `to`.
struct Case {
    std::string from;
    std::string to;
    std::string found;
};

void expectAll(const std::string& body, const std::vector<Case>& cases) {
    for (const auto& [from, to, found] : cases) {
        EXPECT_EQ(foundIn(edited(body, from, to), PiaKind::Pc3), found) << from << " -> " << to;
    }
}

TEST(CheckDocuments, SoundOnesAreOk) {
    for (const std::string& body :
         {sound(), soundPdf(), bareConfiguration, soundParameters(), bareParameters}) {
        EXPECT_EQ(foundIn(body, PiaKind::Pc3), "");
    }
}

TEST(CheckDocuments, BrokenConfigurationsAreNamed) {
    expectAll(
        sound(),
        {
            {" toolkit_version=1\n", "", "error key-missing meta/toolkit_version|meta{"},
            {"toolkit_version=1", "toolkit_version=\"1",
             "error key-missing meta/toolkit_version| toolkit_version=\"1"},
            {"  group=15", "  group=many", "error value-invalid media/size/group|  group=many"},
            // Optional parts cost themselves only.
            {"  collating_type=1\n", "", "warning block-dropped media/destination| destination{"},
            {"   width=36.000000", "   width=wide",
             "warning entry-partly-read media/custom_papers/0|  0{"},
            {"  name=\"Note\n", "", "warning block-dropped custom|custom{"},
            {"ole_max=1", "ole_max=x", "warning value-not-read res_color_mem/ole_max| ole_max=x"},
            {"\\00FFaB\\", "\\00FFa\\",
             "warning binary-odd-length custom/2/value|  value=\\00FFa\\"},
            {"\\00FFaB\\", "\\00FFag\\",
             "warning binary-not-hex custom/2/value|  value=\\00FFag\\"},
            {"dmSize\n  value=220", "dmDriverExtra\n  value=4",
             "warning private-data-length custom|custom{"},
            {"dmSize\n  value=220", "dmDriverExtra\n  value=3", ""},
            // Findings of a writer have their line, too.
            {"local_name=\"Rolle", "local_name=\"Roll\xE4\xE4\r\r",
             "warning not-read-back media/custom_papers/0/local_name|   "
             "local_name=\"Roll\xE4\xE4\r\r"},
        });
}

TEST(CheckDocuments, ItemsThatTheDocumentDropsAreNamed) {
    const std::string lost = "warning item-not-carried ";
    expectAll(
        sound(),
        {
            {"io{\n", "io{\n speed=3\n", lost + "io/speed| speed=3"},
            {"io{\n", "extra{\n a=1\n}\nio{\n", lost + "extra|extra{"},
            {" pathname=\"LPT1", " pathname=\"LPT1\n pathname=3", lost + "io/pathname| pathname=3"},
            {" color_mono=TRUE", " color_mono=1", lost + "res_color_mem/color_mono| color_mono=1"},
            {"   units=0", "   units=0\n   shape=1",
             lost + "media/custom_papers/0/shape|   shape=1"},
            {"custom_papers{\n", "custom_papers{\n  n=1\n", lost + "media/custom_papers/n|  n=1"},
            {" 0{\n  name=\"Odd", " n=1\n 0{\n  name=\"Odd", lost + "custom/n| n=1"},
            {"name=\"Odd", "name=\"dmSize", lost + "custom/0| 0{"},
            {" type=\"roll", " type=\"roll\n type_name=\"r",
             lost + "media/type_name| type_name=\"r"},
            // The same document in another spelling.
            {"name=\"Note", "name=\"RawPrivateDeviceData", ""},
            {"icm_method=2", "icm_method=0", ""},
            {"dm_scale=50", "dm_scale=100", ""},
            {" type=\"roll", " type_name=\"roll", ""},
            {"custom_papers{\n  0{", "custom_papers{\n  first{", ""},
            {" 0{\n  name=\"Odd", " numbers{\n  name=\"Odd", ""},
            {"name=\"Note\n  value=", "NAME=\"Note\n  text=", ""},
        });
}

TEST(CheckDocuments, SenselessPapersAreNamed) {
    const std::string chosen = " media/size/media_description|  media_description{";
    const std::string own = " media/custom_papers/0|  0{";
    expectAll(soundPdf(),
              {
                  {"    ury=297.000000", "    ury=0", "warning paper-without-size" + chosen},
                  {"   printable_bounds_urx=205", "   printable_bounds_urx=211",
                   "warning paper-margins" + chosen},
                  {"    ury=297.000000", "    ury=5081", "warning paper-too-large" + chosen},
                  {"    ury=297.000000", "    ury=5080", ""},
                  {"    urx=210.000000", "    urx=5081", "warning paper-too-large" + chosen},
                  {"\"ISO_A4_(210.00_x_297.00_MM)", "\"Napkin",
                   "warning paper-unknown media/size/name|  name=\"Napkin"},
                  {"   width=36.", "   width=0.", "warning paper-without-size" + own},
                  {"   width=36.", "   width=200.1", "warning paper-too-large" + own},
                  {"   left=0.", "   left=40.", "warning paper-margins" + own},
                  {"   units=0", "   units=3",
                   "warning paper-units media/custom_papers/0/units|   units=3"},
                  {"  0{\n   global_name", customPaper("x", "Roll", 1) + "  0{\n   global_name",
                   "warning paper-name-duplicate media/custom_papers/0/global_name|   "
                   "global_name=\"Roll"},
              });
    // A printer's papers and limits are not known.
    expectAll(sound(), {{"\"ISO_A4_(210.00_x_297.00_MM)", "\"Napkin", ""},
                        {"    ury=297.000000", "    ury=500000", ""}});
}

/// Parameters whose two lists of user papers hold these entries.
std::string withUserPapers(const std::string& sizes, const std::string& descriptions) {
    return edited(bareParameters, "  _y=1.000000\n }\n",
                  "  _y=1.000000\n }\n media{\n  max_roll_height=0\n  size{\n" + sizes +
                      "  }\n  description{\n" + descriptions + "  }\n }\n");
}

std::string sizeEntry(const std::string& number, const std::string& name,
                      const std::string& description) {
    return number + "{\ncaps_type=4\nname=\"" + name + "\nlocalized_name=\"" + name +
           "\nmedia_description_name=\"" + description +
           "\nmedia_group=0\nlandscape_mode=TRUE\n}\n";
}

/// A paper of 100 by 200 with the printable area from `corners`.
std::string descriptionEntry(const std::string& number, const std::string& name,
                             const std::vector<const char*>& corners) {
    return number + "{\ncaps_type=2\nname=\"" + name +
           "\nmedia_bounds_urx=100\nmedia_bounds_ury=200\nprintable_bounds_llx=" + corners[0] +
           "\nprintable_bounds_lly=" + corners[1] + "\nprintable_bounds_urx=" + corners[2] +
           "\nprintable_bounds_ury=" + corners[3] + "\nprintable_area=0\ndimensional=TRUE\n}\n";
}

TEST(CheckDocuments, EveryPaperOfAListIsLookedAt) {
    // Items between the entries are none of them.
    std::string sizes = "n=1\n";
    std::string descriptions;
    std::string found = "warning item-not-carried udm/media/size/n|n=1";
    const auto expect = [&](const std::string& word, const std::string& path, const char* line) {
        found += "\nwarning " + word + " udm/media/" + path + '|' + line;
    };
    const std::string numbers[] = {"0", "1", "2"};
    for (const std::string& number : numbers) {
        sizes += sizeEntry(number, "S", number == "1" ? "gone" : "D" + number);
        descriptions += descriptionEntry(number, "D" + number, {"0", "0", "101", "200"});
    }
    for (const std::string& number : numbers) {
        expect("paper-margins", "description/" + number, (number + '{').c_str());
    }
    expect("paper-name-duplicate", "size/1/name", "name=\"S");
    expect("paper-without-size", "size/1/media_description_name", "media_description_name=\"gone");
    expect("paper-name-duplicate", "size/2/name", "name=\"S");
    EXPECT_EQ(foundIn(withUserPapers(sizes, descriptions), PiaKind::Pc3), found);
}

TEST(CheckDocuments, PrintableAreasLieWithinTheirPaper) {
    const std::pair<std::vector<const char*>, bool> cases[] = {
        {{"0", "0", "100", "200"}, true},
        // Give or take what six digits after the point leave.
        {{"-0.00005", "-0.00005", "100.00005", "200.00005"}, true},
        {{"-0.0002", "0", "100", "200"}, false},
        {{"0", "-0.0002", "100", "200"}, false},
        {{"0", "0", "100.0002", "200"}, false},
        {{"0", "0", "100", "200.0002"}, false},
        {{"50", "50", "50", "50"}, true},
        {{"51", "0", "50", "200"}, false},
        {{"0", "51", "100", "50"}, false},
    };
    for (const auto& [corners, within] : cases) {
        const std::string body = withUserPapers({}, descriptionEntry("0", "D", corners));
        EXPECT_EQ(foundIn(body, PiaKind::Pc3),
                  within ? "" : "warning paper-margins udm/media/description/0|0{")
            << corners[0] << ' ' << corners[1] << ' ' << corners[2] << ' ' << corners[3];
    }
}

TEST(CheckDocuments, LimitsOfADeviceAreForEachSide) {
    const struct {
        const char* width;
        const char* height;
        /// Of a paper of 100 by 200; empty when it is taken.
        std::wstring expected;
    } cases[] = {
        {"100", "200", L""},
        {"99.99995", "199.99995", L""},
        {"0", "0", L""},
        {"100", "0", L""},
        {"0", "200", L""},
        {"99.5", "200", L"at most 99.5 x 200"},
        {"100", "199.9998", L"at most 100 x 199.9998"},
        {"99.5", "0", L"at most 99.5 x 0, where 0 is no limit"},
        {"0", "199.5", L"at most 0 x 199.5, where 0 is no limit"},
    };
    for (const auto& [width, height, expected] : cases) {
        std::string body = withUserPapers({}, descriptionEntry("0", "D", {"0", "0", "100", "200"}));
        body = edited(body, "size_max_x=0.000000", std::string("size_max_x=") + width);
        body = edited(body, "size_max_y=0.000000", std::string("size_max_y=") + height);
        const platen::CheckResult result = platen::checkBytes(fileAround(body, PiaKind::Pc3));
        ASSERT_EQ(result.findings.size(), expected.empty() ? 0U : 1U) << width << " x " << height;
        if (!expected.empty()) {
            EXPECT_EQ(result.findings[0].code, PiaCode::PaperTooLarge);
            EXPECT_EQ(result.findings[0].expected, expected);
            EXPECT_EQ(result.findings[0].found, L"100 x 200");
        }
    }
}

TEST(CheckDocuments, BrokenParametersAreNamed) {
    const std::string body = soundParameters();
    const std::string user =
        body.substr(body.find("udm{"), body.find("hidden{") - body.find("udm{"));
    const auto inUser = [&](const std::string& from, const std::string& to) {
        return edited(user, from, to);
    };
    expectAll(body,
              {
                  {user, inUser("media_description_name=\"D", "media_description_name=\"E"),
                   "warning paper-without-size udm/media/size/0/media_description_name|"
                   "    media_description_name=\"E"},
                  {user, inUser("media_bounds_urx=100", "media_bounds_urx=0"),
                   "warning paper-without-size udm/media/description/0|   0{"},
                  {user, inUser("  _y=0.999000\n", ""),
                   "error key-missing udm/calibration/_y| calibration{"},
                  {user, inUser("  description{", "  descriptions{"),
                   "warning block-dropped udm/media| media{"},
                  {user, inUser("    media_group=15\n", ""),
                   "warning entry-partly-read udm/media/size/0|   0{"},
                  {"hidden{\n media{", "hidden{\n medium{", "warning block-dropped hidden|hidden{"},
              });
    EXPECT_EQ(foundIn(fullParameters, PiaKind::Pc3),
              "warning default-paper-unknown mod/media/default_size|  default_size=\"A4");
}

TEST(CheckDocuments, Version3HasPathsAndNoLines) {
    const std::string json =
        R"({"data":{"meta":{},"media":{"size":{"a":null}},"io":{"a":[1],"b":9}}})";
    EXPECT_EQ(foundIn(platen::checkBytes(json), "no line\n"),
              "warning json-member-skipped media/size/a\nwarning json-member-skipped io/a\n"
              "error key-missing meta/user_defined_model_pathname");
    EXPECT_EQ(foundIn(platen::checkBytes(R"({"data":{"a":{"b":{"c":1 "d":2}}}})")),
              "error json-syntax a/b/c");
}

TEST(CheckDocuments, ThePmpOfAConfigurationIsLookedFor) {
    const TemporaryFolder folder;
    const std::string body = edited(soundPdf(), pmpKey, pmpKey + "C:\\x\\own.pmp");
    const auto check = [&](const std::string& config) {
        return platen::checkBytes(fileAround(config, PiaKind::Pc3), folder.wide("a.pc3"));
    };
    const std::string place =
        " meta/user_defined_model_pathname| user_defined_model_pathname=\"C:\\x\\own.pmp";
    const platen::CheckResult missing = check(body);
    EXPECT_EQ(foundIn(missing, body), "warning pmp-missing" + place);
    EXPECT_THAT(ut::encodePath(missing.findings[0].expected),
                HasSubstr(folder.path("PMP").string()));
    EXPECT_EQ(missing.findings[0].found, L"C:\\x\\own.pmp");
    // Bytes from nowhere have no folder to look in.
    EXPECT_EQ(foundIn(body, PiaKind::Pc3), "");

    std::filesystem::create_directory(folder.path("PMP"));
    const auto put = [&](const std::string& parameters) {
        writeBytes(folder.path("PMP/own.pmp"), fileAround(parameters, PiaKind::Pc3));
    };
    put(edited(bareParameters, "udm{", "udn{"));
    EXPECT_EQ(foundIn(check(body), body), "warning pmp-unreadable" + place);
    put(fullParameters);
    // 36 inches are more than the 900 mm of the PMP.
    EXPECT_EQ(foundIn(check(body), body), "warning paper-too-large media/custom_papers/0|  0{");
    const std::string narrow = edited(body, "   width=36.", "   width=35.");
    EXPECT_EQ(foundIn(check(narrow)), "");
    // A paper of the PMP is a paper of the device.
    EXPECT_EQ(foundIn(check(edited(narrow, "\"ISO_A4_(210.00_x_297.00_MM)",
                                   "\"UserDefinedMetric (100.00 x 200.00MM)"))),
              "");

    // A relative name counts from the configuration, wherever the program runs.
    std::filesystem::create_directory(folder.path("b"));
    for (const char* name : {"own.pmp", "b/own.pmp"}) {
        writeBytes(folder.path(name), fileAround(fullParameters, PiaKind::Pc3));
    }
    const CurrentFolder b(folder.path("b"));
    const std::string relative = edited(narrow, "C:\\x\\own.pmp", "own.pmp");
    EXPECT_EQ(foundIn(check(relative), relative),
              "warning name-ambiguous meta/user_defined_model_pathname|"
              " user_defined_model_pathname=\"own.pmp");
}

}  // namespace
