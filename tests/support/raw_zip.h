/// Zip archives that no zip program would make.
#pragma once

#include <zlib.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

struct RawEntry {
    std::string name;
    std::string bytes;
    /// What the headers state about `bytes`; negative for the truth.
    std::int64_t stated = -1;
    unsigned flags = 0x800;
    unsigned method = 0;
    /// The upper half is what Unix keeps.
    std::uint32_t attributes = 0;
    /// The directory leads to the first entry's bytes.
    bool overlaps = false;
};

inline std::string rawZip(const std::vector<RawEntry>& entries) {
    const auto put = [](std::string& to, std::uint64_t value, int bytes) {
        for (int index = 0; index < bytes; ++index, value >>= 8U) {
            to += static_cast<char>(value & 0xFFU);
        }
    };
    std::string archive;
    std::string directory;
    for (const RawEntry& entry : entries) {
        const auto crc = crc32(0, reinterpret_cast<const Bytef*>(entry.bytes.data()),
                               static_cast<uInt>(entry.bytes.size()));
        const std::uint64_t stated =
            entry.stated < 0 ? entry.bytes.size() : static_cast<std::uint64_t>(entry.stated);
        std::string common;
        put(common, 20, 2);
        put(common, entry.flags, 2);
        put(common, entry.method, 2);
        put(common, 0x58210000, 4);
        put(common, crc, 4);
        put(common, entry.bytes.size(), 4);
        put(common, stated, 4);
        put(common, entry.name.size(), 2);
        put(common, 0, 2);
        put(directory, 0x02014b50, 4);
        put(directory, 20, 2);
        directory += common;
        put(directory, 0, 6);
        put(directory, entry.attributes, 4);
        put(directory, entry.overlaps ? 0 : archive.size(), 4);
        directory += entry.name;
        put(archive, 0x04034b50, 4);
        archive += common + entry.name + entry.bytes;
    }
    const std::size_t begin = archive.size();
    archive += directory;
    put(archive, 0x06054b50, 4);
    put(archive, 0, 4);
    put(archive, entries.size(), 2);
    put(archive, entries.size(), 2);
    put(archive, directory.size(), 4);
    put(archive, begin, 4);
    put(archive, 0, 2);
    return archive;
}
