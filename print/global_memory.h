/// Windows' global memory, in which device modes travel.
#pragma once

#include <memory>

#include <platen/print.h>

namespace wut {

struct GlobalFreer {
    using pointer = HGLOBAL;
    void operator()(HGLOBAL block) const noexcept { GlobalFree(block); }
};
/// Owns a block of global memory.
using GlobalBlock = std::unique_ptr<void, GlobalFreer>;

/// The content of a block of global memory, locked.
template <class Content>
using GlobalLocked = std::unique_ptr<Content, GlobalUnlocker>;

/// Null for no block.
template <class Content>
GlobalLocked<Content> lockGlobal(HGLOBAL block) {
    void* content = block != nullptr ? GlobalLock(block) : nullptr;
    return GlobalLocked<Content>(static_cast<Content*>(content), GlobalUnlocker{block});
}

}  // namespace wut
