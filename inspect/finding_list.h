/// Collects what a check finds.
#pragma once

#include <cstddef>
#include <optional>

#include <platen/inspect.h>

namespace platen {

class FindingList {
public:
    /// More than `most` are counted only.
    explicit FindingList(std::size_t most) : most_(most) {}

    void add(PiaFinding finding, Severity severity);
    void warn(PiaFinding finding) { add(std::move(finding), Severity::Warning); }
    /// The warnings of a reader or writer.
    void addWarnings(const PiaReport& report);
    /// Gives the findings that have only a path the line of the body where it leads to, or as near
    /// as it leads. Version-3 files have no lines.
    void locate(const PiaInput& input);

    /// Gives away what was found in a file of that kind.
    CheckResult take(std::optional<FileKind> kind);

private:
    std::size_t most_;
    CheckResult result_;
};

}  // namespace platen
