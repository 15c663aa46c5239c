/// Plot configurations and plot model parameters for tests, as the writer writes their bodies.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <platen/pia.h>
#include <platen/utcore.h>
#include "tests/support/trees.h"

/// With every optional key.
extern const std::string fullConfiguration;
/// With no key that a writer may leave out.
extern const std::string bareConfiguration;
extern const std::string fullParameters;
extern const std::string bareParameters;

/// The body that a document is written as; empty when it cannot be.
template <class Document>
std::string bodyOfDocument(const Document& document) {
    PiaTree tree;
    PiaFileOut out;
    ut::ByteBuffer file;
    const bool done = document.writeToBlock(tree.root()) && out.encode(tree.root(), file);
    return done ? bodyOf(file.view()) : std::string();
}

/// An entry "NAME{...}" of the custom papers of a configuration. People see the paper's name with
/// " local" behind it; there is no margin but at the top.
std::string customPaper(const std::string& name, const std::string& paperName, int units,
                        const std::string& width = "10", const std::string& top = "0");

/// The configuration with custom papers of its own, which it must not have had.
std::string withCustomPapers(const std::string& configuration, const std::string& entries);

/// `text` with its only `from` replaced by `to`; throws when there is none or more than one.
std::string edited(std::string text, std::string_view from, std::string_view to);

/// A line of a body that is an item, and where it stands.
struct BodyItem {
    /// Names from the root, joined by "/".
    std::string path;
    std::size_t begin;
    std::size_t end;
};

std::vector<BodyItem> itemsOf(const std::string& body);

/// What makes an item unreadable: left out, a block in its place, and for numbers no number.
std::vector<std::string> spoiled(const std::string& body, const BodyItem& item);
