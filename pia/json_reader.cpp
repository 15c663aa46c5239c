#include "pia/json_reader.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include <platen/utcore.h>
#include "pia/arena.h"

namespace {

constexpr std::string_view dataMember = "data";
/// Beside a text named "value" it says that the value is binary.
constexpr std::string_view voidMember = "voidprop";
constexpr std::wstring_view valueName = L"value";

/// More of a path says no more.
constexpr std::size_t longestPath = 4096;

/// Receives the parser's events and builds the blocks as they come; the parser itself keeps one
/// bit for each open object. Of members of one name the last counts, which shows at the end of the
/// object only: until then its members wait in a list.
class JsonTree final : public nlohmann::json_sax<nlohmann::json> {
public:
    JsonTree(std::uint64_t textOffset, const PiaLimits& limits, PiaTree& tree, PiaReport& report)
        : textOffset_(textOffset),
          limits_(limits),
          tree_(tree),
          arena_(PiaAccess::arenaOf(tree)),
          report_(report) {}

    bool foundData() const { return foundData_; }

    bool null() override { return skip(); }
    bool binary(binary_t&) override { return skip(); }

    bool boolean(bool flag) override {
        if (inBlock() && key_ == voidMember) {
            return add(copyKey(), nullptr, flag);
        }
        return addValue([&](PiaKey name) { return arena_.make<PiaBool>(name, flag); });
    }

    bool number_integer(number_integer_t number) override {
        return addText<PiaNum>(std::to_wstring(number));
    }

    bool number_unsigned(number_unsigned_t number) override {
        return addText<PiaNum>(std::to_wstring(number));
    }

    bool number_float(number_float_t number, const string_t& text) override {
        if (text.find_first_of(".eE") == string_t::npos) {
            return fail(PiaCode::JsonNumberRange, text);
        }
        return addText<PiaNum>(ut::formatFixed(number, 6));
    }

    bool string(string_t& text) override {
        std::wstring value;
        if (inBlock() && !ut::decodeUtf8(text, value)) {
            return fail(PiaCode::JsonSyntax, text);
        }
        return addText<PiaStr>(value);
    }

    bool start_object(std::size_t) override {
        Level level;
        if (levels_.empty()) {
            level.isTop = true;
        } else if (inBlock()) {
            const PiaKey name = copyKey();
            level.block = arena_.makeBlock(name);
            if (!add(name, level.block)) {
                return false;
            }
        } else if (beginsData()) {
            foundData_ = true;
            level.block = &tree_.root();
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
            fill(level);
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
                             .path = path(ut::decodePath(key_)),
                             .found = ut::decodePath(token)});
    }

private:
    struct Member {
        PiaKey name;
        /// Null for what is no item.
        PiaItem* item;
        /// Of the member that says that "value" is binary.
        bool isVoid;
    };

    struct Level {
        /// Null in what is not converted.
        PiaBlock* block = nullptr;
        bool isTop = false;
        std::vector<Member> members{};
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

    /// True when the value of the "data" of the top object comes, which undoes an earlier one.
    bool beginsData() {
        if (levels_.empty() || !levels_.back().isTop || key_ != dataMember) {
            return false;
        }
        if (seenData_) {
            warnOfTwo(std::wstring(dataMember.begin(), dataMember.end()));
            PiaAccess::clear(tree_.root());
        }
        seenData_ = true;
        foundData_ = false;
        return true;
    }

    bool skip() {
        if (!inBlock()) {
            beginsData();
            return true;
        }
        report_.warn({.code = PiaCode::JsonMemberSkipped, .path = path(ut::decodePath(key_))});
        return add(copyKey(), nullptr);
    }

    template <class Make>
    bool addValue(Make make) {
        if (!inBlock()) {
            beginsData();
            return true;
        }
        const PiaKey name = copyKey();
        return add(name, make(name));
    }

    template <class Item>
    bool addText(std::wstring_view text) {
        return addValue([&](PiaKey name) { return arena_.makeCopying<Item>(name, text); });
    }

    /// Adds a member to the object.
    bool add(PiaKey name, PiaItem* item, bool isVoid = false) {
        if (++itemCount_ > limits_.items) {
            return fail(PiaCode::TooManyItems, {});
        }
        levels_.back().members.push_back({name, item, isVoid});
        return true;
    }

    PiaKey copyKey() {
        if (ut::isAscii(key_)) {
            return arena_.copyName(std::string_view(key_));
        }
        std::wstring wide;
        // The parser takes nothing else.
        static_cast<void>(ut::decodeUtf8(key_, wide));
        return arena_.copyName(std::wstring_view(wide));
    }

    /// Gives a block its members in ascending order.
    void fill(Level& level) {
        std::vector<Member>& members = level.members;
        std::stable_sort(members.begin(), members.end(),
                         [](const Member& one, const Member& other) {
                             return ut::compareOrdinal(one.name.text(), other.name.text()) < 0;
                         });
        const auto counts = [&](std::size_t index) {
            return index + 1 == members.size() ||
                   members[index].name.text() != members[index + 1].name.text();
        };
        bool valueIsBin = false;
        for (std::size_t index = 0; index < members.size(); ++index) {
            valueIsBin = valueIsBin || (members[index].isVoid && counts(index));
        }
        for (std::size_t index = 0; index < members.size(); ++index) {
            const Member& member = members[index];
            if (!counts(index)) {
                warnOfTwo(member.name.text());
            } else if (member.item != nullptr) {
                append(*level.block, member, valueIsBin);
                continue;
            }
            if (member.item != nullptr) {
                PiaAccess::destroy(member.item);
            }
        }
    }

    void append(PiaBlock& block, const Member& member, bool valueIsBin) {
        PiaItem* item = member.item;
        if (valueIsBin && item->type == PiaItemType::Str && item->name == valueName) {
            const std::wstring value = static_cast<PiaStr*>(item)->value;
            item = arena_.makeCopying<PiaBin>(member.name, std::wstring_view(value));
        }
        PiaAccess::append(block, item);
    }

    void warnOfTwo(std::wstring_view name) {
        report_.warn({.code = PiaCode::Duplicate,
                      .path = path(name),
                      .found = L"another member of this name; the last one counts"});
    }

    std::wstring path(std::wstring_view name) const {
        std::wstring text;
        for (const Level& level : levels_) {
            if (level.block != nullptr && !level.block->name.empty()) {
                text.append(level.block->name, 0, longestPath).append(L"/");
            }
            if (text.size() >= longestPath) {
                break;
            }
        }
        return text.append(name, 0, longestPath);
    }

    bool fail(PiaCode code, std::string_view found) {
        return report_.fail(
            {.code = code, .path = path(ut::decodePath(key_)), .found = ut::decodePath(found)});
    }

    const std::uint64_t textOffset_;
    const PiaLimits limits_;
    PiaTree& tree_;
    PiaArena& arena_;
    PiaReport& report_;
    std::string key_;
    std::vector<Level> levels_;
    std::size_t itemCount_ = 0;
    bool seenData_ = false;
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
