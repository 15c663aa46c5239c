/// What a file holds, by its content and never by its name.
#pragma once

#include <memory>
#include <string>

#include <platen/pia.h>
#include <platen/plotcfg.h>
#include <platen/plotstyle.h>
#include <platen/pmp.h>

namespace platen {

enum class FileKind {
    /// Colour-dependent plot style table.
    Ctb,
    /// Named plot style table.
    Stb,
    /// Plot configuration.
    Pc3,
    /// Plot model parameters.
    Pmp,
    /// A sound container of something else.
    Pia,
};

/// "ctb", "stb" ...
const char* kindWord(FileKind kind);
/// "colour-dependent plot style table" ...
const char* kindName(FileKind kind);
/// "CTB", "STB" or "PC3".
const char* headerLetters(PiaKind kind);

/// The document in a tree. A kind of document that can be read gets a member here and its marks in
/// `recognise`. A member is null when the file holds none of its kind or when it is rejected.
struct Content {
    FileKind kind = FileKind::Pia;
    std::unique_ptr<CPlotStyleTable> table;
    /// Holds the PMP that it names, when that can be read. Its meta node is as in the file.
    std::unique_ptr<CPlotCfg3> config;
    std::unique_ptr<PlotModelParam> parameters;
    /// Where the PMP that the configuration names was found; empty when it was not.
    std::wstring pmpPath;
    /// What came of looking for it and reading it.
    PiaReport pmpReport;
    /// The tree has the marks of a document that the library reads, but the library refused it;
    /// the input's report says why.
    bool rejected = false;
};

/// Looks at the tree of an open input and reads its table. Other documents are told by their
/// blocks.
Content recognise(PiaInput& input);
/// The same, and reads configurations and parameters. `file` is where the input is from: a
/// configuration's PMP is looked for there, too, and read with the same options. No printer is
/// asked for anything.
Content readContent(PiaInput& input, const std::wstring& file, const PiaReadOptions& options);

/// True when each of the 255 colours has the style of its own place in the list.
bool hasStylePerColour(const CPlotStyleTable& table);

}  // namespace platen
