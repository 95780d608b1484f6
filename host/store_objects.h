// ObjectStore: the stand-in's object database in memory. A tree of typed
// objects below the root Domain 0.1, plus the ClusterInfo object, which has
// the empty id and no parent.
//
// Every change (create, update, delete) gives the objects it touches a new
// version: (change number, 1), with the change number counting up over the
// store's life, so no two versions of one store are ever equal. Not thread
// safe; the host serves the database from one thread.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "tql/id.h"
#include "tql/property.h"

namespace host {

struct StoredObject {
  int32_t class_ = 0;
  tql::id_t id;
  tql::version_t version;
  tql::id_t parent;                                 // Meaningless when has_parent is false.
  bool has_parent = false;                          // False for the root domain and ClusterInfo.
  int depth = 0;                                    // Levels below the root domain.
  std::map<int32_t, tql::property_ptr> properties;  // By property number; never null.
  std::vector<tql::id_t> children;                  // In creation order.
};

// The outcome of one change: a database status (0 on success) with one
// line of detail for people, and the id and version the object now has.
struct ChangeResult {
  int32_t status = 0;
  std::string detail;
  tql::id_t id;
  tql::version_t version;
};

// The deepest level below the root domain that an object may have, so that
// the recursive walks (select, delete, dump) stay well within the stack.
inline constexpr int kMaxDepth = 256;

// Database statuses that the store gives besides 0 (see tql/errors.h).
inline constexpr int32_t kStatusNotFound = 1;
inline constexpr int32_t kStatusVersion = 3;
inline constexpr int32_t kStatusDuplicate = 4;
inline constexpr int32_t kStatusClassNotAllowed = 5;
inline constexpr int32_t kStatusAccessDenied = 15;

class ObjectStore {
 public:
  // A store with the root Domain 0.1 and the ClusterInfo object (empty id).
  ObjectStore();
  ObjectStore(const ObjectStore&) = delete;
  ObjectStore& operator=(const ObjectStore&) = delete;

  // The object, or null. The pointer lives until the next change.
  const StoredObject* find(const tql::id_t& id) const;

  // Creates an object of `class_` as the last child of `parent`. `wanted_id`
  // empty: the store picks "0.1.N", N counting up from 1 and never reused.
  // Statuses: 1 parent missing, 5 class not in the catalogue or a parent at
  // kMaxDepth, 4 `wanted_id` in use or a ReportInstance whose `order`
  // equals a sibling's.
  // `properties` must hold no null pointers (the caller checks requests).
  ChangeResult create(const tql::id_t& parent, int32_t class_,
                      std::vector<tql::property_ptr> properties, const tql::id_t& wanted_id = {});
  // Sets the given properties (adding or replacing) when `version` is the
  // stored one. Statuses: 1 missing, 3 other version, 4 ReportInstance
  // `order` clash.
  ChangeResult update(const tql::id_t& id, const tql::version_t& version,
                      std::vector<tql::property_ptr> properties);
  // Removes the object and its subtree when `version` is the stored one, and
  // appends the removed ids to `removed`. Statuses: 1 missing, 3 other
  // version, 15 for the root domain and ClusterInfo, which always exist.
  ChangeResult remove(const tql::id_t& id, const tql::version_t& version,
                      std::vector<tql::id_t>& removed);

  // How many changes the store has taken; grows by one for each success.
  uint64_t changes() const { return changes_; }
  size_t size() const { return objects_.size(); }
  const std::map<tql::id_t, StoredObject>& objects() const { return objects_; }

 private:
  tql::version_t next_version();
  tql::id_t next_free_id();
  // Status 4 when a ReportInstance sibling of `self` under `parent` has the
  // same `order` as `properties` gives; 0 otherwise.
  ChangeResult check_order_unique(const StoredObject& parent, const tql::id_t& self, int32_t class_,
                                  const std::map<int32_t, tql::property_ptr>& properties) const;
  void erase_subtree(const tql::id_t& id, std::vector<tql::id_t>& removed);

  std::map<tql::id_t, StoredObject> objects_;
  uint64_t changes_ = 0;
  uint32_t next_serial_ = 1;
};

}  // namespace host
