// Which incidents a node's log keeps, and the period texts of logs.
#include "analysis/incident_log.h"

#include <gtest/gtest.h>

#include "analysis/check_log.h"

namespace {

ReportFlags only(bool good, bool warn, bool alert, bool config) {
  ReportFlags f;
  f.goodScore = good;
  f.warnScore = warn;
  f.alertScore = alert;
  f.includeConfig = config;
  return f;
}

TEST(ConfigurationChange, TriedBeforeAccessAndTheOtherMarks) {
  EXPECT_TRUE(isConfigurationChange("admin tried to change web1, access granted"));
  EXPECT_FALSE(isConfigurationChange("web1, access denied when admin tried to log in"));
  EXPECT_TRUE(isConfigurationChange("admin tried twice"));
  EXPECT_FALSE(isConfigurationChange("tried without a blank before it"));
  EXPECT_TRUE(isConfigurationChange("New master key generated"));
  EXPECT_TRUE(isConfigurationChange("NodeClasses: Linux added"));
  EXPECT_FALSE(isConfigurationChange("NodeClasses:Linux"));
  EXPECT_FALSE(isConfigurationChange("web1 is up"));
}

TEST(KeepIncident, EachFlagKeepsItsOwnSeverity) {
  const std::string plain = "web1 is up";
  const std::string change = "admin tried to change web1";
  const ReportFlags all = only(true, true, true, true);
  for (uint32_t sev : {1u, 2u, 4u}) EXPECT_TRUE(keepIncident(all, sev, plain)) << sev;
  EXPECT_TRUE(keepIncident(all, 1, change));
  for (uint32_t sev : {0u, 3u, 5u, 8u}) EXPECT_FALSE(keepIncident(all, sev, plain)) << sev;

  const ReportFlags alertOnly = only(false, false, true, false);
  EXPECT_TRUE(keepIncident(alertOnly, 4, plain));
  EXPECT_FALSE(keepIncident(alertOnly, 2, plain));
  EXPECT_FALSE(keepIncident(alertOnly, 1, plain));

  const ReportFlags warnOnly = only(false, true, false, false);
  EXPECT_TRUE(keepIncident(warnOnly, 2, plain));
  EXPECT_FALSE(keepIncident(warnOnly, 4, plain));
}

TEST(KeepIncident, ConfigurationChangesFollowIncludeConfigAlone) {
  const std::string plain = "web1 is up";
  const std::string change = "New master key generated";
  // Only includeConfig: ordinary severity 1 goes, changes stay.
  const ReportFlags configOnly = only(false, false, false, true);
  EXPECT_TRUE(keepIncident(configOnly, 1, change));
  EXPECT_FALSE(keepIncident(configOnly, 1, plain));
  // goodScore without includeConfig: changes go even though they are severity 1.
  const ReportFlags goodOnly = only(true, false, false, false);
  EXPECT_FALSE(keepIncident(goodOnly, 1, change));
  EXPECT_TRUE(keepIncident(goodOnly, 1, plain));
  // A change is only one at severity 1.
  EXPECT_TRUE(keepIncident(only(false, false, true, false), 4, change));
}

tsdb::interval_ptr incident(uint32_t sev, std::string msg, int64_t itime) {
  auto p = std::make_unique<tsdb::data_interval_incident_t>();
  p->sev = sev;
  p->msg = std::move(msg);
  p->itime = itime;
  return tsdb::interval_ptr(std::move(p));
}

TEST(KeptIncidents, InOrderOfTheReply) {
  std::vector<tsdb::interval_ptr> reply;
  reply.push_back(incident(4, "down", 10));
  reply.push_back(incident(1, "up", 20));
  reply.push_back(incident(3, "odd", 30));
  reply.push_back(incident(2, "slow", 40));
  reply.push_back(incident(4, "down again", 50));
  reply.push_back(tsdb::interval_ptr(std::make_unique<tsdb::data_interval_enum_t>()));
  const auto kept = keptIncidents(only(false, true, true, true), std::move(reply));
  std::string texts;
  for (const auto& p : kept) {
    texts += static_cast<const tsdb::data_interval_incident_t&>(*p).msg + ";";
  }
  EXPECT_EQ("down;slow;down again;", texts);
}

TEST(PeriodText, FromTheStartOfMonitoringOrThePeriod) {
  const zone_t gmt = timeZoneValue(0);
  ResolvedIssue issue;
  issue.duration = 1700000000;
  EXPECT_EQ("start of monitoring to 2023-11-14 22:13:20", periodText(issue, gmt));
  issue.start = 1700000000;
  issue.duration = 3600;
  EXPECT_EQ("2023-11-14 22:13:20 to 2023-11-14 23:13:20", periodText(issue, gmt));
}

}  // namespace
