/// Services of the operating system: programs, mail, keys and the mouse, drives and folders, the
/// user's locale, position files.
///
/// All functions run on the caller's thread.
#pragma once

#ifdef _WIN32
#include <wx/msw/wrapwin.h>
#endif

#include <platen/oda.h>
#include <platen/platen_api.h>
#include <platen/utcore_host.h>

class wxConfigBase;
class wxKeyEvent;

namespace wut {

// ---------------------------------------------------------------------------------------------
// Programs

/// Runs programs and waits for them.
class PLATEN_API OsShell {
public:
    /// True when the wait is to be abandoned. Asked before the wait begins and every 500 ms; never
    /// true unless a derived class says so.
    virtual bool isCancelled();
    virtual ~OsShell();

    /// Starts `commandLine` and waits for its end. Returns 0, whatever the program's own exit code
    /// is, or the system's error code when the program does not start. When `isCancelled` answers
    /// true, the program is terminated, together with the programs that it started and that did not
    /// break away.
    ///
    /// Windows: `title` names the console window of a console program; the window is minimised when
    /// `flags` contains 2, otherwise hidden when it contains 4.
    /// Linux: the command line is split into words as a shell does with quotes and backslashes, but
    /// nothing is expanded; the first word is looked for in PATH. Neither title nor flags mean
    /// anything. The program reads an empty standard input and writes where the caller does.
    unsigned long executeCommand(const wchar_t* title, const wchar_t* commandLine, int flags);
};

/// `wxExecute`: a process identifier, or an exit code when `flags` contain `wxEXEC_SYNC`.
PLATEN_API long winExecute(const OdString& command, int flags);

/// Shows a web page, in a new window when `flags` is true and the browser knows how.
PLATEN_API bool LaunchDefaultBrowser(const OdString& url, bool flags);

/// Opens a document with the program that the user has for it. Windows: true whenever the shell
/// returns a handle, which it does for most failures, too; it then asks or tells the user itself.
PLATEN_API bool LaunchDefaultApplication(const OdString& document);

/// True when the program runs on Wine rather than on Windows itself. Always false on other systems.
[[nodiscard]] PLATEN_API bool isUnderWine();

/// Starts wxWidgets, without arguments, for a program that does not do it itself, or ends it.
/// Process-wide. Windows can be shown if `wxApp::SetInstance` was given an application before.
PLATEN_API void initWxWidgets(bool start);

// ---------------------------------------------------------------------------------------------
// Keys and the mouse: GUI thread only

/// Whether the key is down now; see `ut::KeyCodes`.
///@{
[[nodiscard]] PLATEN_API bool isSpaceDown();
[[nodiscard]] PLATEN_API bool isShiftDown();
[[nodiscard]] PLATEN_API bool isControlDown();
[[nodiscard]] PLATEN_API bool isControlOrCommandDown();
[[nodiscard]] PLATEN_API bool isAltDown();
[[nodiscard]] PLATEN_API bool isAltGrDown();
[[nodiscard]] PLATEN_API bool isEscapeDown();
///@}

/// Whether the button is down now.
///@{
[[nodiscard]] PLATEN_API bool isLButtonDown();
[[nodiscard]] PLATEN_API bool isMButtonDown();
[[nodiscard]] PLATEN_API bool isRButtonDown();
///@}

/// True when the key of `event` produces a character. Enter, on the keypad too, gets 13 for its
/// Unicode character.
PLATEN_API bool isCharKeyDown(wxKeyEvent& event);

// ---------------------------------------------------------------------------------------------
// Folders

/// Places beside the list of files of a file dialog.
enum EPlacesBarFolder {
    PBF_Desktop = 0,
    PBF_Drives = 1,
    PBF_Personal = 2,
    PBF_Favorites = 3,
    PBF_Network = 4,
    PBF_Recent = 5,
};

/// The shell's folder identifier (CSIDL) of an `EPlacesBarFolder`; that of the drives for any other
/// index.
[[nodiscard]] PLATEN_API int placesBarFolderCSIDLByIndex(int index);

/// True when the full paths are the same, see `ut::FileName`. An empty path is no folder: it is
/// identical to an empty one alone.
[[nodiscard]] PLATEN_API bool areIdenticalFolders(const OdString& left, const OdString& right);

/// The list of recent files that `wxFileHistory` has saved in a group of `config` as "file1",
/// "file2" and so on, in this order, without files that no longer exist and without repetitions.
/// Where that differs from what is saved, the group is rewritten: numbers from 1 without gaps,
/// other entries as they were. `group` is relative to the configuration's path, which stays.
PLATEN_API OdArray<OdString> restoreCorrectFileListFromWxFileConfigGroup(wxConfigBase& config,
                                                                         const OdString& group);

// ---------------------------------------------------------------------------------------------
// Locale and text

/// What separates the items of a list in the user's locale. Windows: the user's setting. Linux,
/// whose locales do not tell: a semicolon where the decimal separator is a comma, else a comma.
/// Null when the system does not tell.
[[nodiscard]] PLATEN_API wchar_t getSystemDefaultSeparator();
/// What separates the fraction of a number in the user's locale, whatever locale the program has
/// set. Null when the system does not tell.
[[nodiscard]] PLATEN_API wchar_t getSystemDecimalSeparator();

/// Sets the C library's locale: sorting, classes of characters, money and time are the user's,
/// numbers and all else are of the "C" locale. Process-wide, to be called at the start.
PLATEN_API void setApplicationLocale();

/// Replaces each %NAME% in `source` by the value of the environment variable, if there is one, and
/// writes the result to `target`, which has room for `size` characters.
/// Returns the number of characters of the whole result, its terminating null included. When that
/// is more than `size`, `target` is of no use; a null `target` has no room. 0 when it fails, as it
/// does without a `source`.
PLATEN_API unsigned long expandEnvironmentStrings(const wchar_t* source, wchar_t* target,
                                                  unsigned long size);

/// Gets the reason in plain words. May be called on any thread, in the middle of formatting.
using FormattingErrorHandler = void (*)(const wchar_t* reason);

/// Sets the function that is called when a text cannot be formatted, in place of what happens
/// otherwise; null brings that back. Returns the function that was set before. Process-wide.
///
/// It is called when wxWidgets' checks find that an argument does not fit its format; they would
/// ask the user whether to go on. Windows: also when the universal C library, if that is loaded, is
/// given arguments that it must not be given, such as a format that it does not know; it would end
/// the program. Other C libraries report that by their results alone.
PLATEN_API FormattingErrorHandler setFormattingErrorHandler(FormattingErrorHandler handler);

// ---------------------------------------------------------------------------------------------
// Position files

/// Reads a text file of six lines with a number each, which has a decimal point in any locale. They
/// are, in this order: `c`, `f`, `e`, `d`, `a`, `b`. Further lines are ignored.
/// False when the file cannot be opened or a line is missing, is no number, or is longer than 2046
/// characters; the numbers before it have their new values then, the others keep theirs.
[[nodiscard]] PLATEN_API bool readPositionFile(const OdString& path, double& a, double& b,
                                               double& c, double& d, double& e, double& f);

// ---------------------------------------------------------------------------------------------
// Time and numbers

/// Lets the calling thread sleep.
PLATEN_API void milliSleep(unsigned long milliseconds);

/// `number` * `numerator` / `denominator`, exact in between and rounded to the nearest integer,
/// halves away from zero. -1 when the denominator is 0 or the result has more than 31 bits beside
/// its sign.
[[nodiscard]] PLATEN_API int mulDiv(int number, int numerator, int denominator);

// ---------------------------------------------------------------------------------------------
// Windows only

#ifdef _WIN32

/// What became of a mail.
enum EMailStatus {
    /// Sent, or cancelled by the user.
    MS_Sent = 0,
    /// There is no mail service.
    MS_NoMail = 1,
    /// The mail service reported an error.
    MS_Failed = 2,
};

/// Shows the user a new mail with `file` attached and its name for a subject, and waits for the end
/// of the dialog, which belongs to `parent`. Under Wine there is no mail service.
PLATEN_API EMailStatus sendByMail(ut::FileName file, HWND parent);

/// What a drive is.
enum EFSVolumeKind {
    FSV_Removable = 0,
    FSV_Fixed = 1,
    FSV_CdRom = 2,
    FSV_Remote = 4,
    FSV_Unknown = 5,
};

/// The kind of the drive with the root folder `root`, such as "C:\"; null stands for the drive of
/// the current folder.
[[nodiscard]] PLATEN_API EFSVolumeKind getDriveType(const wchar_t* root);

/// The folder of a shell's folder identifier; empty for one that is no folder of the file system.
[[nodiscard]] PLATEN_API OdString folderPathByCSIDL(int csidl);

/// The state of the keyboard as far as this thread has taken its messages: 256 bytes, one a virtual
/// key. False for null.
PLATEN_API bool getKeyboardState(unsigned char* states);
/// Sets that state for this thread, from 256 bytes. False for null, or when the system refuses.
PLATEN_API bool setKeyboardState(unsigned char* states);

#endif

}  // namespace wut
