#include "host/select_eval.h"

#include <map>
#include <memory>
#include <set>
#include <unordered_map>

#include "host/select_match.h"
#include "tql/schema.h"

namespace host {

namespace {

// One object as matched at one or more steps, with what it brings along.
struct Match {
  const StoredObject* object = nullptr;
  int32_t flags = 0;
  std::set<int32_t> tags;
  bool all_properties = false;
  std::set<int32_t> wanted;
  bool kept = false;            // Comes back with its parent.
  bool kept_selective = false;  // Kept, and matched at a selective step.
  bool kept_child = false;      // Has a kept child at a selective step.
  std::map<tql::id_t, std::unique_ptr<Match>> children;
};

// Joins what `from` says about the same object into `into` (rule 6).
void merge(Match& into, Match&& from) {
  into.flags |= from.flags;
  into.tags.merge(from.tags);
  into.all_properties = into.all_properties || from.all_properties;
  into.wanted.merge(from.wanted);
  into.kept_child = into.kept_child || from.kept_child;
  for (auto& [id, child] : from.children) {
    std::unique_ptr<Match>& slot = into.children[id];
    if (!slot) {
      slot = std::move(child);
      continue;
    }
    slot->kept = slot->kept || child->kept;
    slot->kept_selective = slot->kept_selective || child->kept_selective;
    merge(*slot, std::move(*child));
  }
}

class Evaluator {
 public:
  explicit Evaluator(const ObjectStore& store) : store_(store) {}

  std::unique_ptr<Match> evaluate(const StoredObject& object, const tql::pattern_t& step);
  bool has_selective_next(const tql::pattern_t& step) {
    for (const tql::pattern_t& n : step.next) {
      if (selective(n)) return true;
    }
    return false;
  }

 private:
  bool selective(const tql::pattern_t& step);
  // Adds `child`, if it is kept, to the children of `parent`.
  void add_child(Match& parent, std::unique_ptr<Match> child);
  // Matches the children of `m`'s object at `step`.
  void match_children(Match& m, const tql::pattern_t& step);
  // Rule 5: every object below `m` comes back with all properties.
  void add_subtree(Match& m);

  const ObjectStore& store_;
  std::unordered_map<const tql::pattern_t*, bool> selective_;
};

bool Evaluator::selective(const tql::pattern_t& step) {
  auto it = selective_.find(&step);
  if (it != selective_.end()) return it->second;
  bool s = (step.flags & tql::kPatternBit4) != 0 || !step.where.empty() || has_selective_next(step);
  selective_.emplace(&step, s);
  return s;
}

void Evaluator::add_child(Match& parent, std::unique_ptr<Match> child) {
  if (!child->kept) return;
  parent.kept_child = parent.kept_child || child->kept_selective;
  std::unique_ptr<Match> wrapper = std::make_unique<Match>();
  wrapper->children.emplace(child->object->id, std::move(child));
  merge(parent, std::move(*wrapper));
}

void Evaluator::match_children(Match& m, const tql::pattern_t& step) {
  for (const tql::id_t& id : m.object->children) {
    const StoredObject& child = *store_.find(id);
    if (step_matches(child, step)) add_child(m, evaluate(child, step));
  }
}

void Evaluator::add_subtree(Match& m) {
  for (const tql::id_t& id : m.object->children) {
    std::unique_ptr<Match>& slot = m.children[id];
    if (!slot) {
      slot = std::make_unique<Match>();
      slot->object = store_.find(id);
      slot->flags = tql::kPatternAllProps;
      slot->kept = true;
    }
    slot->all_properties = true;
    add_subtree(*slot);
  }
}

std::unique_ptr<Match> Evaluator::evaluate(const StoredObject& object, const tql::pattern_t& step) {
  auto m = std::make_unique<Match>();
  m->object = &object;
  m->flags = step.flags;
  if (step.tag != -1) m->tags.insert(step.tag);
  m->all_properties = (step.flags & tql::kPatternAllProps) != 0;
  m->wanted = step.wanted_properties;
  for (const tql::pattern_t& next : step.next) {
    if ((next.flags & tql::kPatternNested) != 0 && step_matches(object, next)) {
      // Zero levels of nesting: the object itself stands at `next`, whose
      // nesting then reaches the children that `next` matches.
      std::unique_ptr<Match> self = evaluate(object, next);
      m->kept_child = m->kept_child || self->kept_selective;
      merge(*m, std::move(*self));
    } else {
      match_children(*m, next);
    }
  }
  if ((step.flags & tql::kPatternNested) != 0) match_children(*m, step);
  if (object.class_ == schema::kPlan && m->all_properties) add_subtree(*m);
  const bool sel = selective(step);
  const bool bit4 = (step.flags & tql::kPatternBit4) != 0;
  const bool where_at_bottom = !step.where.empty() && !has_selective_next(step);
  m->kept = !sel || bit4 || where_at_bottom || m->kept_child;
  m->kept_selective = sel && m->kept;
  return m;
}

tql::patch_t to_patch(const Match& m) {
  const StoredObject& o = *m.object;
  tql::patch_t p;
  p.class_ = o.class_;
  p.flags = m.flags;
  p.tags = m.tags;
  p.id = o.id;
  p.version = o.version;
  if (m.all_properties) {
    p.properties = o.properties;
  } else {
    for (int32_t number : m.wanted) {
      auto it = o.properties.find(number);
      if (it != o.properties.end()) p.properties.emplace(number, it->second);
    }
  }
  for (const tql::id_t& id : o.children) {
    auto it = m.children.find(id);
    if (it != m.children.end()) p.children.push_back(to_patch(*it->second));
  }
  return p;
}

}  // namespace

std::vector<tql::patch_t> select(const ObjectStore& store, const std::list<tql::id_t>& root_ids,
                                 const tql::pattern_t& pattern) {
  check_pattern(pattern);
  Evaluator evaluator(store);
  std::vector<tql::patch_t> out;
  for (const tql::id_t& id : root_ids) {
    const StoredObject* root = store.find(id);
    if (root == nullptr || !step_matches(*root, pattern)) continue;
    std::unique_ptr<Match> m = evaluator.evaluate(*root, pattern);
    if (!m->kept) continue;
    if (evaluator.has_selective_next(pattern) && !m->kept_child) continue;
    out.push_back(to_patch(*m));
  }
  return out;
}

}  // namespace host
