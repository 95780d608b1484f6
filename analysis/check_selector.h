// CheckSelector: what the walk asks, node by node, for the node with the
// checks that the report covers.
#pragma once

#include <memory>
#include <vector>

#include "analysis/report_selection.h"
#include "tql/patch.h"

class CheckSelector {
 public:
  virtual ~CheckSelector() = default;
  // A new tree rooted at `node` with its selected check groups, checks and
  // check accumulations (selected ones carry tag 0), owned by the caller;
  // or null when the node is to be left out. A database failure is logged
  // (each class has its line) and gives null; other exceptions (a gone
  // database) pass through.
  virtual std::unique_ptr<tql::patch_t> select(const tql::patch_t& node) = 0;
};

// For the domain overview: the node alone.
class NoCheckSelector : public CheckSelector {
 public:
  std::unique_ptr<tql::patch_t> select(const tql::patch_t& node) override;
};

// For a report with `contains`: the listed active checks of the node, or,
// when it has none, all its active checks.
class OldStyleCheckSelector : public CheckSelector {
 public:
  explicit OldStyleCheckSelector(tql::object_set_t contains) : contains_(std::move(contains)) {}
  std::unique_ptr<tql::patch_t> select(const tql::patch_t& node) override;

 private:
  const tql::object_set_t contains_;
};

// For a report with selections: the checks that the records of the node's
// tags name. `selections` is the generation's and must outlive this.
class TagCheckSelector : public CheckSelector {
 public:
  explicit TagCheckSelector(const std::vector<ReportSelectionRecord>& selections)
      : selections_(selections) {}
  std::unique_ptr<tql::patch_t> select(const tql::patch_t& node) override;

 private:
  const std::vector<ReportSelectionRecord>& selections_;
};
