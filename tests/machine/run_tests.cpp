// Runs the Windows tests on whatever machine this is, and writes a report to send back:
//   run_tests.exe [--print] [--settings] [--only PROGRAM] [--output FILE]
// Beside it are the test programs, in ..\samples what they replay, in ..\not-run.txt the tests that
// a machine of somebody's own is spared. Everything they write is below a folder that goes again.
#include <windows.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "tests/machine/machine.h"

namespace fs = std::filesystem;

namespace {

struct Options {
    std::set<std::string> asked;  // print, settings, queues
    std::string only;
    fs::path report = L"report.txt";
};

struct Rule {
    std::string program, test, when, reason;
};

/// What became of a test; `output` is what a failed one said, or why it did not run.
struct Result {
    enum Verdict { Passed, Failed, NotRun } verdict;
    std::string program, test, output;
};

struct Output {
    DWORD status = 0;
    std::string text;
};

std::string utf8(const std::wstring& text) {
    const int size = WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()),
                                         nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), bytes.data(), size,
                        nullptr, nullptr);
    return bytes;
}

std::string readAll(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

bool matches(const std::string& pattern, const std::string& name) {
    return pattern.ends_with('*') ? name.starts_with(pattern.substr(0, pattern.size() - 1))
                                  : name == pattern;
}

class Run {
public:
    Run(fs::path folder, fs::path work, std::set<std::string> asked)
        : folder_(std::move(folder)), work_(std::move(work)), asked_(std::move(asked)) {
        std::ifstream rules(folder_ / "not-run.txt");
        for (std::string line; std::getline(rules, line);) {
            Rule rule;
            std::istringstream words(line);
            if (!line.starts_with('#') &&
                words >> rule.program >> rule.test >> rule.when >> std::ws) {
                std::getline(words, rule.reason);
                rules_.push_back(rule);
            }
        }
    }

    /// A program of GoogleTest's. Alone: each test in a process of its own.
    void tests(const std::string& program, bool alone) {
        std::cout << program << std::endl;
        std::vector<std::string> waiting;
        const std::vector<std::string> all = list(program);
        if (all.empty()) {
            add(Result::Failed, program, "(all)", "the program lists no tests");
        }
        for (const Rule& rule : rules_) {
            const bool known = std::any_of(all.begin(), all.end(), [&](const std::string& test) {
                return matches(rule.test, test);
            });
            // Without a printer there are no tests of printers.
            if (rule.program == program && !known && rule.when != "print") {
                add(Result::Failed, program, rule.test,
                    "not-run.txt names a test that there is not");
            }
        }
        for (const std::string& test : all) {
            if (const Rule* rule = ruleAgainst(program, test)) {
                add(Result::NotRun, program, test, rule->reason);
            } else {
                waiting.push_back(test);
            }
        }
        while (!waiting.empty()) {
            std::vector<std::string> now{waiting.front()};
            // A suite at a time: its tests share what it takes long to set up.
            const std::string suite = waiting.front().substr(0, waiting.front().find('.') + 1);
            for (auto test = waiting.begin() + 1; !alone && test != waiting.end(); ++test) {
                if (test->starts_with(suite)) {
                    now.push_back(*test);
                }
            }
            take(program, now, waiting);
        }
    }

    void replay(const std::string& program) {
        std::cout << program << std::endl;
        const std::string name = program.substr(program.find('_') + 1);
        const Output output = start(program, L'"' + (folder_ / "samples" / name).wstring() + L'"');
        add(output.status == 0 ? Result::Passed : Result::Failed, program, name, output.text);
    }

    const std::vector<Result>& results() const { return results_; }

private:
    void add(Result::Verdict verdict, const std::string& program, const std::string& test,
             const std::string& output) {
        results_.push_back({verdict, program, test, verdict == Result::Passed ? "" : output});
        if (verdict == Result::Failed) {
            std::cout << "  failed: " << test << std::endl;
        }
    }

    const Rule* ruleAgainst(const std::string& program, const std::string& test) const {
        for (const Rule& rule : rules_) {
            if (rule.program == program && matches(rule.test, test) &&
                !asked_.contains(rule.when)) {
                return &rule;
            }
        }
        return nullptr;
    }

    std::vector<std::string> list(const std::string& program) {
        std::vector<std::string> tests;
        std::istringstream lines(start(program, L"--gtest_list_tests").text);
        std::string suite;
        for (std::string line; std::getline(lines, line);) {
            line.resize(line.find_last_not_of("\r ") + 1);
            const std::string name = line.substr(0, line.find("  # "));
            if (name.starts_with("  ")) {
                tests.push_back(suite + name.substr(2));
            } else if (name.ends_with('.')) {
                suite = name;
            }
        }
        return tests;
    }

    /// Runs some tests and takes those that have a verdict off the list. One that ends the program
    /// has failed; those behind it remain.
    void take(const std::string& program, const std::vector<std::string>& now,
              std::vector<std::string>& waiting) {
        std::string filter;
        for (const std::string& test : now) {
            filter += (filter.empty() ? "" : ":") + test;
        }
        const Output output = start(program, L"--gtest_color=no --gtest_filter=" +
                                                 std::wstring(filter.begin(), filter.end()));
        std::map<std::string, Result> found;
        std::string running, said;
        std::istringstream lines(output.text);
        for (std::string line; std::getline(lines, line);) {
            line.resize(line.find_last_not_of('\r') + 1);
            constexpr std::size_t mark = 13;
            const std::string name =
                line.size() > mark ? line.substr(mark, line.find_first_of(" ,", mark) - mark) : "";
            if (line.starts_with("[ RUN      ] ")) {
                running = name;
                said.clear();
            } else if (!running.empty() && name == running && line.starts_with("[")) {
                const Result::Verdict verdict = line.starts_with("[       OK ]")   ? Result::Passed
                                                : line.starts_with("[  SKIPPED ]") ? Result::NotRun
                                                                                   : Result::Failed;
                found.insert({running, {verdict, program, running, said}});
                running.clear();
            } else {
                said += line + '\n';
            }
        }
        if (found.empty() || !running.empty()) {
            const std::string& ended = running.empty() ? now.front() : running;
            found.insert_or_assign(ended, Result{Result::Failed, program, ended,
                                                 said + "the program ended here with status " +
                                                     std::to_string(output.status) + '\n'});
        }
        for (const auto& [test, result] : found) {
            add(result.verdict, program, test, result.output);
            std::erase(waiting, test);
        }
    }

    /// Runs a program of the folder to its end, or for so long that it must hang, with all that it
    /// starts.
    Output start(const std::string& program, const std::wstring& arguments) {
        const fs::path log = work_ / "output.txt";
        SECURITY_ATTRIBUTES inherited{sizeof(inherited), nullptr, TRUE};
        HANDLE file = CreateFileW(log.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherited,
                                  CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
        HANDLE nothing =
            CreateFileW(L"NUL", GENERIC_READ, 0, &inherited, OPEN_EXISTING, 0, nullptr);
        HANDLE job = CreateJobObjectW(nullptr, nullptr);
        JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
        limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
        SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof(limits));

        STARTUPINFOW startup{};
        startup.cb = sizeof(startup);
        startup.dwFlags = STARTF_USESTDHANDLES;
        startup.hStdInput = nothing;
        startup.hStdOutput = startup.hStdError = file;
        PROCESS_INFORMATION process{};
        std::wstring command =
            L'"' + (folder_ / "bin" / (program + ".exe")).wstring() + L"\" " + arguments;
        Output output;
        if (CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, CREATE_SUSPENDED,
                           nullptr, (work_ / "files").c_str(), &startup, &process) == FALSE) {
            output.status = GetLastError();
        } else {
            AssignProcessToJobObject(job, process.hProcess);
            ResumeThread(process.hThread);
            constexpr DWORD longest = 300'000;
            if (WaitForSingleObject(process.hProcess, longest) != WAIT_OBJECT_0) {
                TerminateJobObject(job, WAIT_TIMEOUT);
                WaitForSingleObject(process.hProcess, longest);
            }
            GetExitCodeProcess(process.hProcess, &output.status);
            CloseHandle(process.hThread);
            CloseHandle(process.hProcess);
        }
        CloseHandle(job);
        CloseHandle(nothing);
        CloseHandle(file);
        output.text = readAll(log);
        return output;
    }

    fs::path folder_, work_;
    std::set<std::string> asked_;
    std::vector<Rule> rules_;
    std::vector<Result> results_;
};

