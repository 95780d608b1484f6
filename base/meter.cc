#include "base/meter.h"

#include <algorithm>

#include "base/fatal.h"

namespace meter {
namespace {

// Plain pointers and a flag, zero before any static constructor runs, so
// that static meters of any file may be built in any order.
constinit bool open = false;
constinit Group* pending_groups = nullptr;
constinit Metric* pending_metrics = nullptr;

// Unlinks `object` from a pending list chained through `next`.
template <class T, class Next>
void unlink(T*& head, T* object, Next next) {
  for (T** link = &head; *link != nullptr; link = &((*link)->*next)) {
    if (*link == object) {
      *link = object->*next;
      return;
    }
  }
}

template <class T>
void remove_from(std::vector<T*>& list, const Object* object) {
  std::erase_if(list, [object](T* entry) { return static_cast<Object*>(entry) == object; });
}

}  // namespace

Group& root() {
  static Group* top = new Group(Group::RootTag{});
  return *top;
}

bool registry_open() { return open; }

void Group::addToMap(Object* child) {
  if (!children_.emplace(child->name(), child).second) {
    assertion_failed("Attempt to add duplicate metric name: " + child->name());
  }
  child->addedTo_ = this;
  child->pending_ = false;
}

void Group::add(Group* child) {
  addToMap(child);
  groups_.push_back(child);
}

void Group::add(Metric* child) {
  addToMap(child);
  metrics_.push_back(child);
}

void Group::remove(Object* child) {
  auto it = children_.find(child->name());
  if (it != children_.end() && it->second == child) children_.erase(it);
  remove_from(groups_, child);
  remove_from(metrics_, child);
  child->addedTo_ = nullptr;
}

template <class T>
void Group::enroll(T* object, T*& head) {
  if (open) {
    (object->parent() != nullptr ? *object->parent() : root()).add(object);
  } else {
    object->pending_next_ = head;
    head = object;
    object->pending_ = true;
  }
}

template <class T>
void Group::addPending(T*& head) {
  std::vector<T*> list;
  for (T* o = head; o != nullptr; o = o->pending_next_) list.push_back(o);
  head = nullptr;
  for (auto it = list.rbegin(); it != list.rend(); ++it) {
    (*it)->pending_next_ = nullptr;
    ((*it)->parent() != nullptr ? *(*it)->parent() : root()).add(*it);
  }
}

Group::Group(Group* parent, std::string name) : Object(parent, std::move(name)) {
  enroll(this, pending_groups);
}

Group::~Group() {
  for (auto& [name, child] : children_) {
    child->parent_ = nullptr;
    child->addedTo_ = nullptr;
  }
  // Children still waiting would otherwise join a group that is gone.
  for (Group* g = pending_groups; g != nullptr; g = g->pending_next_) {
    if (g->parent_ == this) g->parent_ = nullptr;
  }
  for (Metric* m = pending_metrics; m != nullptr; m = m->pending_next_) {
    if (m->parent_ == this) m->parent_ = nullptr;
  }
  if (addedTo_ != nullptr) addedTo_->remove(this);
  if (pending_) unlink(pending_groups, this, &Group::pending_next_);
}

Object* Group::find(Path& instance, Path::const_iterator current, Path::const_iterator end) {
  if (current == end) return nullptr;  // a path names a metric, not a group
  auto it = children_.find(*current);
  if (it == children_.end()) return nullptr;
  return it->second->find(instance, current + 1, end);
}

Metric::Metric(Group* parent, std::string name, std::string unit, std::string description)
    : Object(parent, std::move(name)),
      unit_(std::move(unit)),
      description_(std::move(description)) {
  Group::enroll(this, pending_metrics);
}

Metric::~Metric() {
  if (addedTo_ != nullptr) addedTo_->remove(this);
  if (pending_) unlink(pending_metrics, this, &Metric::pending_next_);
}

Object* Metric::find(Path&, Path::const_iterator current, Path::const_iterator end) {
  return current == end ? this : nullptr;
}

void IntegerCounter::reply(MetricReply& reply, const Path&) const { reply.uint64Value(value_); }

void Timing::add(uint64_t t) {
  ++n_;
  sum_ += t;
  sum_squares_ += t * t;
  min_ = std::min(min_, t);
  max_ = std::max(max_, t);
}

void Timing::reply(MetricReply& reply, const Path&) const {
  reply.timingValue(n_, min_, max_, sum_, sum_squares_);
}

void MicroSecondTiming::addSince(const TimeValue& start) {
  const TimeValue now = TimeValue::now();
  if (now < start) {
    add(0);
    return;
  }
  const TimeValue span = now - start;
  add(static_cast<uint64_t>(span.seconds) * 1000000u + static_cast<uint64_t>(span.microseconds));
}

MicroSecondTiming& metering_time() {
  static Group group(nullptr, "metering");
  static MicroSecondTiming time(&group, "time", "us", "Time spent in metering routines");
  return time;
}

void open_registry() {
  if (open) return;
  metering_time();  // built now at the latest, so that it is live
  open = true;
  Group::addPending(pending_groups);
  Group::addPending(pending_metrics);
}

}  // namespace meter
