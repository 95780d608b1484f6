#include "report/server_items.h"

#include "base/error.h"
#include "base/fatal.h"
#include "grapher/check_image.h"
#include "report/server_values.h"
#include "tql/schema.h"

using report::stored::flag_of;
using report::stored::text_of;
namespace stored = report::stored;

namespace {

// The whole series `index` of `owner`, or its first `count` records. The
// reply's status is not looked at: a series that can't be read reads as
// none, and each caller treats that as its own case.
dbms::Return_TSDB_Get_Data_Data read_series(dbms::Database& db, const tql::id_t& owner,
                                            int32_t index, bool raw, int32_t count) {
  dbms::TSDB_Get_Data_Data request;
  request.id = owner;
  request.index_property = index;
  request.flags = 0;
  request.raw = raw;
  request.start = 0;
  request.end = 0x7fffffff;
  request.count = count;
  request.offset = 0;
  return db.get_data(request);
}

bool is_chart_series(int32_t data_type) {
  return data_type == tsdb::kUptime || data_type == tsdb::kEnum || data_type == tsdb::kContinuous ||
         data_type == tsdb::kAccumulation;
}

}  // namespace

void ServerReportRow::comment(std::string& out) { out = text_of(object, schema::kComment); }
void ServerReportRow::label(std::string& out) { out = text_of(object, schema::kName); }
void ServerReportRow::value(std::string& out) { out = text_of(object, schema::kText); }
void ServerReportRow::origin(std::string& out) { out = stored::origin_of(object); }

std::unique_ptr<report::ReportGraph> ServerReportGraph::clone() const {
  return std::make_unique<ServerReportGraph>(*db_, object);
}
void ServerReportGraph::comment(std::string& out) { out = text_of(object, schema::kComment); }
void ServerReportGraph::name(std::string& out) { out = text_of(object, schema::kName); }
void ServerReportGraph::anchor(std::string& out) { out = object.id.text(); }
bool ServerReportGraph::showMinMax() { return flag_of(object, schema::kGraphShowMinMax); }
bool ServerReportGraph::showNoResponse() { return flag_of(object, schema::kGraphShowNoResponse); }
bool ServerReportGraph::tabular() { return flag_of(object, schema::kGraphTabularUptime); }

dbms::Return_TSDB_Get_Data_Data ServerReportGraph::read_samples() const {
  // Every stored record: the chart covers the whole period.
  return read_series(*db_, object.id, schema::kTsdbIndex, true, 0x7fffffff);
}

void ServerReportGraph::generate_check_image(grapher::Graph& graph) {
  dbms::Return_TSDB_Get_Data_Data series = read_samples();
  if (!is_chart_series(series.data_type)) {
    throw error::EParseError("Got unknown dataset type " + std::to_string(series.data_type) +
                             " in generate_check_image");
  }
  grapher::generate_check_image(graph, object, series.data_type, series.data);
}

bool IncidentCursor::next() {
  current_ = nullptr;
  if (position_ < entries_.size()) {
    current_ = dynamic_cast<const tsdb::data_interval_incident_t*>(entries_[position_].get());
    ++position_;
  }
  if (current_ == nullptr) position_ = entries_.size();
  return current_ != nullptr;
}

void ServerReportLog::comment(std::string& out) { out = text_of(object, schema::kComment); }
void ServerReportLog::name(std::string& out) { out = text_of(object, schema::kName); }

bool ServerReportLog::next() {
  if (!entries) {
    dbms::Return_TSDB_Get_Data_Data series =
        read_series(db_, object.id, schema::kTsdbIncident, false, 0x7fffffff);
    entries = std::make_unique<IncidentCursor>(std::move(series.data));
  }
  return entries->next();
}

const tsdb::data_interval_incident_t& ServerReportLog::current() const {
  TAVREL_ASSERT(entries && entries->current(), "Log entry read without a current entry");
  return *entries->current();
}
uint32_t ServerReportLog::severity() { return current().sev; }
const std::string& ServerReportLog::text() { return current().msg; }
int64_t ServerReportLog::time() { return current().itime; }

void ServerReportText::comment(std::string& out) { out = text_of(object, schema::kComment); }