void indent(std::ostream& report, const std::string& text) {
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        report << "    | " << line << '\n';
    }
}

/// Returns whether some passed, none failed, and every setting is as it was.
bool writeReport(std::ostream& report, const std::vector<Result>& results,
                 const std::vector<std::wstring>& before, const std::vector<std::wstring>& after) {
    std::map<Result::Verdict, int> counts;
    for (const Result& result : results) {
        ++counts[result.verdict];
    }
    std::ostringstream total;
    total << counts[Result::Passed] << " passed, " << counts[Result::Failed] << " failed, "
          << counts[Result::NotRun] << " not run";
    report << "Platen " << PLATEN_VERSION << ", tests on Windows: " << total.str()
           << "\n\nThe machine\n";
    for (const std::wstring& fact : machineFacts()) {
        report << "    " << utf8(fact) << '\n';
    }
    report << "\nSettings before and after: " << (before == after ? "the same" : "DIFFERENT")
           << '\n';
    for (const std::wstring& line : before) {
        report << "    before: " << utf8(line) << '\n';
    }
    for (std::size_t index = 0; before != after && index < after.size(); ++index) {
        report << "    after:  " << utf8(after[index]) << '\n';
    }
    for (const auto& [verdict, name] : {std::pair(Result::Failed, "Failed"),
                                        {Result::NotRun, "Not run"},
                                        {Result::Passed, "Passed"}}) {
        report << '\n' << name << ": " << counts[verdict] << '\n';
        for (const Result& result : results) {
            if (result.verdict == verdict) {
                report << "  " << result.program << ' ' << result.test;
                report << (verdict == Result::NotRun ? ": " + result.output : "") << '\n';
                indent(report, verdict == Result::Failed ? result.output : "");
            }
        }
    }
    std::cout << total.str() << (before == after ? "" : "; settings are different") << std::endl;
    return counts[Result::Passed] > 0 && counts[Result::Failed] == 0 && before == after;
}

