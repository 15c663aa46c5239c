/// Names of the papers in one list of a PMP.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>

/// Knows the names of a list's entries, which are told to it in order.
class UniqueNames {
public:
    /// An entry that keeps its name.
    void note(std::wstring_view name);
    /// The name for one more entry that asks for `name`: "NAME_k" when there is one already, with
    /// the smallest k from 1 that no entry behind the first of that name has. Entries before it do
    /// not count, as readers of these files expect. Case is ignored.
    std::wstring make(std::wstring_view name);

private:
    struct Uses {
        std::size_t first;
        std::size_t last;
        /// No smaller number is free for this name.
        std::size_t nextNumber = 1;
    };

    Uses& use(std::wstring folded);

    std::map<std::wstring, Uses> uses_;
    std::size_t count_ = 0;
};
