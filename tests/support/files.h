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

/// The current folder of the program, for as long as the object lives.
class CurrentFolder {
public:
    explicit CurrentFolder(const std::filesystem::path& folder) {
        std::filesystem::current_path(folder);
    }
    ~CurrentFolder() { std::filesystem::current_path(before_); }
    CurrentFolder(const CurrentFolder&) = delete;
    CurrentFolder& operator=(const CurrentFolder&) = delete;

private:
    std::filesystem::path before_ = std::filesystem::current_path();
};

std::string readBytes(const std::filesystem::path& path);
void writeBytes(const std::filesystem::path& path, std::string_view bytes);
