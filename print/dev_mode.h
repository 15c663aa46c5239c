/// What drivers say of device modes, checked before it is used.
#pragma once

#include <cstddef>
#include <span>
#include <string>

#include "print/global_memory.h"
#include "print/spooler.h"

namespace wut {

/// True when the public part has all fields that are used here and the private bytes, as many as
/// it claims, end within `capacity` bytes.
bool isWhole(const DEVMODEW& devMode, std::size_t capacity);

/// The bytes to have ready for the driver's device mode, at least those of the public part and some
/// more than it asks for; 0 when it does not say or asks for more than a device mode can have.
std::size_t devModeSize(const PrinterHandle& printer, const wchar_t* name);

/// Fills memory of that size with the printer's default device mode; false when the driver fails or
/// its device mode does not fit.
bool fillDevMode(const PrinterHandle& printer, const wchar_t* name, std::span<std::byte> out);

/// Locks a device mode; null when there is none or when it is longer than its memory.
GlobalLocked<DEVMODEW> lockDevMode(HGLOBAL block);

/// A device mode's text, which may fill its array without a terminator.
template <std::size_t Size>
std::wstring textOf(const wchar_t (&text)[Size]) {
    return std::wstring(text, wcsnlen(text, Size));
}

}  // namespace wut
