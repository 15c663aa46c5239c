/// What `check` finds in a file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <platen/pia.h>
#include "tools/platen/console/exit_code.h"

namespace platen {

using cli::ExitCode;

enum class Severity {
    /// The file can be used, but a careful reader wants to know.
    Warning,
    /// The file cannot be used.
    Error,
};

/// One thing that can be wrong. The word stays the same from release to release.
struct Rule {
    const char* word;
    /// A sentence without its full stop.
    const char* message;
    const char* remedy;
};

struct Finding {
    Rule rule{};
    Severity severity = Severity::Warning;
    /// See `PiaFinding` for what these count.
    std::optional<std::uint64_t> offset{};
    std::optional<std::uint64_t> line{};
    std::wstring path{};
    std::wstring expected{};
    std::wstring found{};
};

/// One line for people, UTF-8.
std::string describe(const Finding& finding);

class FindingList {
public:
    /// More than this many are counted only.
    static constexpr std::size_t most = 1000;

    void add(Finding finding);
    void add(const PiaFinding& finding, Severity severity);
    /// The warnings of a reader or writer.
    void addWarnings(const PiaReport& report);
    /// Gives the findings that have only a path the line of the body where it leads to, or as near
    /// as it leads. Version-3 files have no lines.
    void locate(const PiaInput& input);

    const std::vector<Finding>& list() const { return list_; }
    std::size_t omitted() const { return omitted_; }
    /// `Ok` when nothing was found, `Error` when the file cannot be used.
    ExitCode verdict() const { return verdict_; }

private:
    std::vector<Finding> list_;
    std::size_t omitted_ = 0;
    ExitCode verdict_ = ExitCode::Ok;
};

}  // namespace platen
