#include "tools/platen/files/batch.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <new>
#include <sstream>
#include <thread>
#include <utility>

#include "tools/platen/console/interrupt.h"

namespace cli::files {
namespace {

using Clock = std::chrono::steady_clock;

/// A line on a terminal that says how far the work is, written over again and again.
class Progress {
public:
    Progress(const char* doing, std::size_t all, const Console& console)
        : doing_(doing), all_(all), console_(console) {}
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress() { hide(); }

    void show(std::size_t done) {
        using namespace std::chrono_literals;
        const Clock::time_point now = Clock::now();
        if (!console_.watched || now < next_) {
            return;
        }
        next_ = now + 100ms;
        std::string line =
            doing_ + (' ' + std::to_string(done)) + " of " + std::to_string(all_) + " files";
        console_.err << '\r' << line << std::flush;
        shown_ = line.size();
    }

    void hide() {
        if (shown_ != 0) {
            console_.err << '\r' << std::string(shown_, ' ') << '\r' << std::flush;
            shown_ = 0;
        }
    }

private:
    const char* doing_;
    std::size_t all_;
    const Console& console_;
    // Quick work shows nothing.
    Clock::time_point next_ = Clock::now() + std::chrono::seconds(1);
    std::size_t shown_ = 0;
};

/// What the work on one file said.
struct Said {
    std::ostringstream out;
    std::ostringstream err;
    ExitCode code = ExitCode::Ok;
    bool done = false;
};

void workOn(const std::string& file, const FileWork& work, bool terminal, Said& said) {
    std::istringstream nothing;
    const Console console{said.out, said.err, nothing, terminal, false};
    try {
        said.code = work(file, console);
    } catch (const std::bad_alloc&) {
        said.code = fail(console, file, "there is not enough memory for this file");
    }
}

void give(const Said& said, Progress& progress, const Console& console, ExitCode& worst) {
    const std::string out = said.out.str();
    const std::string err = said.err.str();
    if (!out.empty() || !err.empty()) {
        progress.hide();
    }
    console.out << out;
    console.err << err;
    worst = worse(worst, said.code);
}

/// Threads that work a little ahead of what was given out.
class Crew {
public:
    Crew(const std::vector<std::string>& files, const FileWork& work, const Console& console,
         unsigned count)
        : files_(files), work_(work), console_(console), said_(count * aheadOfEach) {
        for (unsigned number = 0; number < count; ++number) {
            threads_.emplace_back([this] { workOn(); });
        }
    }
    Crew(const Crew&) = delete;
    Crew& operator=(const Crew&) = delete;
    ~Crew() {
        for (std::thread& thread : threads_) {
            thread.join();
        }
    }

    /// Waits for the next file, in their order; false when no more was begun.
    bool give(Progress& progress, ExitCode& worst) {
        using namespace std::chrono_literals;
        std::unique_lock lock(mutex_);
        while (!(given_ < begun_ && slot(given_).done)) {
            if (given_ == begun_ && (begun_ == files_.size() || console::interrupted())) {
                stopped_ = true;
                changed_.notify_all();
                return false;
            }
            changed_.wait_for(lock, 100ms);
            progress.show(given_);
        }
        Said said = std::exchange(slot(given_), Said());
        ++given_;
        lock.unlock();
        changed_.notify_all();
        files::give(said, progress, console_, worst);
        return true;
    }

    /// Files that were given out.
    std::size_t given() const { return given_; }

private:
    static constexpr std::size_t aheadOfEach = 16;

    Said& slot(std::size_t file) { return said_[file % said_.size()]; }

    void workOn() {
        for (;;) {
            std::unique_lock lock(mutex_);
            changed_.wait(lock, [&] {
                return stopped_ || begun_ == files_.size() || begun_ < given_ + said_.size();
            });
            if (stopped_ || begun_ == files_.size() || console::interrupted()) {
                return;
            }
            const std::size_t file = begun_++;
            Said& said = slot(file);
            lock.unlock();
            files::workOn(files_[file], work_, console_.terminal, said);
            lock.lock();
            said.done = true;
            changed_.notify_all();
        }
    }

    const std::vector<std::string>& files_;
    const FileWork& work_;
    const Console& console_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<Said> said_;
    std::size_t begun_ = 0;
    std::size_t given_ = 0;
    bool stopped_ = false;
    std::vector<std::thread> threads_;
};

ExitCode nameTheRest(const std::vector<std::string>& files, std::size_t done,
                     const Console& console) {
    for (std::size_t index = done; index < files.size(); ++index) {
        fail(console, files[index], "not begun: interrupted");
    }
    return done < files.size() ? ExitCode::Interrupted : ExitCode::Ok;
}

}  // namespace

ExitCode forEachFile(const Selected& selected, const Batch& batch, const Console& console,
                     const FileWork& work) {
    const std::vector<std::string>& files = selected.files;
    ExitCode worst = selected.code;
    if (files.size() == 1 && !selected.isBatch) {
        return worse(worst, work(files.front(), console));
    }
    if (std::ranges::find(files, standardStream) != files.end()) {
        return fail(console, "", "standard input (-) can only be the one file");
    }
    std::size_t done = 0;
    const std::size_t wanted =
        batch.jobs != 0 ? batch.jobs : std::max(1U, std::thread::hardware_concurrency());
    const auto count = static_cast<unsigned>(std::min(wanted, files.size()));
    Progress progress(batch.doing, files.size(), console);
    if (batch.oneThread || count <= 1) {
        for (; done < files.size() && !console::interrupted(); ++done) {
            progress.show(done);
            Said said;
            workOn(files[done], work, console.terminal, said);
            give(said, progress, console, worst);
        }
    } else {
        Crew crew(files, work, console, count);
        while (crew.give(progress, worst)) {
        }
        done = crew.given();
    }
    progress.hide();
    return worse(worst, nameTheRest(files, done, console));
}

ExitCode forEachSelected(const Selection& selection, Batch batch, const Console& console,
                         const FileWork& work) {
    batch.jobs = selection.jobs;
    return forEachFile(select(selection, console), batch, console, work);
}

}  // namespace cli::files
