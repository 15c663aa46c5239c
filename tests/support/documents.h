/// Reading documents from body text, sound or at fault.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <platen/pia.h>
#include <platen/plotcfg.h>
#include <platen/pmp.h>
#include <platen/utcore.h>
#include "tests/support/configurations.h"

using Config = std::unique_ptr<CPlotCfg3>;

/// The document of a body, or null; `report` gets what the reader found.
inline Config configOf(const std::string& body, PiaReport* report = nullptr) {
    PiaInput input;
    bool printerChanged = false;
    Config config = input.openBody(body) ? CPlotCfg3::fromInput(input, printerChanged) : nullptr;
    if (report != nullptr) {
        *report = input.report();
    }
    return config;
}

inline std::unique_ptr<PlotModelParam> parametersOf(const std::string& body,
                                                    PiaReport* report = nullptr) {
    PiaInput input;
    auto parameters = std::make_unique<PlotModelParam>();
    const bool done = input.openBody(body) && parameters->init(input);
    if (report != nullptr) {
        *report = input.report();
    }
    return done ? std::move(parameters) : nullptr;
}

/// Words and paths of the warnings.
inline std::string warningsOf(const PiaReport& report) {
    std::string text;
    for (const PiaFinding& finding : report.warnings()) {
        text += (text.empty() ? "" : ", ") + std::string(piaCodeWord(finding.code)) + ' ' +
                ut::encodeUtf8(finding.path);
    }
    return text;
}

/// A part of a document is read and written as what stands at `path`.
template <class Part>
void expectReadAndWritten(const PiaInput& input, const wchar_t* path) {
    const auto& block = static_cast<const PiaBlock&>(*piaFindItems(*input.root(), path).at(0));
    Part part;
    PiaTree tree;
    EXPECT_TRUE(part.init(block) && part.write(tree.root()));
    EXPECT_EQ(piaBodyText(tree.root()), piaBodyText(block));
}

/// Spoils the items of a body one by one. In lists and optional blocks a fault costs that part,
/// everywhere else the document that `read(body, &report)` returns.
/// `optional`: what the paths of such items begin with, beside those of the meta node.
template <class Read>
void expectOthersAreNeeded(const std::string& body, std::vector<std::string> optional,
                           const Read& read) {
    optional.insert(optional.end(),
                    {"meta/win_", "meta/short_net", "meta/friendly", "meta/dm_", "meta/default_",
                     "meta/platform", "meta/locale", "meta/config_"});
    for (const BodyItem& item : itemsOf(body)) {
        const bool mayBeMissing = std::ranges::any_of(
            optional, [&](const std::string& prefix) { return item.path.starts_with(prefix); });
        for (const std::string& faulty : spoiled(body, item)) {
            PiaReport report;
            EXPECT_EQ(read(faulty, &report) != nullptr, mayBeMissing) << item.path;
            ASSERT_EQ(report.failure().has_value(), !mayBeMissing) << item.path;
            if (report.failure()) {
                EXPECT_EQ(ut::encodeUtf8(report.failure()->path), item.path);
            }
        }
    }
}
