#include "analysis/issue_stats.h"

#include <limits>

#include "analysis/wrap.h"

double IssueStats::availability() const {
  if (sum_total_time == 0) return std::numeric_limits<double>::quiet_NaN();
  const double available = static_cast<double>(sum_unknown_time) +
                           static_cast<double>(sum_ok_time) + static_cast<double>(sum_warn_time);
  return available * 100.0 / static_cast<double>(sum_total_time);
}

void IssueStats::merge(const IssueStats& child) {
  sum_ok_time = wrapAdd(sum_ok_time, child.sum_ok_time);
  sum_warn_time = wrapAdd(sum_warn_time, child.sum_warn_time);
  sum_alert_time = wrapAdd(sum_alert_time, child.sum_alert_time);
  sum_bad_time = wrapAdd(sum_bad_time, child.sum_bad_time);
  sum_unknown_time = wrapAdd(sum_unknown_time, child.sum_unknown_time);
  sum_total_time = wrapAdd(sum_total_time, child.sum_total_time);
  checks += child.checks;
  if (child.checks > 0 && worst > child.worst) {
    worst = child.worst;
    worstFolder = child.worstFolder;
    worstName = child.worstName;
  }
}
