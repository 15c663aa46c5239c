#include <utility>

#include <platen/pia_tree.h>
#include "pia/arena.h"

PiaTree::PiaTree() : arena_(std::make_unique<PiaArena>()), root_(arena_->makeBlock(L"")) {}

PiaTree::~PiaTree() {
    if (root_ != nullptr) {
        root_->~PiaBlock();
    }
}

PiaTree::PiaTree(PiaTree&& other) noexcept
    : arena_(std::move(other.arena_)), root_(std::exchange(other.root_, nullptr)) {}

PiaTree& PiaTree::operator=(PiaTree&& other) noexcept {
    std::swap(arena_, other.arena_);
    std::swap(root_, other.root_);
    return *this;
}
