/// A tree of items in one piece of memory.
#pragma once

#include <memory>

#include <platen/pia_items.h>
#include <platen/platen_api.h>

class PiaArena;

/// A tree whose items live in one arena: the fast way to build one for writing. Items that the
/// caller makes with `new` and adds are destroyed with it all the same. The values of a tree that
/// was read may lie in the body that it was read from.
class PLATEN_API PiaTree {
public:
    PiaTree();  ///< An empty root.
    ~PiaTree();
    PiaTree(PiaTree&&) noexcept;
    PiaTree& operator=(PiaTree&&) noexcept;

    /// The root block; its name is empty.
    ///@{
    PiaBlock& root() { return *root_; }
    const PiaBlock& root() const { return *root_; }
    ///@}

private:
    friend struct PiaAccess;
    std::unique_ptr<PiaArena> arena_;
    /// In the arena, which destroys it.
    PiaBlock* root_;
};
