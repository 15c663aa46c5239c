/// Owning something that is copied with its owner.
#pragma once

#include <memory>
#include <utility>

namespace platen {

/// A `std::unique_ptr` whose copies own copies, made by `clone()` of what it holds: a class with
/// such a member needs no copy operations of its own.
template <class Value>
class ClonedPointer {
public:
    ClonedPointer() = default;  ///< Holds nothing.
    /// Takes ownership; null is fine.
    explicit ClonedPointer(std::unique_ptr<Value> value) : value_(std::move(value)) {}
    ClonedPointer(const ClonedPointer& other)
        : value_(other.value_ ? other.value_->clone() : nullptr) {}
    ClonedPointer(ClonedPointer&&) noexcept = default;
    ClonedPointer& operator=(ClonedPointer other) noexcept {
        value_ = std::move(other.value_);
        return *this;
    }
    ~ClonedPointer() = default;

    /// Null when it holds nothing.
    ///@{
    Value* get() { return value_.get(); }
    const Value* get() const { return value_.get(); }
    ///@}
    Value* operator->() { return value_.get(); }
    const Value* operator->() const { return value_.get(); }
    Value& operator*() { return *value_; }
    const Value& operator*() const { return *value_; }
    explicit operator bool() const { return value_ != nullptr; }
    /// Takes ownership of `value`, and destroys what was held.
    void reset(Value* value = nullptr) { value_.reset(value); }

private:
    std::unique_ptr<Value> value_;
};

}  // namespace platen
