// A program for tests to start:
//   end CODE            ends with CODE
//   start FILE          describes in FILE how it was started
//   stay FILE           writes its process number to FILE and goes on for long
//   nest FILE FILE2     starts itself with "stay FILE2" and then stays with FILE
//   arguments FILE ...  writes its arguments behind FILE to it, one a line
//   wx FILE             starts wxWidgets and ends it, and writes what it saw to FILE
#include <wx/app.h>
#include <wx/init.h>
#include <wx/utils.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include <platen/gui_os.h>
#include "tests/gui/child/child.h"

namespace {

/// The file is there once it is complete.
void write(const std::string& path, const std::string& text) {
    std::ofstream(path + ".part", std::ios::binary) << text;
    std::filesystem::rename(path + ".part", path);
}

void stay(const std::string& path) {
    write(path, std::to_string(ownProcessId()));
    // Should nobody end it, it must not stay for ever.
    std::this_thread::sleep_for(std::chrono::seconds(100));
}

}  // namespace

int main(int count, char** words) {
    const std::vector<std::string> arguments(words, words + count);
    if (count < 3) {
        return 2;
    }
    const std::string& action = arguments[1];
    const std::string& path = arguments[2];
    if (action == "end") {
        return static_cast<int>(std::strtol(path.c_str(), nullptr, 10));
    }
    if (action == "start") {
        write(path, howStarted());
    } else if (action == "stay") {
        stay(path);
    } else if (action == "nest" && count == 4) {
        const wxInitializer wx;
        const std::string command = '"' + arguments[0] + "\" stay \"" + arguments[3] + '"';
        // Not UTF-8 on Windows, where its folder may have any letters.
        wxExecute(std::filesystem::path(command).wstring(), wxEXEC_ASYNC);
        stay(path);
    } else if (action == "arguments") {
        std::string lines;
        for (int i = 3; i < count; ++i) {
            lines += arguments[static_cast<std::size_t>(i)] + '\n';
        }
        write(path, lines);
    } else if (action == "wx") {
        wut::initWxWidgets(true);
        const bool started = wxAppConsole::GetInstance() != nullptr;
        wut::initWxWidgets(false);
        const bool ended = wxAppConsole::GetInstance() == nullptr;
        write(path, started && ended ? "started ended" : "not so");
    } else {
        return 2;
    }
    return 0;
}
