/// Reading a long list without a tree of it.
#pragma once

#include <string_view>

#include <platen/pia.h>

/// Is handed the blocks of one list in order while a file is read. The tree holds them without
/// their items afterwards.
class PiaEntryTaker {
public:
    /// `list` names the block of the root whose blocks are handed over.
    explicit PiaEntryTaker(PiaKey list) : list_(list) {}

    PiaKey list() const { return list_; }
    /// Its items are as good as gone when this returns. Their values are to be copied, or read as
    /// they lie: one that was made wide would never be freed.
    virtual void take(const PiaBlock& entry) = 0;

    /// Like the members of `PiaInput`, which hands over the entries meanwhile.
    [[nodiscard]] bool open(PiaInput& input, const wchar_t* path);
    [[nodiscard]] bool openBytes(PiaInput& input, std::string_view file);
    [[nodiscard]] bool openBody(PiaInput& input, std::string_view body,
                                const PiaReadOptions& options = {});
    /// Takes the blocks of a tree that was read without a taker.
    void takeAll(const PiaBlock& root);

protected:
    ~PiaEntryTaker() = default;

private:
    class Handing;

    PiaKey list_;
};
