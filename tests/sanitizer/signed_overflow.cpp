// Adds 1 to the largest int: the undefined behaviour sanitizer must report it.
#include <limits>

int main(int argc, char**) {
    volatile int largest = std::numeric_limits<int>::max();
    volatile int sum = largest + argc;
    return sum == 0 ? 1 : 0;
}
