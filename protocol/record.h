// The field list of a record. A record of the event payloads declares its
// fields once, in stream order, as a static function template:
//
//   struct Tql_Delete_Data {
//     tql::id_t id;
//     bool clear_master_id = false;
//     template <class Self, class Visitor>
//     static void visit(Self& self, Visitor& v) {
//       v("id", self.id);
//       v("clear_master_id", self.clear_master_id);
//     }
//     bool operator==(const Tql_Delete_Data&) const = default;
//   };
//
// The fdio reader and writer (fdio.h) and the printer (print.h) are written
// once over that list; copy and comparison are the compiler's defaults.
#pragma once

namespace protocol {

// Accepts any field and does nothing: used only to test for `visit`.
struct AnyFieldVisitor {
  template <class F>
  void operator()(const char*, F&) {}
};

template <class R>
concept Record = requires(R& r, AnyFieldVisitor& v) {
  R::visit(r, v);
};

}  // namespace protocol
