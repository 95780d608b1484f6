// The shapes of the catalogue's composite types, on which the generated
// classes stand:
//
//   Sequence<Self, Base>: fixed fields in order (messages, bodies, choice
//     alternatives). Self provides kTagCurrent, kTagLegacy, kWords,
//     write_fields(), compare_fields(), element() and required_elements().
//   ListOf<Self, Kind>: a list of elements of one field kind (ber_fields.h),
//     tagged as a SEQUENCE.
//   SetOf<Self, Kind>: a set of plain values, tagged as a SET; written in the
//     set's own (ascending) order, duplicates read once.
//
// Lists and sets either own their container or target a field of a bigger
// value (see ber_target.h). Constructed values are written with the
// indefinite length.
#pragma once

#include <list>
#include <set>
#include <string>

#include "protocol/ber_compare.h"
#include "protocol/ber_encoding.h"
#include "protocol/ber_fields.h"
#include "protocol/ber_target.h"
#include "protocol/ber_value.h"

namespace protocol {

// Clone, tag, names, comparison and write() of a composite class Self whose
// tags are Self::kTagCurrent / Self::kTagLegacy and whose words in error
// texts are Self::kWords + "_CURRENT" / "_LEGACY".
template <class Self, class Base>
class Composite : public Base {
 public:
  static constexpr uint32_t tag_of(bool legacy) {
    return legacy ? Self::kTagLegacy : Self::kTagCurrent;
  }
  static std::string words(bool legacy) {
    return std::string(Self::kWords) + (legacy ? "_LEGACY" : "_CURRENT");
  }

  std::unique_ptr<BerValue> clone() const override { return std::make_unique<Self>(self()); }
  uint32_t tag(bool legacy) const override { return tag_of(legacy); }
  std::string tag_name(bool legacy) const override { return words(legacy); }
  int compare(const BerValue& other) const override {
    const Self* o = same_class(self(), other);
    return o ? self().compare_fields(*o) : this->compare_classes(other);
  }
  void write(BerOutput& out, bool legacy) const override {
    open_constructed(out, tag(legacy));
    self().write_fields(out, legacy);
    close_constructed(out);
  }

 protected:
  const Self& self() const { return static_cast<const Self&>(*this); }
};

template <class Self, class Base = BerConstructed>
class Sequence : public Composite<Self, Base> {
 public:
  bool open_ended() const override { return false; }
};

// What lists and sets share: the container, owned or targeted, its tags,
// order and writing. Native: the standard container of Kind::native values.
template <class Self, class Kind, class Native, uint32_t Current, uint32_t Legacy>
class Container : public Composite<Self, BerConstructed> {
 public:
  using native_type = Native;
  static constexpr uint32_t kTagCurrent = Current;
  static constexpr uint32_t kTagLegacy = Legacy;

  Container() = default;
  explicit Container(native_type* target) : values_(target) {}

  native_type& values() { return values_.value(); }
  const native_type& values() const { return values_.value(); }

  uint32_t required_elements() const override { return 0; }
  bool open_ended() const override { return true; }

  void write_fields(BerOutput& out, bool legacy) const {
    for (const auto& value : values()) Kind::write(out, legacy, value, "(*it)");
  }
  int compare_fields(const Self& other) const { return compare_field(values(), other.values()); }

 private:
  Target<native_type> values_;
};

template <class Self, class Kind>
class ListOf : public Container<Self, Kind, std::list<typename Kind::native>, BE_SEQ_CURRENT,
                                BE_SEQ_LEGACY> {
 public:
  using ListOf::Container::Container;

  BerValue* element(uint32_t index, uint32_t tag, bool legacy) override {
    this->note_element(index);
    this->values().emplace_back();
    try {
      return Kind::fill(this->values().back(), tag, legacy, this->slot());
    } catch (...) {
      this->values().pop_back();  // No empty element stays behind.
      throw;
    }
  }
};

template <class Self, class Kind>
class SetOf
    : public Container<Self, Kind, std::set<typename Kind::native>, BE_SET_CURRENT, BE_SET_LEGACY> {
 public:
  using SetOf::Container::Container;

  // An element is read into a pending value and goes into the set when the
  // next element starts or the set is done.
  BerValue* element(uint32_t index, uint32_t tag, bool legacy) override {
    this->note_element(index);
    flush();
    pending_ = typename Kind::native{};
    has_pending_ = true;
    return Kind::fill(pending_, tag, legacy, this->slot());
  }
  void readDone() override { flush(); }

 private:
  void flush() {
    if (has_pending_) this->values().insert(std::move(pending_));
    has_pending_ = false;
  }

  typename Kind::native pending_{};
  bool has_pending_ = false;
};

}  // namespace protocol
