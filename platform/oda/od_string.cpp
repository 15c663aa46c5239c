#include "oda.h"
#include "utcore.h"

OdString::OdString(std::string_view bytes, OdCodePageId /*codePage*/)
    : text_(ut::decodeAnsi(bytes)) {}
