// Field kinds of the catalogue types. Each kind says how a native field is
// written and which value object fills it when read:
//
//   using native = ...;   // the member's type in the generated class
//   static void write(BerOutput&, bool legacy, const native&, const char* what);
//   static BerValue* fill(native&, uint32_t tag, bool legacy, ElementSlot&);
//
// fill() raises EBer "Tag mismatch, ..." when `tag` is not the field's tag in
// that generation; the value it returns belongs to the slot or to the field.
// `what` names the field in the fatal assertion of a null pointer field
// ("this->data", "(*it)").
#pragma once

#include <cstdint>
#include <limits>
#include <list>
#include <memory>
#include <optional>
#include <string>

#include "base/fatal.h"
#include "protocol/ber_bignum.h"
#include "protocol/ber_integer.h"
#include "protocol/ber_primitives.h"
#include "protocol/ber_target.h"

namespace protocol {

// A field filled and written through a temporary value object that targets
// it; Kind::make(native*) builds that object with the field's limits.
template <class Native, class Kind>
struct WrappedField {
  using native = Native;
  static void write(BerOutput& out, bool legacy, const native& v, const char*) {
    // The value object only reads its target when it writes.
    Kind::make(const_cast<native*>(&v))->write(out, legacy);
  }
  static BerValue* fill(native& v, uint32_t tag, bool legacy, ElementSlot& slot) {
    std::unique_ptr<BerValue> value = Kind::make(&v);
    if (tag != value->tag(legacy)) tag_mismatch(tag, value->tag_name(legacy));
    return slot.keep(std::move(value));
  }
};

template <size_t Limit>
struct StringField : WrappedField<std::string, StringField<Limit>> {
  static std::unique_ptr<BerValue> make(std::string* v) {
    return std::make_unique<BerString>(v, Limit);
  }
};

template <class T, T Min = std::numeric_limits<T>::min(), T Max = std::numeric_limits<T>::max()>
struct IntField : WrappedField<T, IntField<T, Min, Max>> {
  static std::unique_ptr<BerValue> make(T* v) {
    return std::make_unique<BerIntegerTemplate<T>>(v, Min, Max);
  }
};

// E: an enumeration class (BerEnumerated).
template <class E>
struct EnumField : WrappedField<int32_t, EnumField<E>> {
  static std::unique_ptr<BerValue> make(int32_t* v) { return std::make_unique<E>(v); }
};

struct BoolField : WrappedField<bool, BoolField> {
  static std::unique_ptr<BerValue> make(bool* v) { return std::make_unique<BerBoolean>(v); }
};

struct RealField : WrappedField<double, RealField> {
  static std::unique_ptr<BerValue> make(double* v) { return std::make_unique<BerReal>(v); }
};

struct BigNumField : WrappedField<BigNum, BigNumField> {
  static std::unique_ptr<BerValue> make(BigNum* v) { return std::make_unique<BerBigNum>(v); }
};

// An unsigned 32-bit integer or NULL: BE_INTEGER or BE_NULL on the wire.
struct UintOrNullField {
  using native = std::optional<uint32_t>;
  static void write(BerOutput& out, bool legacy, const native& v, const char*);
  static BerValue* fill(native& v, uint32_t tag, bool legacy, ElementSlot& slot);
};

// A pointer to a composite value: of a fixed class T (SeqField) or of a
// choice base B whose B::make picks the class by tag (ChoiceField).
template <class T>
struct OwnedField {
  using native = Owned<T>;
  static void write(BerOutput& out, bool legacy, const native& v, const char* what) {
    TAVREL_ASSERT(v, std::string(what) + " is NULL during BER write");
    v->write(out, legacy);
  }
};

template <class T>
struct SeqField : OwnedField<T> {
  static BerValue* fill(Owned<T>& v, uint32_t tag, bool legacy, ElementSlot&) {
    if (tag != T::tag_of(legacy)) tag_mismatch(tag, T::words(legacy));
    v = Owned<T>(std::make_unique<T>());
    return v.get();
  }
};

template <class B>
struct ChoiceField : OwnedField<B> {
  static BerValue* fill(Owned<B>& v, uint32_t tag, bool legacy, ElementSlot&) {
    v = B::make(tag, legacy);
    return v.get();
  }
};

// L: a list or set class (ber_composite.h) that targets the native container.
template <class L>
struct ContainerField {
  using native = typename L::native_type;
  static void write(BerOutput& out, bool legacy, const native& v, const char*) {
    L(const_cast<native*>(&v)).write(out, legacy);
  }
  static BerValue* fill(native& v, uint32_t tag, bool legacy, ElementSlot& slot) {
    if (tag != L::tag_of(legacy)) tag_mismatch(tag, L::words(legacy));
    return slot.keep(std::make_unique<L>(&v));
  }
};

}  // namespace protocol
