
#include <charconv>
#include <cmath>
#include <nlohmann/json.hpp>

#include <platen/utcore.h>
#include "pia/node_keys.h"

namespace {

using nlohmann::json;

constexpr const char* voidMember = "voidprop";
constexpr std::wstring_view voidName = L"voidprop";
constexpr std::wstring_view valueName = L"value";
constexpr std::size_t depthLimit = PiaLimits().depth;

template <class Integer>
bool spellsInteger(const std::string& text, Integer& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() &&
           std::to_string(number) == text;
}

class JsonBody {
public:
    explicit JsonBody(PiaReport& report) : report_(report) {}

    bool write(const PiaBlock& block, const PiaPath& path, std::size_t depth, json& object) {
        if (depth > depthLimit) {
            return report_.fail({.code = PiaCode::TooDeep, .path = path.join({})});
        }
        for (const PiaItem* item : block.items) {
            if (item->type == PiaItemType::Block) {
                json child = json::object();
                if (!write(static_cast<const PiaBlock&>(*item), {&path, item->name}, depth + 1,
                           child)) {
                    return false;
                }
                put(object, *item, path, std::move(child));
            } else if (item->type == PiaItemType::Bin) {
                putBin(object, block, static_cast<const PiaBin&>(*item), path);
            } else {
                putScalar(object, *item, path);
            }
        }
        return true;
    }

private:
    void warn(const PiaItem& item, const PiaPath& path, const wchar_t* found) {
        report_.warn({.code = PiaCode::NotReadBack, .path = path.join(item.name), .found = found});
    }

    void put(json& object, const PiaItem& item, const PiaPath& path, json value) {
        if (!object.emplace(ut::encodeUtf8(item.name), std::move(value)).second) {
            warn(item, path, L"another item of this name; it is left out");
        }
    }

    void putBin(json& object, const PiaBlock& block, const PiaBin& item, const PiaPath& path) {
        const bool stands = item.name == valueName &&
                            block.findItem(voidName, PiaItemType::Bool) == nullptr &&
                            block.findItem(valueName, PiaItemType::Str) == nullptr;
        if (stands) {
            object[voidMember] = true;
            put(object, item, path, ut::encodeUtf8(item.value.str()));
            return;
        }
        warn(item, path, L"a binary value, which reads as a block");
        put(object, item, path, {{voidMember, true}, {"value", ut::encodeUtf8(item.value.str())}});
    }

    void putScalar(json& object, const PiaItem& item, const PiaPath& path) {
        if (item.type == PiaItemType::Bool) {
            if (item.name == voidName) {
                warn(item, path, L"a reserved name; the item is not read");
            }
            put(object, item, path, static_cast<const PiaBool&>(item).value);
        } else if (item.type == PiaItemType::Num) {
            putNumber(object, static_cast<const PiaNum&>(item), path);
        } else {
            put(object, item, path, ut::encodeUtf8(static_cast<const PiaStr&>(item).value.str()));
        }
    }

    void putNumber(json& object, const PiaNum& item, const PiaPath& path) {
        const std::string text = ut::encodeUtf8(item.value.str());
        std::int64_t integer = 0;
        std::uint64_t large = 0;
        double real = 0;
        const char* end = text.data() + text.size();
        if (spellsInteger(text, integer)) {
            put(object, item, path, integer);
        } else if (spellsInteger(text, large)) {
            put(object, item, path, large);
        } else if (const auto scanned = std::from_chars(text.data(), end, real);
                   scanned.ec == std::errc() && scanned.ptr == end && std::isfinite(real)) {
            if (!(item.value == ut::formatFixed(real, 6))) {
                warn(item, path, L"a number that is read with six decimals");
            }
            put(object, item, path, real);
        } else {
            warn(item, path, L"no number; it is read as a text");
            put(object, item, path, text);
        }
    }

    PiaReport& report_;
};

}  // namespace

bool piaWriteJson(const PiaBlock& data, std::string& text, PiaReport& report) {
    json object = json::object();
    if (!JsonBody(report).write(data, {}, 0, object)) {
        return false;
    }
    text = json{{"data", std::move(object)}}.dump(2).append("\n");
    return true;
}
