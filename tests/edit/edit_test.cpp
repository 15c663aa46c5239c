#include <platen/edit.h>

#include <gmock/gmock.h>

#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <platen/utcore.h>
#include "tests/support/configurations.h"
#include "tests/support/files.h"
#include "tests/support/trees.h"

namespace {

using platen::EditFault;
using platen::FileForm;
using platen::WriteResult;
using testing::ElementsAre;

const std::string body = "a=1\nblock{\n inner=\"x\n x=7\n x=\"y\n}\nb=c=\"d\n";

TEST(EditItems, RefusalsSayWhatIsThere) {
    using Names = std::vector<std::wstring>;
    const struct {
        const wchar_t* assignment;
        EditFault fault;
        Names present;
    } cases[] = {
        {L"block/iner=1", EditFault::TypeMissing, {L"inner", L"x", L"x"}},
        {L"blok/inner:num=1", EditFault::BlockNotFound, {L"a", L"block", L"b"}},
        {L"block/x=1", EditFault::Ambiguous, {L":num", L":str"}},
        {L"a:str=1", EditFault::TypeKept, {}},
        {L"a=x", EditFault::ValueInvalid, {}},
        {L"a", EditFault::ValueInvalid, {}},
        {L"block/:num=1", EditFault::NameInvalid, {}},
    };
    PiaInput input;
    ASSERT_TRUE(input.openBody(body));
    platen::ItemEditor editor(*input.root());
    for (const auto& [assignment, fault, present] : cases) {
        const platen::EditResult refused = editor.assign(assignment);
        ASSERT_FALSE(refused) << ut::encodeUtf8(assignment);
        EXPECT_EQ(refused->fault, fault) << refused->reason;
        EXPECT_EQ(refused->present, present) << refused->reason;
    }
    EXPECT_EQ(editor.remove(L"block/gone")->fault, EditFault::NotFound);
    EXPECT_EQ(editor.set(L"new:num", L"one")->fault, EditFault::ValueInvalid);
    EXPECT_EQ(editor.addBlock(L"new:num")->fault, EditFault::ValueInvalid);
    EXPECT_TRUE(editor.addBlock(L"block:block"));
    EXPECT_TRUE(editor.set(L"a", L"1"));
    EXPECT_FALSE(editor.changed());
    EXPECT_TRUE(editor.set(L"block/x:num", L"8"));
    EXPECT_TRUE(editor.changed());
}

TEST(EditFiles, ComeBackInTheirForm) {
    const TemporaryFolder folder;
    const std::wstring path = folder.wide("a");
    for (const FileForm form : {FileForm::Compressed, FileForm::Json, FileForm::BodyText}) {
        PiaInput input;
        ASSERT_TRUE(input.openBody(bareConfiguration));
        ASSERT_TRUE(platen::writeFile(*input.root(), form, PiaKind::Stb, path));
        platen::SourceFile file;
        ASSERT_TRUE(file.read(path));
        EXPECT_EQ(file.form(), form);
        EXPECT_EQ(file.bytes(), readBytes(path));
        ASSERT_TRUE(platen::ItemEditor(*file.input().root()).set(L"media/number_of_copies", L"7"));
        ASSERT_TRUE(file.write(path));
        platen::SourceFile again;
        ASSERT_TRUE(again.read(path));
        EXPECT_EQ(again.form(), form);
        EXPECT_EQ(again.headerKind(), form == FileForm::Compressed ? PiaKind::Stb : PiaKind::Pc3);
        EXPECT_TRUE(equalTrees(*again.input().root(), *file.input().root()));
    }
    // Body text has no mark of its own, but those of the others are none of its.
    platen::SourceFile bare;
    writeBytes(folder.path("brace"), "{\n}\n");
    EXPECT_FALSE(bare.read(folder.wide("brace")));
    EXPECT_EQ(bare.input().report().failure()->code, PiaCode::JsonNoData);
    EXPECT_FALSE(bare.read(path, {}, platen::SourceFile::Accept::OnlyFiles));
    EXPECT_EQ(bare.input().root(), nullptr);
    EXPECT_FALSE(bare.read(folder.wide("none")));
    EXPECT_EQ(bare.input().report().failure()->code, PiaCode::FileUnreadable);
}

TEST(EditFiles, WhatSomebodyElseWroteMeanwhileStays) {
    const TemporaryFolder folder;
    const std::unique_ptr<CPlotCfg3> config(CPlotCfg3::create(L"Print As PDF"));
    const std::wstring path = folder.wide("a.pc3");
    const auto changedBySomebody = [&] {
        config->media.numberOfCopies += 1;
        EXPECT_TRUE(config->write(path.c_str()));
        return readBytes(path);
    };
    const auto isLeft = [&](const WriteResult& result, const std::string& bytes) {
        return !result && result.report.failure()->code == PiaCode::FileChanged &&
               readBytes(path) == bytes;
    };
    changedBySomebody();
    platen::SourceFile file;
    ASSERT_TRUE(file.read(path));
    ASSERT_TRUE(platen::ItemEditor(*file.input().root()).set(L"media/number_of_copies", L"7"));
    const std::string theirs = changedBySomebody();
    EXPECT_TRUE(isLeft(file.write(path), theirs));
    EXPECT_TRUE(file.write(folder.wide("b.pc3")));

    platen::PaperFile papers;
    PiaReport report;
    ASSERT_TRUE(papers.open(path, platen::PaperFile::Purpose::Edit, report));
    ASSERT_TRUE(platen::PaperEditor(papers).add(L"Roll", {914, 5000, {}, {}}));
    const std::string changed = changedBySomebody();
    const platen::SavedPapers saved = papers.save();
    EXPECT_FALSE(saved.done);
    EXPECT_TRUE(isLeft(saved.configuration->result, changed));

    // Plot model parameters that changed are not set aside by new ones of another name.
    ASSERT_TRUE(papers.open(path, platen::PaperFile::Purpose::Edit, report));
    ASSERT_TRUE(platen::PaperEditor(papers).add(L"Roll", {914, 5000, {}, {}}));
    std::filesystem::remove(folder.path("a.pmp"));
    ASSERT_TRUE(papers.save().done);
    ASSERT_TRUE(platen::PaperEditor(papers).add(L"Card", {85, 55, {}, {}}));
    writeBytes(folder.path("a.pmp"), "somebody else's");
    EXPECT_FALSE(papers.save().done);
    EXPECT_EQ(readBytes(folder.path("a.pmp")), "somebody else's");
}

TEST(EditFiles, WhatFailsLeavesTheOldFile) {
    const TemporaryFolder folder;
    writeBytes(folder.path("a"), "old");
    PiaTree tree;
    ASSERT_TRUE(tree.root().addString(L"a", L"two\nlines"));
    for (const FileForm form : {FileForm::Compressed, FileForm::BodyText}) {
        const WriteResult result =
            platen::writeFile(tree.root(), form, PiaKind::Pc3, folder.wide("a"));
        EXPECT_EQ(result.failedAt, WriteResult::Stage::Encoding);
        EXPECT_EQ(result.report.failure()->code, PiaCode::LineBreakInValue);
    }
    PiaTree sound;
    const WriteResult nowhere =
        platen::writeFile(sound.root(), FileForm::Json, PiaKind::Pc3, folder.wide("gone/a"));
    EXPECT_EQ(nowhere.failedAt, WriteResult::Stage::Storing);
    EXPECT_EQ(readBytes(folder.path("a")), "old");
    EXPECT_THAT(folder.files(), ElementsAre("a"));
}

class EditPapers : public testing::Test {
protected:
    EditPapers() {
        const std::unique_ptr<CPlotCfg3> config(CPlotCfg3::create(L"Print As PDF"));
        EXPECT_TRUE(config->write(path_.c_str()));
    }

