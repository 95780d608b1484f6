// Events: the typed messages between this process and its siblings.
//
// queues::event is the header (type, destination, request number, exception
// mark); devent<Id, T> adds the payload record of type T for event type Id;
// exevent is a peer's failure reply with its error text. The fdio form of
// an event and the reader table are in event_io.h.
#pragma once

#include <cstdint>
#include <memory>
#include <ostream>
#include <string>
#include <type_traits>

#include "protocol/fdio.h"
#include "protocol/print.h"
#include "protocol/queue.h"
#include "protocol/record.h"
#include "queues/event_type.h"

namespace queues {

class event {
 public:
  int32_t type_index;              // The event type, 1 to 195.
  queue_t dest = none;             // Where it goes; on a read event: where it came from.
  uint32_t inresponse = 0;         // The request number; 0 outside an exchange.
  bool exception = false;          // Set only on an exevent.

  virtual ~event() = default;
  // A deep copy, owned by the caller.
  virtual std::unique_ptr<event> clone() const = 0;
  // Writes the record in fdio form; nothing when `exception` is set.
  virtual void write_payload(protocol::ioprim& io) const = 0;
  // Prints the record, one field a line at `indent`.
  virtual void print_payload(std::ostream& os, int indent) const = 0;
  // Reads the record in fdio form (see write_payload).
  virtual void read_payload(protocol::ioprim& io) = 0;
  // Same header, same class and equal record.
  virtual bool equals(const event& other) const = 0;

 protected:
  explicit event(int32_t type) : type_index(type) {}
  event(const event&) = default;
  event& operator=(const event&) = default;
  bool same_header(const event& o) const {
    return type_index == o.type_index && dest == o.dest && inresponse == o.inresponse &&
           exception == o.exception;
  }
};

using event_ptr = protocol::clone_ptr<event>;

// Event type `Id` with a record of type T held by value. A type without
// data uses T = int: one 32-bit integer, normally 0, printed as "value: N".
template <int32_t Id, class T>
class devent final : public event {
 public:
  static constexpr int32_t kType = Id;
  using record_type = T;

  T data{};

  devent() : event(Id) {}
  devent(queue_t to, uint32_t request, T record) : event(Id), data(std::move(record)) {
    dest = to;
    inresponse = request;
  }

  std::unique_ptr<event> clone() const override { return std::make_unique<devent>(*this); }
  void write_payload(protocol::ioprim& io) const override {
    if (!exception) io << data;
  }
  void read_payload(protocol::ioprim& io) override { io >> data; }
  void print_payload(std::ostream& os, int indent) const override {
    if constexpr (protocol::Record<T>) {
      protocol::print(os, data, indent);
    } else {
      protocol::print_indent(os, indent);
      os << "value: " << data << "\n";
    }
  }
  bool equals(const event& other) const override {
    const auto* o = dynamic_cast<const devent*>(&other);
    return o != nullptr && same_header(*o) && data == o->data;
  }
};

// A peer's failure reply (type 195, MESSAGE_EXCEPTION): the error text.
class exevent final : public event {
 public:
  std::string text;

  exevent() : event(MESSAGE_EXCEPTION) { exception = true; }
  exevent(queue_t to, uint32_t request, std::string error_text);

  std::unique_ptr<event> clone() const override { return std::make_unique<exevent>(*this); }
  // The text in fdio form, after the header.
  void write_payload(protocol::ioprim& io) const override { io << text; }
  void read_payload(protocol::ioprim& io) override { io >> text; }
  // "Exception: " and the text.
  void print_payload(std::ostream& os, int indent) const override;
  bool equals(const event& other) const override;
};

// The printed form, for debug logs: the type's name and " {", then two
// blanks deeper "dest: " with the queue's name, "inresponse: " with the
// number and the record's fields, then "}" at `indent` and a line end.
void print(std::ostream& os, const event& e, int indent = 0);
std::string printed(const event& e);
// The same as a value inside a record: from the current position, without
// the first indent and the last line end.
void print_value(std::ostream& os, const event& e, int indent);

}  // namespace queues
