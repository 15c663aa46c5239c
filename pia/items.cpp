#include <platen/pia_items.h>
#include <platen/utcore.h>
#include "pia/access.h"

PiaItem::PiaItem(PiaItemType itemType, std::wstring_view itemName)
    : type(itemType), name(itemName) {}
PiaItem::~PiaItem() = default;

PiaTextItem::PiaTextItem(PiaItemType itemType, std::wstring_view itemName,
                         std::wstring_view itemValue)
    : PiaItem(itemType, itemName), value(itemValue) {}

PiaBin::PiaBin(std::wstring_view itemName, std::wstring_view itemValue)
    : PiaTextItem(PiaItemType::Bin, itemName, itemValue) {}

PiaBool::PiaBool(std::wstring_view itemName, bool itemValue)
    : PiaItem(PiaItemType::Bool, itemName), value(itemValue) {}

PiaStr::PiaStr(std::wstring_view itemName, std::wstring_view itemValue)
    : PiaTextItem(PiaItemType::Str, itemName, itemValue) {}

PiaNum::PiaNum(std::wstring_view itemName, std::wstring_view text)
    : PiaTextItem(PiaItemType::Num, itemName, text) {}
PiaNum::PiaNum(std::wstring_view itemName, double number, int precision)
    : PiaNum(itemName, ut::formatFixed(number, precision)) {}
