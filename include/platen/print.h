/// Printing: the catalogue of papers and the editing of custom papers; on Windows installed
/// printers, their papers, print data and device modes as well.
///
/// All of the latter is called on one thread, the one that owns the windows. Nothing throws unless
/// said. It needs wxWidgets' core library.
#pragma once

#include <platen/custom_papers.h>
#include <platen/papers.h>

#ifdef _WIN32

#include <wx/msw/wrapwin.h>
// wrapwin.h comes first: it undoes macros of windows.h.
#include <winspool.h>
#include <wx/cmndata.h>
#include <wx/dcprint.h>
#include <wx/prntbase.h>
// printdlg.h of its own needs the dialogs' declarations.
#include <wx/printdlg.h>
// and the Windows classes that they hide.
#include <wx/msw/printdlg.h>

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <platen/oda.h>
#include <platen/platen_api.h>

class PrinterSystem;

namespace wut {

// --- Printers ------------------------------------------------------------------------------------

struct PLATEN_API PrinterCloser {
    using pointer = HANDLE;  ///< What `std::unique_ptr` is to hold.
    void operator()(HANDLE printer) const noexcept;
};

/// Owns one spooler handle.
class PLATEN_API PrinterHandle {
public:
    /// Closed.
    PrinterHandle() = default;
    /// From a name, so that functions that take a printer take its name; closed when the printer
    /// cannot be opened.
    PrinterHandle(const OdString& name) { open(name); }
    PrinterHandle(const wchar_t* name) { open(name); }  ///< Null is an empty name.

    /// Closes what is open and opens the printer; true when it is open now.
    bool open(const OdString& name);
    /// Null when closed. Borrowed.
    HANDLE get() const { return handle_.get(); }
    explicit operator bool() const { return handle_ != nullptr; }

private:
    std::unique_ptr<void, PrinterCloser> handle_;
};

/// Appends the names of all printers, local ones first, in the spooler's order. A printer that is
/// local and shared may come twice.
PLATEN_API void getSystemPrinters(OdArray<OdString>& names);

/// The user's default printer. When there is none: the first of `getSystemPrinters` if
/// `useFirstIfNone`, otherwise empty.
PLATEN_API OdString getDefaultSystemPrinter(bool useFirstIfNone);

/// The printer's ports, separated by commas; empty when they cannot be had.
PLATEN_API OdString getPrinterPorts(const PrinterHandle& printer);

/// The comment of the printer's administrator; empty when it cannot be had.
PLATEN_API OdString getPrinterComment(const PrinterHandle& printer);

/// Makes another printer the user's default while it lives; other programs see that, too. When no
/// printer was the default, the new one stays.
class PLATEN_API ChangeDefaultPrinter {
public:
    /// Notes the default printer, then sets the other one; a failure of that is not told.
    explicit ChangeDefaultPrinter(const OdString& printer);
    ChangeDefaultPrinter(const ChangeDefaultPrinter&) = default;
    ChangeDefaultPrinter& operator=(const ChangeDefaultPrinter&) = default;
    ~ChangeDefaultPrinter();

    /// Sets it for good; false when the spooler refuses.
    static bool setDefaultPrinter(const OdString& name);
    /// The printer that will be the default again; empty for none.
    const OdString& oldDefaultPrinter() const { return old_; }

private:
    OdString old_;
};

/// The printers of this machine, as documents ask for them. Lives as long as the library.
PLATEN_API const PrinterSystem& installedPrinters();

// --- Device modes --------------------------------------------------------------------------------

/// The printer's default device mode with the driver's private bytes, or null. The caller owns it
/// and gives it back with `freeDevMode`. It is never longer than the memory it lies in.
PLATEN_API DEVMODEW* getDevMode(const wchar_t* printerName);
/// The bytes that the driver asks for its device mode, its private ones included; 0 when it does
/// not say.
PLATEN_API std::size_t getDevModeBytes(const PrinterHandle& printer, const wchar_t* printerName);
/// Null is fine.
PLATEN_API void freeDevMode(DEVMODEW* devMode) noexcept;

struct DevModeFreer {
    void operator()(DEVMODEW* devMode) const noexcept { freeDevMode(devMode); }
};
/// Owns what `getDevMode` returns.
using DevModePtr = std::unique_ptr<DEVMODEW, DevModeFreer>;

/// Replaces `out` by a text with a line for each field and the private bytes in hexadecimal. The
/// private bytes must be there: `dmDriverExtra` of them, `dmSize` after the beginning.
PLATEN_API void dumpDevMode(const DEVMODEW& devMode, OdString& out);

// --- Print data ----------------------------------------------------------------------------------

/// wxWidgets' print data, with what plotting adds, in the terms of device modes where asked for.
/// Copies share their native data as copies of `wxPrintData` do.
class PLATEN_API PrintData : public wxPrintData {
public:
    /// Where settings come from.
    enum EInit {
        /// From the default printer or, when there is none, the first one.
        kInitFromSystem,
    };

