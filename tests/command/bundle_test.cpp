#include <nlohmann/json.hpp>

#include <platen/house.h>
#include "house/digest.h"
#include "tests/command/support.h"
#include "tests/support/configurations.h"
#include "tests/support/raw_zip.h"

using testing::_;
using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::UnorderedElementsAre;

namespace {

class CommandBundleTest : public CommandTest {
protected:
    /// A configuration that names a printer and a PMP.
    void writeConfiguration(std::string_view name, std::string_view printer,
                            const std::string& pmp) const {
        std::string body = edited(fullConfiguration, "\\\\server\\plotter", printer);
        body = edited(body, "C:\\Plotters\\PMP Files\\no such.pmp", pmp);
        std::filesystem::create_directories(std::filesystem::path(path(name)).parent_path());
        writeFile(name, body, PiaKind::Pc3);
    }

    std::string item(std::string_view name, const char* key) const {
        std::string text = run({"get", path(name), std::string("meta/") + key}).out;
        return text.substr(0, text.find_last_not_of("\r\n") + 1);
    }

    bool exists(std::string_view name) const { return std::filesystem::exists(path(name)); }

    /// Two configurations, their PMPs, one of them elsewhere, a table, a damaged one, a note.
    void makeOffice() const {
        std::filesystem::create_directories(path("office/PMP"));
        writeFile("office/PMP/in.pmp", fullParameters, PiaKind::Pc3);
        writeFile("out.pmp", fullParameters, PiaKind::Pc3);
        writeConfiguration("office/a.pc3", "Old", path("office/PMP/in.pmp"));
        writeConfiguration("office/sub/b.pc3", "Other", path("out.pmp"));
        prepare({"create", "ctb", "-o", "@office/pens.ctb"});
        write("office/sub/bad.stb", "PIAFILEVERSION_2.0,STBVER1,compress\r\npmzlibcodec");
        write("office/notes.txt", "hello");
        write("office/a.pc3.bak", "old");
    }

