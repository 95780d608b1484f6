#include "host/store_database.h"

#include <gtest/gtest.h>

#include "host/store_errors.h"
#include "host/store_test_world.h"
#include "tql/schema.h"

namespace host {
namespace {

dbms::Tql_Create_Data create_request(const tql::id_t& parent, int32_t class_) {
  dbms::Tql_Create_Data r;
  r.parent_id = parent;
  r.class_ = class_;
  r.properties.push_back(testing::string_prop(schema::kName, "x"));
  return r;
}

tsdb::interval_ptr incident(const std::string& msg, int64_t t) {
  return std::make_unique<tsdb::data_interval_incident_t>(tsdb::incident_fields{1, msg, t});
}

TEST(DatabaseTest, CreateUpdateDeleteRoundTrip) {
  Database db;
  dbms::Return_Tql_Create_Data c = db.create(create_request(tql::kRootId, schema::kNode));
  ASSERT_EQ(0, c.status);
  EXPECT_TRUE(c.details.empty());
  dbms::Tql_Update_Data u;
  u.id = c.new_id;
  u.version = c.new_version;
  u.properties.push_back(testing::string_prop(schema::kName, "y"));
  dbms::Return_Tql_Update_Data ur = db.update(u);
  ASSERT_EQ(0, ur.status);
  EXPECT_NE(c.new_version, ur.new_version);
  EXPECT_EQ(3, db.update(u).status) << "the old version lost";
  EXPECT_EQ(3, db.remove({c.new_id, c.new_version, {}, false}).status);
  EXPECT_EQ(0, db.remove({c.new_id, ur.new_version, {}, false}).status);
  EXPECT_EQ(nullptr, db.objects().find(c.new_id));
}

TEST(DatabaseTest, FailedChangesSayWhyInTheDetails) {
  Database db;
  dbms::Return_Tql_Create_Data c = db.create(create_request(tql::id_t{4, 4}, schema::kNode));
  EXPECT_EQ(1, c.status);
  ASSERT_EQ(1u, c.details.size());
  EXPECT_EQ("Parent 4.4 not found", c.details.front().msg);
  dbms::Tql_Create_Data with_id = create_request(tql::kRootId, schema::kNode);
  with_id.new_id = tql::id_t{0, 1, 77};
  EXPECT_EQ("0.1.77", db.create(with_id).new_id.text());
  EXPECT_EQ(4, db.create(with_id).status);
}

TEST(DatabaseTest, NullPropertyIsABadRequest) {
  Database db;
  dbms::Tql_Create_Data r = create_request(tql::kRootId, schema::kNode);
  r.properties.emplace_back();
  EXPECT_THROW(db.create(r), EBadRequest);
  EXPECT_EQ(2u, db.objects().size());
}

TEST(DatabaseTest, SelectWithIncomparableConditionGivesStatus11) {
  Database db;
  db.create(create_request(tql::kRootId, schema::kNode));
  dbms::Tql_Select_Data s;
  s.root_ids = {tql::kRootId};
  s.pattern = testing::step(
      schema::kDomain, 0,
      {testing::with_where(testing::step(schema::kNode, 0), testing::uint_prop(schema::kName, 1))});
  dbms::Return_Tql_Select_Data reply = db.select(s);
  EXPECT_EQ(11, reply.status);
  ASSERT_EQ(1u, reply.details.size());
  EXPECT_NE(std::string::npos, reply.details.front().msg.find("Type mismatch"));
  EXPECT_TRUE(reply.res.empty());
}

TEST(DatabaseTest, SeriesFollowTheirObject) {
  Database db;
  dbms::Return_Tql_Create_Data c = db.create(create_request(tql::kRootId, schema::kReportInstance));
  dbms::TSDB_Append_Data_Record_Data a{c.new_id, 2601, 4, incident("started", 10), 0};
  EXPECT_EQ(0, db.append_data_record(a).status);
  a.data = incident("done", 20);
  db.append_data_record(a);
  dbms::TSDB_Get_Data_Data get{c.new_id, 2601, 0, false, 0, 0x7fffffff, 0x7fffffff, 0};
  dbms::Return_TSDB_Get_Data_Data got = db.get_data(get);
  EXPECT_EQ(0, got.status);
  EXPECT_EQ(4, got.data_type);
  ASSERT_EQ(2u, got.data.size());
  db.remove({c.new_id, c.new_version, {}, false});
  EXPECT_TRUE(db.series().all().empty()) << "deleting the object deletes its series";
  EXPECT_EQ(1, db.get_data(get).status);
  EXPECT_EQ(1, db.append_data_record(a).status);
}

TEST(DatabaseTest, MissingSeriesIsEmptyAndBadRecordsAreRefused) {
  Database db;
  dbms::Return_Tql_Create_Data c = db.create(create_request(tql::kRootId, schema::kNode));
  dbms::Return_TSDB_Get_Data_Data got = db.get_data({c.new_id, 2600, 2, true, 0, 100, 0, 0});
  EXPECT_EQ(0, got.status);
  EXPECT_TRUE(got.data.empty());
  dbms::TSDB_Put_Data_Data put{c.new_id, 2600, 5, {}};
  put.data.push_back(incident("wrong", 1));
  EXPECT_THROW(db.put_data(put), EBadRequest);
  put.data.clear();
  EXPECT_EQ(0, db.put_data(put).status);
  put.id = tql::id_t{3, 3};
  EXPECT_EQ(1, db.put_data(put).status);
}

}  // namespace
}  // namespace host
