/// Where documents write themselves: into a block of a tree, or into the body of a file.
#pragma once

#include <string_view>

#include <platen/pia_text.h>
#include <platen/platen_api.h>

/// Takes items in written order: a block of a tree, or the body of a file that is being written.
/// Documents write themselves into one. A name that is a key is not copied.
class PLATEN_API PiaSink {
public:
    /// False when the block has an item of that name and type already.
    ///@{
    [[nodiscard]] virtual bool addString(PiaKey key, std::wstring_view text) = 0;
    [[nodiscard]] virtual bool addBool(PiaKey key, bool flag) = 0;
    [[nodiscard]] virtual bool addBin(PiaKey key, std::wstring_view text) = 0;
    /// A number by its text, which is not checked.
    [[nodiscard]] virtual bool addNumber(PiaKey key, std::wstring_view text) = 0;
    [[nodiscard]] virtual bool addInt(PiaKey key, int number) = 0;
    ///@}
    /// Fixed notation with `precision` digits after the point; a negative precision means 6.
    [[nodiscard]] virtual bool addDouble(PiaKey key, double number, int precision = -1) = 0;
    /// Begins a block; null when there is one of that name already. Its items go to the result,
    /// until the next item goes to this sink.
    [[nodiscard]] virtual PiaSink* addBlock(PiaKey key) = 0;

    /// The same with a name that is known only when the program runs: it is copied.
    ///@{
    template <PiaRuntimeName Name>
    [[nodiscard]] bool addString(const Name& itemName, std::wstring_view text) {
        return addStringNamed(itemName, text);
    }
    template <PiaRuntimeName Name>
    [[nodiscard]] bool addDouble(const Name& itemName, double number, int precision = -1) {
        return addDoubleNamed(itemName, number, precision);
    }
    template <PiaRuntimeName Name>
    [[nodiscard]] PiaSink* addBlock(const Name& itemName) {
        return addBlockNamed(itemName);
    }
    ///@}

protected:
    ~PiaSink() = default;

private:
    virtual bool addStringNamed(std::wstring_view itemName, std::wstring_view text) = 0;
    virtual bool addDoubleNamed(std::wstring_view itemName, double number, int precision) = 0;
    virtual PiaSink* addBlockNamed(std::wstring_view itemName) = 0;
};
