#include <gmock/gmock.h>

#include <algorithm>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <platen/compare.h>
#include <platen/edit.h>
#include <platen/house.h>
#include "house/portable_names.h"
#include "tests/support/configurations.h"
#include "tests/support/json_seen.h"
#include "tests/support/random_documents.h"

namespace {

using Kind = platen::MoveLoss::Kind;

constexpr const wchar_t* printerKeys[] = {L"win_device_name", L"friendly_net_name",
                                          L"short_net_name"};

void setText(PiaBlock& root, const std::wstring& key, const std::wstring& value) {
    platen::ItemEditor editor(root);
    static_cast<void>(editor.remove(L"meta/" + key));
    ASSERT_TRUE(editor.set(L"meta/" + key + L":str", value));
}

platen::SourceFile sourceOf(const PiaBlock& root) {
    ut::ByteBuffer bytes;
    EXPECT_TRUE(platen::encodeFile(root, platen::FileForm::Compressed, PiaKind::Pc3, bytes));
    platen::SourceFile source;
    EXPECT_TRUE(source.readBytes(std::move(bytes)));
    return source;
}

std::set<Kind> kindsOf(const platen::MovedDocument& moved) {
    std::set<Kind> kinds;
    for (const platen::MoveLoss& loss : moved.losses) {
        kinds.insert(loss.kind);
    }
    return kinds;
}

TEST(HouseTest, AMoveBackBringsEverythingButWhatIsListed) {
    using Names = std::vector<std::pair<std::wstring, std::wstring>>;
    const Names maps[] = {{{L"A", L"X"}, {L"B", L"Y"}},
                          {{L"A", L"B"}, {L"B", L"C"}},
                          {{L"A", L"B"}, {L"B", L"A"}},
                          {{L"A", L"a"}},
                          {}};
    const std::wstring printers[] = {L"A", L"B", L"C", L"a", L"X", L""};
    const std::wstring before = L"/office/x.pmp";
    const std::wstring places[] = {before, L"x.pmp", L"D:\\plots\\X.pmp", L""};
    std::size_t lossless = 0;
    constexpr std::uint32_t rounds = 400;
    for (std::uint32_t seed = 0; seed < rounds; ++seed) {
        SCOPED_TRACE(seed);
        RandomDocuments random(seed);
        const bool isConfiguration = random.oneIn(2);
        const auto original = random.make(isConfiguration ? RandomKind::Pc3 : RandomKind::Pmp);
        for (const wchar_t* key : printerKeys) {
            setText(*original, key, printers[random.below(std::size(printers))]);
        }
        setText(*original, L"user_defined_model_pathname", places[random.below(std::size(places))]);
        platen::MoveMap map;
        platen::MoveMap back;
        for (const auto& [from, to] : maps[random.below(std::size(maps))]) {
            ASSERT_TRUE(map.add(from, to));
            ASSERT_TRUE(back.add(to, from));
        }
        platen::SourceFile source = sourceOf(*original);
        const auto start = copyOfTree(*source.input().root());
        platen::MovedDocument there;
        platen::MovedDocument again;
        ASSERT_TRUE(platen::moveDocument(
            source, {.printers = &map, .parameters = L"/new/x.pmp", .parametersBefore = before},
            there));
        platen::SourceFile moved = sourceOf(*source.input().root());
        ASSERT_TRUE(platen::moveDocument(
            moved, {.printers = &back, .parameters = before, .parametersBefore = L"/new/x.pmp"},
            again));
        const bool listed = std::ranges::any_of(there.losses, [](const platen::MoveLoss& loss) {
            return !platen::staysInFile(loss.kind);
        });
        const platen::Comparison end = platen::compare(*start, *moved.input().root());
        EXPECT_EQ(end.equal(), !listed) << testing::PrintToString(platen::describe(end));
        for (const platen::Difference& difference : end.differences) {
            EXPECT_EQ(difference.place.front().name, L"meta");
        }
        lossless += listed ? 0 : 1;
    }
    EXPECT_GT(lossless, rounds / 4);
    EXPECT_LT(lossless, rounds * 3 / 4);
}

TEST(HouseTest, LossesNameWhatANewPrinterCosts) {
    const std::string body = edited(fullConfiguration, "0{\n  name=\"Odd\n  value=12abc\n }\n ",
                                    "0{\n  name=\"dmDriverExtra\n  value=3\n }\n ");
    struct Case {
        const char* what;
        std::map<std::wstring, platen::InstalledPrinter> asked;
        std::set<Kind> losses;
        std::size_t changes;
    };
    const Case cases[] = {
        {"nobody can be asked", {}, {Kind::DriverSettings}, 1},
        {"the same driver",
         {{L"New", {L"Driver name", 223, {L"ISO_A4_(210.00_x_297.00_MM)"}}}},
         {},
         1},
        {"another driver, no such paper",
         {{L"New", {L"Other", 300, {}}}},
         {Kind::Misfit, Kind::Driver},
         2},
    };
    platen::MoveMap map;
    ASSERT_TRUE(map.add("\\\\server\\plotter=New"));
    for (const Case& each : cases) {
        SCOPED_TRACE(each.what);
        PiaInput input;
        ASSERT_TRUE(input.openBody(body));
        platen::SourceFile source = sourceOf(*input.root());
        platen::MovedDocument moved;
        ASSERT_TRUE(platen::moveDocument(source, {.printers = &map, .asked = &each.asked}, moved));
        EXPECT_EQ(kindsOf(moved), each.losses) << testing::PrintToString([&] {
            std::vector<std::string> texts;
            for (const platen::MoveLoss& loss : moved.losses) {
                texts.push_back(loss.text);
            }
            return texts;
        }());
        EXPECT_EQ(moved.changes.size(), each.changes);
    }
}

TEST(HouseTest, PathsAreThoseOfEverySystem) {
    using platen::house::pathFault;
    for (const wchar_t* path : {L"a.pc3", L"a/b/c.d.pc3", L"com.pc3", L"com10", L"conx/a", L"...a",
                                L" a", L"\x7ED8.pc3", L"a b/c"}) {
        EXPECT_EQ(pathFault(path), "") << ut::encodeUtf8(path);
        EXPECT_EQ(platen::house::PortablePaths().take(path), path);
    }
    for (const wchar_t* path :
         {L"",       L"/a",   L"a/",      L"a//b",         L"..",      L"../a",
          L"a/../b", L"./a",  L"C:/a",    L"C:a",          L"a\\b",    L"\\\\server\\share\\a",
          L"a:b",    L"CON",  L"nul.pc3", L"sub/Com1.pc3", L"lpt\xB9", L"aux .x",
          L"a.",     L"a /b", L"a\n",     L"a\x7F",        L"a*",      L"conout$"}) {
        EXPECT_NE(pathFault(path), "") << ut::encodeUtf8(path);
        const std::wstring taken = platen::house::PortablePaths().take(path);
        EXPECT_EQ(pathFault(taken), "") << ut::encodeUtf8(path) << ": " << ut::encodeUtf8(taken);
    }
    EXPECT_NE(pathFault(std::wstring(201, L'a')), "");
    EXPECT_NE(pathFault(std::wstring(L"a/") + std::wstring(1000, L'b')), "");
    platen::house::PortablePaths paths;
    const std::pair<const wchar_t*, const wchar_t*> turns[] = {{L"a/b.pc3", L"a/b.pc3"},
                                                               {L"A/B.pc3", L"A/B_2.pc3"},
                                                               {L"a/b.PC3", L"a/b_3.PC3"},
                                                               {L"a", L"a_2"},
                                                               {L"c?", L"c_"},
                                                               {L"c_/d", L"c__d"}};
    for (const auto& [wanted, taken] : turns) {
        EXPECT_EQ(paths.take(wanted), taken);
    }
}

TEST(HouseTest, AManifestIsReadAsItWasWrittenOrNotAtAll) {
    platen::BundleManifest manifest{.madeBy = L"test", .date = L"2026-01-31", .folders = {L"/o"}};
    manifest.files.push_back({.path = L"x/\x7ED8.pmp",
                              .place = L"C:\\x\\\x7ED8.pmp",
                              .kind = platen::FileKind::Pmp,
                              .bytes = 7,
                              .sha256 = std::string(64, 'a'),
                              .modified = -5});
    manifest.files.push_back({.path = L"a.pc3",
                              .place = L"/o/a.pc3",
                              .bytes = 8,
                              .sha256 = std::string(64, '0'),
                              .printer = L"P",
                              .parameters = L"x.pmp",
                              .parametersPath = L"x/\x7ED8.pmp"});
    manifest.leftOut.push_back({L"/o/b.txt", "it is no plotter file", true});
    const std::string json = keepJson(platen::manifestJson(manifest));
    platen::BundleManifest read;
    ASSERT_TRUE(platen::readManifest(json, read));
    EXPECT_EQ(platen::manifestJson(read), json);

    const std::pair<const char*, const char*> spoiled[] = {
        {"platen.bundle/1", "platen.bundle/2"},
        {"\"files\":[", "\"files\":[7,"},
        {"\"a.pc3\"", "\"../a.pc3\""},
        {"\"a.pc3\"", "\"X/\xE7\xBB\x98.PMP\""},
        {"\"a.pc3\"", "\"x\""},
        {"\"a.pc3\"", "\"Manifest.JSON\""},
        {"\"damaged\"", "\"exe\""},
        {"\"bytes\":7", "\"bytes\":-7"},
        {"\"bytes\":7", "\"bytes\":7.5"},
        {"aaaa", "aaaA"},
        {"\"P\"", "\"P\\n\""},
        {"\"P\"", "7"},
        {"\"parameters_path\":\"x/", "\"parameters_path\":\"y/"},
        {"\"made_by\":\"test\"", "\"made_by\":{}"},
        {"[\"/o\"]", "[[]]"},
        {"\"left_out\":[", "\"left_out\":[7,"},
    };
    for (const auto& [from, to] : spoiled) {
        std::string text = json;
        const std::size_t at = text.find(from);
        ASSERT_NE(at, std::string::npos) << from;
        text.replace(at, std::string_view(from).size(), to);
        EXPECT_FALSE(platen::readManifest(text, read)) << to;
    }
    for (const std::string& text : {std::string(), std::string("[]"), json.substr(0, 40),
                                    std::string(1'000'000, '['), "{\"a\":" + json}) {
        EXPECT_FALSE(platen::readManifest(text, read)) << text.substr(0, 20);
    }
}

}  // namespace
