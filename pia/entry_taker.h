/// Reading a long list without a tree of it.
#pragma once

#include <platen/pia.h>

/// Is handed the blocks of one list in order while a file is read. The tree holds them without
/// their items afterwards.
class PiaEntryTaker {
public:
    /// `list` names the block of the root whose blocks are handed over.
    explicit PiaEntryTaker(PiaKey list) : list_(list) {}

    PiaKey list() const { return list_; }
    /// Its items are as good as gone when this returns.
    virtual void take(const PiaBlock& entry) = 0;
    /// Takes the blocks of a tree that was read without a taker.
    void takeAll(const PiaBlock& root);

protected:
    ~PiaEntryTaker() = default;

private:
    PiaKey list_;
};
