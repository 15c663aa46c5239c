/// The papers of the built-in devices, by name.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <platen/papers.h>

namespace cli::arguments {

enum class DevicePapers { Pdf, Image, None };

using PaperTable = std::span<const wut::PaperSizeInfo>;

PaperTable tableOf(DevicePapers device);

std::vector<std::wstring> displayNames(PaperTable papers);

/// The paper of that display name or canonical name, ignoring case.
std::optional<std::size_t> indexOf(PaperTable papers, std::wstring_view name);

}  // namespace cli::arguments