    /// Knows no printer.
    PrintData() = default;
    explicit PrintData(EInit);  ///< Knows no printer when there is none.
    /// Takes the printer's default settings; knows no printer when that fails.
    explicit PrintData(const wchar_t* printerName);
    PrintData(const PrintData&) = default;
    PrintData& operator=(const PrintData&) = default;

    /// Where lines cross, colours are merged; false at first.
    ///@{
    bool isMergeColors() const { return mergeColors_; }
    void setMergeColors(bool on) { mergeColors_ = on; }
    ///@}
    /// Text in TrueType fonts goes to the printer as text; true at first.
    ///@{
    bool isTtfAsText() const { return ttfAsText_; }
    void setTtfAsText(bool on) { ttfAsText_ = on; }
    ///@}
    /// The printer's driver by name; empty at first.
    ///@{
    const wxString& getDriverName() const { return driverName_; }
    void setDriverName(const wxString& name) { driverName_ = name; }
    ///@}

    /// A device context for these settings, owned by the caller. Without a printer name the default
    /// printer is taken first; null when there is none. The context may not be usable: see `IsOk`.
    wxPrinterDC* createPrinterDC();
    /// Has the driver merge and correct the settings. True as well when there is nothing that
    /// could, because the native data are not this library's.
    bool ResolveConflicts();

    /// `DMBIN_*`. A number below 256 that wxWidgets has no bin for gives the default bin, which
    /// reads back as 242.
    ///@{
    void setDmBin(short dmBin);
    short getDmBin() const;
    ///@}
    /// `DMDUP_*`; anything else is simplex.
    ///@{
    void setDmDuplex(short dmDuplex);
    short getDmDuplex() const;
    ///@}
    /// `DMRES_*` or dots per inch.
    ///@{
    void setDmQuality(short dmQuality);
    short getDmQuality() const;
    ///@}

    /// `DMPAPER_*`, or a driver's own number from 256 on. False when no paper is set, and `paperId`
    /// stays.
    bool getDmPaperSize(short& paperId) const;
    /// A paper that wxWidgets knows brings its own size. Any other takes `sizeMM` (millimetres,
    /// null for 0 by 0) and keeps its number in the native data.
    void setDmPaperSize(short paperId, const wxSize* sizeMM);
    /// The same with a size in tenths of a millimetre, rounded; it must not be null.
    void setDmPaperSize(short paperId, const POINT* sizeTenthsMM);
    /// The same with 0 by 0.
    void setDmPaperSize(short paperId, std::nullptr_t) {
        setDmPaperSize(paperId, static_cast<const wxSize*>(nullptr));
    }

    /// Whether the printer takes PostScript as it is.
    bool isPostScript();

private:
    bool mergeColors_ = false;
    bool ttfAsText_ = true;
    wxString driverName_;

    wxDECLARE_DYNAMIC_CLASS(PrintData);
};

/// The native half of print data: owns the device mode, and carries those of its fields that
/// wxWidgets leaves alone. It has no device mode until `Initialize` or a transfer gets one.
class PLATEN_API WindowsPrintNativeData : public wxWindowsPrintNativeData {
public:
    /// The print data's native data when they are of this class, otherwise null.
    ///@{
    static WindowsPrintNativeData* GetNativeData(wxPrintData& data);
    static const WindowsPrintNativeData* GetNativeData(const wxPrintData& data);
    ///@}

    /// Copies of device mode fields; never written back.
    ///@{
    std::uint16_t specVersion = 0;
    std::uint16_t driverVersion = 0;
    std::uint16_t size = 0;
    ///@}
    /// Percent; 100 for none.
    std::int16_t scale = 100;
    /// More of them; 0, or empty, for none. The resolution is in dots per inch.
    ///@{
    std::int16_t yResolution = 0;
    std::int16_t ttOption = 0;
    std::wstring formName;
    std::uint32_t pagesPerSheet = 0;
    std::uint32_t icmMethod = 0;
    std::uint32_t icmIntent = 0;
    std::uint32_t ditherType = 0;
    ///@}
    /// The Windows number of a paper that wxWidgets does not know.
    std::int16_t customWindowsPaperId = 0;

    /// Takes the default settings of a printer (the default printer for an empty name) and
    /// transfers them to `data`. True when `data` has a printer name then. When the printer's
    /// settings cannot be had, everything stays as it was.
    virtual bool Initialize(wxPrintData& data, const wxString& printerName);
    /// From the device mode to `data` and to the fields here; sides of papers count without a sign,
    /// up to 6553 mm. Gets the default printer's device
    /// mode when there is none. False when there is still none or when it is damaged.
    bool TransferTo(wxPrintData& data) override;
    /// From `data` and the fields here to the device mode. Gets that of the printer that `data`
    /// names when there is none. False when there is still none, when it is damaged or when the
    /// private bytes in `data` do not fit; it stays as it was then. A side below 0 or above 3276
    /// mm, which 16 bits of tenths do not hold, is left out with a warning in the log.
    bool TransferFrom(const wxPrintData& data) override;
    /// Has the driver of the printer that `data` names merge and correct the device mode. False
    /// when there is none, when the driver's is damaged or does not fit into a block that others
    /// have locked, or when the printer cannot be opened; in the last case the device mode is left
    /// locked.
    virtual bool ResolveConflicts(const wxPrintData& data);

private:
    /// Takes the default settings of a printer in place of what is here.
    bool obtain(const wxString& printerName);

