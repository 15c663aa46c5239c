// The C interface as its callers use it. What the core does behind it has tests of its own.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <nlohmann/json.hpp>
#include <string>

#include <platen/platen.h>
#include "tests/support/configurations.h"
#include "tests/support/files.h"
#include "tests/support/json_seen.h"
#include "tests/support/trees.h"

namespace {

using Json = nlohmann::json;
using testing::HasSubstr;

struct Destroy {
    void operator()(platen_context* context) const { platen_context_destroy(context); }
    void operator()(platen_document* document) const { platen_document_destroy(document); }
    void operator()(platen_papers* papers) const { platen_papers_destroy(papers); }
};
using Context = std::unique_ptr<platen_context, Destroy>;
using Document = std::unique_ptr<platen_document, Destroy>;
using Papers = std::unique_ptr<platen_papers, Destroy>;

/// What a buffer holds; it goes.
std::string taken(platen_buffer* buffer) {
    std::string bytes(platen_buffer_data(buffer), platen_buffer_size(buffer));
    platen_buffer_destroy(buffer);
    return keepJson(bytes);
}

Json jsonIn(platen_buffer* buffer) { return Json::parse(taken(buffer), nullptr, false); }

class CInterfaceTest : public testing::Test {
protected:
    Document open(const std::string& path) const {
        return Document(platen_document_open(context.get(), path.c_str()));
    }
    Document openBytes(const std::string& bytes) const {
        return Document(
            platen_document_open_bytes(context.get(), bytes.data(), bytes.size(), nullptr));
    }
    Document table(const char* kind) const {
        return Document(platen_document_create_table(context.get(), kind, nullptr));
    }
    std::string place(const char* name) const { return folder.path(name).string(); }
    Json error() const { return Json::parse(keepJson(platen_context_error(context.get()))); }

