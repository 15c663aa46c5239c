/// Writes a tree as body text.
#pragma once

#include <memory>
#include <string>

#include <platen/pia.h>

/// Appends the body text of the root block in the ANSI code page, lines cut at 511 characters as
/// every reader of the format expects. What a reader would not read back as it stands in the tree
/// is a warning. False, with the reason in the report, when a name or value holds a line break:
/// it would read as other lines.
[[nodiscard]] bool piaWriteBody(const PiaBlock& root, std::string& body, PiaReport& report);

/// The body of a document that writes itself: the same text as `piaWriteBody` gives for the tree,
/// without the tree. It does not notice a name that is added twice.
class PiaBodySink {
public:
    /// Appends to `body`; both are borrowed.
    PiaBodySink(std::string& body, PiaReport& report);
    ~PiaBodySink();
    PiaBodySink(const PiaBodySink&) = delete;
    PiaBodySink& operator=(const PiaBodySink&) = delete;

    PiaSink& root();
    /// Closes what is open. False, with the reason in the report, when a name or value held a line
    /// break.
    [[nodiscard]] bool finish();

private:
    class State;
    std::unique_ptr<State> state_;
};

/// The text of the children of `block` for people: UTF-8, nothing cut, nothing checked.
std::string piaBodyText(const PiaBlock& block);
