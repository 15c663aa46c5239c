#include <charconv>
#include <cmath>
#include <nlohmann/json.hpp>
#include <utility>
#include <vector>

#include <platen/pia.h>
#include <platen/utcore.h>

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

    bool write(const PiaBlock& data, json& object) {
        std::vector<json> open;
        open.push_back(json::object());
        for (PiaWalk walk(data); walk.next();) {
            const PiaItem& item = walk.item();
            if (walk.isEnd()) {
                json child = std::move(open.back());
                open.pop_back();
                put(open.back(), walk, std::move(child));
            } else if (item.type != PiaItemType::Block) {
                putValue(open.back(), walk);
            } else if (walk.depth() == depthLimit) {
                return report_.fail({.code = PiaCode::TooDeep, .path = walk.path()});
            } else {
                open.push_back(json::object());
            }
        }
        object = std::move(open.front());
        return true;
    }

private:
    void warn(const PiaWalk& at, const wchar_t* found) {
        report_.warn({.code = PiaCode::NotReadBack, .path = at.path(), .found = found});
    }

    void put(json& object, const PiaWalk& at, json value) {
        if (!object.emplace(ut::encodeUtf8(at.item().name), std::move(value)).second) {
            warn(at, L"another item of this name; it is left out");
        }
    }

    void putBin(json& object, const PiaWalk& at) {
        const PiaBlock& block = at.parent();
        json value = textOf(at.item());
        const bool stands = at.item().name == valueName &&
                            block.findItem(voidName, PiaItemType::Bool) == nullptr &&
                            block.findItem(valueName, PiaItemType::Str) == nullptr;
        if (stands) {
            object[voidMember] = true;
            put(object, at, std::move(value));
            return;
        }
        warn(at, L"a binary value, which reads as a block");
        put(object, at, {{voidMember, true}, {"value", std::move(value)}});
    }

    void putValue(json& object, const PiaWalk& at) {
        const PiaItem& item = at.item();
        if (item.type == PiaItemType::Bool) {
            if (item.name == voidName) {
                warn(at, L"a reserved name; the item is not read");
            }
            put(object, at, static_cast<const PiaBool&>(item).value);
        } else if (item.type == PiaItemType::Num) {
            putNumber(object, at);
        } else if (item.type == PiaItemType::Bin) {
            putBin(object, at);
        } else {
            put(object, at, textOf(item));
        }
    }

    static std::string textOf(const PiaItem& item) {
        return ut::encodeUtf8(static_cast<const PiaTextItem&>(item).value.str());
    }

    void putNumber(json& object, const PiaWalk& at) {
        const std::string text = textOf(at.item());
        std::int64_t integer = 0;
        std::uint64_t large = 0;
        double real = 0;
        const char* end = text.data() + text.size();
        if (spellsInteger(text, integer)) {
            put(object, at, integer);
        } else if (spellsInteger(text, large)) {
            put(object, at, large);
        } else if (const auto scanned = std::from_chars(text.data(), end, real);
                   scanned.ec == std::errc() && scanned.ptr == end && std::isfinite(real)) {
            if (text != ut::formatFixedAscii(real, 6)) {
                warn(at, L"a number that is read with six decimals");
            }
            put(object, at, real);
        } else {
            warn(at, L"no number; it is read as a text");
            put(object, at, text);
        }
    }

    PiaReport& report_;
};

}  // namespace

bool piaWriteJson(const PiaBlock& data, std::string& text, PiaReport& report) {
    json object = json::object();
    if (!JsonBody(report).write(data, object)) {
        return false;
    }
    text = json{{"data", std::move(object)}}.dump(2).append("\n");
    return true;
}
