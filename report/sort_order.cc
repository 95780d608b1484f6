#include "report/sort_order.h"

namespace report {
namespace {

bool is_digit(unsigned char c) { return c >= '0' && c <= '9'; }

size_t digit_run_end(std::string_view s, size_t pos) {
  while (pos < s.size() && is_digit(static_cast<unsigned char>(s[pos]))) ++pos;
  return pos;
}

// Lower case as tolower gives it in the C locale, which the process never
// leaves: only A to Z change, other bytes of ISO-8859-1 names stay.
std::string folded(std::string_view s) {
  std::string out(s);
  for (char& c : out) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return out;
}

}  // namespace

int natural_compare(std::string_view a, std::string_view b) {
  size_t i = 0, j = 0;
  while (i < a.size()) {
    if (j >= b.size()) return 1;
    unsigned char ca = static_cast<unsigned char>(a[i]);
    unsigned char cb = static_cast<unsigned char>(b[j]);
    if (!is_digit(ca) || !is_digit(cb)) {
      if (ca != cb) return ca < cb ? -1 : 1;
      ++i, ++j;
      continue;
    }
    size_t end_a = digit_run_end(a, i), end_b = digit_run_end(b, j);
    size_t len_a = end_a - i, len_b = end_b - j;
    if (len_a != len_b) return len_a < len_b ? -1 : 1;
    int digits = a.substr(i, len_a).compare(b.substr(j, len_b));
    if (digits != 0) return digits < 0 ? -1 : 1;
    i = end_a, j = end_b;
  }
  return j < b.size() ? -1 : 0;
}

bool order_before(std::optional<uint32_t> a, std::optional<uint32_t> b) {
  return b.has_value() && (!a.has_value() || *a < *b);
}

bool folder_before(const FolderKey& a, const FolderKey& b) {
  if (a.folder_type != b.folder_type) return a.folder_type < b.folder_type;
  int by_folded = natural_compare(folded(a.name), folded(b.name));
  if (by_folded != 0) return by_folded < 0;
  return natural_compare(a.name, b.name) < 0;
}

}  // namespace report
