/// What an audit keeps of each file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <platen/audit.h>

namespace platen {

/// A custom paper of a configuration or of a PMP.
struct AuditedPaper {
    /// What configurations call it when they choose it.
    std::wstring name{};
    std::wstring nameForPeople{};
    bool pixels = false;
    /// Millimetres or pixels.
    double width = 0;
    double height = 0;
    double left = 0;
    double bottom = 0;
    double right = 0;
    double top = 0;
};

/// The driver's part of a configuration's device mode.
struct PrivateBytes {
    std::wstring driver{};
    std::int32_t version = 0;
    std::size_t bytes = 0;
    /// What the configuration says besides, in words.
    std::string besides{};
};

struct AuditData {
    /// As it was given.
    std::wstring file{};
    std::size_t folder = 0;
    std::wstring fullPath{};
    /// Nothing for a file that cannot be read.
    std::optional<FileKind> kind{};
    std::size_t contentBytes = 0;
    std::size_t contentHash = 0;
    /// What was found in the file alone.
    std::vector<AuditFinding> findings{};

    // Of a configuration.
    /// Empty when it needs none.
    std::wstring printer{};
    std::wstring pmpName{};
    /// Where the search path leads; empty when it leads nowhere.
    std::wstring pmpPath{};
    std::wstring chosenPaper{};
    std::optional<PrivateBytes> privateBytes{};
    /// Absolute paths but that of the PMP.
    std::vector<AuditDetail> paths{};

    /// Custom papers.
    std::vector<AuditedPaper> papers{};
};

/// A file that others are to agree with.
struct AuditStandard {
    std::wstring file{};
    FileKind kind{};
};

struct AuditStandards {
    /// By the lower case of their names.
    std::map<std::wstring, AuditStandard> files{};
};

/// A finding about one file.
AuditFinding findingAbout(const AuditData& data, AuditCode code, std::string message);

/// More than `most` are counted.
void addDetail(AuditFinding& finding, AuditDetail detail, std::size_t most);

/// The name in quotes, UTF-8, without control characters; names of files may be none.
std::string nameInQuotes(std::wstring_view name);
/// "1 file", "2 files"
std::string countInWords(std::size_t count, const char* one, const char* many);

std::wstring lowerCase(std::wstring_view text);
/// The path from the root, as it is compared with others.
std::wstring fullPathOf(const std::wstring& file);

/// True for a path that begins at a drive, a server or, when `withRoot`, a root.
bool isAbsolutePath(std::wstring_view path, bool withRoot);

/// The file as an argument that no command takes for anything else.
std::wstring argumentOf(const std::wstring& file);

}  // namespace platen
