/// Changing inputs in the way in which they are made: trees of items, not bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

/// As libFuzzer declares it: changes `size` bytes in place, up to `mostBytes`.
extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size,
                                        std::size_t mostBytes);

class Mutation {
public:
    explicit Mutation(unsigned seed) : random_(seed) {}

    std::size_t below(std::size_t count) { return count == 0 ? 0 : random_() % count; }
    bool oneIn(std::size_t count) { return below(count) == 0; }

    /// One to a few changes of items. `other` is a body to take items from, perhaps empty.
    std::string body(std::string_view text, std::string_view other, std::size_t mostBytes);
    /// Any bytes, as libFuzzer changes them.
    std::string bytes(std::string_view text, std::size_t mostBytes);
    /// A name that documents know.
    std::string key();
    /// Texts and numbers that are at the edge of something.
    std::string value();

private:
    struct Item {
        std::size_t begin;
        std::size_t end;
    };

    void change(std::vector<std::string>& lines, const std::vector<std::string>& others);
    Item itemAt(const std::vector<std::string>& lines, std::size_t line);

    std::minstd_rand random_;
};

/// Puts a new input in place of the old one; its length.
std::size_t putInput(std::string_view input, std::uint8_t* data, std::size_t mostBytes);