    TemporaryFolder folder;
    Context context{platen_context_create()};
};

TEST_F(CInterfaceTest, ADocumentIsChangedAndSavedWhole) {
    const std::string path = place("a.ctb");
    const Document made = table("ctb");
    ASSERT_TRUE(platen_document_save(made.get(), path.c_str()));
    const Document document = open(path);
    ASSERT_NE(document, nullptr);
    EXPECT_STREQ(platen_document_kind(document.get()), "ctb");
    EXPECT_FALSE(platen_document_is_changed(document.get()));

    EXPECT_TRUE(platen_document_set(document.get(), "description", "Pl\xC3\xA4ne"));
    EXPECT_TRUE(platen_document_set(document.get(), "vendor:block", nullptr));
    EXPECT_TRUE(platen_document_set(document.get(), "vendor/level:num", "3"));
    EXPECT_EQ(taken(platen_document_get(document.get(), "description")), "Pl\xC3\xA4ne");
    EXPECT_TRUE(platen_document_is_changed(document.get()));
    EXPECT_EQ(jsonIn(platen_document_info(document.get()))["schema"], "platen.info/1");
    EXPECT_EQ(jsonIn(platen_document_findings(document.get()))["schema"], "platen.check/1");
    const Json items = jsonIn(platen_document_items(document.get()))["items"];
    EXPECT_EQ(items.back()["name"], "level");
    EXPECT_EQ(items.back()["depth"], 1);
    EXPECT_EQ(items.back()["type"], "num");

    const std::string before = readBytes(path);
    const std::string bytes = taken(platen_document_bytes(document.get()));
    EXPECT_FALSE(platen_document_set(document.get(), "vendor/level", "three"));
    EXPECT_EQ(error()["code"], "value-invalid");
    EXPECT_FALSE(platen_document_remove(document.get(), "vendors"));
    EXPECT_EQ(error()["code"], "not-found");
    EXPECT_EQ(taken(platen_document_bytes(document.get())), bytes);
    EXPECT_EQ(readBytes(path), before);
    EXPECT_TRUE(platen_document_save(document.get(), nullptr));
    EXPECT_EQ(readBytes(path), bytes);
    EXPECT_FALSE(platen_document_is_changed(document.get()));

    EXPECT_TRUE(platen_document_remove(document.get(), "vendor"));
    writeBytes(path, before);
    EXPECT_FALSE(platen_document_save(document.get(), nullptr));
    EXPECT_EQ(error()["code"], "file-changed");
    EXPECT_EQ(readBytes(path), before);
}

TEST_F(CInterfaceTest, TablesAreEditedByStyles) {
    EXPECT_EQ(jsonIn(platen_palette(context.get()))["colors"][0], "#ff0000");
    EXPECT_EQ(jsonIn(platen_devices(context.get()))["devices"][0], "Print As PDF");
    EXPECT_EQ(jsonIn(platen_presets(context.get()))["presets"][0]["name"], "iso-0.13");
    EXPECT_EQ(jsonIn(platen_style_settings(context.get()))["settings"][2]["word"], "color");
    const Document named = table("stb");
    EXPECT_TRUE(platen_style_add(named.get(), "Wall", nullptr));
    EXPECT_TRUE(platen_style_set(named.get(), "Wall", "screening=40"));
    EXPECT_TRUE(platen_style_add(named.get(), "Door", "Wall"));
    EXPECT_TRUE(platen_style_rename(named.get(), "Door", "Window"));
    EXPECT_FALSE(platen_style_rename(named.get(), "Window", "wall"));
    EXPECT_EQ(error()["code"], "name-taken");
    EXPECT_EQ(jsonIn(platen_styles_merge_equal(named.get()))["groups"],
              Json::parse(R"([["Wall","Window"]])"));
    EXPECT_TRUE(platen_style_copy(named.get(), "Wall", "Normal"));
    const Json styles = jsonIn(platen_styles(named.get(), nullptr))["styles"];
    ASSERT_EQ(styles.size(), 2U);
    EXPECT_EQ(styles[0]["screening"], "40");
    EXPECT_TRUE(platen_style_remove(named.get(), "Wall"));
    EXPECT_EQ(platen_styles(named.get(), "Wall"), nullptr);

    const Document pens = table("ctb");
    EXPECT_TRUE(platen_lineweight_set(pens.get(), 8, "0.26"));
    EXPECT_FALSE(platen_lineweight_set(pens.get(), 27, "0.26"));
    EXPECT_EQ(jsonIn(platen_lineweights(pens.get()))["lineweights"][8]["millimetres"], 0.26);
    EXPECT_TRUE(platen_style_set(pens.get(), "1-9", "lineweight=0.26"));
    const Document other = table("ctb");
    const std::string csv = taken(platen_table_csv(pens.get()));
    EXPECT_TRUE(platen_table_read_csv(other.get(), csv.data(), csv.size()));
    EXPECT_EQ(taken(platen_compare_text(pens.get(), other.get())), "");

    platen_buffer* notes = nullptr;
    const Document converted(platen_document_convert(pens.get(), "stb", "Pen", &notes));
    ASSERT_NE(converted, nullptr);
    EXPECT_EQ(jsonIn(notes)["styles"][0],
              Json::parse(R"({"name":"Pen_1","colors":[1,2,3,4,5,6,7,8,9]})"));
    const Document text(platen_document_convert(pens.get(), "text", nullptr, nullptr));
    EXPECT_THAT(taken(platen_document_bytes(text.get())), HasSubstr("custom_lineweight_table{"));
    EXPECT_EQ(platen_document_convert(named.get(), "ctb", nullptr, nullptr), nullptr);
    EXPECT_EQ(error()["code"], "wrong-kind");
}

TEST_F(CInterfaceTest, ChangesOfOneGoIntoOthers) {
    const Document base = table("ctb");
    const Document ours = table("ctb");
    const Document theirs = table("ctb");
    ASSERT_TRUE(platen_style_set(theirs.get(), "1", "screening=50"));
    ASSERT_TRUE(platen_style_set(ours.get(), "2", "screening=60"));
    const std::string changes = taken(platen_compare(base.get(), theirs.get()));
    EXPECT_EQ(jsonIn(platen_merge(base.get(), ours.get(), theirs.get()))["taken"], 1);
    EXPECT_EQ(taken(platen_compare_text(base.get(), ours.get())),
              "Color 1: screening 100 % -> 50 %\nColor 2: screening 100 % -> 60 %\n");
    EXPECT_EQ(jsonIn(platen_apply(ours.get(), changes.c_str()))["already_there"], 1);
    EXPECT_EQ(jsonIn(platen_apply(base.get(), changes.c_str()))["made"], 1);
    EXPECT_EQ(taken(platen_compare_text(base.get(), theirs.get())), "");
    EXPECT_EQ(platen_apply(base.get(), "{}"), nullptr);
    const Document named = table("stb");
    EXPECT_EQ(platen_merge(base.get(), ours.get(), named.get()), nullptr);
}

TEST_F(CInterfaceTest, DamageIsMendedAndListed) {
    std::string bytes = taken(platen_document_bytes(table("ctb").get()));
    bytes.resize(bytes.size() / 2);
    EXPECT_EQ(openBytes(bytes), nullptr);
    EXPECT_EQ(error()["code"], "stream-truncated");
    EXPECT_EQ(error()["remedy"], "get the file again from its source; its end is missing");
    const std::string path = place("torn.ctb");
    writeBytes(path, bytes);
    platen_buffer* report = nullptr;
    const Document repaired(
        platen_repair(context.get(), bytes.data(), bytes.size(), path.c_str(), 0, &report));
    ASSERT_NE(repaired, nullptr);
    EXPECT_EQ(jsonIn(report)["schema"], "platen.repair/1");
    EXPECT_TRUE(platen_document_is_changed(repaired.get()));
    EXPECT_TRUE(platen_document_save(repaired.get(), nullptr));
    EXPECT_NE(open(path), nullptr);
    EXPECT_STREQ(platen_document_kind(repaired.get()), "ctb");
    EXPECT_EQ(platen_repair(context.get(), "x", 1, nullptr, 0, nullptr), nullptr);
}

TEST_F(CInterfaceTest, PapersAreKeptInTheirFiles) {
    const std::string path = place("a.pc3");
    const Document made(platen_document_create_configuration(context.get(), "print as pdf"));
    ASSERT_TRUE(platen_document_save(made.get(), path.c_str()));
    const Papers papers(platen_papers_open(context.get(), path.c_str()));
    ASSERT_NE(papers, nullptr);
    const double margins[] = {1, 2, 3, 4};
    EXPECT_TRUE(platen_papers_add(papers.get(), "Banner", 900, 5000, margins, "mm"));
    EXPECT_FALSE(platen_papers_add(papers.get(), "banner", 900, 5000, nullptr, nullptr));
    EXPECT_FALSE(platen_papers_resize(papers.get(), "Banner", 900, 600, nullptr, "ell"));
    EXPECT_TRUE(platen_papers_resize(papers.get(), "Banner", 900, 600, nullptr, nullptr));
    EXPECT_TRUE(platen_papers_rename(papers.get(), "Banner", "Flag"));
    const Json list = jsonIn(platen_papers_list(papers.get()));
    EXPECT_EQ(list["papers"][0]["name"], "Flag");
    EXPECT_EQ(list["papers"][0]["margins"]["top"], 4);
    const Json saved = jsonIn(platen_papers_save(papers.get()));
    EXPECT_EQ(saved["parameters"]["papers"], 1);
    EXPECT_TRUE(saved["names_other_parameters"]);
    const Papers again(platen_papers_open(context.get(), path.c_str()));
    EXPECT_TRUE(platen_papers_remove(again.get(), "Flag"));
    EXPECT_TRUE(jsonIn(platen_papers_list(again.get()))["papers"].empty());

    // What was changed in the file meanwhile is not lost, and the error says that it is this.
    EXPECT_EQ(jsonIn(platen_papers_save(again.get()))["schema"], "platen.papers-saved/1");
    EXPECT_TRUE(platen_papers_add(papers.get(), "Sheet", 900, 600, nullptr, nullptr));
    EXPECT_EQ(platen_papers_save(papers.get()), nullptr);
    EXPECT_EQ(error()["code"], "file-changed");
    EXPECT_EQ(platen_papers_open(context.get(), place("none.pc3").c_str()), nullptr);
    EXPECT_EQ(error()["code"], "file-unreadable");
}

TEST_F(CInterfaceTest, ChartsAreDrawn) {
    const Document pens = table("ctb");
    const std::string svg =
        taken(platen_chart(pens.get(), nullptr, R"({"title":"A <b>","gather":true,"dpi":1e99})"));
    EXPECT_THAT(svg, testing::AllOf(HasSubstr("A &lt;b"), testing::StartsWith("<?xml")));
    EXPECT_EQ(jsonIn(platen_chart(pens.get(), "json", R"({"dpi":"many"})"))["schema"],
              "platen.scene/1");
    for (const char* options : {"[]", "{", R"({"sheet":"A99"})"}) {
        EXPECT_EQ(platen_chart(pens.get(), "svg", options), nullptr) << options;
    }
    EXPECT_EQ(platen_chart(pens.get(), "gif", nullptr), nullptr);
    EXPECT_EQ(platen_chart(openBytes(fileAround("a=1\n")).get(), "svg", nullptr), nullptr);
}

TEST_F(CInterfaceTest, WhatIsNotThereIsRefused) {
    EXPECT_EQ(open(place("none.ctb")), nullptr);
    EXPECT_EQ(error()["code"], "file-unreadable");
    EXPECT_FALSE(error()["remedy"].empty());
    EXPECT_EQ(platen_document_open(context.get(), nullptr), nullptr);
    EXPECT_EQ(error()["code"], "argument-missing");
    EXPECT_EQ(platen_document_open(context.get(), "\xFF"), nullptr);
    EXPECT_EQ(table("dwt"), nullptr);
    EXPECT_EQ(platen_document_create_table(context.get(), "ctb", "iso-9"), nullptr);
    EXPECT_EQ(platen_document_create_configuration(context.get(), "Nothing"), nullptr);
    EXPECT_FALSE(error()["present"].empty());
    platen_context_set_max_body(context.get(), 10);
    EXPECT_EQ(openBytes(fileAround(fullConfiguration)), nullptr);
    EXPECT_EQ(error()["code"], "body-too-large");
    // Handles that are NULL do nothing.
    EXPECT_EQ(platen_document_info(nullptr), nullptr);
    EXPECT_EQ(platen_compare(nullptr, nullptr), nullptr);
    EXPECT_EQ(platen_style_set(nullptr, "1", "screening=1"), 0);
    EXPECT_EQ(platen_papers_list(nullptr), nullptr);
    EXPECT_EQ(platen_buffer_size(nullptr), 0U);
    EXPECT_STREQ(platen_context_error(nullptr), "");
    platen_document_destroy(nullptr);
}

}  // namespace
