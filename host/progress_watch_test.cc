#include "host/progress_watch.h"

#include <gtest/gtest.h>

#include <sstream>

#include "tql/schema.h"

namespace host {
namespace {

// A `progress`, and a `name` unless it is empty.
std::vector<tql::property_ptr> instance_props(uint32_t progress, const std::string& name = "") {
  std::vector<tql::property_ptr> props;
  props.emplace_back(tql::make_property<tql::kind::kUint>(schema::kProgress, progress));
  if (!name.empty()) props.emplace_back(tql::make_string_property(schema::kName, name));
  return props;
}

TEST(ProgressWatchTest, TellsEachNewPercentageOfAnInstanceOnce) {
  ObjectStore store;
  ChangeResult report = store.create(tql::kRootId, schema::kReport, {});
  ChangeResult instance =
      store.create(report.id, schema::kReportInstance, instance_props(1, "Weekly web servers"));
  std::ostringstream out;
  ProgressWatch watch(out);
  watch.changed(store, instance.id);
  ChangeResult same = store.update(instance.id, instance.version, instance_props(1));
  watch.changed(store, instance.id);
  ChangeResult later = store.update(instance.id, same.version, instance_props(42));
  watch.changed(store, instance.id);
  store.update(instance.id, later.version, instance_props(100));
  watch.changed(store, instance.id);
  std::string id = instance.id.text();
  EXPECT_EQ("progress: " + id + " 1% Weekly web servers\nprogress: " + id +
                " 42% Weekly web servers\nprogress: " + id + " 100% Weekly web servers\n",
            out.str());
}

TEST(ProgressWatchTest, KeepsInstancesApart) {
  ObjectStore store;
  ChangeResult report = store.create(tql::kRootId, schema::kReport, {});
  ChangeResult a = store.create(report.id, schema::kReportInstance, instance_props(5, "A"));
  ChangeResult b = store.create(report.id, schema::kReportInstance, instance_props(5, "B"));
  std::ostringstream out;
  ProgressWatch watch(out);
  watch.changed(store, a.id);
  watch.changed(store, b.id);
  EXPECT_EQ("progress: " + a.id.text() + " 5% A\nprogress: " + b.id.text() + " 5% B\n", out.str());
}

TEST(ProgressWatchTest, PassesOverWhatIsNoInstanceProgress) {
  ObjectStore store;
  // A Report with a progress of its own is not an instance.
  ChangeResult report = store.create(tql::kRootId, schema::kReport, instance_props(30));
  ChangeResult bare = store.create(report.id, schema::kReportInstance, {});
  std::vector<tql::property_ptr> null_progress = instance_props(7);
  null_progress[0]->is_null = true;
  ChangeResult nulled = store.create(report.id, schema::kReportInstance, std::move(null_progress));
  std::vector<tql::property_ptr> wrong_kind;
  wrong_kind.emplace_back(tql::make_string_property(schema::kProgress, "50"));
  ChangeResult text = store.create(report.id, schema::kReportInstance, std::move(wrong_kind));
  std::ostringstream out;
  ProgressWatch watch(out);
  for (const tql::id_t& id : {report.id, bare.id, nulled.id, text.id, tql::id_t{0, 1, 999}}) {
    watch.changed(store, id);
  }
  EXPECT_EQ("", out.str());
}

TEST(ProgressWatchTest, AnInstanceWithoutNameEndsTheLineAfterThePercentage) {
  ObjectStore store;
  ChangeResult report = store.create(tql::kRootId, schema::kReport, {});
  ChangeResult instance = store.create(report.id, schema::kReportInstance, instance_props(3));
  std::ostringstream out;
  ProgressWatch watch(out);
  watch.changed(store, instance.id);
  EXPECT_EQ("progress: " + instance.id.text() + " 3% \n", out.str());
}

}  // namespace
}  // namespace host
