#include <algorithm>
#include <cstddef>
#include <string>

#include "print/compare_names.h"
#include "print/spooler_data.h"

struct CPrnHelper::Impl {
    explicit Impl(const wchar_t* printerName)
        : name(OdString(printerName).text()), printer(name.c_str()) {}

    /// Papers under the printer's default settings; tried again until both lists have come.
    void load() {
        if (loaded) {
            return;
        }
        const OdString ports = wut::getPrinterPorts(name.c_str());
        const wut::PaperSizeGetter getter(name.c_str(), ports.c_str(), nullptr);
        loaded = getter.get(&ids, &names, nullptr);
        // A driver may give more of the one than of the other, and which belong together is known
        // from the beginning only.
        if (ids.size() != names.size()) {
            const std::size_t count = std::min(ids.size(), names.size());
            ids.resize(count);
            names.resize(count);
        }
    }

    std::wstring name;
    wut::PrinterHandle printer;
    OdArray<unsigned short> ids;
    OdArray<OdString> names;
    bool loaded = false;
};

CPrnHelper::CPrnHelper(const wchar_t* printerName) : impl_(std::make_unique<Impl>(printerName)) {}

CPrnHelper::~CPrnHelper() = default;

bool CPrnHelper::isValid() const { return static_cast<bool>(impl_->printer); }

const std::wstring& CPrnHelper::name() const { return impl_->name; }

const wut::PrinterHandle& CPrnHelper::handle() const { return impl_->printer; }

bool CPrnHelper::getPorts(std::wstring& ports) const {
    ports = wut::getPrinterPorts(impl_->printer).text();
    return !ports.empty();
}

bool CPrnHelper::getPrinterDriver(std::wstring& driver) const {
    driver = wut::driverName(impl_->printer);
    return !driver.empty();
}

std::size_t CPrnHelper::paperCount() {
    impl_->load();
    return impl_->names.size();
}

OdString CPrnHelper::getPaperName(unsigned index) {
    impl_->load();
    return std::as_const(impl_->names)[index];
}

unsigned short CPrnHelper::getPaperId(unsigned index) {
    impl_->load();
    return std::as_const(impl_->ids)[index];
}

int CPrnHelper::findPaperName(const wchar_t* name) {
    impl_->load();
    // Documents have names in one line, device modes have the driver's own.
    const std::wstring wanted = wut::oneLine(OdString(name).text());
    const OdArray<OdString>& names = impl_->names;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (wut::compareNames(wut::oneLine(names[i].text()).c_str(), wanted.c_str()) == 0) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

int CPrnHelper::findPaperId(unsigned short id) {
    impl_->load();
    const OdArray<unsigned short>& ids = impl_->ids;
    for (std::size_t i = 0; i < ids.size(); ++i) {
        if (ids[i] == id) {
            return static_cast<int>(i);
        }
    }
    return -1;
}
