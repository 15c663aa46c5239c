#include <algorithm>
#include <chrono>
#include <functional>
#include <iostream>
#include <random>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <platen/utcore.h>
#include "tests/support/files.h"
#include "tests/world/world.h"
#include "tools/platen/command.h"

namespace world {
namespace {

constexpr std::size_t largeSize = 1 << 20;

std::wstring wide(const std::string& path) { return fs::path(path).wstring(); }

/// The command, within this process.
int run(const std::vector<std::string>& arguments, std::string& said) {
    std::ostringstream out;
    std::ostringstream err;
    std::istringstream in;
    const int code = cli::run(arguments, {out, err, in, false, false});
    said = out.str() + err.str();
    return code;
}

void replaceLarge(const std::string& file, char letter) {
    const std::string bytes(largeSize, letter);
    const ut::SystemError error = ut::replaceFile(wide(file), std::vector<std::string_view>{bytes});
    require(!error, error.message());
}

void setDescription(const std::string& file, const std::string& value) {
    std::string said;
    require(run({"set", file, "description=" + value, "--in-place"}, said) == 0, said);
}

/// A configuration and its PMP get a paper, or lose it. What was killed in the middle may have done
/// so in the PMP alone.
void changePapers(const std::string& file) {
    const Context context(platen_context_create());
    const Papers papers(platen_papers_open(context.get(), file.c_str()));
    const bool adds =
        textOf(Buffer(platen_papers_list(papers.get()))).find("\"Roll\"") == std::string::npos;
    const bool done = papers != nullptr &&
                      (adds ? platen_papers_add(papers.get(), "Roll", 900, 2000, nullptr, "mm") != 0
                            : platen_papers_remove(papers.get(), "Roll") != 0) &&
                      Buffer(platen_papers_save(papers.get())) != nullptr;
    require(done, platen_context_error(context.get()));
}

/// A way to write, as it goes on in a child until it is killed.
struct Writer {
    const char* name;
    /// Files that are there before and after, and nothing else.
    std::vector<std::string> files;
    /// Writes something else with every `round`.
    std::function<void(const std::string& folder, std::size_t round)> write;
};

const std::vector<Writer>& writers() {
    static const std::vector<Writer> all{
        {"command",
         {"table.ctb"},
         [](const std::string& folder, std::size_t round) {
             setDescription(folder + "/table.ctb", round % 2 == 0 ? "even" : "odd");
         }},
        {"pair",
         {"plan.pc3", "plan.pmp"},
         [](const std::string& folder, std::size_t) { changePapers(folder + "/plan.pc3"); }},
        {"large",
         {"large"},
         [](const std::string& folder, std::size_t round) {
             replaceLarge(folder + "/large", round % 2 == 0 ? 'e' : 'o');
         }},
    };
    return all;
}

void prepare(const Writer& writer, const std::string& folder) {
    std::string said;
    if (writer.files[0] == "table.ctb") {
        require(run({"create", "ctb", "-o", folder + "/table.ctb"}, said) == 0, said);
    } else if (writer.files[0] == "plan.pc3") {
        require(run({"create", "pc3", "--device", "Print As PDF", "-o", folder + "/plan.pc3"},
                    said) == 0,
                said);
    }
    writer.write(folder, 0);
}

struct Counts {
    std::size_t killed = 0;
    /// Whose file has changed since the kill before, and those that left their temporary file.
    std::size_t changed = 0;
    std::size_t litter = 0;
};

std::vector<std::string> contents(const Writer& writer, const std::string& folder) {
    std::vector<std::string> all;
    for (const std::string& file : writer.files) {
        all.push_back(readBytes(fs::path(folder) / file));
    }
    return all;
}

std::size_t filesIn(const std::string& folder) {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

/// Every content that one of the files may have; those of a pair belong together in order of time.
using Whole = std::vector<std::set<std::string>>;

Counts killOften(const Writer& writer, std::size_t rounds, std::mt19937& random) {
    const TemporaryFolder temporary;
    const std::string folder = temporary.path("").parent_path().string();
    const TemporaryFolder beside;
    const std::string begun = beside.path("started").string();
    prepare(writer, folder);
    Whole whole(writer.files.size());
    using Clock = std::chrono::steady_clock;
    const auto started = Clock::now();
    constexpr std::size_t warmUp = 8;
    for (std::size_t round = 1; round <= warmUp; ++round) {
        writer.write(folder, round);
        const std::vector<std::string> now = contents(writer, folder);
        for (std::size_t file = 0; file < now.size(); ++file) {
            whole[file].insert(now[file]);
        }
    }
    const std::uint64_t each = static_cast<std::uint64_t>(
        std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - started).count() /
        static_cast<int>(warmUp));
    require(filesIn(folder) == writer.files.size(), "a run that ended left something behind");

    Counts counts;
    std::vector<std::string> before = contents(writer, folder);
    for (std::size_t round = 0; round < rounds; ++round) {
        const std::vector<std::string> arguments{
            "child", "write", writer.name, folder, std::to_string(random() % 2), begun};
        fs::remove(begun);
        Process process(ownProgram(), arguments);
        while (!fs::exists(begun)) {
            waitMicroseconds(100);
        }
        waitMicroseconds(random() % (3 * each));
        process.kill();
        ++counts.killed;
        const std::vector<std::string> now = contents(writer, folder);
        for (std::size_t file = 0; file < now.size(); ++file) {
            require(whole[file].contains(now[file]),
                    writer.files[file] + " is neither the old one nor the new one");
        }
        counts.changed += now == before ? 0 : 1;
        counts.litter += filesIn(folder) > writer.files.size() ? 1 : 0;
        require(filesIn(folder) <= 2 * writer.files.size(), "killed runs leave more and more");
        // Where nothing is different nothing is written: one of the two is.
        writer.write(folder, 0);
        writer.write(folder, 1);
        before = contents(writer, folder);
        require(
            filesIn(folder) == writer.files.size(),
            std::string(writer.name) + ": the next run left what a killed one made in " + folder);
    }
    return counts;
}

/// Edits an item that no other process edits, as a person does who knows what it was.
int edit(const std::string& folder, const std::string& item, std::size_t rounds) {
    const std::string file = folder + "/table.ctb";
    std::string known;
    std::string said;
    std::size_t refused = 0;
    for (std::size_t round = 0; round < rounds;) {
        require(run({"get", file, item}, said) == 0, said);
        said.pop_back();
        require(round == 0 || said == known,
                item + " was " + known + " and is " + said + ": an edit was lost");
        const std::string value = item + " " + std::to_string(round);
        const int code = run({"set", file, item + '=' + value, "--in-place"}, said);
        if (code == 0) {
            known = value;
            ++round;
        } else {
            require(said.find("has changed since it was read") != std::string::npos, said);
            ++refused;
        }
        if (round == 0) {
            require(refused < 10000, "it can never be written");
        }
    }
    writeBytes(fs::path(folder) / (std::to_string(item.size()) + "-refused"),
               std::to_string(refused));
    return 0;
}

}  // namespace

void kills(const Settings& settings) {
    std::mt19937 random(settings.seed);
    std::ostringstream figures;
    std::size_t left = settings.rounds;
    for (std::size_t number = writers().size(); number > 0; --number) {
        const Writer& writer = writers()[number - 1];
        const std::size_t rounds = left / number;
        left -= rounds;
        const Counts counts = killOften(writer, rounds, random);
        figures << "; " << writer.name << ": " << counts.killed << " killed, " << counts.changed
                << " had replaced their files, " << counts.litter << " left a temporary file";
    }
    std::cout << "kills: " << settings.rounds
              << ", every file old or new, nothing left after the next run" << figures.str()
              << '\n';
}

void editors(const Settings& settings) {
    const TemporaryFolder temporary;
    const std::string folder = temporary.path("").parent_path().string();
    prepare(writers()[0], folder);
    const char* items[] = {"description", "plot_style/7/description"};
    {
        std::vector<std::unique_ptr<Process>> processes;
        for (const char* item : items) {
            const std::vector<std::string> arguments{"child", "edit", item, folder,
                                                     std::to_string(settings.rounds)};
            processes.push_back(std::make_unique<Process>(ownProgram(), arguments));
        }
        for (const auto& process : processes) {
            require(process->wait() == 0, "an editor found a fault");
        }
    }
    std::size_t refused = 0;
    for (const char* item : items) {
        std::string said;
        require(run({"get", folder + "/table.ctb", item}, said) == 0 &&
                    said == std::string(item) + ' ' + std::to_string(settings.rounds - 1) + '\n',
                std::string(item) + " has not its last value but " + said);
    }
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        const std::string name = entry.path().filename().string();
        if (name.ends_with("-refused")) {
            refused += std::stoul(readBytes(entry.path()));
        } else {
            require(name == "table.ctb", name + " was left behind");
        }
    }
    std::cout << "editors: 2 processes, " << 2 * settings.rounds << " edits of one file, "
              << refused << " refused since the file had changed, none lost\n";
}

int child(std::span<const std::string> arguments) {
    const std::string& what = arguments[1];
    const std::size_t number = std::stoul(arguments[4]);
    if (what == "edit") {
        return edit(arguments[3], arguments[2], number);
    }
    const auto writer = std::ranges::find(
        writers(), arguments[2], [](const Writer& each) { return std::string(each.name); });
    writeBytes(arguments[5], "");
    for (std::size_t round = number;; ++round) {
        writer->write(arguments[3], round);
    }
}

}  // namespace world
