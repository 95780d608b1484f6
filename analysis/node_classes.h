// The NodeClass catalogue of a generation, and how a selection's node
// classes become conditions of the report's tree pattern.
#pragma once

#include <list>
#include <map>
#include <set>
#include <vector>

#include "dbms/database.h"
#include "tql/id.h"
#include "tql/patch.h"
#include "tql/pattern.h"

struct NodeClassRecord {
  bool autoPromote = false;
  std::vector<tql::id_t> parents;  // `inheritsFrom`, in set order.
};

struct NodeClassCatalogue {
  std::map<tql::id_t, NodeClassRecord> classRecords;
  std::multimap<tql::id_t, tql::id_t> derivedClasses;  // Parent to derived class.
};

// Every NodeClass object of the reply `tree`, at any depth. An absent or
// null `autoPromote` is false, an absent or null `inheritsFrom` empty.
// Raises errors::tql for properties of another kind.
NodeClassCatalogue catalogueOf(const tql::patch_t& tree);

// Reads the catalogue with one select from the root domain. Raises
// errors::tql and what the dialog raises.
NodeClassCatalogue readNodeClasses(dbms::Database& db);

// Appends the conditions that stand for node class `id`: for an
// autoPromote class those of each of its parents, in order; otherwise one
// condition (intersects) on `nodeClasses` with `id` and all classes derived
// from it. A class that the catalogue doesn't hold is taken as a plain
// class: the condition then holds `id` and what derives from it. A cycle
// of autoPromote classes adds nothing for the class that closes it.
void resolveNodeClass(std::list<tql::condition_t>& conditions, const NodeClassCatalogue& catalogue,
                      const tql::id_t& id);

// Inserts `id` and, once each, every class derived from it; cycles end.
void addDerived(std::set<tql::id_t>& closure,
                const std::multimap<tql::id_t, tql::id_t>& derivedClasses, const tql::id_t& id);
