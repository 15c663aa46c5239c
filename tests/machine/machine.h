/// The machine that tests run on: what a report says of it, and what tests must leave as it is.
#pragma once

#include <string>
#include <vector>

/// Windows, its languages, its displays and its printers, a line each.
std::vector<std::wstring> machineFacts();

/// Settings that tests could touch, a line each: printers and their defaults, separators, the
/// registry.
std::vector<std::wstring> machineSettings();
