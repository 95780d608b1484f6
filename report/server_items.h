// The read model over stored result objects: each class holds the object
// that a query returned (`object`, only the properties the read side shows)
// and reads further levels from the database when asked.
//
// Failures: errors::tql for a failed query or a stored value of the wrong
// kind, and what the database raises (dbms/database.h). Not thread-safe.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "dbms/database.h"
#include "report/read_model.h"
#include "tql/patch.h"
#include "tsdb/interval.h"

// The read model's implementations carry the names of the design, without a
// namespace, beside the abstract classes of namespace report.

class ServerReportRow : public report::ReportRow {
 public:
  explicit ServerReportRow(tql::patch_t object) : object(std::move(object)) {}
  void comment(std::string& out) override;
  void label(std::string& out) override;
  void value(std::string& out) override;
  // The id in `originNode` in text form; empty when it is missing or null.
  void origin(std::string& out) override;

  tql::patch_t object;
};

class ServerReportGraph : public report::ReportGraph {
 public:
  // Reads its samples from `db`, which outlives this and its clones.
  ServerReportGraph(dbms::Database& db, tql::patch_t object)
      : object(std::move(object)), db_(&db) {}
  std::unique_ptr<report::ReportGraph> clone() const override;
  void comment(std::string& out) override;
  void name(std::string& out) override;
  void anchor(std::string& out) override;
  bool showMinMax() override;
  bool showNoResponse() override;
  bool tabular() override;
  // Reads the stored samples (at most 200) and fills `graph` through the
  // grapher. A reply without a chart series (no series stored, or one of
  // another data type) raises error::EParseError "Got unknown dataset type
  // N in generate_check_image": the database is outside input, so this is
  // no fatal assertion here. Raises what grapher::generate_check_image
  // raises for records of the wrong class.
  void generate_check_image(grapher::Graph& graph) override;

  // The stored samples that the chart draws: the first 200 records of the
  // `tsdbIndex` series, with its data type (0 when there is no series). The
  // reply's status is not looked at.
  dbms::Return_TSDB_Get_Data_Data read_samples() const;

  tql::patch_t object;

 private:
  dbms::Database* db_;
};

// Steps through the records of an incident series. A record that is no
// incident ends the walk, as the end of the list does.
class IncidentCursor {
 public:
  explicit IncidentCursor(std::vector<tsdb::interval_ptr> entries) : entries_(std::move(entries)) {}
  // Steps to the next record, the first call to the first; false past the
  // end.
  bool next();
  // The record at hand; null before the first next() and past the end.
  const tsdb::data_interval_incident_t* current() const { return current_; }

 private:
  std::vector<tsdb::interval_ptr> entries_;
  size_t position_ = 0;  // Of the record after the current one.
  const tsdb::data_interval_incident_t* current_ = nullptr;
};

class ServerReportLog : public report::ReportLog {
 public:
  // Reads its entries from `db`, which outlives this.
  ServerReportLog(dbms::Database& db, tql::patch_t object) : object(std::move(object)), db_(db) {}
  void comment(std::string& out) override;
  void name(std::string& out) override;
  // The first call reads the whole `tsdbIncident` series of the log.
  bool next() override;
  uint32_t severity() override;
  const std::string& text() override;
  int64_t time() override;

  tql::patch_t object;
  // The fetched series; null before the first next().
  std::unique_ptr<IncidentCursor> entries;

 private:
  const tsdb::data_interval_incident_t& current() const;

  dbms::Database& db_;
};

class ServerReportText : public report::ReportText {
 public:
  explicit ServerReportText(tql::patch_t object) : object(std::move(object)) {}
  void comment(std::string& out) override;

  tql::patch_t object;
};

class ServerReportFolder : public report::ReportFolder {
 public:
  // Reads its children from `db`, which outlives this.
  ServerReportFolder(dbms::Database& db, tql::patch_t object)
      : object(std::move(object)), db_(db) {}
  void comment(std::string& out) override;
  // The stored type; kUnknownFolderType when it is missing or damaged.
  uint32_t folderType() override;
  void name(std::string& out) override;
  void contents(report::ContentList& out) override;
  void subfolders(std::vector<std::unique_ptr<report::ReportFolder>>& out) override;
  void anchor(std::string& out) override;

  static constexpr uint32_t kUnknownFolderType = 0xffffffff;

  tql::patch_t object;

 private:
  dbms::Database& db_;
};

namespace report::stored {

// The read-model object for a stored child of an instance or folder, by its
// class: a row, graph, log, folder or text. Another class, which the
// queries don't ask for, raises error::EParseError "Unexpected class in
// report: N".
std::unique_ptr<ReportFolderContent> make_item(dbms::Database& db, tql::patch_t object);

}  // namespace report::stored
