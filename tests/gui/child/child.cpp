// A program for tests to start:
//   end CODE            ends with CODE
//   start FILE          describes in FILE how it was started
//   stay FILE           writes its process number to FILE and goes on for long
//   nest FILE FILE2     starts itself with "stay FILE2" and then stays with FILE
//   arguments FILE ...  writes its arguments behind FILE to it, one a line
//   wx FILE             starts wxWidgets and ends it, and writes what it saw to FILE
#include <wx/app.h>

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

/// A file is there once it is complete.
class Output {
public:
    explicit Output(std::string path)
        : path_(std::move(path)), file_(path_ + ".part", std::ios::binary) {}
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;
    ~Output() {
        file_.close();
        std::filesystem::rename(path_ + ".part", path_);
    }
    std::ofstream& text() { return file_; }

private:
    std::string path_;
    std::ofstream file_;
};

void stay(const std::string& path) {
    Output(path).text() << ownProcessId();
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
        return std::atoi(path.c_str());
    }
    if (action == "start") {
        describeStart(Output(path).text());
    } else if (action == "stay") {
        stay(path);
    } else if (action == "nest" && count == 4) {
        startProgram(arguments[0], "stay", arguments[3]);
        stay(path);
    } else if (action == "arguments") {
        Output output(path);
        for (int i = 3; i < count; ++i) {
            output.text() << words[i] << '\n';
        }
    } else if (action == "wx") {
        Output output(path);
        wut::initWxWidgets(true);
        output.text() << (wxAppConsole::GetInstance() != nullptr ? "started" : "not started");
        wut::initWxWidgets(false);
        output.text() << (wxAppConsole::GetInstance() == nullptr ? " ended" : " not ended");
    } else {
        return 2;
    }
    return 0;
}
