// Typed decoders: a property value into a plain C++ value.
//
// Each raises errors::tql code 9 (kIllegalType): "Null given for CLASS: "
// and the property's name for a null property, "Type mismatch for CLASS: "
// and the name for a property of another kind. A failed decode leaves the
// output unchanged.
#pragma once

#include <cstdint>
#include <string>

#include "tql/property.h"

namespace tql {

void decode_string(const property_t& p, std::string& out);
void decode_object(const property_t& p, id_t& out);
void decode_object_set(const property_t& p, object_set_t& out);
void decode_real(const property_t& p, double& out);
void decode_date(const property_t& p, int64_t& out);
void decode_uint(const property_t& p, uint32_t& out);
void decode_boolean(const property_t& p, bool& out);
void decode_blob(const property_t& p, std::string& out);

// A uint, int or real property as a double. Messages: "Null given for
// decode scalar property: " and "Type mismatch for property_uint_t,
// property_int_t or property_real_t: ".
void decode_scalar(const property_t& p, double& out);

// The `value` of an enum property of enumeration `expected`; only the low 17
// bits of the enumeration number are compared. Messages: "Null given for
// property_t: NAME", "Type mismatch for property_t: NAME [exp:E,actual:
// non-enum" and "... [exp:E,actual:A" (A: the low 17 bits it has).
void decode_enum(const property_t& p, uint32_t expected, uint32_t& out);

// `value` present and not null: its scalar decoding. Else `fallback`
// present and not null: low + (high - low) * fallback / 100, where fallback
// must be a property_real_t (else code 9, "Type mismatch for decoding
// double: " and the name). Else NaN. Either pointer may be null.
double decode_percentage(const property_t* value, const property_t* fallback, double low,
                         double high);

// A string property's value; for other kinds their text, "null" for null.
// Kinds whose text stands for no value (action, blob, lob) raise code 9
// "Type mismatch for decoding to string: " and the name.
void decode_string_or_text(const property_t& p, std::string& out);

}  // namespace tql
