/// How a command ended, in the numbers that scripts see.
#pragma once

#include <algorithm>
#include <array>

namespace cli::console {

enum class ExitCode {
    Ok = 0,
    /// A difference was found, or what was asked for is not there.
    Difference = 1,
    /// Nothing useful was done: a file, its content or the command line is at fault.
    Error = 2,
    /// Done, with something that the caller should look at.
    Warnings = 3,
    /// Not everything was begun: what a shell calls a program that was interrupted.
    Interrupted = 130,
};

/// The one of the two that a batch must not hide.
constexpr ExitCode worse(ExitCode left, ExitCode right) {
    constexpr std::array byGravity{ExitCode::Ok, ExitCode::Difference, ExitCode::Warnings,
                                   ExitCode::Error, ExitCode::Interrupted};
    const auto of = [&](ExitCode code) { return std::ranges::find(byGravity, code); };
    return of(left) < of(right) ? right : left;
}

}  // namespace cli::console

namespace cli {

// Every room speaks of these.
using console::ExitCode;
using console::worse;

}  // namespace cli
