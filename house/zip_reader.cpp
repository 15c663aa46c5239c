#include <minizip/unzip.h>

#include <algorithm>
#include <limits>
#include <memory>
#include <type_traits>

#include "house/zip.h"

namespace platen::house {
namespace {

/// Bytes that are read as a file.
struct Memory {
    std::string_view bytes;
    std::size_t at = 0;

    static voidpf open(voidpf own, const void*, int) { return own; }
    static uLong read(voidpf own, voidpf, void* to, uLong count) {
        auto& memory = *static_cast<Memory*>(own);
        count = static_cast<uLong>(std::min<std::size_t>(count, memory.bytes.size() - memory.at));
        std::copy_n(memory.bytes.data() + memory.at, count, static_cast<char*>(to));
        memory.at += count;
        return count;
    }
    static uLong write(voidpf, voidpf, const void*, uLong) { return 0; }
    static ZPOS64_T tell(voidpf own, voidpf) { return static_cast<Memory*>(own)->at; }
    static long seek(voidpf own, voidpf, ZPOS64_T offset, int origin) {
        auto& memory = *static_cast<Memory*>(own);
        // Steps back come as very large ones.
        const std::uint64_t to = offset + (origin == ZLIB_FILEFUNC_SEEK_CUR   ? memory.at
                                           : origin == ZLIB_FILEFUNC_SEEK_END ? memory.bytes.size()
                                                                              : 0);
        if (to > memory.bytes.size()) {
            return -1;
        }
        memory.at = static_cast<std::size_t>(to);
        return 0;
    }
    static int close(voidpf, voidpf) { return 0; }
};

struct Closer {
    void operator()(unzFile archive) const { unzClose(archive); }
};
using Archive = std::unique_ptr<std::remove_pointer_t<unzFile>, Closer>;

Archive openArchive(Memory& memory) {
    zlib_filefunc64_def calls{Memory::open, Memory::read,  Memory::write, Memory::tell,
                              Memory::seek, Memory::close, Memory::close, &memory};
    return Archive(unzOpen2_64("", &calls));
}

/// Of the attributes that systems like Unix keep.
bool isLink(const unz_file_info64& info) {
    constexpr unsigned typeMask = 0170000;
    constexpr unsigned link = 0120000;
    return (info.external_fa >> 16U & typeMask) == link;
}

std::string faultOf(const unz_file_info64& info) {
    constexpr uLong encrypted = 1;
    // What states its size in more than 32 bits is as large as these can say.
    constexpr std::uint64_t largest = std::numeric_limits<std::int32_t>::max();
    return (info.flag & encrypted) != 0 ? "it is encrypted"
           : isLink(info)               ? "it is a link"
           : info.compression_method != 0 && info.compression_method != Z_DEFLATED
               ? "it is packed in a way that bundles do not use"
           : info.uncompressed_size > largest || info.compressed_size > largest
               ? "it states more bytes than a bundle can hold"
               : "";
}

bool readEntry(unzFile archive, ZipEntry& entry) {
    unz_file_info64 info{};
    unz64_file_pos place{};
    if (unzGetCurrentFileInfo64(archive, &info, nullptr, 0, nullptr, 0, nullptr, 0) != UNZ_OK ||
        unzGetFilePos64(archive, &place) != UNZ_OK) {
        return false;
    }
    entry.name.resize(info.size_filename);
    if (unzGetCurrentFileInfo64(archive, nullptr, entry.name.data(), info.size_filename, nullptr, 0,
                                nullptr, 0) != UNZ_OK) {
        return false;
    }
    entry.bytes = info.uncompressed_size;
    entry.offset = place.pos_in_zip_directory;
    entry.number = place.num_of_file;
    entry.fault = faultOf(info);
    if (!entry.fault.empty()) {
        return true;
    }
    // As it lies there, which makes nothing ready that unpacks.
    constexpr int raw = 1;
    int method = 0;
    int level = 0;
    if (unzOpenCurrentFile2(archive, &method, &level, raw) != UNZ_OK) {
        entry.fault = "its two headers say different things";
        return true;
    }
    entry.begin = unzGetCurrentFileZStreamPos64(archive);
    entry.end = entry.begin + info.compressed_size;
    unzCloseCurrentFile(archive);
    return true;
}

/// One that lies in another unpacks to far more than the archive has, over and over again.
bool overlap(const std::vector<ZipEntry>& entries) {
    std::vector<const ZipEntry*> inOrder;
    for (const ZipEntry& entry : entries) {
        if (entry.fault.empty()) {
            inOrder.push_back(&entry);
        }
    }
    std::ranges::sort(inOrder, {}, &ZipEntry::begin);
    return std::ranges::adjacent_find(inOrder, [](const ZipEntry* one, const ZipEntry* next) {
               return one->end > next->begin || one->begin == next->begin;
           }) != inOrder.end();
}

}  // namespace

std::string ZipReader::open(std::string_view bytes, std::size_t mostEntries) {
    bytes_ = bytes;
    entries_.clear();
    Memory memory{bytes};
    const Archive archive = openArchive(memory);
    if (!archive) {
        return "it is no zip archive, or its end is missing";
    }
    for (int next = unzGoToFirstFile(archive.get()); next == UNZ_OK;
         next = unzGoToNextFile(archive.get())) {
        ZipEntry entry;
        if (entries_.size() == mostEntries) {
            return "it has more than " + std::to_string(mostEntries) + " entries";
        }
        if (!readEntry(archive.get(), entry)) {
            return "its directory is damaged";
        }
        if (entry.end > bytes.size()) {
            return "an entry of it goes beyond its end";
        }
        entries_.push_back(std::move(entry));
    }
    unz_global_info64 said{};
    if (unzGetGlobalInfo64(archive.get(), &said) != UNZ_OK ||
        said.number_entry != entries_.size()) {
        return "its directory is damaged";
    }
    return overlap(entries_) ? "entries of it lie in each other" : "";
}

std::string ZipReader::extract(const ZipEntry& entry, ut::ByteBuffer& bytes) const {
    if (!entry.fault.empty()) {
        return entry.fault;
    }
    Memory memory{bytes_};
    const Archive archive = openArchive(memory);
    const unz64_file_pos place{entry.offset, entry.number};
    if (!archive || unzGoToFilePos64(archive.get(), &place) != UNZ_OK ||
        unzOpenCurrentFile(archive.get()) != UNZ_OK) {
        return "it cannot be found again";
    }
    ut::ByteBuffer content;
    // Room grows with what comes, since the size that is stated may be a lie.
    constexpr std::size_t step = std::size_t{1} << 20U;
    int count = 0;
    for (;;) {
        const auto rest = static_cast<std::size_t>(entry.bytes) - content.size();
        // One byte more would show that it goes on.
        const std::size_t room = std::min(rest + 1, std::max(step, content.size()));
        content.reserve(content.size() + room);
        count = unzReadCurrentFile(archive.get(), content.data() + content.size(),
                                   static_cast<unsigned>(room));
        if (count <= 0) {
            break;
        }
        content.setSize(content.size() + static_cast<std::size_t>(count));
        if (content.size() > entry.bytes) {
            return "it has more bytes than it states";
        }
    }
    const bool whole = unzCloseCurrentFile(archive.get()) == UNZ_OK && count == 0;
    if (!whole || content.size() != entry.bytes) {
        return "its bytes are damaged";
    }
    bytes = std::move(content);
    return {};
}

}  // namespace platen::house
