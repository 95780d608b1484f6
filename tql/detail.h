// Status lines of the database's replies.
#pragma once

#include <cstdint>
#include <list>
#include <string>

namespace tql {

// One line of a status report.
struct detail_t {
  int32_t msg_type = 0;
  std::string msg;

  template <class Self, class V>
  static void visit(Self& s, V& v) {
    v("msg_type", s.msg_type);
    v("msg", s.msg);
  }
  bool operator==(const detail_t&) const = default;
};

using details_t = std::list<detail_t>;

// The `msg` texts joined with "; ", for people.
std::string join_details(const details_t& details);

}  // namespace tql
