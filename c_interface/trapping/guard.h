/// Where there are no exceptions, a module without memory traps and is started anew.
#pragma once

#include <utility>

namespace platen::c {

template <class Work, class Fail>
auto guarded(Work&& work, Fail&&) noexcept -> decltype(work()) {
    return std::forward<Work>(work)();
}

}  // namespace platen::c
