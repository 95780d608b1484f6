#include "queues/event.h"

#include <sstream>

#include "queues/event_names.h"

namespace queues {

exevent::exevent(queue_t to, uint32_t request, std::string error_text)
    : exevent() {
  dest = to;
  inresponse = request;
  text = std::move(error_text);
}

void exevent::print_payload(std::ostream& os, int indent) const {
  protocol::print_indent(os, indent);
  os << "Exception: " << text << "\n";
}

bool exevent::equals(const event& other) const {
  const auto* o = dynamic_cast<const exevent*>(&other);
  return o != nullptr && same_header(*o) && text == o->text;
}

void print(std::ostream& os, const event& e, int indent) {
  protocol::print_indent(os, indent);
  print_value(os, e, indent);
  os << "\n";
}

void print_value(std::ostream& os, const event& e, int indent) {
  os << event_name(e.type_index) << " {\n";
  protocol::print_indent(os, indent + 2);
  os << "dest: " << queue_name(e.dest) << "\n";
  protocol::print_indent(os, indent + 2);
  os << "inresponse: " << e.inresponse << "\n";
  e.print_payload(os, indent + 2);
  protocol::print_indent(os, indent);
  os << "}";
}

std::string printed(const event& e) {
  std::ostringstream os;
  print(os, e);
  return os.str();
}

}  // namespace queues
