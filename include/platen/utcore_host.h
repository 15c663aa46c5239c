/// Services of the host application's utility library: keys that are down, libraries loaded by
/// name, names of files, lines of text files. A stand-in, as far as Platen calls it, that a host
/// replaces by its own.
///
/// Functions may be called from any thread, except where they say otherwise.
#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

#include <platen/platen_api.h>

namespace ut {

// ---------------------------------------------------------------------------------------------
// Keys

/// Which keys are down at this moment, whether or not the messages of the keyboard were handled.
/// GUI thread only.
class PLATEN_API KeyCodes {
public:
    static const KeyCodes& getInstance();  ///< Lives as long as the program.

    /// Whether one of these keys is down.
    ///@{
    bool isSpaceDown() const;
    bool isShiftDown() const;
    bool isControlDown() const;
    ///@}
    /// The key that shortcuts are made with: Control, on Macs Command.
    bool isControlOrCommandDown() const;
    bool isAltDown() const;  ///< The left or the right one.
    /// Windows: the right Alt key, whether or not the keyboard layout makes it AltGr. Linux: the
    /// key that chooses the third level of the layout, as far as the display tells.
    bool isAltGrDown() const;
    bool isEscapeDown() const;  ///< Whether the key is down.

private:
    KeyCodes() = default;
};

// ---------------------------------------------------------------------------------------------
// Libraries

/// Owns one use of a library that is loaded while the program runs.
///
/// A bare name is looked for where libraries of the program and of the system are, never in the
/// current folder: a library that somebody puts beside a document is not loaded.
class PLATEN_API DynamicLibrary {
public:
    /// Bits of `mode`; systems without the choice ignore them.
    enum Mode : int {
        /// Symbols are bound when they are used.
        Lazy = 1,
        /// All symbols are bound at once, so that an incomplete library does not load.
        Now = 2,
    };

    /// Loads the library, or not: see `isLoaded`. `mode` is made of bits of `Mode`.
    DynamicLibrary(const wchar_t* name, int mode);

    bool isLoaded() const { return library_ != nullptr; }  ///< False when it could not be loaded.
    /// The function that the library exports as `name`; null when there is none. It must not be
    /// called after the library is gone.
    template <class Function>
    Function* function(const char* name) const {
        return reinterpret_cast<Function*>(symbol(name));
    }

private:
    struct PLATEN_API Unloader {
        void operator()(void* library) const noexcept;
    };

    void* symbol(const char* name) const;

    std::unique_ptr<void, Unloader> library_;
};

// ---------------------------------------------------------------------------------------------
// Names of files

/// The path of a file or a folder.
class PLATEN_API FileName {
public:
    /// Kept as it is given.
    ///@{
    FileName(std::wstring path) : path_(std::move(path)) {}
    FileName(const wchar_t* path) : path_(path != nullptr ? path : L"") {}
    ///@}

    /// The path from the root, without "." and "..". What a symbolic link leads to is not looked
    /// at, and nothing on the path needs to exist. Empty when the path is.
    std::wstring getFullPath() const;
    /// The last component, extension included.
    std::wstring getFullName() const;
    /// True when the path leads to something that is no folder.
    bool exists() const;

    /// True when the full paths are the same but for separators at their ends; Windows: whatever
    /// their case.
    bool operator==(const FileName& other) const;

private:
    std::wstring path_;
};

// ---------------------------------------------------------------------------------------------
// Text

/// Reads a line as fgets does, at most `size` - 1 characters, but takes CR LF, CR and LF for its
/// end and leaves that out. Of a longer line the next call reads the rest. A null character, which
/// would end the text early, becomes the substitute character 0x1A. Returns `text`, which is
/// terminated then, or null when nothing is left or reading fails.
PLATEN_API char* nfgets(char* text, int size, std::FILE* file);

/// `text` without white space at the ends that `mode` names: "b" the beginning, "e" the end.
PLATEN_API std::wstring removeSpaces(std::wstring_view text, std::string_view mode);

// ---------------------------------------------------------------------------------------------
// Errors

/// The code that the last failing call to the system left on this thread: GetLastError or errno.
PLATEN_API unsigned long sysErrorCode();

}  // namespace ut
