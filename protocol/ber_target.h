// Ownership helpers of the value classes.
//
// Target<T>: the native value that a value object reads into and writes from.
// Either the value object owns it (`owned`, the default) or it points to a
// field of a bigger object that the caller keeps alive. A copy always owns a
// copy of the value, so clone() is a deep copy.
//
// Owned<T>: an owning pointer that copies deeply (by clone()), used for the
// pointer fields and list elements of the catalogue types.
#pragma once

#include <memory>
#include <utility>

namespace protocol {

template <class T>
class Target {
 public:
  Target() : target_(&own_) {}
  explicit Target(T* target) : target_(target), owned_(false) {}
  explicit Target(T value) : own_(std::move(value)), target_(&own_) {}
  Target(const Target& other) : own_(*other.target_), target_(&own_) {}
  Target& operator=(const Target&) = delete;

  bool owned() const { return owned_; }
  T& value() { return *target_; }
  const T& value() const { return *target_; }

 private:
  T own_{};
  T* target_;
  bool owned_ = true;
};

template <class T>
class Owned {
 public:
  Owned() = default;
  explicit Owned(std::unique_ptr<T> p) : p_(std::move(p)) {}
  template <class U>
  Owned(std::unique_ptr<U> p) : p_(std::move(p)) {}
  Owned(const Owned& other) : p_(other.p_ ? copy(*other.p_) : nullptr) {}
  Owned(Owned&&) noexcept = default;
  Owned& operator=(Owned other) noexcept {
    p_ = std::move(other.p_);
    return *this;
  }

  T* get() const { return p_.get(); }
  T* operator->() const { return p_.get(); }
  T& operator*() const { return *p_; }
  explicit operator bool() const { return p_ != nullptr; }
  void reset(T* p = nullptr) { p_.reset(p); }

 private:
  static std::unique_ptr<T> copy(const T& value) {
    return std::unique_ptr<T>(static_cast<T*>(value.clone().release()));
  }
  std::unique_ptr<T> p_;
};

}  // namespace protocol
