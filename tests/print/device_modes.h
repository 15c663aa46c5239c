/// Comparing the device modes of print data.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <platen/print.h>
#include <platen/utcore.h>

/// The device mode that print data come to before the driver has a say, with its private bytes.
inline std::vector<std::byte> deviceModeOf(wut::PrintData& data) {
    auto* native = wut::WindowsPrintNativeData::GetNativeData(data);
    EXPECT_TRUE(native != nullptr && native->TransferFrom(data));
    const auto* mode = static_cast<const DEVMODEW*>(GlobalLock(native->GetDevMode()));
    const auto* bytes = reinterpret_cast<const std::byte*>(mode);
    std::vector<std::byte> copy(bytes, bytes + mode->dmSize + mode->dmDriverExtra);
    GlobalUnlock(native->GetDevMode());
    return copy;
}

/// The lines of a device mode's dump, which has all of it.
inline std::vector<std::string> dumpedLines(const std::vector<std::byte>& mode) {
    OdString text;
    wut::dumpDevMode(*reinterpret_cast<const DEVMODEW*>(mode.data()), text);
    std::istringstream stream(ut::encodeUtf8(text.text()));
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

/// The names of the fields in which two device modes differ; "private" stands for the driver's own.
inline std::set<std::string> differences(const std::vector<std::byte>& left,
                                         const std::vector<std::byte>& right) {
    std::vector<std::string> lines = dumpedLines(left);
    std::vector<std::string> others = dumpedLines(right);
    lines.resize(std::max(lines.size(), others.size()));
    others.resize(lines.size());
    std::set<std::string> names;
    for (std::size_t at = 0; at < lines.size(); ++at) {
        const std::size_t name = lines[at].find(" = ");
        if (lines[at] != others[at]) {
            names.insert(name == std::string::npos ? "private" : lines[at].substr(0, name));
        }
    }
    return names;
}
