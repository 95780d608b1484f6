#include "host/store_objects.h"

#include <algorithm>

#include "tql/catalogue.h"
#include "tql/schema.h"

namespace host {

namespace {

const tql::id_t kClusterInfoId{};

std::map<int32_t, tql::property_ptr> by_number(std::vector<tql::property_ptr> properties) {
  std::map<int32_t, tql::property_ptr> out;
  for (tql::property_ptr& p : properties) {
    const int32_t number = p->name;
    out[number] = std::move(p);
  }
  return out;
}

ChangeResult failure(int32_t status, std::string detail) {
  ChangeResult r;
  r.status = status;
  r.detail = std::move(detail);
  return r;
}

}  // namespace

ObjectStore::ObjectStore() {
  StoredObject root;
  root.class_ = schema::kDomain;
  root.id = tql::kRootId;
  root.version = {0, 1};
  objects_.emplace(root.id, std::move(root));
  StoredObject cluster;
  cluster.class_ = schema::kClusterInfo;
  cluster.version = {0, 1};
  objects_.emplace(kClusterInfoId, std::move(cluster));
}

const StoredObject* ObjectStore::find(const tql::id_t& id) const {
  auto it = objects_.find(id);
  return it == objects_.end() ? nullptr : &it->second;
}

tql::version_t ObjectStore::next_version() {
  ++changes_;
  return {static_cast<int64_t>(changes_), 1};
}

tql::id_t ObjectStore::next_free_id() {
  for (;;) {
    tql::id_t id{0, 1, next_serial_++};
    if (objects_.find(id) == objects_.end()) return id;
  }
}

ChangeResult ObjectStore::check_order_unique(
    const StoredObject& parent, const tql::id_t& self, int32_t class_,
    const std::map<int32_t, tql::property_ptr>& properties) const {
  if (class_ != schema::kReportInstance) return {};
  auto order = properties.find(schema::kOrder);
  if (order == properties.end() || order->second->is_null) return {};
  for (const tql::id_t& sibling_id : parent.children) {
    if (sibling_id == self) continue;
    const StoredObject& sibling = objects_.at(sibling_id);
    if (sibling.class_ != schema::kReportInstance) continue;
    auto other = sibling.properties.find(schema::kOrder);
    if (other != sibling.properties.end() && other->second->equals(*order->second)) {
      return failure(kStatusDuplicate, "ReportInstance " + sibling_id.text() +
                                           " has the same order " + order->second->text());
    }
  }
  return {};
}

ChangeResult ObjectStore::create(const tql::id_t& parent_id, int32_t class_,
                                 std::vector<tql::property_ptr> properties,
                                 const tql::id_t& wanted_id) {
  auto parent = objects_.find(parent_id);
  if (parent == objects_.end() || parent_id.empty()) {
    return failure(kStatusNotFound, "Parent " + parent_id.text() + " not found");
  }
  if (tql::class_names().count(class_) == 0) {
    return failure(kStatusClassNotAllowed, "Unknown class " + std::to_string(class_));
  }
  if (parent->second.depth >= kMaxDepth) {
    return failure(kStatusClassNotAllowed,
                   "No object may lie deeper than " + std::to_string(kMaxDepth) + " levels");
  }
  if (!wanted_id.empty() && objects_.count(wanted_id) != 0) {
    return failure(kStatusDuplicate, "Object " + wanted_id.text() + " exists already");
  }
  StoredObject object;
  object.class_ = class_;
  object.parent = parent_id;
  object.has_parent = true;
  object.depth = parent->second.depth + 1;
  object.properties = by_number(std::move(properties));
  ChangeResult clash = check_order_unique(parent->second, {}, class_, object.properties);
  if (clash.status != 0) return clash;
  object.id = wanted_id.empty() ? next_free_id() : wanted_id;
  object.version = next_version();
  parent->second.children.push_back(object.id);
  ChangeResult r;
  r.id = object.id;
  r.version = object.version;
  objects_.emplace(object.id, std::move(object));
  return r;
}

ChangeResult ObjectStore::update(const tql::id_t& id, const tql::version_t& version,
                                 std::vector<tql::property_ptr> properties) {
  auto it = objects_.find(id);
  if (it == objects_.end()) return failure(kStatusNotFound, "Object " + id.text() + " not found");
  StoredObject& object = it->second;
  if (object.version != version) {
    return failure(kStatusVersion, "Object " + id.text() + " has version " + object.version.text() +
                                       ", not " + version.text());
  }
  std::map<int32_t, tql::property_ptr> changed = by_number(std::move(properties));
  if (object.has_parent) {
    ChangeResult clash = check_order_unique(objects_.at(object.parent), id, object.class_, changed);
    if (clash.status != 0) return clash;
  }
  for (auto& [number, p] : changed) object.properties[number] = std::move(p);
  object.version = next_version();
  ChangeResult r;
  r.id = id;
  r.version = object.version;
  return r;
}

ChangeResult ObjectStore::remove(const tql::id_t& id, const tql::version_t& version,
                                 std::vector<tql::id_t>& removed) {
  auto it = objects_.find(id);
  if (it == objects_.end()) return failure(kStatusNotFound, "Object " + id.text() + " not found");
  if (!it->second.has_parent) {
    return failure(kStatusAccessDenied, "Object " + id.text() + " can't be deleted");
  }
  if (it->second.version != version) {
    return failure(kStatusVersion, "Object " + id.text() + " has version " +
                                       it->second.version.text() + ", not " + version.text());
  }
  std::vector<tql::id_t>& siblings = objects_.at(it->second.parent).children;
  siblings.erase(std::find(siblings.begin(), siblings.end(), id));
  erase_subtree(id, removed);
  ChangeResult r;
  r.id = id;
  r.version = next_version();
  return r;
}

void ObjectStore::erase_subtree(const tql::id_t& id, std::vector<tql::id_t>& removed) {
  auto it = objects_.find(id);
  std::vector<tql::id_t> children = std::move(it->second.children);
  objects_.erase(it);
  removed.push_back(id);
  for (const tql::id_t& child : children) erase_subtree(child, removed);
}

}  // namespace host
