// Header text that can't stand in a header as it is, written as encoded
// words ("=?UTF-8?B?...?="), which mail programs decode back to the text.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "email/header_fold.h"

namespace email {

// Whether `text` must be encoded to go into a header: it holds a byte
// outside printable ASCII (TAB aside), the opening "=?" of an encoded word,
// or a word too long to fit on a folded line.
bool needs_encoding(std::string_view text);

// `text` as a list of base64 encoded words of at most 30 bytes of text each,
// cut only between characters. The charset is UTF-8 when `text` is valid
// UTF-8, else ISO-8859-1. Words that stand next to each other decode to
// their texts run together, without the blank between them.
std::vector<std::string> encoded_words(std::string_view text);

// Writes unstructured text (a Subject, a value of an "X-" header): as its
// words when it needs no encoding, else as encoded words.
void write_unstructured(HeaderFolder& folder, std::string_view text);

// Writes a display name as it is, between double quotes when it holds more
// than letters, digits, blanks and the characters of an atom, or as encoded
// words.
void write_phrase(HeaderFolder& folder, std::string_view name);

}  // namespace email
