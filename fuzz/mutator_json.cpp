// Inputs that are JSON text: its values change as a tree.

#include <nlohmann/json.hpp>

#include <utility>

#include "fuzz/mutation.h"

namespace {

using Json = nlohmann::ordered_json;

/// Any value of the tree.
Json& anyOf(Json& root, Mutation& mutation) {
    Json* value = &root;
    while (value->is_structured() && !value->empty() && !mutation.oneIn(4)) {
        auto next = value->begin();
        std::advance(next, mutation.below(value->size()));
        value = &*next;
    }
    return *value;
}

Json fresh(Mutation& mutation) {
    switch (mutation.below(9)) {
        case 0:
            return Json::object();
        case 1:
            return Json::object({{"voidprop", true}, {"value", mutation.value()}});
        case 2:
            return Json::array({mutation.value()});
        case 3:
            return mutation.oneIn(2);
        case 4:
            return nullptr;
        case 5:
            return static_cast<std::int64_t>(mutation.below(1U << 31U)) - (1 << 30);
        case 6:
            return static_cast<double>(mutation.below(1U << 31U)) / 1000.0 - 1e5;
        case 7:
            return mutation.oneIn(4) ? 18446744073709551615U : 9223372036854775808U;
        default:
            return mutation.value();
    }
}

}  // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t mostBytes, unsigned seed) {
    Mutation mutation(seed);
    const std::string text(reinterpret_cast<const char*>(data), size);
    Json root =
        mutation.oneIn(8) ? Json(Json::value_t::discarded) : Json::parse(text, nullptr, false);
    if (root.is_discarded()) {
        return putInput(mutation.bytes(text, mostBytes), data, mostBytes);
    }
    for (std::size_t changes = 1 + mutation.below(3); changes > 0; --changes) {
        Json& value = anyOf(root, mutation);
        switch (mutation.below(5)) {
            case 0:
                if (value.is_object() && !value.empty()) {
                    auto gone = value.begin();
                    std::advance(gone, mutation.below(value.size()));
                    value.erase(gone);
                    break;
                }
                [[fallthrough]];
            case 1:
                value = fresh(mutation);
                break;
            case 2:
                value = Json(anyOf(root, mutation));
                break;
            case 3:
                value = Json::object({{mutation.key(), Json(value)}});
                break;
            default:
                if (value.is_object()) {
                    value[mutation.key()] = fresh(mutation);
                } else {
                    value = fresh(mutation);
                }
        }
    }
    const std::string result = root.dump(mutation.oneIn(2) ? 2 : -1, ' ', mutation.oneIn(4),
                                         Json::error_handler_t::replace);
    return putInput(result.size() <= mostBytes ? result : mutation.bytes(text, mostBytes), data,
                    mostBytes);
}
