// CheckSelector: what the walk asks, node by node, for the node with the
// checks that the report covers.
#pragma once

#include <memory>
#include <vector>

#include "analysis/report_selection.h"
#include "dbms/database.h"
#include "tql/patch.h"

class CheckSelector {
 public:
  // Selects from `db`, which outlives this.
  explicit CheckSelector(dbms::Database& db) : db_(db) {}
  virtual ~CheckSelector() = default;
  // A new tree rooted at `node` with its selected check groups, checks and
  // check accumulations (selected ones carry tag 0), owned by the caller;
  // or null when the node is to be left out. A database failure is logged
  // (each class has its line) and gives null; other exceptions (a gone
  // database) pass through.
  virtual std::unique_ptr<tql::patch_t> select(const tql::patch_t& node) = 0;

 protected:
  // The one result of `p` from `id`, or null.
  std::unique_ptr<tql::patch_t> select_from(const tql::id_t& id, std::unique_ptr<tql::pattern_t> p);

 private:
  dbms::Database& db_;
};

// For the domain overview: the node alone.
class NoCheckSelector : public CheckSelector {
 public:
  using CheckSelector::CheckSelector;
  std::unique_ptr<tql::patch_t> select(const tql::patch_t& node) override;
};

// For a report with `contains`: the listed active checks of the node, or,
// when it has none, all its active checks.
class OldStyleCheckSelector : public CheckSelector {
 public:
  OldStyleCheckSelector(dbms::Database& db, tql::object_set_t contains)
      : CheckSelector(db), contains_(std::move(contains)) {}
  std::unique_ptr<tql::patch_t> select(const tql::patch_t& node) override;

 private:
  const tql::object_set_t contains_;
};

// For a report with selections: the checks that the records of the node's
// tags name. `selections` is the generation's and must outlive this.
class TagCheckSelector : public CheckSelector {
 public:
  TagCheckSelector(dbms::Database& db, const std::vector<ReportSelectionRecord>& selections)
      : CheckSelector(db), selections_(selections) {}
  std::unique_ptr<tql::patch_t> select(const tql::patch_t& node) override;

 private:
  const std::vector<ReportSelectionRecord>& selections_;
};
