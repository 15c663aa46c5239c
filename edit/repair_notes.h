/// What a repair took for granted and what it lost, as it is found out.
#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include <platen/edit_repair.h>
#include <platen/utcore.h>

namespace platen {

class RepairNotes {
public:
    /// More than `most` are counted only.
    explicit RepairNotes(std::size_t most) : most_(most) {}

    void assume(Assumption assumption) {
        constexpr std::size_t longestText = 4000;
        assumption.found = std::wstring(ut::utf16Prefix(assumption.found, longestText));
        assumption.taken = std::wstring(ut::utf16Prefix(assumption.taken, longestText));
        allSafe_ = allSafe_ && isSafe(assumption.code);
        keep(std::move(assumption), assumptions_, omittedAssumptions_);
    }
    void lose(Loss loss) {
        constexpr std::size_t longestText = 200;
        loss.text = std::wstring(ut::utf16Prefix(loss.text, longestText));
        allSafe_ = false;
        keep(std::move(loss), losses_, omittedLosses_);
    }

    /// False once assumptions are only counted, so that nobody needs to put them into words.
    bool hasRoom() const { return assumptions_.size() < most_; }

    bool empty() const { return assumptions_.empty() && losses_.empty(); }
    /// Nothing was lost, and nothing guessed.
    bool allSafe() const { return allSafe_; }

    /// Adds these to what `result` has.
    void moveTo(RepairResult& result) {
        for (Assumption& assumption : assumptions_) {
            keep(std::move(assumption), result.assumptions, result.omittedAssumptions);
        }
        for (Loss& loss : losses_) {
            keep(std::move(loss), result.losses, result.omittedLosses);
        }
        result.omittedAssumptions += omittedAssumptions_;
        result.omittedLosses += omittedLosses_;
        *this = RepairNotes(most_);
    }

private:
    template <class Note>
    void keep(Note note, std::vector<Note>& notes, std::size_t& omitted) const {
        if (notes.size() < most_) {
            notes.push_back(std::move(note));
        } else {
            ++omitted;
        }
    }

    std::size_t most_;
    std::vector<Assumption> assumptions_;
    std::vector<Loss> losses_;
    std::size_t omittedAssumptions_ = 0;
    std::size_t omittedLosses_ = 0;
    bool allSafe_ = true;
};

}  // namespace platen
