#include "protocol/print.h"

namespace protocol {

void print_indent(std::ostream& os, int indent) {
  for (int i = 0; i < indent; ++i) os << ' ';
}

void print_value(std::ostream& os, const std::string& s, int) { os << s; }

}  // namespace protocol

namespace protocol {

void print_value(std::ostream& os, const TimeValue& t, int) { os << t.text(); }

}  // namespace protocol
