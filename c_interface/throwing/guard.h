/// Keeps exceptions from callers, who may speak no C++.
#pragma once

#include <exception>
#include <new>
#include <utility>

namespace platen::c {

/// What `work` gives, or nothing of its type after `fail` was told why.
template <class Work, class Fail>
auto guarded(Work&& work, Fail&& fail) noexcept -> decltype(work()) {
    try {
        return std::forward<Work>(work)();
    } catch (const std::bad_alloc&) {
        fail("no-memory", "there is not enough memory");
    } catch (const std::exception& exception) {
        fail("internal", exception.what());
    }
    return {};
}

}  // namespace platen::c
