#include "print/dev_mode.h"

namespace wut {

DEVMODE_RAII::DEVMODE_RAII(wxPrintData& data) : data_(data) {
    take();
    get();
}

DEVMODE_RAII::DEVMODE_RAII(const DEVMODE_RAII& other)
    : data_(other.data_), handle_(other.handle_) {}

DEVMODE_RAII::~DEVMODE_RAII() = default;

void DEVMODE_RAII::take() {
    WindowsPrintNativeData* native = WindowsPrintNativeData::GetNativeData(data_);
    if (native == nullptr) {
        return;
    }
    // A device mode that the driver could not correct is still one.
    native->TransferFrom(data_);
    native->ResolveConflicts(data_);
    handle_ = native->GetDevMode();
}

DEVMODEW* DEVMODE_RAII::get() {
    if (handle_ == nullptr) {
        take();
    }
    if (locked_ == nullptr) {
        locked_ = lockDevMode(handle_);
    }
    return locked_.get();
}

void DEVMODE_RAII::updatePrintData() {
    if (locked_ == nullptr) {
        return;
    }
    if (WindowsPrintNativeData* native = WindowsPrintNativeData::GetNativeData(data_)) {
        native->ResolveConflicts(data_);
        native->TransferTo(data_);
    }
}

void DEVMODE_RAII::release() { locked_.reset(); }

}  // namespace wut
