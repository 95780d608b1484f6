// ServerReportInstance: the root of the read model over a stored
// ReportInstance. The constructor reads the instance's own values; its
// folders and texts are read when contents() is called.
#pragma once

#include <cstdint>
#include <string>

#include "dbms/database.h"
#include "report/read_model.h"
#include "tql/id.h"

class ServerReportInstance : public report::ReportInstance {
 public:
  // Reads the instance with all its properties and keeps `name`,
  // `startTime`, `duration` and `generated` (0 when null). An instance that
  // doesn't exist (any more) raises errors::tql code 1 "Report instance ID
  // not found"; a missing name or time raises errors::tql code 6, a value of
  // the wrong kind code 9.
  // Reads from `db`, which outlives this.
  ServerReportInstance(dbms::Database& db, tql::id_t instance_id);

  int64_t start() override { return start_; }
  int64_t duration() override { return duration_; }
  int64_t generated() override { return generated_; }
  void name(std::string& out) override { out = name_; }
  // `reportGenerator` of the ClusterInfo object, read when asked. Raises
  // errors::tql code 7 when it has none.
  void generatedBy(std::string& out) override;
  // The instance's folders and texts, by `order`.
  void contents(report::ContentList& out) override;

 private:
  dbms::Database& db_;
  tql::id_t id_;
  std::string name_;
  int64_t start_ = 0;
  int64_t duration_ = 0;
  int64_t generated_ = 0;
};
