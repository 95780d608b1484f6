// Meters: named counters and timings that another process can read over
// the event system, arranged in a tree of named groups under root().
//
// Meters are usually static objects of the module that counts. While the
// registry is closed, a new group or metric waits on a pending list; once
// open_registry() has run, new ones join their parent group (or root) at
// once. This process opens the registry at start, so that the static
// meters are live; see base/README.md.
//
// Groups hold their children by pointer and own none of them; an object
// takes itself out of its group when it is destroyed, and a group that
// goes clears the parent of its children. Answering the event requests
// (GET_METRIC, LIST_METRICS, GET_METRIC_TYPE) is up to the event layer,
// through find(), Metric::reply() and the lists of a Group.
//
// Not thread-safe: counting and answering both run on the main thread.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "base/error.h"
#include "base/time_value.h"

namespace meter {

using Path = std::vector<std::string>;

class Group;

// A reply to a GET_METRIC request, as the event layer sends it.
class MetricReply {
 public:
  virtual ~MetricReply() = default;
  // RETURN_METRIC_UINT64 (event 17).
  virtual void uint64Value(uint64_t value) = 0;
  // RETURN_METRIC_TIMING (event 19).
  virtual void timingValue(uint64_t n, uint64_t min, uint64_t max, uint64_t sum,
                           uint64_t sum_squares) = 0;
};

// Raised by Metric::reply for an instance that doesn't exist; the request
// is then answered with "No such instance".
class ENoSuchInstance : public error::TextException {
 public:
  ENoSuchInstance() : TextException("No such instance") {}
};

class Object {
 public:
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;
  virtual ~Object() = default;

  // The metric that the path [current, end) names below this object, or
  // null. A path that ends at a group, goes on past a metric, or is empty
  // names nothing. `instance` is for tables, of which this process has
  // none; it is passed on unchanged.
  virtual Object* find(Path& instance, Path::const_iterator current, Path::const_iterator end) = 0;

  Group* parent() const { return parent_; }
  const std::string& name() const { return name_; }

 protected:
  Object(Group* parent, std::string name) : parent_(parent), name_(std::move(name)) {}

  // The group whose map holds this object, or null when it wasn't added.
  Group* addedTo_ = nullptr;
  // Whether the object waits on a pending list.
  bool pending_ = false;

 private:
  friend class Group;
  Group* parent_;
  std::string name_;
};

class Metric : public Object {
 public:
  // Joins `parent` (root when null) if the registry is open, else waits on
  // the pending list of metrics. A name that the group holds already is
  // the fatal assertion "Attempt to add duplicate metric name: " + name.
  Metric(Group* parent, std::string name, std::string unit, std::string description);
  ~Metric() override;

  Object* find(Path& instance, Path::const_iterator current, Path::const_iterator end) override;
  // 2 for an integer counter, 3 for a timing.
  virtual uint32_t type() const = 0;
  // Answers a GET_METRIC request through `reply`. May raise ENoSuchInstance.
  virtual void reply(MetricReply& reply, const Path& instance) const = 0;

  const std::string& unit() const { return unit_; }
  const std::string& description() const { return description_; }

 private:
  friend class Group;
  std::string unit_;
  std::string description_;
  Metric* pending_next_ = nullptr;
};

class IntegerCounter : public Metric {
 public:
  static constexpr uint32_t kType = 2;
  using Metric::Metric;

  void increment() { ++value_; }
  uint64_t value() const { return value_; }

  uint32_t type() const override { return kType; }
  void reply(MetricReply& reply, const Path& instance) const override;

 private:
  uint64_t value_ = 0;
};

class Timing : public Metric {
 public:
  static constexpr uint32_t kType = 3;
  using Metric::Metric;

  // Counts one time: n, sum and sum of squares grow; min and max follow.
  void add(uint64_t t);

  uint64_t n() const { return n_; }
  uint64_t min() const { return min_; }  // all bits set before the first time
  uint64_t max() const { return max_; }
  uint64_t sum() const { return sum_; }
  uint64_t sum_squares() const { return sum_squares_; }

  uint32_t type() const override { return kType; }
  void reply(MetricReply& reply, const Path& instance) const override;

 private:
  uint64_t n_ = 0;
  uint64_t min_ = UINT64_MAX;
  uint64_t max_ = 0;
  uint64_t sum_ = 0;
  uint64_t sum_squares_ = 0;
};

// A timing in microseconds.
class MicroSecondTiming : public Timing {
 public:
  using Timing::Timing;
  // Adds the microseconds from `start` to now; a clock that went back
  // counts as 0.
  void addSince(const TimeValue& start);
};

class Group : public Object {
 public:
  // Joins `parent` like a Metric (see there), on the pending list of groups.
  Group(Group* parent, std::string name);
  ~Group() override;

  Object* find(Path& instance, Path::const_iterator current, Path::const_iterator end) override;

  // The children in the order they were added.
  const std::vector<Group*>& groups() const { return groups_; }
  const std::vector<std::string>& tables() const { return tables_; }  // always empty
  const std::vector<Metric*>& metrics() const { return metrics_; }

 private:
  friend class Metric;
  friend void open_registry();
  friend Group& root();
  struct RootTag {};
  explicit Group(RootTag) : Object(nullptr, "") {}

  // Put the child in the map and in its list; a duplicate name is fatal.
  void add(Group* child);
  void add(Metric* child);
  void addToMap(Object* child);
  void remove(Object* child);
  // Adds `object` to its parent (or root) when the registry is open, else
  // puts it at the front of the pending list `head`.
  template <class T>
  static void enroll(T* object, T*& head);
  // Adds everything on the pending list `head`, oldest first, and empties it.
  template <class T>
  static void addPending(T*& head);

  std::map<std::string, Object*> children_;
  std::vector<Group*> groups_;
  std::vector<std::string> tables_;
  std::vector<Metric*> metrics_;
  Group* pending_next_ = nullptr;
};

// The top of the tree, with an empty name. Never destroyed.
Group& root();

// True once open_registry() has run.
bool registry_open();
// Opens the registry: adds everything on the pending lists to its parent
// (or root), in the order it was built, and lets later meters join at
// once. Runs once; later calls do nothing.
void open_registry();

// The metering group's own timing, "metering"/"time": the time spent in
// metering routines, in microseconds.
MicroSecondTiming& metering_time();

}  // namespace meter
