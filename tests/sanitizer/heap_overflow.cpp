// Writes one element past a heap block: the address sanitizer must report it.
#include <vector>

int main(int argc, char**) {
    std::vector<int> numbers(static_cast<std::size_t>(argc));
    // volatile, so that the compiler neither sees nor removes the fault.
    volatile int* past = numbers.data() + numbers.size();
    *past = 1;
    return 0;
}
