#include "pia/json_reader.h"

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include <platen/utcore.h>
#include "pia/arena.h"
#include "pia/name_table.h"

namespace {

constexpr std::string_view dataMember = "data";
/// Beside a text named "value" it says that the value is binary.
constexpr std::string_view voidMember = "voidprop";
constexpr std::string_view valueMember = "value";

/// Receives the parser's events and builds the blocks as they come; the parser itself keeps one
/// bit for each open object.
class JsonTree final : public nlohmann::json_sax<nlohmann::json> {
public:
    JsonTree(std::uint64_t textOffset, const PiaLimits& limits, PiaTree& tree, PiaReport& report)
        : textOffset_(textOffset),
          limits_(limits),
          tree_(tree),
          report_(report),
          names_(tree.arena()) {}

    bool foundData() const { return foundData_; }

    bool null() override { return skip(); }
    bool binary(binary_t&) override { return skip(); }

    bool boolean(bool flag) override {
        if (!inBlock()) {
            return true;
        }
        if (key_ == voidMember) {
            levels_.back().isVoid = flag;
            return true;
        }
        return mayAdd(tree_.arena().make<PiaBool>(internKey(), flag));
    }

    bool number_integer(number_integer_t number) override {
        return addNumber(std::to_wstring(number));
    }

    bool number_unsigned(number_unsigned_t number) override {
        return addNumber(std::to_wstring(number));
    }

    bool number_float(number_float_t number, const string_t& text) override {
        if (text.find_first_of(".eE") == string_t::npos) {
            return fail(PiaCode::JsonNumberRange, text);
        }
        return addNumber(ut::formatFixed(number, 6));
    }

    bool string(string_t& text) override {
        if (!inBlock()) {
            return true;
        }
        std::wstring value;
        if (!ut::decodeUtf8(text, value)) {
            return fail(PiaCode::JsonSyntax, text);
        }
        Level& level = levels_.back();
        if (key_ == valueMember) {
            if (level.value) {
                return fail(PiaCode::Duplicate, {});
            }
            // Whether it is binary shows at the end of the object only.
            level.value = std::move(value);
            return true;
        }
        return add<PiaStr>(value);
    }

    bool start_object(std::size_t) override {
        Level level;
        if (levels_.empty()) {
            level.isTop = true;
        } else if (levels_.back().isTop && key_ == dataMember) {
            if (foundData_) {
                return fail(PiaCode::Duplicate, {});
            }
            foundData_ = true;
            level.block = &tree_.root();
        } else if (inBlock()) {
            PiaBlock* block = tree_.arena().makeBlock(internKey());
            if (!mayAdd(block)) {
                return false;
            }
            level.block = block;
        }
        return enter(std::move(level));
    }

    bool key(string_t& name) override {
        key_ = std::move(name);
        name.clear();
        return true;
    }

    bool end_object() override {
        Level& level = levels_.back();
        if (level.block != nullptr) {
            if (level.value) {
                key_ = valueMember;
                std::wstring value = std::move(*level.value);
                if (level.isVoid ? !add<PiaBin>(value) : !add<PiaStr>(value)) {
                    return false;
                }
            }
            level.block->sortItems();
        }
        levels_.pop_back();
        return true;
    }

    bool start_array(std::size_t) override { return skip() && enter({}); }

    bool end_array() override {
        levels_.pop_back();
        return true;
    }

    bool parse_error(std::size_t position, const std::string& token,
                     const nlohmann::detail::exception&) override {
        return report_.fail({.code = PiaCode::JsonSyntax,
                             .offset = textOffset_ + position,
                             .path = path(),
                             .found = ut::decodePath(token)});
    }

private:
    struct Level {
        /// Null in what is not converted.
        PiaBlock* block = nullptr;
        bool isTop = false;
        bool isVoid = false;
        std::optional<std::wstring> value;
    };

    bool inBlock() const { return !levels_.empty() && levels_.back().block != nullptr; }

    bool enter(Level level) {
        // The top object and its "data" are no levels of the tree.
        if (levels_.size() > limits_.depth + 1) {
            return fail(PiaCode::TooDeep, {});
        }
        levels_.push_back(std::move(level));
        return true;
    }

    bool skip() {
        if (inBlock()) {
            report_.warn({.code = PiaCode::JsonMemberSkipped, .path = path()});
        }
        return true;
    }

    bool addNumber(const std::wstring& text) { return !inBlock() || add<PiaNum>(text); }

    template <class Item>
    bool add(std::wstring_view text) {
        return mayAdd(tree_.arena().makeCopying<Item>(internKey(), text));
    }

    PiaKey internKey() {
        if (ut::isAscii(key_)) {
            return names_.intern(std::string_view(key_));
        }
        std::wstring wide;
        if (!ut::decodeUtf8(key_, wide)) {
            wide = ut::decodePath(key_);
        }
        return names_.intern(std::wstring_view(wide));
    }

    /// Adds an item of the arena, which keeps what is refused. A name may stand once in an object,
    /// whatever its type.
    bool mayAdd(PiaItem* item) {
        if (++itemCount_ > limits_.items) {
            return fail(PiaCode::TooManyItems, {});
        }
        PiaBlock& block = *levels_.back().block;
        for (const PiaItemType type :
             {PiaItemType::Block, PiaItemType::Bool, PiaItemType::Str, PiaItemType::Num}) {
            if (block.findItem(item->name, type) != nullptr) {
                return fail(PiaCode::Duplicate, {});
            }
        }
        return block.addItem(item);
    }

    std::wstring path() const {
        std::wstring text;
        for (const Level& level : levels_) {
            if (level.block != nullptr && !level.block->name.empty()) {
                text.append(level.block->name.view()).append(L"/");
            }
        }
        return text.append(ut::decodePath(key_));
    }

    bool fail(PiaCode code, std::string_view found) {
        return report_.fail({.code = code, .path = path(), .found = ut::decodePath(found)});
    }

    const std::uint64_t textOffset_;
    const PiaLimits limits_;
    PiaTree& tree_;
    PiaReport& report_;
    PiaNameTable names_;
    std::string key_;
    std::vector<Level> levels_;
    std::size_t itemCount_ = 0;
    bool foundData_ = false;
};

}  // namespace

bool piaReadJson(std::string_view text, const PiaLimits& limits, PiaTree& tree, PiaReport& report) {
    const std::size_t start = text.find('{');
    if (start == std::string_view::npos) {
        return report.fail({.code = PiaCode::JsonMissing});
    }
    JsonTree events(start, limits, tree, report);
    if (!nlohmann::json::sax_parse(text.substr(start), &events)) {
        return report.fail({.code = PiaCode::JsonSyntax});
    }
    return events.foundData() || report.fail({.code = PiaCode::JsonNoData});
}
