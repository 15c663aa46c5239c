/// How a command ended, in the numbers that scripts see.
#pragma once

#include <array>
#include <cstddef>

namespace cli::console {

enum class ExitCode {
    Ok = 0,
    /// A difference was found, or what was asked for is not there.
    Difference = 1,
    /// Nothing useful was done: a file, its content or the command line is at fault.
    Error = 2,
    /// Done, with something that the caller should look at.
    Warnings = 3,
};

/// The one of the two that a batch must not hide.
constexpr ExitCode worse(ExitCode left, ExitCode right) {
    constexpr std::array<int, 4> gravity{0, 1, 3, 2};
    const auto of = [&](ExitCode code) { return gravity[static_cast<std::size_t>(code)]; };
    return of(left) < of(right) ? right : left;
}

}  // namespace cli::console

namespace cli {

// Every room speaks of these.
using console::ExitCode;
using console::worse;

}  // namespace cli
