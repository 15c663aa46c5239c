/// Answers of the spooler that come as a block of records with the texts they point to.
#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "plotcfg/system_text.h"
#include "print/spooler.h"

namespace wut {

/// A call that fills memory or says how many bytes it needs.
using SpoolerCall = std::function<bool(std::span<std::byte> out, DWORD& needed)>;

/// Asks for the size, then for the data; again when they have grown in between. Empty when
/// there is nothing or the call fails.
std::vector<std::byte> spoolerData(const SpoolerCall& call);

/// The text at `text`, which must point into `data`; what lies beyond is not read. Empty for null.
std::wstring textIn(std::span<const std::byte> data, const wchar_t* text);

/// What a printer, form or paper is asked for by stays as it is.
using plot_config::oneLine;

/// The name of the printer's driver; empty when it cannot be had.
std::wstring driverName(const PrinterHandle& printer);

/// Whether a device takes PostScript as it is.
bool takesPostScript(HDC device);

}  // namespace wut
