#include <platen/oda.h>
#include <platen/utcore.h>

OdString::OdString(std::string_view bytes, OdCodePageId /*codePage*/)
    : text_(ut::decodeAnsi(bytes)) {}

bool OdString::equalsNoCase(const OdString& other) const {
    return ut::equalNoCase(text_, other.text_);
}
