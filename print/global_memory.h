/// Windows' global memory, in which device modes travel.
#pragma once

#include <wx/msw/wrapwin.h>

#include <memory>

namespace wut {

struct GlobalFreer {
    using pointer = HGLOBAL;
    void operator()(HGLOBAL block) const noexcept { GlobalFree(block); }
};
/// Owns a block of global memory.
using GlobalBlock = std::unique_ptr<void, GlobalFreer>;

struct GlobalUnlocker {
    HGLOBAL block = nullptr;
    void operator()(void*) const noexcept { GlobalUnlock(block); }
};
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
