/// What a file holds, by its content and never by its name.
#pragma once

#include <memory>

#include "pia.h"
#include "plotstyle.h"

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
/// `recognise`.
struct Content {
    FileKind kind = FileKind::Pia;
    /// Null when the file holds none or when it is rejected.
    std::unique_ptr<CPlotStyleTable> table;
    /// The tree has the marks of a document that the library reads, but the library refused it;
    /// the input's report says why.
    bool rejected = false;
};

/// Looks at the tree of an open input and reads its document.
Content recognise(PiaInput& input);

/// True when each of the 255 colours has the style of its own place in the list.
bool hasStylePerColour(const CPlotStyleTable& table);

}  // namespace platen
