/// Writes body text without a tree.
#pragma once

#include <memory>
#include <string>

#include <platen/pia.h>

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
