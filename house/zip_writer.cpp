#include <minizip/zip.h>

#include <algorithm>
#include <chrono>
#include <limits>

#include "house/zip.h"

namespace platen::house {

/// A file in memory, which the library writes and goes back in.
struct ZipWriter::Memory {
    std::string bytes;
    std::size_t at = 0;
    zipFile archive = nullptr;
    bool failed = false;

    static voidpf open(voidpf own, const void*, int) { return own; }
    static uLong read(voidpf own, voidpf, void* to, uLong count) {
        auto& memory = *static_cast<Memory*>(own);
        count = static_cast<uLong>(std::min<std::size_t>(count, memory.bytes.size() - memory.at));
        std::copy_n(memory.bytes.data() + memory.at, count, static_cast<char*>(to));
        memory.at += count;
        return count;
    }
    static uLong write(voidpf own, voidpf, const void* from, uLong count) {
        auto& memory = *static_cast<Memory*>(own);
        memory.bytes.resize(std::max<std::size_t>(memory.bytes.size(), memory.at + count));
        std::copy_n(static_cast<const char*>(from), count, memory.bytes.data() + memory.at);
        memory.at += count;
        return count;
    }
    static ZPOS64_T tell(voidpf own, voidpf) { return static_cast<Memory*>(own)->at; }
    static long seek(voidpf own, voidpf, ZPOS64_T offset, int origin) {
        auto& memory = *static_cast<Memory*>(own);
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

ZipWriter::ZipWriter() : memory_(std::make_unique<Memory>()) {
    zlib_filefunc64_def calls{Memory::open, Memory::read,  Memory::write, Memory::tell,
                              Memory::seek, Memory::close, Memory::close, memory_.get()};
    memory_->archive = zipOpen2_64("", APPEND_STATUS_CREATE, nullptr, &calls);
}

ZipWriter::~ZipWriter() {
    if (memory_->archive != nullptr) {
        zipClose(memory_->archive, nullptr);
    }
}

bool ZipWriter::add(const std::string& name, std::string_view bytes, std::int64_t seconds) {
    using namespace std::chrono;
    // What the format can say.
    constexpr sys_seconds first = sys_days(year(1980) / 1 / 1);
    constexpr sys_seconds last = sys_days(year(2107) / 12 / 31);
    const sys_seconds time = std::clamp(sys_seconds(std::chrono::seconds(seconds)), first, last);
    const year_month_day day(floor<days>(time));
    const hh_mm_ss clock(time - floor<days>(time));
    zip_fileinfo info{};
    info.tmz_date.tm_year = static_cast<uInt>(static_cast<int>(day.year()));
    info.tmz_date.tm_mon = static_cast<unsigned>(day.month()) - 1;
    info.tmz_date.tm_mday = static_cast<unsigned>(day.day());
    info.tmz_date.tm_hour = static_cast<uInt>(clock.hours().count());
    info.tmz_date.tm_min = static_cast<uInt>(clock.minutes().count());
    info.tmz_date.tm_sec = static_cast<uInt>(clock.seconds().count());
    constexpr uLong madeForDos = 20;
    constexpr uLong namesAreUtf8 = 0x800;
    constexpr int level = 6;
    constexpr std::size_t largest = std::numeric_limits<std::int32_t>::max();
    zipFile archive = memory_->archive;
    const bool done =
        archive != nullptr && !memory_->failed && bytes.size() <= largest &&
        zipOpenNewFileInZip4_64(archive, name.c_str(), &info, nullptr, 0, nullptr, 0, nullptr,
                                Z_DEFLATED, level, 0, -MAX_WBITS, DEF_MEM_LEVEL, Z_DEFAULT_STRATEGY,
                                nullptr, 0, madeForDos, namesAreUtf8, 0) == ZIP_OK &&
        zipWriteInFileInZip(archive, bytes.data(), static_cast<unsigned>(bytes.size())) == ZIP_OK &&
        zipCloseFileInZip(archive) == ZIP_OK;
    memory_->failed = !done;
    return done;
}

bool ZipWriter::finish(std::string& bytes) {
    const bool done = memory_->archive != nullptr && !memory_->failed &&
                      zipClose(memory_->archive, nullptr) == ZIP_OK;
    memory_->archive = done ? nullptr : memory_->archive;
    bytes = std::move(memory_->bytes);
    return done;
}

}  // namespace platen::house
