/// Processes that tests start.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

/// The command line that runs tests/child with `arguments`.
std::wstring childCommand(const std::vector<std::string>& arguments);

/// The program itself.
std::filesystem::path childProgram();

/// How many processes this one has started that are still there, in whatever state.
std::size_t childCount();

/// True until the process has ended.
bool isRunning(unsigned long process);

/// Handles or descriptors that this process has open.
std::size_t openHandleCount();
