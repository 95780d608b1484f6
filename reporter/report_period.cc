#include "reporter/report_period.h"

#include <string>

#include "base/error.h"
#include "base/log.h"
#include "tql/decode.h"
#include "tql/schema.h"
#include "tql/value_of.h"

namespace {

// True unless the property is a set boolean that says false.
bool flag(const tql::patch_t& report, int32_t number) {
  const bool* v = tql::value_of<tql::property_boolean_t>(report, number);
  return v == nullptr || *v;
}

// A time or length in seconds: a date, or a number of another kind.
int64_t seconds(const tql::patch_t& report, int32_t number) {
  const tql::property_t& p = report.property(number);
  if (const int64_t* date = tql::value_of<tql::property_date_t>(report, number)) return *date;
  double v = 0;
  tql::decode_scalar(p, v);
  if (!(v > -9.2e18 && v < 9.2e18)) throw error::ERange("Time out of range in report");
  return static_cast<int64_t>(v);
}

void readSettings(const tql::patch_t& report, ResolvedIssue& options) {
  uint32_t kind = 0;
  tql::decode_enum(report.property(schema::kType), schema::kReportTypeEnum, kind);
  options.kind = static_cast<ReportKind>(kind);
  options.wantGraph = flag(report, schema::kFormGraph);
  options.wantSummary = flag(report, schema::kFormSummary);
  options.wantIncidents = flag(report, schema::kGoodScore) || flag(report, schema::kWarnScore) ||
                          flag(report, schema::kAlertScore) || flag(report, schema::kIncludeConfig);
  const uint32_t* level = tql::value_of<tql::property_uint_t>(report, schema::kHideSectionLevel);
  options.hideLevel = level != nullptr ? *level : 0xFFFFFFFF;
  const double* threshold =
      tql::value_of<tql::property_real_t>(report, schema::kHideSectionThreshold);
  options.hideThreshold = threshold != nullptr ? *threshold : 0.0;
  if (log_tracing()) {
    log("Summary: " + std::to_string(options.wantSummary) +
            ", graph: " + std::to_string(options.wantGraph),
        kLogTrace);
    log("Level: " + std::to_string(options.hideLevel), kLogTrace);
  }
}

// The midnight of day `mday` of month `month` of year `year` (any of them
// out of range; compose normalises), with `tm`'s other fields.
int64_t composed(tm_t tm, int mday, int month, int year, zone_t zone) {
  tm.mday = mday;
  tm.mon = month;
  tm.year = year;
  return compose(tm, zone);
}

// Sets start and duration for a calendar `period` before `tm`'s day.
void calendarPeriod(uint32_t period, const tm_t& tm, int64_t when, ResolvedIssue& options,
                    zone_t zone) {
  int64_t end = 0;
  switch (period) {
    case kPeriodYesterday:
      options.start = composed(tm, tm.mday - 1, tm.mon, tm.year, zone);
      options.duration = 86400;
      return;
    case kPeriodLastWeek:
      options.start = composed(tm, tm.mday + (-7 - (tm.wday + 6) % 7), tm.mon, tm.year, zone);
      options.duration = 604800;
      return;
    case kPeriodLastMonth:
      options.start = composed(tm, 1, tm.mon - 1, tm.year, zone);
      end = composed(tm, 1, tm.mon, tm.year, zone);
      break;
    case kPeriodLastYear:
      options.start = composed(tm, 1, 0, tm.year - 1, zone);
      end = composed(tm, 1, 0, tm.year, zone);
      break;
    case kPeriodEverything:
      options.start = 0;
      options.duration = when;
      return;
    case kPeriodLastQuarter:
      options.start = composed(tm, 1, tm.mon / 3 * 3 - 3, tm.year, zone);
      end = composed(tm, 1, tm.mon / 3 * 3, tm.year, zone);
      break;
    default:
      throw error::EParseError("Error got unknown period in Report::resolveIssue");
  }
  options.duration = end - options.start;
}

// A period that starts or ends before 1970 can't be shown or analysed (the
// time texts refuse such times as a broken program); it comes from a stored
// `startTime`, `duration` or order time, so it is a damaged stored value.
void checkPeriod(const ResolvedIssue& options) {
  if (options.start < 0) {
    throw error::EParseError("Report period starts before 1970: " + std::to_string(options.start));
  }
  if (options.duration < -options.start) {
    throw error::EParseError("Report period ends before 1970: start " +
                             std::to_string(options.start) + ", duration " +
                             std::to_string(options.duration));
  }
}

}  // namespace

void Report::resolveIssue(const tql::patch_t& report, int64_t when, ResolvedIssue& options,
                          zone_t zone) {
  readSettings(report, options);
  tm_t tm = local(when, zone);
  tm.hour = tm.min = tm.sec = 0;
  tm.isdst = -1;
  options.start = 0;
  options.duration = 0;
  const tql::property_t* period = report.find_property(schema::kPeriod);
  options.hasPeriod = period != nullptr;
  if (period == nullptr) return;
  if (period->is_null) {
    options.start = seconds(report, schema::kStartTime);
    options.duration = seconds(report, schema::kDuration);
  } else {
    uint32_t value = 0;
    tql::decode_enum(*period, schema::kPeriodEnum, value);
    calendarPeriod(value, tm, when, options, zone);
  }
  checkPeriod(options);
}
