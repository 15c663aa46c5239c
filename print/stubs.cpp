#include "print.h"
wxIMPLEMENT_DYNAMIC_CLASS(wut::PrintData, wxPrintData);
wxIMPLEMENT_DYNAMIC_CLASS(wut::WindowsPrintNativeData, wxWindowsPrintNativeData);
namespace wut {
void PrinterCloser::operator()(HANDLE) const noexcept {}
bool PrinterHandle::open(const OdString&) { return false; }
void getSystemPrinters(OdArray<OdString>&) {}
OdString getDefaultSystemPrinter(bool) { return {}; }
OdString getPrinterPorts(const PrinterHandle&) { return {}; }
OdString getPrinterComment(const PrinterHandle&) { return {}; }
ChangeDefaultPrinter::ChangeDefaultPrinter(const OdString&) {}
ChangeDefaultPrinter::~ChangeDefaultPrinter() {}
bool ChangeDefaultPrinter::setDefaultPrinter(const OdString&) { return false; }
DEVMODEW* getDevMode(const wchar_t*) { return nullptr; }
void freeDevMode(DEVMODEW*) noexcept {}
void dumpDevMode(const DEVMODEW&, OdString&) {}
PrintData::PrintData(EInit) {}
PrintData::PrintData(const wchar_t*) {}
PrintData& PrintData::operator=(const PrintData& other) = default;
wxPrinterDC* PrintData::createPrinterDC() { return nullptr; }
bool PrintData::ResolveConflicts() { return false; }
void PrintData::setDmBin(short) {}
short PrintData::getDmBin() const { return 0; }
void PrintData::setDmDuplex(short) {}
short PrintData::getDmDuplex() const { return 0; }
void PrintData::setDmQuality(short) {}
short PrintData::getDmQuality() const { return 0; }
bool PrintData::getDmPaperSize(short&) const { return false; }
void PrintData::setDmPaperSize(short, const wxSize*) {}
void PrintData::setDmPaperSize(short, const POINT*) {}
bool PrintData::isPostScript() { return false; }
WindowsPrintNativeData* WindowsPrintNativeData::GetNativeData(wxPrintData&) { return nullptr; }
const WindowsPrintNativeData* WindowsPrintNativeData::GetNativeData(const wxPrintData&) { return nullptr; }
bool WindowsPrintNativeData::Initialize(wxPrintData&, const wxString&) { return false; }
bool WindowsPrintNativeData::TransferTo(wxPrintData&) { return false; }
bool WindowsPrintNativeData::TransferFrom(const wxPrintData&) { return false; }
bool WindowsPrintNativeData::ResolveConflicts(const wxPrintData&) { return false; }
wxPrintNativeDataBase* PrintFactory::CreatePrintNativeData() { return new WindowsPrintNativeData; }
void registerPrintFactory() {}
void unRegisterPrintFactory() {}
DEVMODE_RAII::DEVMODE_RAII(wxPrintData& data) : data_(data) {}
DEVMODE_RAII::DEVMODE_RAII(const DEVMODE_RAII& other) : data_(other.data_) {}
DEVMODE_RAII::~DEVMODE_RAII() {}
DEVMODEW* DEVMODE_RAII::get() { return nullptr; }
void DEVMODE_RAII::updatePrintData() {}
void DEVMODE_RAII::release() {}
PaperSizeGetter::PaperSizeGetter(const wchar_t*, const wchar_t*, PrintData*) {}
PaperSizeGetter::~PaperSizeGetter() {}
bool PaperSizeGetter::get(OdArray<unsigned short>*, OdArray<OdString>*, OdArray<POINT>*) const { return false; }
void onPrinterSettingsChanged(const OdString&) {}
}  // namespace wut
struct CPrnHelper::Impl { std::wstring name; wut::PrinterHandle handle; };
CPrnHelper::CPrnHelper(const wchar_t*) : impl_(std::make_unique<Impl>()) {}
CPrnHelper::~CPrnHelper() {}
bool CPrnHelper::isValid() const { return false; }
const std::wstring& CPrnHelper::name() const { return impl_->name; }
const wut::PrinterHandle& CPrnHelper::handle() const { return impl_->handle; }
bool CPrnHelper::getPorts(std::wstring&) const { return false; }
bool CPrnHelper::getPrinterDriver(std::wstring&) const { return false; }
std::size_t CPrnHelper::paperCount() { return 0; }
OdString CPrnHelper::getPaperName(unsigned) { return {}; }
unsigned short CPrnHelper::getPaperId(unsigned) { return 0; }
int CPrnHelper::findPaperName(const wchar_t*) { return -1; }
int CPrnHelper::findPaperId(unsigned short) { return -1; }