    wxDECLARE_DYNAMIC_CLASS(WindowsPrintNativeData);
};

/// Makes every `wxPrintData` with a `WindowsPrintNativeData`.
class PLATEN_API PrintFactory : public wxNativePrintFactory {
public:
    /// Owned by wxWidgets, which asks for it.
    wxPrintNativeDataBase* CreatePrintNativeData() override;
};

/// Called by the application before it makes print data, and at its end.
PLATEN_API void registerPrintFactory();
/// wxWidgets' own factory is back after it.
PLATEN_API void unRegisterPrintFactory();

/// Unlocks a block of global memory.
struct GlobalUnlocker {
    HGLOBAL block = nullptr;  ///< The block that is locked.
    void operator()(void*) const noexcept { GlobalUnlock(block); }
};

/// The locked device mode behind print data, for a scope.
class PLATEN_API DEVMODE_RAII {
public:
    /// Transfers the print data to the device mode, has the driver correct it, and locks it. `data`
    /// is borrowed.
    explicit DEVMODE_RAII(wxPrintData& data);
    /// Shares the device mode, not the lock.
    DEVMODE_RAII(const DEVMODE_RAII& other);
    DEVMODE_RAII& operator=(const DEVMODE_RAII&) = delete;
    ~DEVMODE_RAII();

    /// Locks what is not locked; null when there is no device mode.
    DEVMODEW* get();
    /// The locked device mode, null when it is not locked.
    operator DEVMODEW*() const { return locked_.get(); }
    DEVMODEW* operator->() const { return locked_.get(); }
    /// `get() != nullptr`. For `bool` and nothing else: as a number it would compete with the
    /// pointer in comparisons and indexes.
    template <std::same_as<bool> Bool>
    operator Bool() {
        return get() != nullptr;
    }

    /// After the locked device mode was edited: has the driver correct it, and transfers it to the
    /// print data. Does nothing when it is not locked.
    void updatePrintData();
    /// Unlocks the device mode; the print data stay as they are.
    void release();

private:
    void take();

    wxPrintData& data_;
    HGLOBAL handle_ = nullptr;
    std::unique_ptr<DEVMODEW, GlobalUnlocker> locked_;
};

// --- Papers of a printer -------------------------------------------------------------------------

/// Asks a driver for the papers it has under one set of settings. Answers are kept for the whole
/// process by printer, port and settings.
class PLATEN_API PaperSizeGetter {
public:
    /// Names and print data are borrowed. Without print data the printer's default settings count.
    PaperSizeGetter(const wchar_t* printerName, const wchar_t* port, const PrintData* printData);
    PaperSizeGetter(const PaperSizeGetter&) = delete;
    PaperSizeGetter& operator=(const PaperSizeGetter&) = delete;
    ~PaperSizeGetter();

    /// Fills parallel lists: Windows paper ids, the driver's names as it gives them, sizes in
    /// tenths of a millimetre. Null for a list that is not wanted. False when a wanted list has
    /// nothing in it or when the settings could not be had; all wanted lists are empty then.
    bool get(OdArray<unsigned short>* ids, OdArray<OdString>* names, OdArray<POINT>* dims) const;

private:
    const DEVMODEW* devMode() const;

    const wchar_t* printer_;
    const wchar_t* port_;
    /// One of the two.
    std::unique_ptr<DEVMODE_RAII> current_;
    DevModePtr default_;
};

/// Forgets the answers of a printer, of all printers for an empty name.
PLATEN_API void onPrinterSettingsChanged(const OdString& printerName);

}  // namespace wut

/// One printer: whether it is there, its ports, its driver, its papers.
class PLATEN_API CPrnHelper {
public:
    /// Null is an empty name.
    explicit CPrnHelper(const wchar_t* printerName);
    CPrnHelper(const CPrnHelper&) = delete;
    CPrnHelper& operator=(const CPrnHelper&) = delete;
    ~CPrnHelper();

    /// True when the printer could be opened.
    bool isValid() const;
    const std::wstring& name() const;  ///< As it was given.
    /// The open printer. Borrowed.
    const wut::PrinterHandle& handle() const;
    /// Both replace their argument, and return whether it is not empty now.
    ///@{
    bool getPorts(std::wstring& ports) const;
    bool getPrinterDriver(std::wstring& driver) const;
    ///@}

    /// Papers under the printer's default settings, asked for at first use and again until they
    /// come; as many as have both a number and a name. Without papers nothing is found.
    std::size_t paperCount();
    /// Throws `OdError_InvalidIndex`.
    OdString getPaperName(unsigned index);
    /// Throws `OdError_InvalidIndex`.
    unsigned short getPaperId(unsigned index);
    /// The first of that name, whatever its case, or -1. Control characters count as spaces.
    int findPaperName(const wchar_t* name);
    /// The first of that id, or -1.
    int findPaperId(unsigned short id);

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

#endif
