// Payload records of the object database's events (namespace dbms), each
// with its fields once, in stream order. Stream form, printing, copy and
// equality come from the field list (see protocol/record.h).
#pragma once

#include <cstdint>
#include <list>
#include <vector>

#include "tql/detail.h"
#include "tql/id.h"
#include "tql/patch.h"
#include "tql/pattern.h"
#include "tql/property.h"

namespace dbms {

// Event 79 TQL_SELECT. The bit of value 1 in `flags` makes it a
// subscription.
struct Tql_Select_Data {
  std::list<tql::id_t> root_ids;
  tql::pattern_t pattern;
  int32_t flags = 0;
  int64_t min_eval_interval = 15;

  template <class Self, class V>
  static void visit(Self& s, V& v) {
    v("root_ids", s.root_ids);
    v("pattern", s.pattern);
    v("flags", s.flags);
    v("min_eval_interval", s.min_eval_interval);
  }
  bool operator==(const Tql_Select_Data&) const = default;
};

// Event 80 RETURN_TQL_SELECT.
struct Return_Tql_Select_Data {
  int32_t status = 0;
  tql::details_t details;
  std::vector<tql::patch_t> res;

  template <class Self, class V>
  static void visit(Self& s, V& v) {
    v("status", s.status);
    v("details", s.details);
    v("res", s.res);
  }
  bool operator==(const Return_Tql_Select_Data&) const = default;
};

// Event 81 RETURN_TQL_SELECT_PATCH.
struct Return_Tql_Select_Patch_Data {
  tql::id_t id;
  tql::patch_t patch;
  tql::version_t seq;

  template <class Self, class V>
  static void visit(Self& s, V& v) {
    v("id", s.id);
    v("patch", s.patch);
    v("seq", s.seq);
  }
  bool operator==(const Return_Tql_Select_Patch_Data&) const = default;
};

// Event 82 RETURN_TQL_SELECT_DELETE_PATCH.
struct Return_Tql_Select_Delete_Patch_Data {
  tql::id_t id;
  tql::version_t seq;

  template <class Self, class V>
  static void visit(Self& s, V& v) {
    v("id", s.id);
    v("seq", s.seq);
  }
  bool operator==(const Return_Tql_Select_Delete_Patch_Data&) const = default;
};

// Event 83 TQL_CREATE.
struct Tql_Create_Data {
  tql::id_t parent_id;
  tql::id_t new_id;
  int32_t class_ = 0;
  std::vector<tql::property_ptr> properties;
  int32_t flags = 0;
  tql::id_t user_id;

  template <class Self, class V>
  static void visit(Self& s, V& v) {
    v("parent_id", s.parent_id);
    v("new_id", s.new_id);
    v("class_", s.class_);
    v("properties", s.properties);
    v("flags", s.flags);
    v("user_id", s.user_id);
  }
  bool operator==(const Tql_Create_Data&) const = default;
};

// Event 84 RETURN_TQL_CREATE.
struct Return_Tql_Create_Data {
  tql::id_t new_id;
  tql::version_t new_version;
  int32_t status = 0;
  tql::details_t details;

  template <class Self, class V>
  static void visit(Self& s, V& v) {
    v("new_id", s.new_id);
    v("new_version", s.new_version);
    v("status", s.status);
    v("details", s.details);
  }
  bool operator==(const Return_Tql_Create_Data&) const = default;
};

// Event 85 TQL_UPDATE.
struct Tql_Update_Data {
  tql::id_t id;
  tql::version_t version;
  std::vector<tql::property_ptr> properties;
  int32_t flags = 0;
  tql::id_t user_id;

  template <class Self, class V>
  static void visit(Self& s, V& v) {
    v("id", s.id);
    v("version", s.version);
    v("properties", s.properties);
    v("flags", s.flags);
    v("user_id", s.user_id);
  }
  bool operator==(const Tql_Update_Data&) const = default;
};

// Event 86 RETURN_TQL_UPDATE.
struct Return_Tql_Update_Data {
  int32_t status = 0;
  tql::version_t new_version;
  tql::details_t details;

  template <class Self, class V>
  static void visit(Self& s, V& v) {
    v("status", s.status);
    v("new_version", s.new_version);
    v("details", s.details);
  }
  bool operator==(const Return_Tql_Update_Data&) const = default;
};

// Event 87 TQL_DELETE.
struct Tql_Delete_Data {
  tql::id_t id;
  tql::version_t version;
  tql::id_t user_id;
  bool clear_master_id = false;

  template <class Self, class V>
  static void visit(Self& s, V& v) {
    v("id", s.id);
    v("version", s.version);
    v("user_id", s.user_id);
    v("clear_master_id", s.clear_master_id);
  }
  bool operator==(const Tql_Delete_Data&) const = default;
};

// A reply that has only a status and its details: event 88 and the time-
// series replies 98, 100, 104, 106, 108.
struct Status_Reply_Data {
  int32_t status = 0;
  tql::details_t details;

  template <class Self, class V>
  static void visit(Self& s, V& v) {
    v("status", s.status);
    v("details", s.details);
  }
  bool operator==(const Status_Reply_Data&) const = default;
};
using Return_Tql_Delete_Data = Status_Reply_Data;

// Event 109 TQL_ACKNOWLEDGE.
struct Tql_Acknowledge_Data {
  uint32_t req_id_to_ack = 0;

  template <class Self, class V>
  static void visit(Self& s, V& v) {
    v("req_id_to_ack", s.req_id_to_ack);
  }
  bool operator==(const Tql_Acknowledge_Data&) const = default;
};

// Event 110 TQL_FORGET.
struct Tql_Forget_Data {
  uint32_t req_id_to_forget = 0;

  template <class Self, class V>
  static void visit(Self& s, V& v) {
    v("req_id_to_forget", s.req_id_to_forget);
  }
  bool operator==(const Tql_Forget_Data&) const = default;
};

// Event 111 RETURN_TQL_FORGET.
struct Return_Tql_Forget_Data {
  uint32_t forgotten_req_id = 0;
  int32_t status = 0;
  tql::details_t details;

  template <class Self, class V>
  static void visit(Self& s, V& v) {
    v("forgotten_req_id", s.forgotten_req_id);
    v("status", s.status);
    v("details", s.details);
  }
  bool operator==(const Return_Tql_Forget_Data&) const = default;
};

}  // namespace dbms
