#include "analysis/row_texts.h"

#include <limits>

#include "base/time_text.h"
#include "base/value_format.h"

std::string percentText(double percent) { return numberText(percent, 3, 3) + " %"; }

namespace {

// (a + b) x 100 / total, or `none` when total is 0.
double share(double sum, int64_t total, double none) {
  if (total == 0) return none;
  return sum * 100.0 / static_cast<double>(total);
}

double d(int64_t v) { return static_cast<double>(v); }

// The entry of `words` at `value`, or `other` past its end.
template <size_t N>
std::string pick(const char* const (&words)[N], uint32_t value, const char* other) {
  return value < N ? words[value] : other;
}

}  // namespace

Percentages percentagesOf(const IssueStats& s) {
  const int64_t t = s.sum_total_time;
  return {share(d(s.sum_unknown_time) + d(s.sum_ok_time) + d(s.sum_warn_time), t,
                std::numeric_limits<double>::quiet_NaN()),
          share(d(s.sum_bad_time) + d(s.sum_alert_time), t, 0.0),
          share(d(s.sum_warn_time) + d(s.sum_ok_time), t, 0.0),
          share(d(s.sum_unknown_time), t, 0.0)};
}

std::string alertStrategyText(const uint32_t* strategy) {
  static const char* const kWords[] = {"Immediate", "ScoreKeeper"};
  return strategy == nullptr ? "unknown" : pick(kWords, *strategy, "unknown");
}

std::string forecastTimeText(uint32_t value) {
  static const char* const kWords[] = {"1 hour",   "2 hours",  "6 hours",
                                       "12 hours", "24 hours", "48 hours"};
  return pick(kWords, value, "<unknown>");
}

std::string forecastErrorText(uint32_t value) {
  static const char* const kWords[] = {"5 %", "10 %", "15 %", "20 %", "25 %"};
  return pick(kWords, value, "<unknown>");
}

std::string stateActionText(uint32_t action) {
  static const char* const kWords[] = {"Ok", "Warn", "Alert"};
  return pick(kWords, action, "Unknown");
}

std::string logCheckRuleText(const std::string& regex, uint32_t status, uint32_t decision,
                             const std::string& target) {
  static const char* const kStatus[] = {"ok", "warn", "alert"};
  std::string what;
  switch (decision) {
    case 0:
      what = pick(kStatus, status, "unknown") + " log";
      break;
    case 1:
      what = pick(kStatus, status, "unknown") + " quiet";
      break;
    case 2:
      what = "moveto " + target;
      break;
    case 3:
      what = "copyto " + target;
      break;
    default:
      break;
  }
  return regex + ": " + what + ";";
}

std::string accumulationPeriodText(uint32_t value) {
  return isPeriodValue(value) ? period2str(static_cast<int>(value)) : "<unknown>";
}