    /// A file that is open for editing.
    platen::EditResult open(const std::wstring& path) {
        file_ = {};
        return file_.open(path, platen::PaperFile::Purpose::Edit, report_);
    }

    const TemporaryFolder folder_;
    const std::wstring path_ = folder_.wide("a.pc3");
    platen::PaperFile file_;
    PiaReport report_;
};

TEST_F(EditPapers, RefusalsChangeNothing) {
    using Shape = platen::PaperShape;
    using enum OdDbPlotSettings::PlotPaperUnits;
    ASSERT_TRUE(open(path_));
    platen::PaperEditor editor(file_);
    ASSERT_TRUE(editor.add(L"Roll", {914, 5000, {{1, 1, 1, 1}}, {}}));
    ASSERT_TRUE(editor.add(L"Other", {10, 20, {}, kInches}));
    const auto papers = [&] {
        std::vector<CustomPaperSize> list;
        file_.config().getCustomPaperSizes(list);
        return list;
    };
    const std::vector<CustomPaperSize> before = papers();
    const auto add = [&](const std::wstring& name, const Shape& shape) {
        return editor.add(name, shape);
    };
    const auto withMargins = [&](const Shape::Margins& margins) {
        return editor.add(L"N", {9, 9, margins, {}});
    };
    const Shape small{1, 1, {}, {}};
    const struct {
        platen::EditResult refused;
        EditFault fault;
        const char* reason;
    } cases[] = {
        {add(L"", small), EditFault::NameInvalid, "needs a name"},
        {add(L"two\nlines", small), EditFault::NameInvalid, "one line"},
        {add(L"\x7ED8", small), EditFault::NameInvalid, "characters"},
        {add(std::wstring(401, L'x'), small), EditFault::NameInvalid, "400"},
        {add(L"rOLL", small), EditFault::NameTaken, "\"Roll\" already"},
        {editor.rename(L"Roll", L"OTHER"), EditFault::NameTaken, "\"Other\" already"},
        {editor.rename(L"Roll", L""), EditFault::NameInvalid, "needs a name"},
        {add(L"N", {0, 1, {}, {}}), EditFault::SizeInvalid, "the width is not positive"},
        {add(L"N", {1, -1, {}, {}}), EditFault::SizeInvalid, "the height is not positive"},
        {add(L"N", {5080, 5080.1, {}, {}}), EditFault::SizeInvalid, "5080.00"},
        {add(L"N", {201, 1, {}, kInches}), EditFault::SizeInvalid, "5080.00"},
        {withMargins({5, 0, 4, 0}), EditFault::SizeInvalid, "nothing of the width"},
        {withMargins({0, 5, 0, 4}), EditFault::SizeInvalid, "nothing of the height"},
        {withMargins({0, -5, 0, 4}), EditFault::SizeInvalid, "negative"},
        {editor.resize(L"Roll", {2, 5, {}, {}}), EditFault::SizeInvalid, "width"},
        {editor.resize(L"Rol", small), EditFault::NotFound, "no custom paper \"Rol\""},
        {editor.remove(L""), EditFault::NotFound, "no custom paper"},
    };
    for (const auto& [refused, fault, reason] : cases) {
        ASSERT_FALSE(refused) << reason;
        EXPECT_EQ(refused->fault, fault) << refused->reason;
        EXPECT_THAT(refused->reason, testing::HasSubstr(reason));
    }
    EXPECT_THAT(editor.remove(L"x")->present, ElementsAre(L"Roll", L"Other"));
    EXPECT_EQ(papers(), before);
    // One change builds on the other.
    EXPECT_TRUE(editor.resize(L"other", {254, 508, {}, kMillimeters}));
    EXPECT_DOUBLE_EQ(editor.paper().width, 10);
    EXPECT_TRUE(editor.rename(L"OTHER", L"OTHER"));
    EXPECT_TRUE(editor.remove(L"Roll"));
    EXPECT_EQ(editor.paper(), before[0]);
    EXPECT_EQ(papers().size(), 1U);
}

TEST_F(EditPapers, AFileThatCannotBeReadSaysAtWhichLine) {
    platen::SourceFile file;
    ASSERT_TRUE(file.read(path_));
    ASSERT_TRUE(platen::ItemEditor(*file.input().root()).remove(L"media/size/name"));
    ASSERT_TRUE(file.write(path_));
    EXPECT_EQ(open(path_)->fault, EditFault::FileUnreadable);
    ASSERT_TRUE(report_.failure());
    EXPECT_EQ(report_.failure()->path, L"media/size/name");
    EXPECT_GT(report_.failure()->line, 0U);
}

TEST_F(EditPapers, SavingSaysWhatBecameOfEachDocument) {
    ASSERT_TRUE(open(path_));
    EXPECT_FALSE(file_.save().parameters);
    ASSERT_TRUE(platen::PaperEditor(file_).add(L"Roll", {914, 5000, {}, {}}));
    writeBytes(folder_.path("a.pmp"), "somebody else's");
    const platen::SavedPapers refused = file_.save();
    ASSERT_FALSE(refused.done);
    EXPECT_EQ(refused.done->fault, EditFault::FileOfOthers);
    EXPECT_EQ(refused.done->wanted, folder_.wide("a.pmp"));
    std::filesystem::remove(folder_.path("a.pmp"));
    const platen::SavedPapers saved = file_.save();
    EXPECT_TRUE(saved.done);
    ASSERT_TRUE(saved.parameters && saved.configuration && saved.namesOtherParameters);
    EXPECT_EQ(saved.parameters->path, folder_.wide("a.pmp"));
    EXPECT_EQ(saved.parameters->papers, 1U);
    const platen::SavedPapers again = file_.save();
    EXPECT_FALSE(again.parameters || again.configuration || !again.done);

    // What documents do not know is lost, what readers take for usual is made so.
    platen::SourceFile raw;
    ASSERT_TRUE(raw.read(folder_.wide("a.pmp")));
    platen::ItemEditor items(*raw.input().root());
    ASSERT_TRUE(items.set(L"udm/extra:num", L"7"));
    ASSERT_TRUE(items.set(L"udm/media/size/0/media_group", L"5"));
    ASSERT_TRUE(platen::writeFile(*raw.input().root(), FileForm::Json, PiaKind::Pc3,
                                  folder_.wide("a.pmp")));
    ASSERT_TRUE(open(path_));
    ASSERT_TRUE(platen::PaperEditor(file_).add(L"Card", {85, 55, {}, {}}));
    // Its own file cannot be written: the new one goes beside the configuration.
    const std::wstring gone = folder_.wide("gone/own.pmp");
    file_.config().pmp()->filePath = OdString(gone);
    file_.config().pmp()->userDefinedModelPathname = gone;
    const platen::SavedPapers moved = file_.save();
    EXPECT_TRUE(moved.done);
    ASSERT_TRUE(moved.ownParameters && moved.parameters);
    EXPECT_EQ(moved.ownParameters->result.failedAt, WriteResult::Stage::Storing);
    EXPECT_EQ(moved.parameters->path, folder_.wide("own.pmp"));
    EXPECT_THAT(moved.parameters->lost, ElementsAre(L"udm/extra"));
    EXPECT_TRUE(moved.parameters->wasJson);
    EXPECT_THAT(moved.normalised, ElementsAre(L"Roll"));
    EXPECT_TRUE(moved.configuration && moved.configuration->result && moved.namesOtherParameters);
}

}  // namespace
