// One of the jobs: platen_world JOB ROUNDS [SEED]. The last line on stdout has its figures; the
// exit status is 0 when nothing was wrong.
#include <cstdlib>
#include <exception>
#include <iostream>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/world/world.h"

namespace world {

void require(bool holds, std::string_view what) {
    if (!holds) {
        throw std::runtime_error(std::string(what));
    }
}

std::string textOf(const Buffer& buffer) {
    return buffer == nullptr
               ? std::string()
               : std::string(platen_buffer_data(buffer.get()), platen_buffer_size(buffer.get()));
}

}  // namespace world

int main(int argc, char** argv) {
    const std::map<std::string, void (*)(const world::Settings&)> jobs{
        {"kills", world::kills},     {"editors", world::editors},  {"changing", world::changing},
        {"handles", world::handles}, {"long-run", world::longRun}, {"threads", world::threads}};
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    try {
        if (!arguments.empty() && arguments[0] == "child") {
            return world::child(arguments);
        }
        if (arguments.size() < 2 || !jobs.contains(arguments[0])) {
            std::cerr << "usage: platen_world JOB ROUNDS [SEED], where JOB is one of";
            for (const auto& [name, job] : jobs) {
                std::cerr << ' ' << name;
            }
            std::cerr << '\n';
            return EXIT_FAILURE;
        }
        world::Settings settings;
        settings.rounds = std::stoul(arguments[1]);
        if (arguments.size() > 2) {
            settings.seed = static_cast<std::uint32_t>(std::stoul(arguments[2]));
        }
        jobs.at(arguments[0])(settings);
        return EXIT_SUCCESS;
    } catch (const std::exception& fault) {
        std::cerr << "fault: " << fault.what() << '\n';
        return EXIT_FAILURE;
    }
}
