/// Zip archives in memory. What is not needed for bundles (more volumes, encryption, entries of 4
/// GiB) is refused.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <platen/utcore.h>

namespace platen::house {

class ZipWriter {
public:
    ZipWriter();
    ~ZipWriter();
    ZipWriter(const ZipWriter&) = delete;
    ZipWriter& operator=(const ZipWriter&) = delete;

    /// `name` is UTF-8 with slashes; `seconds` since 1970 are in UTC.
    bool add(const std::string& name, std::string_view bytes, std::int64_t seconds);
    /// The archive, which is complete then. False when something could not be added.
    bool finish(std::string& bytes);

private:
    struct Memory;
    std::unique_ptr<Memory> memory_;
};

struct ZipEntry {
    /// As it stands, whatever that is.
    std::string name;
    std::uint64_t bytes = 0;
    /// Why it cannot be taken out: an English phrase; empty when it can.
    std::string fault;
    /// Where its packed bytes begin and end.
    std::uint64_t begin = 0;
    std::uint64_t end = 0;
    /// Its place in the directory of the archive.
    std::uint64_t offset = 0;
    std::uint64_t number = 0;
};

class ZipReader {
public:
    /// Reads the directory of an archive, whose bytes are borrowed. Returns why that is refused, an
    /// English phrase; empty when it is not. Everything in it may be a lie.
    std::string open(std::string_view bytes, std::size_t mostEntries);

    const std::vector<ZipEntry>& entries() const { return entries_; }
    /// Unpacks a whole entry of exactly the size and the checksum that it states. May be called by
    /// several threads. Returns a phrase as `open`.
    std::string extract(const ZipEntry& entry, ut::ByteBuffer& bytes) const;

private:
    std::string_view bytes_;
    std::vector<ZipEntry> entries_;
};

}  // namespace platen::house
