#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include <platen/pia.h>
#include <platen/plotcfg.h>
#include <platen/utcore.h>
#include "plotcfg/custom_codec.h"
#include "plotcfg/property_names.h"

namespace {

constexpr PiaKey nameKey = L"name";
constexpr PiaKey valueKey = L"value";
constexpr unsigned long white = 0xFFFFFF;

template <class Map>
const typename Map::mapped_type* lookUp(const Map& map, const wchar_t* name) {
    if (name == nullptr) {
        return nullptr;
    }
    const auto entry = map.find(name);
    return entry == map.end() ? nullptr : &entry->second;
}

template <class Map>
bool copyValue(const Map& map, const wchar_t* name, typename Map::mapped_type& value) {
    const auto* stored = lookUp(map, name);
    if (stored == nullptr) {
        return false;
    }
    value = *stored;
    return true;
}

template <class Map>
bool store(Map& map, const wchar_t* name, bool create, typename Map::mapped_type value) {
    if (name == nullptr) {
        return false;
    }
    const auto entry = map.find(name);
    if (entry != map.end()) {
        entry->second = std::move(value);
        return true;
    }
    if (create) {
        map.emplace(name, std::move(value));
    }
    return create;
}

}  // namespace

bool CCustomNode::NameOrder::operator()(std::wstring_view left, std::wstring_view right) const {
    return ut::compareOrdinal(left, right) < 0;
}

bool NodeCodec<CCustomNode>::read(const PiaBlock& block, CCustomNode& node, const PiaPath& path,
                                  PiaReport& report) {
    CCustomNode fresh;
    for (const PiaItem* item : block.items) {
        if (item->type != PiaItemType::Block) {
            continue;
        }
        const auto& property = static_cast<const PiaBlock&>(*item);
        const PiaPath place{&path, property.name, property.line()};
        const auto fail = [&](std::wstring expected) {
            return report.fail({.code = PiaCode::ValueInvalid,
                                .line = node_keys::known(place.line),
                                .path = place.join({}),
                                .expected = std::move(expected)});
        };
        if (property.items.size() != 2) {
            return fail(L"a name and a value");
        }
        const PiaItem& first = *property.items[0];
        const PiaItem& second = *property.items[1];
        if (first.type != PiaItemType::Str || !ut::equalNoCase(first.name, nameKey.text())) {
            return fail(L"a text \"name\" first");
        }
        const std::wstring name = static_cast<const PiaStr&>(first).value.str();
        switch (second.type) {
            case PiaItemType::Block:
                return fail(L"a value that is no block");
            case PiaItemType::Bool:
                fresh.bools_[name] = static_cast<const PiaBool&>(second).value;
                break;
            case PiaItemType::Str:
                fresh.strings_[name] = static_cast<const PiaStr&>(second).value.str();
                break;
            case PiaItemType::Num:
                fresh.numbers_[name] = static_cast<const PiaNum&>(second).value.str();
                break;
            case PiaItemType::Bin:
                fresh.binaries_[name] = static_cast<const PiaBin&>(second).value.str();
                break;
        }
    }
    node = std::move(fresh);
    return true;
}

bool NodeCodec<CCustomNode>::write(const CCustomNode& node, PiaSink& block) {
    std::size_t number = 0;
    // Every map takes the numbers on from the one before.
    const auto writeAll = [&](const auto& map, auto addValue) {
        for (const auto& [name, value] : map) {
            PiaSink* property = block.addBlock(std::to_wstring(number++));
            if (property == nullptr || !property->addString(nameKey, name) ||
                !addValue(*property, value)) {
                return false;
            }
        }
        return true;
    };
    return writeAll(node.numbers_,
                    [](PiaSink& property, const std::wstring& text) {
                        return property.addNumber(valueKey, text);
                    }) &&
           writeAll(node.binaries_,
                    [](PiaSink& property, const std::wstring& text) {
                        return property.addBin(valueKey, text);
                    }) &&
           writeAll(node.strings_,
                    [](PiaSink& property, const std::wstring& text) {
                        return property.addString(valueKey, text);
                    }) &&
           writeAll(node.bools_,
                    [](PiaSink& property, bool flag) { return property.addBool(valueKey, flag); });
}