    /// A manifest of these files, as a bundle has it.
    static std::string manifestOf(const std::vector<RawEntry>& entries) {
        platen::BundleManifest manifest;
        for (const RawEntry& entry : entries) {
            manifest.files.push_back({.path = ut::decodePath(entry.name),
                                      .bytes = entry.bytes.size(),
                                      .sha256 = platen::house::sha256(entry.bytes)});
        }
        return platen::manifestJson(manifest);
    }
};

TEST_F(CommandBundleTest, AnOfficeMovesWithItsPmpsAndPrinters) {
    makeOffice();
    expectRun({"bundle", "@office", "-o", "@o.zip"}, 3,
              AllOf(HasSubstr("notes.txt: it is no plotter file"),
                    HasSubstr("a.pc3.bak: it is a copy that was kept"),
                    HasSubstr("6 files (2 configurations, 2 PMPs, 1 table, 1 damaged)")),
              HasSubstr("bad.stb: warning: it is damaged, and is kept as it is"));
    expectRun({"restore", "@o.zip", "--list"}, 0,
              AllOf(HasSubstr("sub/b.pc3    pc3      "), HasSubstr("PMP/in.pmp"),
                    HasSubstr("PMP/out.pmp"), HasSubstr("damaged")));
    expectRun({"restore", "@o.zip", "@new/deep", "--map", "old=Neu", "--names-only", "--dry-run"},
              0, HasSubstr("6 of 6 files would be written"));
    EXPECT_FALSE(exists("new"));

    expectRun(
        {"restore", "@o.zip", "@new/deep", "--map", "old=Neu", "--names-only"}, 0,
        AllOf(HasSubstr("printer \"Old\" -> \"Neu\""),
              HasSubstr("lost: the printer was spelled \"Old\""),
              HasSubstr("lost: the PMP lay at "), HasSubstr("6 of 6 files written and read back")));
    EXPECT_EQ(item("new/deep/a.pc3", "win_device_name"), "Neu");
    EXPECT_EQ(item("new/deep/sub/b.pc3", "win_device_name"), "Other");
    EXPECT_EQ(item("new/deep/a.pc3", "user_defined_model_pathname"), path("new/deep/PMP/in.pmp"));
    EXPECT_EQ(item("new/deep/sub/b.pc3", "user_defined_model_pathname"),
              path("new/deep/PMP/out.pmp"));
    for (const char* file : {"/pens.ctb", "/sub/bad.stb", "/PMP/in.pmp"}) {
        EXPECT_EQ(read("new/deep" + std::string(file)), read("office" + std::string(file))) << file;
    }
    EXPECT_FALSE(exists("new/deep/notes.txt"));
    // The times come along where the bytes do.
    const auto seconds = [&](const char* file) {
        return std::chrono::floor<std::chrono::seconds>(
            std::filesystem::last_write_time(path(file)));
    };
    EXPECT_EQ(seconds("new/deep/pens.ctb"), seconds("office/pens.ctb"));
}

TEST_F(CommandBundleTest, NothingIsOverwrittenUnasked) {
    makeOffice();
    ASSERT_EQ(run({"bundle", "@office", "-o", "@o.zip"}).code, 3);
    const std::string bundle = read("o.zip");
    expectRefused({"bundle", "@office", "-o", "@o.zip"}, "is there already");
    // The same folder gives the same bytes.
    ASSERT_EQ(run({"bundle", "@office", "-o", "@o.zip", "--replace"}).code, 3);
    EXPECT_EQ(read("o.zip"), bundle);

    ASSERT_EQ(run({"restore", "@o.zip", "@new"}).code, 0);
    write("new/pens.ctb", "mine");
    expectRun({"restore", "@o.zip", "@new"}, 1,
              HasSubstr("0 of 6 files written and read back, 5 there already, 1 different there"),
              HasSubstr("pens.ctb: another file of that name is there, and stays"));
    EXPECT_EQ(read("new/pens.ctb"), "mine");
    expectRun({"restore", "@o.zip", "@new", "--replace"}, 0, HasSubstr("old file in "));
    EXPECT_EQ(read("new/pens.ctb"), read("office/pens.ctb"));
    EXPECT_EQ(read("new/pens.ctb.bak"), "mine");

    // What stands in the way of one file stops no other.
    std::filesystem::remove_all(path("new"));
    std::filesystem::create_directories(path("new/pens.ctb"));
    write("new/sub", "a file");
    expectRun({"restore", "@o.zip", "@new"}, 2, HasSubstr("3 failed"),
              AllOf(HasSubstr("something else stands there"), HasSubstr("is no folder")));
    EXPECT_EQ(read("new/sub"), "a file");
    EXPECT_TRUE(exists("new/a.pc3"));
}

TEST_F(CommandBundleTest, SeveralFoldersAndWhatIsSaidAboutThem) {
    makeOffice();
    std::filesystem::create_directories(path("x/office"));
    prepare({"create", "stb", "-o", "@x/office/names.stb"});
    writeConfiguration("x/office/lost.pc3", "Old", "nowhere.pmp");
    std::filesystem::create_directory(path("x/office/PMP"));
    writeFile("x/office/PMP/near.pmp", fullParameters, PiaKind::Pc3);
    writeConfiguration("x/office/near.pc3", "Old", "near.pmp");
    const CommandResult made = run({"bundle", "@office", "@x/office", "-o", "@o.zip", "--json"});
    EXPECT_EQ(made.code, 3);
    EXPECT_THAT(made.err, HasSubstr("the PMP that it names is not found: \"nowhere.pmp\""));
    const nlohmann::json manifest = nlohmann::json::parse(made.out);
    EXPECT_EQ(manifest["schema"], "platen.bundle/1");
    EXPECT_EQ(manifest["files"].size(), 10U);
    EXPECT_EQ(run({"restore", "@o.zip", "--list", "--json"}).out, made.out);
    expectRun({"restore", "@o.zip", "@new"}, 3, HasSubstr("office_2"),
              HasSubstr("was not found when the bundle was made"));
    EXPECT_TRUE(exists("new/office/sub/b.pc3"));
    EXPECT_EQ(item("new/office_2/lost.pc3", "user_defined_model_pathname"), "nowhere.pmp");
    // Its name leads there in the new place, too.
    EXPECT_EQ(item("new/office_2/near.pc3", "user_defined_model_pathname"), "near.pmp");

    const CommandResult lines = run({"restore", "@o.zip", "@new", "--json"});
    std::istringstream out(lines.out);
    std::string line;
    int count = 0;
    for (; std::getline(out, line); ++count) {
        EXPECT_EQ(nlohmann::json::parse(line)["state"], "already-there");
    }
    EXPECT_EQ(count, 10);

    std::filesystem::create_directory(path("backup"));
    EXPECT_EQ(run({"bundle", "@office", "-o", "@backup"}).code, 3);
    EXPECT_THAT(names(), testing::Contains(testing::StartsWith("backup")));
    EXPECT_FALSE(std::filesystem::is_empty(path("backup")));
    expectRefused({"bundle", "@nowhere"}, "no such folder");
    expectRun({"bundle", "@backup", "-o", "@p.zip"}, 1, _, HasSubstr("there is no plotter file"));
    expectRefused({"restore", "@o.zip"}, "DIR is missing");
    expectRefused({"restore", "@office/notes.txt", "@new"}, "no zip archive");
    expectRun({"restore", "@o.zip", "@third", "--map", "Olt=New", "--names-only"}, 3, _,
              HasSubstr("did you mean \"Old\""));
}

TEST_F(CommandBundleTest, HostileArchivesWriteNothing) {
    const std::string table = [&] {
        prepare({"create", "ctb", "-o", "@pens.ctb"});
        return read("pens.ctb");
    }();
    const RawEntry good{"pens.ctb", table};
    const auto with = [&](RawEntry entry) {
        return rawZip({good, entry, {"manifest.json", manifestOf({good, entry})}});
    };
    const std::string sound = rawZip({good, {"manifest.json", manifestOf({good})}});
    std::string deflated(64, '\0');
    uLongf size = static_cast<uLongf>(deflated.size());
    const std::string zeros(5000, '\0');
    ASSERT_EQ(
        compress(reinterpret_cast<Bytef*>(deflated.data()), &size,
                 reinterpret_cast<const Bytef*>(zeros.data()), static_cast<uLong>(zeros.size())),
        Z_OK);
    // Without the header and the checksum around the stream.
    const std::string bomb = deflated.substr(2, size - 6);
    RawEntry other{"b.ctb", table};
    RawEntry link{"b.ctb", "../../etc/passwd"};
    link.attributes = 0120777U << 16U;
    RawEntry encrypted = other;
    encrypted.flags |= 1U;
    RawEntry method = other;
    method.method = 14;
    RawEntry overlapping = other;
    overlapping.name = "bbbb.ctb";
    overlapping.overlaps = true;
    RawEntry huge = other;
    huge.stated = 0xFFFFFFFF;
    RawEntry larger = other;
    larger.stated = 300 << 20;
    const std::pair<std::string, const char*> cases[] = {
        {rawZip({good}), "no manifest.json"},
        {rawZip({good, {"manifest.json", "{}"}}), "its schema is not"},
        {rawZip({good, {"manifest.json", std::string(100'000, '[')}}), "nested too deep"},
        {with({"../b.ctb", table}), "leads out of its folder"},
        {with({"/b.ctb", table}), "empty name"},
        {with({"a\\..\\..\\b.ctb", table}), "another meaning"},
        {with({"C:b.ctb", table}), "another meaning"},
        {with({"b.ctb:stream", table}), "another meaning"},
        {with({"nul.ctb", table}), "device"},
        {with({"b.ctb. ", table}), "dot or a space"},
        {with({"PENS.ctb", table}), "but for case"},
        {with({"pens.ctb/b.ctb", table}), "not safe"},
        {with({"manifest.json", table}), "two of it"},
        {with(link), "it is a link"},
        {with(encrypted), "encrypted"},
        {with(method), "packed in a way"},
        {with(overlapping), "lie in each other"},
        {with(huge), "more bytes than"},
        {with(larger), "size is not that in the manifest"},
        {rawZip({good, good, {"manifest.json", manifestOf({good})}}), "has it twice"},
        {rawZip({{"manifest.json", manifestOf({good})}}), "does not have it"},
        {sound.substr(0, sound.size() - 30), "no zip archive"},
        {sound.substr(40), "cannot be used"},
    };
    for (const auto& [bytes, reason] : cases) {
        write("x.zip", bytes);
        expectRun({"restore", "@x.zip", "@in/new"}, 2, IsEmpty(),
                  AllOf(HasSubstr(reason), HasSubstr("nothing was written")));
        EXPECT_FALSE(exists("in")) << reason;
    }
    // Bytes that are not those of the manifest, and more than were stated, are refused one by one.
    RawEntry lying{"b.ctb", bomb};
    lying.method = 8;
    lying.stated = 100;
    const std::string digest = manifestOf({good, {"b.ctb", std::string(100, '\0')}});
    RawEntry changed{"b.ctb", std::string(100, 'x')};
    for (const RawEntry& entry : {lying, changed}) {
        write("x.zip", rawZip({good, entry, {"manifest.json", digest}}));
        expectRun({"restore", "@x.zip", "@in"}, 2, HasSubstr("1 of 2 files written"),
                  HasSubstr("cannot be taken out"));
        EXPECT_EQ(read("in/pens.ctb"), table);
        EXPECT_FALSE(exists("in/b.ctb"));
        std::filesystem::remove_all(path("in"));
    }
    // What the manifest does not name stays in the archive, whatever it is called.
    write("x.zip", rawZip({good, {"../b.ctb", table}, {"manifest.json", manifestOf({good})}}));
    expectRun({"restore", "@x.zip", "@in"}, 3, HasSubstr("1 of 1 files written"),
              HasSubstr("1 entries are not in the manifest"));
    EXPECT_THAT(names(), UnorderedElementsAre("in", "pens.ctb", "x.zip"));
    expectRefused({"restore", "@x.zip", "@in", "--max-body", "100"}, "larger than a plotter file");
}

}  // namespace
