#include <platen/print.h>

namespace wut {

wxPrintNativeDataBase* PrintFactory::CreatePrintNativeData() { return new WindowsPrintNativeData; }

void registerPrintFactory() { wxPrintFactory::SetPrintFactory(new PrintFactory); }

// wxWidgets makes its own when it needs one again.
void unRegisterPrintFactory() { wxPrintFactory::SetPrintFactory(nullptr); }

}  // namespace wut
