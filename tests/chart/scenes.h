/// Looking at charts.
#pragma once

#include <expat.h>
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include <platen/chart.h>
#include "chart/text_fit.h"

/// The shapes of one group, by its id.
inline std::vector<platen::SceneShape> groupOf(const platen::Scene& scene, const std::string& id) {
    for (const platen::ScenePage& page : scene.pages) {
        for (std::size_t index = 0; index < page.shapes.size(); ++index) {
            const auto* group = std::get_if<platen::SceneGroup>(&page.shapes[index]);
            if (group == nullptr || group->id != id) {
                continue;
            }
            std::size_t end = index;
            for (int depth = 0; depth != 0 || end == index; ++end) {
                depth += std::holds_alternative<platen::SceneGroup>(page.shapes[end]) ? 1 : 0;
                depth -= std::holds_alternative<platen::SceneGroupEnd>(page.shapes[end]) ? 1 : 0;
            }
            return {page.shapes.begin() + static_cast<std::ptrdiff_t>(index),
                    page.shapes.begin() + static_cast<std::ptrdiff_t>(end)};
        }
    }
    ADD_FAILURE() << "there is no " << id;
    return {};
}

template <class Shape>
std::vector<Shape> shapesIn(const std::vector<platen::SceneShape>& shapes) {
    std::vector<Shape> found;
    for (const platen::SceneShape& shape : shapes) {
        if (const Shape* one = std::get_if<Shape>(&shape)) {
            found.push_back(*one);
        }
    }
    return found;
}

/// The texts of a group or a page, a line each.
inline std::string textIn(const std::vector<platen::SceneShape>& shapes) {
    std::string text;
    for (const platen::SceneText& run : shapesIn<platen::SceneText>(shapes)) {
        text += run.text + '\n';
    }
    return text;
}

/// Everything is on its page, groups end, and their ids are their own.
inline void expectSound(const platen::Scene& scene) {
    std::set<std::string> ids;
    ASSERT_FALSE(scene.pages.empty());
    for (const platen::ScenePage& page : scene.pages) {
        int depth = 0;
        for (const platen::SceneShape& shape : page.shapes) {
            if (const auto* run = std::get_if<platen::SceneText>(&shape)) {
                const double width = platen::chart::textWidth(run->text, run->size, run->bold);
                const double left = run->anchor == platen::SceneAnchor::Start ? run->x
                                    : run->anchor == platen::SceneAnchor::End ? run->x - width
                                                                              : run->x - width / 2;
                EXPECT_GE(left, 0) << run->text;
                EXPECT_LE(left + width, page.width) << run->text;
                EXPECT_GE(run->y, run->size * 0.7) << run->text;
                EXPECT_LE(run->y, page.height) << run->text;
            } else if (const auto* box = std::get_if<platen::SceneRectangle>(&shape)) {
                EXPECT_GE(box->width, 0);
                EXPECT_GE(box->height, 0);
                EXPECT_GE(std::min(box->x, box->y), 0);
                EXPECT_LE(box->x + box->width, page.width + 1e-6);
                EXPECT_LE(box->y + box->height, page.height + 1e-6);
            } else if (const auto* group = std::get_if<platen::SceneGroup>(&shape)) {
                ++depth;
                EXPECT_TRUE(group->id.empty() || ids.insert(group->id).second) << group->id;
            } else if (std::holds_alternative<platen::SceneGroupEnd>(shape)) {
                ASSERT_GE(--depth, 0);
            }
        }
        EXPECT_EQ(depth, 0);
    }
}

/// What an XML reader sees.
struct XmlContent {
    std::set<std::string> elements;
    std::set<std::string> attributes;
    std::string text;
    std::string fault;
};

inline XmlContent xmlOf(const std::string& bytes) {
    XmlContent content;
    XML_Parser parser = XML_ParserCreate("UTF-8");
    XML_SetUserData(parser, &content);
    XML_SetStartElementHandler(parser, [](void* data, const char* name, const char** attributes) {
        static_cast<XmlContent*>(data)->elements.insert(name);
        for (; *attributes != nullptr; attributes += 2) {
            static_cast<XmlContent*>(data)->attributes.insert(*attributes);
        }
    });
    XML_SetCharacterDataHandler(parser, [](void* data, const char* text, int length) {
        static_cast<XmlContent*>(data)->text.append(text, static_cast<std::size_t>(length));
    });
    if (XML_Parse(parser, bytes.data(), static_cast<int>(bytes.size()), 1) == XML_STATUS_ERROR) {
        content.fault = XML_ErrorString(XML_GetErrorCode(parser));
    }
    XML_ParserFree(parser);
    return content;
}