fs::path newFolder() {
    std::random_device source;
    for (;;) {
        const fs::path folder =
            fs::temp_directory_path() / ("platen-tests-" + std::to_string(source()));
        if (fs::create_directory(folder)) {
            return folder;
        }
    }
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    Options options;
    for (int index = 1; index < count; ++index) {
        const std::wstring argument = arguments[index];
        if (argument == L"--print" || argument == L"--settings") {
            options.asked.insert(utf8(argument.substr(2)));
        } else if (argument == L"--only" && index + 1 < count) {
            options.only = utf8(arguments[++index]);
        } else if (argument == L"--output" && index + 1 < count) {
            options.report = arguments[++index];
        } else {
            std::cerr
                << "usage: run-tests.cmd [--print] [--settings] [--only PROGRAM] [--output FILE]\n";
            return 2;
        }
    }
    // The printers of the tests' own spooler.
    if (_wgetenv(L"PLATEN_TEST_PRINTERS") != nullptr) {
        options.asked.insert("queues");
    }
    wchar_t own[32768];
    GetModuleFileNameW(nullptr, own, static_cast<DWORD>(std::size(own)));
    const fs::path folder = fs::path(own).parent_path().parent_path();
    const fs::path report = fs::absolute(options.report);
    const fs::path work = newFolder();
    fs::create_directory(work / "files");
    SetEnvironmentVariableW(L"TMP", (work / "files").c_str());
    SetEnvironmentVariableW(L"TEMP", (work / "files").c_str());
    // A program that crashes must not wait for somebody to say so.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);

    const std::vector<std::wstring> before = machineSettings();
    Run run(folder, work, options.asked);
    for (const auto& entry :
         std::set<fs::path>(fs::directory_iterator(folder / "bin"), fs::directory_iterator())) {
        const std::string name = entry.stem().string();
        if (!options.only.empty() && name != options.only) {
            continue;
        }
        if (entry.extension() == ".exe" && name.starts_with("replay_")) {
            run.replay(name);
        } else if (entry.extension() == ".exe" && name.ends_with("_tests") && name != "run_tests") {
            run.tests(name, name == "platen_machine_tests" || name == "platen_spooler_tests");
        }
    }
    std::error_code ignored;
    fs::remove_all(work, ignored);
    std::ofstream file(report, std::ios::binary);
    const bool good = writeReport(file, run.results(), before, machineSettings());
    file.close();
    if (!file) {
        std::cerr << "the report cannot be written: " << report << '\n';
        return 2;
    }
    std::cout << "report: " << report.string() << std::endl;
    return good ? 0 : 1;
}
