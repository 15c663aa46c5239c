/// Programs of many rounds: what the world does to files, processes and memory.
///
/// Each job does its rounds, prints a line of figures, and throws at the first fault.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include <platen/platen.h>

namespace world {

namespace fs = std::filesystem;

/// Throws with `what` and why it matters.
void require(bool holds, std::string_view what);

struct Settings {
    std::size_t rounds = 0;
    std::uint32_t seed = 1;
};

/// Programs are killed in the middle of writing: the command, pairs of files, one large file.
void kills(const Settings& settings);
/// Two programs edit one file without knowing of each other.
void editors(const Settings& settings);
/// A file is cut and written anew in place while it is read.
void changing(const Settings& settings);
/// Every type of handle of the C interface is opened and closed.
void handles(const Settings& settings);
/// One process reads, edits, compares and writes documents at random.
void longRun(const Settings& settings);
/// What may be done by several threads at once is.
void threads(const Settings& settings);

/// What `kills` and `editors` start: this program with other arguments.
int child(std::span<const std::string> arguments);

/// Another process of this program or of another one, killed at the end unless it ended.
class Process {
public:
    Process(const std::string& program, std::span<const std::string> arguments);
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;
    ~Process();

    /// Without a chance to do anything about it. Waits for its end.
    void kill();
    /// Its exit code.
    int wait();

private:
    std::intptr_t process_;
};

std::string ownProgram();

/// What this process has of the system.
struct Resources {
    std::size_t residentBytes = 0;
    /// What was allocated and not given back.
    std::size_t heapBytes = 0;
    /// File descriptors or, on Windows, handles.
    std::size_t handles = 0;
};
Resources resourcesNow();

/// Waits a fraction of a millisecond as exactly as the system can.
void waitMicroseconds(std::uint64_t microseconds);

// --- The C interface ---

struct Destroy {
    void operator()(platen_context* it) const { platen_context_destroy(it); }
    void operator()(platen_document* it) const { platen_document_destroy(it); }
    void operator()(platen_papers* it) const { platen_papers_destroy(it); }
    void operator()(platen_buffer* it) const { platen_buffer_destroy(it); }
};
using Context = std::unique_ptr<platen_context, Destroy>;
using Document = std::unique_ptr<platen_document, Destroy>;
using Papers = std::unique_ptr<platen_papers, Destroy>;
using Buffer = std::unique_ptr<platen_buffer, Destroy>;

std::string textOf(const Buffer& buffer);

}  // namespace world
