// clone_ptr<T>: an owning pointer to a polymorphic value that copies deeply.
// Records that hold properties, intervals, patterns or events keep them in a
// clone_ptr so that the record itself can be copied, compared and destroyed
// with the compiler's defaults.
//
// T must offer `std::unique_ptr<T> clone() const` and
// `bool equals(const T&) const` (same dynamic class and same value).
#pragma once

#include <memory>
#include <utility>

namespace protocol {

template <class T>
class clone_ptr {
 public:
  clone_ptr() = default;
  clone_ptr(std::nullptr_t) {}
  explicit clone_ptr(std::unique_ptr<T> p) : p_(std::move(p)) {}
  template <class U>
  clone_ptr(std::unique_ptr<U> p) : p_(std::move(p)) {}

  clone_ptr(const clone_ptr& o) : p_(o.p_ ? o.p_->clone() : nullptr) {}
  clone_ptr(clone_ptr&&) noexcept = default;
  clone_ptr& operator=(const clone_ptr& o) {
    if (this != &o) p_ = o.p_ ? o.p_->clone() : nullptr;
    return *this;
  }
  clone_ptr& operator=(clone_ptr&&) noexcept = default;

  T* get() const { return p_.get(); }
  T* operator->() const { return p_.get(); }
  T& operator*() const { return *p_; }
  explicit operator bool() const { return p_ != nullptr; }
  // Gives up ownership to the caller.
  std::unique_ptr<T> release() { return std::move(p_); }
  void reset(std::unique_ptr<T> p = nullptr) { p_ = std::move(p); }

  // Deep equality: both null, or both set and equal in class and value.
  friend bool operator==(const clone_ptr& a, const clone_ptr& b) {
    if (!a.p_ || !b.p_) return !a.p_ && !b.p_;
    return a.p_->equals(*b.p_);
  }

 private:
  std::unique_ptr<T> p_;
};

}  // namespace protocol
