// A value that reads as a T and is assigned like one, and whose owner hears of every assignment.
// The owner decides what an assignment means: tell a view, raise an event, start a timer.
#pragma once

#include <algorithm>
#include <utility>

namespace kestrel {

/// Hears of every assignment to one of its properties; abstract because controls and timers answer differently.
class PropertyOwner {
  public:
    virtual ~PropertyOwner() = default;
    /// Runs after each assignment to the property at this address, before the assignment returns.
    virtual void assigned(const void* property, bool changed) = 0;
};

template <class T>
class Property {
  public:
    Property(PropertyOwner& owner, T initial) : owner_(owner), value_(std::move(initial)) {}
    Property(const Property&) = delete;
    ~Property() = default;

    Property& operator=(const T& value) {
        assign(value);
        return *this;
    }
    Property& operator=(const Property& other) {
        assign(other.value_);
        return *this;
    }
    operator const T&() const { return value_; }
    const T& get() const { return value_; }

  protected:
    void assign(const T& value) {
        const bool changed = !(value == value_);
        if (changed) value_ = value;
        owner_.assigned(this, changed);
    }

  private:
    PropertyOwner& owner_;
    T value_;
};

/// A whole number that is kept inside two other properties of the same control.
class BoundedProperty : public Property<int> {
  public:
    BoundedProperty(PropertyOwner& owner, const Property<int>& lowest, const Property<int>& highest, int initial)
        : Property(owner, initial), lowest_(lowest), highest_(highest) {}

    BoundedProperty& operator=(int value) {
        assign(std::max(lowest_.get(), std::min(value, highest_.get())));
        return *this;
    }
    BoundedProperty& operator=(const BoundedProperty& other) { return *this = other.get(); }

  private:
    const Property<int>& lowest_;
    const Property<int>& highest_;
};

}  // namespace kestrel
