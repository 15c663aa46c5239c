// Two threads write one number. Built with the thread sanitizer, this must be reported.
#include <thread>

namespace {

int number = 0;

}  // namespace

int main() {
    std::thread other([] { ++number; });
    ++number;
    other.join();
    return number == 2 ? 0 : 1;
}
