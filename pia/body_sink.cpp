#include <array>
#include <charconv>
#include <cmath>
#include <deque>
#include <string>
#include <string_view>

#include <platen/utcore.h>
#include "pia/body_writer.h"
#include "pia/file_body.h"

using pia_body::FileBody;
using pia_body::Name;

class PiaBodySink::State {
public:
    State(std::string& body, PiaReport& report) : file_(body, report) {
        levels_.emplace_back(*this, 0);
    }

    PiaSink& root() { return levels_.front(); }

    bool finish() {
        closeDownTo(0);
        file_.finish();
        return !failed_;
    }

private:
    /// The sink of the open block at one depth.
    class Level final : public PiaSink {
    public:
        Level(State& state, std::size_t depth) : state_(state), depth_(depth) {}

        using PiaSink::addBlock;
        using PiaSink::addDouble;
        using PiaSink::addString;

        bool addString(PiaKey key, std::wstring_view text) override {
            return add(kept(key), PiaItemType::Str, text);
        }
        bool addBool(PiaKey key, bool flag) override {
            return addFormatted(kept(key), PiaItemType::Bool, flag ? "TRUE" : "FALSE");
        }
        bool addBin(PiaKey key, std::wstring_view text) override {
            return add(kept(key), PiaItemType::Bin, text);
        }
        bool addNumber(PiaKey key, std::wstring_view text) override {
            return add(kept(key), PiaItemType::Num, text);
        }
        bool addInt(PiaKey key, int number) override {
            std::array<char, 12> digits{};
            const char* end =
                std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
            return addFormatted(kept(key), PiaItemType::Num, {digits.data(), end});
        }
        bool addDouble(PiaKey key, double number, int precision) override {
            return addNumber(kept(key), number, precision);
        }
        PiaSink* addBlock(PiaKey key) override { return state_.open(depth_, kept(key)); }

    private:
        static Name kept(PiaKey key) { return {key.text(), true}; }

        template <class Char>
        bool add(const Name& name, PiaItemType type, std::basic_string_view<Char> value) {
            return state_.add(depth_, name, type, value);
        }
        bool addFormatted(const Name& name, PiaItemType type, std::string_view value) {
            return state_.addFormatted(depth_, name, type, value);
        }
        bool addNumber(const Name& name, double number, int precision) {
            return std::isfinite(number) ? addFormatted(name, PiaItemType::Num,
                                                        ut::formatFixedAscii(number, precision))
                                         : state_.refuse(depth_, name, number);
        }
        bool addStringNamed(std::wstring_view itemName, std::wstring_view text) override {
            return add({itemName, false}, PiaItemType::Str, text);
        }
        bool addDoubleNamed(std::wstring_view itemName, double number, int precision) override {
            return addNumber({itemName, false}, number, precision);
        }
        PiaSink* addBlockNamed(std::wstring_view itemName) override {
            return state_.open(depth_, {itemName, false});
        }

        State& state_;
        std::size_t depth_;
    };

    template <class Char>
    bool add(std::size_t depth, const Name& name, PiaItemType type,
             std::basic_string_view<Char> value) {
        closeDownTo(depth);
        failed_ = failed_ || !file_.add(name, type, value);
        return !failed_;
    }

    bool addFormatted(std::size_t depth, const Name& name, PiaItemType type,
                      std::string_view value) {
        closeDownTo(depth);
        failed_ = failed_ || !file_.addFormatted(name, type, value);
        return !failed_;
    }

    /// A number that no reader takes: writing it would make the document unreadable.
    bool refuse(std::size_t depth, const Name& name, double number) {
        closeDownTo(depth);
        failed_ = true;
        return file_.refuse(name, number);
    }

    PiaSink* open(std::size_t depth, const Name& name) {
        closeDownTo(depth);
        failed_ = failed_ || !file_.open(name);
        if (failed_) {
            return nullptr;
        }
        if (levels_.size() == file_.depth()) {
            levels_.emplace_back(*this, file_.depth());
        }
        return &levels_[file_.depth()];
    }

    void closeDownTo(std::size_t depth) {
        while (file_.depth() > depth) {
            file_.close();
        }
    }

    FileBody file_;
    /// Sinks by depth; a deque does not move them.
    std::deque<Level> levels_;
    bool failed_ = false;
};

PiaBodySink::PiaBodySink(std::string& body, PiaReport& report)
    : state_(std::make_unique<State>(body, report)) {}
PiaBodySink::~PiaBodySink() = default;
PiaSink& PiaBodySink::root() { return state_->root(); }
bool PiaBodySink::finish() { return state_->finish(); }
