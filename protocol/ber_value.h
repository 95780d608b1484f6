// The value classes of the BER coding: the abstract BerValue and its two
// families, primitive (content bytes) and constructed (elements).
//
// A reader (see ber_reader.h) drives them: it reads a tag and a length, asks
// a constructed value for the value object of each element by its index and
// tag, feeds a primitive's content through reserve() and append(), and calls
// readDone() when a value's content is complete. write() produces the whole
// encoding, tag and length included. All faults of input raise EBer; after a
// fault nothing of the value under construction is valid.
//
// Values are not thread-safe; each is used by one thread at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <typeinfo>
#include <vector>

#include "base/error.h"
#include "protocol/ber_tags.h"

namespace protocol {

// Any fault of BER input: a bad tag, length or content, a bound exceeded.
class EBer : public error::EParseError {
  using EParseError::EParseError;
};

// Where write() puts its bytes.
class BerOutput {
 public:
  virtual ~BerOutput() = default;
  virtual void put(const uint8_t* bytes, size_t n) = 0;
};

// An output that collects the bytes in memory.
class BerBuffer : public BerOutput {
 public:
  void put(const uint8_t* bytes, size_t n) override {
    bytes_.insert(bytes_.end(), bytes, bytes + n);
  }
  const std::vector<uint8_t>& bytes() const { return bytes_; }

 private:
  std::vector<uint8_t> bytes_;
};

class BerValue {
 public:
  virtual ~BerValue() = default;

  // A deep copy; a copy always owns its native value.
  virtual std::unique_ptr<BerValue> clone() const = 0;
  // The value's tag in the given generation.
  virtual uint32_t tag(bool legacy) const = 0;
  // Called by the reader when the whole content has been read; a primitive
  // decodes its bytes here and checks its range. Raises EBer.
  virtual void readDone() = 0;
  // Equality and order. Values of different classes are never equal; they
  // order by their current tag (then by class), so that lists of choice
  // alternatives have a stable order.
  virtual bool operator==(const BerValue& other) const { return compare(other) == 0; }
  virtual bool operator<(const BerValue& other) const { return compare(other) < 0; }
  virtual bool operator>(const BerValue& other) const { return compare(other) > 0; }
  // Writes the value with tag and length. A value out of its bounds raises
  // EBer; a missing element is a fatal assertion.
  virtual void write(BerOutput& out, bool legacy) const = 0;

  // Three-way comparison behind the operators: < 0, 0 or > 0.
  virtual int compare(const BerValue& other) const = 0;
  // The words for this value's tag in "Tag mismatch" texts.
  virtual std::string tag_name(bool legacy) const { return tag_words(tag(legacy)); }
  // The order of values of different classes (see above).
  int compare_classes(const BerValue& other) const;
};

// `other` as `self`'s own class, or null when the classes differ.
template <class C>
const C* same_class(const C& self, const BerValue& other) {
  return typeid(self) == typeid(other) ? static_cast<const C*>(&other) : nullptr;
}

class BerPrimitive : public BerValue {
 public:
  // Announces the content length; raises EBer when it exceeds the class's
  // maximum, so that no peer makes us allocate more than a field's bound.
  virtual void reserve(size_t length) = 0;
  // Takes the next piece of content; the pieces never exceed the announced
  // length (raises EBer if they do).
  virtual void append(const uint8_t* bytes, size_t n) = 0;
};

// Keeps the temporary value object that a constructed value gives out for an
// element (a field wrapper, a skipper) alive until the next element.
class ElementSlot {
 public:
  BerValue* keep(std::unique_ptr<BerValue> value) {
    value_ = std::move(value);
    return value_.get();
  }

 private:
  std::unique_ptr<BerValue> value_;
};

class BerConstructed : public BerValue {
 public:
  BerConstructed() = default;
  // A copy takes the elements (in the derived class), not the reading state.
  BerConstructed(const BerConstructed&) : BerValue() {}
  BerConstructed& operator=(const BerConstructed&) { return *this; }

  // The value object to fill for element number `index` that came with
  // `tag`. Raises EBer "Tag mismatch, ..." when the tag is not the one that
  // element must have; past the known elements gives a skipper. The result
  // belongs to this value and stays valid until the next element() call.
  virtual BerValue* element(uint32_t index, uint32_t tag, bool legacy) = 0;
  // How many leading elements a reader must have seen.
  virtual uint32_t required_elements() const = 0;
  // True for lists and sets, whose number of elements is free.
  virtual bool open_ended() const = 0;

  void readDone() override {}
  // index + 1 of the last element() call: the number of elements seen.
  uint32_t elements_seen() const { return seen_; }

 protected:
  void note_element(uint32_t index) { seen_ = index + 1; }
  // A skipper for an unknown element with that tag, kept in the slot.
  BerValue* skip(uint32_t tag);
  ElementSlot& slot() { return slot_; }

 private:
  ElementSlot slot_;
  uint32_t seen_ = 0;
};

// Raises EBer "Tag mismatch, got <tag> expected <words>".
[[noreturn]] void tag_mismatch(uint32_t got, const std::string& expected);

}  // namespace protocol