void NodeCodec<CCustomNode>::show(const CCustomNode& node, NodeVisitor& visitor) {
    const auto showTexts = [&](std::wstring_view kind, const auto& map) {
        visitor.begin(kind);
        for (const auto& [name, text] : map) {
            visitor.text(name, text);
        }
        visitor.end();
    };
    showTexts(L"numbers", node.numbers_);
    showTexts(L"binaries", node.binaries_);
    showTexts(L"strings", node.strings_);
    visitor.begin(L"bools");
    for (const auto& [name, flag] : node.bools_) {
        visitor.flag(name, flag);
    }
    visitor.end();
}

bool CCustomNode::init(const PiaBlock& block) { return node_keys::read(block, *this); }
bool CCustomNode::write(PiaBlock& block) const { return node_keys::write(*this, block); }

bool CCustomNode::get(bool& value, const wchar_t* name) const {
    return copyValue(bools_, name, value);
}

bool CCustomNode::get(int& value, const wchar_t* name) const {
    const std::wstring* text = lookUp(numbers_, name);
    std::int32_t number = 0;
    if (text == nullptr || !ut::scanInt(*text, number)) {
        return false;
    }
    value = number;
    return true;
}

bool CCustomNode::get(long& value, const wchar_t* name) const {
    int number = 0;
    if (!get(number, name)) {
        return false;
    }
    value = number;
    return true;
}

bool CCustomNode::get(unsigned long& value, const wchar_t* name) const {
    int number = 0;
    if (!get(number, name)) {
        return false;
    }
    // 32 bits on every system, as the format has them.
    value = static_cast<std::uint32_t>(number);
    return true;
}

bool CCustomNode::get(double& value, const wchar_t* name) const {
    const std::wstring* text = lookUp(numbers_, name);
    float number = 0;
    if (text == nullptr || !ut::scanFloat(*text, number)) {
        return false;
    }
    value = number;
    return true;
}

bool CCustomNode::getStr(std::wstring& value, const wchar_t* name) const {
    return copyValue(strings_, name, value);
}
bool CCustomNode::getBin(std::wstring& value, const wchar_t* name) const {
    return copyValue(binaries_, name, value);
}

bool CCustomNode::setNum(std::wstring text, const wchar_t* name, bool create) {
    return store(numbers_, name, create, std::move(text));
}

bool CCustomNode::set(bool value, const wchar_t* name, bool create) {
    return store(bools_, name, create, value);
}
bool CCustomNode::set(int value, const wchar_t* name, bool create) {
    return setNum(std::to_wstring(value), name, create);
}
bool CCustomNode::set(long value, const wchar_t* name, bool create) {
    return set(static_cast<int>(value), name, create);
}
bool CCustomNode::set(unsigned long value, const wchar_t* name, bool create) {
    return setNum(std::to_wstring(static_cast<std::uint32_t>(value)), name, create);
}
bool CCustomNode::set(double value, const wchar_t* name, bool create) {
    return setNum(ut::formatFixed(value, -1), name, create);
}
bool CCustomNode::setStr(const std::wstring& value, const wchar_t* name, bool create) {
    return store(strings_, name, create, value);
}
bool CCustomNode::setBin(const std::wstring& hexText, const wchar_t* name, bool create) {
    return store(binaries_, name, create, hexText);
}

OdCmColor CCustomNode::getRasterBkgColor() const {
    unsigned long packed = white;
    if (!get(packed, plot_config::rasterBackground)) {
        packed = white;
    }
    OdCmColor color;
    color.setRGB(static_cast<std::uint8_t>(packed), static_cast<std::uint8_t>(packed >> 8U),
                 static_cast<std::uint8_t>(packed >> 16U));
    return color;
}

void CCustomNode::setRasterBkgColor(const OdCmColor& color) {
    const unsigned long packed = color.red() + 256UL * color.green() + 65536UL * color.blue();
    set(packed, plot_config::rasterBackground, true);
}

bool CCustomNode::getPdfOpenInViewer() const {
    bool open = true;
    return !get(open, plot_config::viewNewFile) || open;
}

void CCustomNode::setPdfOpenInViewer(bool open) { set(open, plot_config::viewNewFile, true); }
