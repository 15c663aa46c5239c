/// Files of tests.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

/// A fresh folder that goes when the object goes.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::filesystem::path path(std::string_view name) const { return folder_ / name; }
    /// The same as the wide text that the library takes.
    std::wstring wide(std::string_view name) const { return path(name).wstring(); }
    /// Names of all files in it, sorted.
    std::vector<std::string> files() const;

private:
    std::filesystem::path folder_;
};

std::string readBytes(const std::filesystem::path& path);
void writeBytes(const std::filesystem::path& path, std::string_view bytes);
