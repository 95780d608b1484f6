#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "host/store_errors.h"
#include "host/world_dump.h"
#include "host/world_load.h"
#include "host/world_values.h"

namespace host {
namespace {

using Json = nlohmann::json;

// The example of WORLD.md, so that the documentation stays loadable.
std::string documented_example() {
  std::ifstream in(std::string(HOST_SOURCE_DIR) + "/WORLD.md");
  std::stringstream text;
  text << in.rdbuf();
  const std::string doc = text.str();
  const size_t start = doc.find("```json\n") + 8;
  return doc.substr(start, doc.find("```", start) - start);
}

struct Loaded {
  Database db;
  control::Server_Configuration_Fields config;
};

// The message of the EWorldError that loading `text` raises, or "loaded".
std::string load_error(const std::string& text) {
  Loaded w;
  try {
    load_world_text(text, w.db, w.config);
  } catch (const EWorldError& e) {
    return e.text();
  }
  return "loaded";
}

const StoredObject& at(const Database& db, const std::string& id) {
  tql::id_t parsed;
  size_t pos = 0;
  while (pos <= id.size()) {
    size_t dot = std::min(id.find('.', pos), id.size());
    parsed.push_back(static_cast<uint32_t>(std::stoul(id.substr(pos, dot - pos))));
    pos = dot + 1;
  }
  return *db.objects().find(parsed);
}

TEST(WorldLoadTest, DocumentedExampleLoads) {
  Loaded w;
  load_world_text(documented_example(), w.db, w.config);
  EXPECT_EQ("localhost:2525", w.config.mail_server);
  EXPECT_EQ(13u, w.db.objects().size()) << "11 objects, the root and ClusterInfo";
  EXPECT_EQ("\"main\"", w.db.objects().find({})->properties.at(1906)->text());
  const StoredObject& node = at(w.db, "0.1.100");
  EXPECT_EQ(4, node.class_);
  EXPECT_EQ("\"0.2\"", node.properties.at(203)->text());
  EXPECT_EQ(3u, w.db.series().all().size());
  // Servers is 0.1.1, Services 0.1.2, HTTP 0.1.3: the node's id is taken.
  const Series* http = w.db.series().find(tql::id_t{0, 1, 3}, 2600);
  ASSERT_NE(nullptr, http);
  EXPECT_EQ(5, http->data_type);
  EXPECT_EQ(2u, http->records.size());
}

TEST(WorldLoadTest, AssignedIdsSkipTheIdsThatTheFileNames) {
  Loaded w;
  load_world_text(R"({"objects": {"class": "Domain", "children": [
      {"class": "Node"}, {"class": "Node", "id": "0.1.1"}, {"class": "Node"}]}})",
                  w.db, w.config);
  const std::vector<tql::id_t>& c = w.db.objects().find(tql::kRootId)->children;
  ASSERT_EQ(3u, c.size());
  EXPECT_EQ("0.1.2 0.1.1 0.1.3", c[0].text() + " " + c[1].text() + " " + c[2].text());
}

TEST(WorldLoadTest, ReferencesByPathMayPointForward) {
  Loaded w;
  load_world_text(R"({"objects": {"class": "Domain", "children": [
      {"class": "Report", "props": {"contains": {"object_set": ["/a/b", "/a"]},
                                    "owner": {"object": "/a/b"}}},
      {"class": "Domain", "id": "0.1.9", "props": {"name": {"string": "a"}},
       "children": [{"class": "Node", "id": "0.1.8", "props": {"siblingName": {"string": "b"}}}]}]}})",
                  w.db, w.config);
  const StoredObject& report = at(w.db, "0.1.1");
  EXPECT_EQ("{\"0.1.8\", \"0.1.9\"}", report.properties.at(324)->text());
  EXPECT_EQ("\"0.1.8\"", report.properties.at(317)->text());
}

TEST(WorldLoadTest, EveryValueKindRoundTrips) {
  const char* values[] = {
      R"({"string":"x"})",
      R"({"string_list":["a","b"]})",
      R"({"object_set":["0.1"]})",
      R"({"object":"0.1"})",
      R"({"version":[7,3]})",
      R"({"action":2})",
      R"({"real":1.5})",
      R"({"real":"nan"})",
      R"({"real":"-inf"})",
      R"({"bignum_hex":"01020304"})",
      R"({"gid":16909060})",
      R"({"gid_list":[1,2]})",
      R"({"date":-5})",
      R"({"index":4})",
      R"({"int":-3})",
      R"({"uint":4294967295})",
      R"({"bool":false})",
      R"({"blob_hex":"00ff"})",
      R"({"lob_hex":""})",
      R"({"oid":[1,3,6]})",
      R"({"enum":[65546,3]})",
      R"({"null":"enum"})",
  };
  const Resolver resolve = [](const std::string&, const std::string&) { return tql::kRootId; };
  for (const char* v : values) {
    tql::property_ptr p = property_from_json(51, Json::parse(v), "p", resolve);
    EXPECT_EQ(Json::parse(v), property_to_json(*p)) << v;
    EXPECT_EQ(51, p->name);
  }
}

TEST(WorldLoadTest, BrokenWorldsNameThePathOfTheBadValue) {
  const std::pair<const char*, const char*> cases[] = {
      {R"({"objects": {"class": "Domain", "children": [{"class": "Nodes"}]}})",
       "objects.children[0].class: unknown class \"Nodes\""},
      {R"({"objects": {"class": "Domain", "children": [{"class": "Check", "props": {"active": {"bool": 1}}}]}})",
       "objects.children[0].props.active.bool: expected true or false"},
      {R"({"objects": {"class": "Domain", "props": {"nmae": {"string": "x"}}}})",
       "objects.props.nmae: unknown property \"nmae\""},
      {R"({"objects": {"class": "Domain", "props": {"name": "x"}}})",
       "objects.props.name: expected a typed value with one member, one of: string, string_list, "
       "object_set, object, version, action, real, bignum_hex, gid, gid_list, date, index, int, "
       "uint, bool, blob_hex, lob_hex, oid, enum, null"},
      {R"({"objects": {"class": "Domain", "props": {"order": {"uint": -1}}}})",
       "objects.props.order.uint: expected an unsigned 32-bit integer"},
      {R"({"objects": {"class": "Domain", "props": {"order": {"null": "unit"}}}})",
       "objects.props.order: a null value names its kind, one of: string, string_list, "
       "object_set, object, version, action, real, bignum_hex, gid, gid_list, date, index, int, "
       "uint, bool, blob_hex, lob_hex, oid, enum, null"},
      {R"({"objects": {"class": "Domain", "props": {"owner": {"object": "/x"}}}})",
       "objects.props.owner.object: no object at \"/x\": nothing named \"x\" in /"},
      {R"({"objects": {"class": "Domain", "props": {"owner": {"object": "0.1.4"}}}})",
       "objects.props.owner.object: no object with id \"0.1.4\""},
      {R"({"objects": {"class": "Domain", "props": {"unit": {"blob_hex": "abc"}}}})",
       "objects.props.unit.blob_hex: expected an even number of hexadecimal digits"},
      {R"({"objects": {"class": "Domain", "children": [{"class": "Node", "id": "1.2.3.4"}]}})",
       "objects.children[0].id: bad object id \"1.2.3.4\""},
      {R"({"objects": {"class": "Domain", "children": [{"class": "Node", "id": "0.1.5"}, {"class": "Node", "id": "0.1.5"}]}})",
       "objects.children[1].id: id \"0.1.5\" given twice"},
      {R"({"objects": {"class": "Node"}})", "objects.class: the root object is a Domain"},
      {R"({"objects": {"class": "Domain", "kids": []}})", "objects.kids: unknown member"},
      {R"({"objects": {"class": "Domain", "children": [{"class": "Report", "children": [
          {"class": "ReportInstance", "props": {"order": {"uint": 1}}},
          {"class": "ReportInstance", "props": {"order": {"uint": 1}}}]}]}})",
       "objects.children[0].children[1].props: ReportInstance 0.1.2 has the same order 1"},
      {R"({"config": {"mail_sever": "x"}})", "config.mail_sever: unknown configuration field"},
      {R"({"config": {"log_mask": "1"}})", "config.log_mask: expected a 32-bit integer"},
      {R"({"config": {"log_mask": 18446744073709551615}})",
       "config.log_mask: expected a 32-bit integer"},
      {R"({"series": [{"owner": "0.1", "property": "tsdbIndex", "data_type": 4294967301, "records": []}]})",
       "series[0].data_type: expected a data type, 2 to 6"},
      {R"({"series": [{"owner": "0.1", "property": "tsdbIndex", "data_type": 7, "records": []}]})",
       "series[0].data_type: expected a data type, 2 to 6"},
      {R"({"series": [{"owner": "0.1", "property": "tsdbIndex", "data_type": 5, "records": [[1, 2, 3]]}]})",
       "series[0].records[0]: expected a record [start, end, min, avg, max, ngood, nbad]"},
      {R"({"series": [{"owner": "0.1", "property": "tsdbIndex", "data_type": 3, "records": [[1, 0, -1, 0, 5]]}]})",
       "series[0].records[0][2]: expected an unsigned 32-bit integer"},
      {R"({"series": [{"owner": "0.1", "property": "tsdbIndex", "data_type": 4, "records": [[1, 2, 3]]}]})",
       "series[0].records[0][1]: expected a string"},
      {R"({"series": [{"owner": "0.1", "data_type": 4, "records": []}]})",
       "series[0]: missing member \"property\""},
      {R"({"series": [{"owner": "0.1", "property": "tsdbIndex", "data_type": 4, "records": []},
                      {"owner": "0.1", "property": "2600", "data_type": 4, "records": []}]})",
       "series[1]: a second series for owner 0.1 and property tsdbIndex"},
      {R"([1])", "expected a world: an object with config, objects, cluster, series and faults"},
  };
  for (const auto& [world, message] : cases) EXPECT_EQ(message, load_error(world)) << world;
}

TEST(WorldLoadTest, ConfigFieldsOfEveryTypeRoundTrip) {
  Loaded w;
  load_world_text(R"({"config": {"passive": true, "log_mask": -4096, "mail_from": "a@b",
                                  "modem_options": ["x", "y"], "snmp_timeout_initial": 1.25}})",
                  w.db, w.config);
  EXPECT_TRUE(w.config.passive);
  EXPECT_EQ(-4096, w.config.log_mask);
  EXPECT_EQ((std::set<std::string>{"x", "y"}), w.config.modem_options);
  EXPECT_EQ(TimeValue(1, 250000), w.config.snmp_timeout_initial);
  Loaded again;
  load_world(Json{{"config", dump_world(w.db, w.config)["config"]}}, again.db, again.config);
  EXPECT_EQ(w.config, again.config);
  EXPECT_EQ("config.snmp_timeout_max: expected a number of seconds, 0 or more",
            load_error(R"({"config": {"snmp_timeout_max": -1}})"));
  EXPECT_EQ("config.modem_options: expected an array of strings",
            load_error(R"({"config": {"modem_options": [1]}})"));
}

TEST(WorldLoadTest, DeeplyNestedObjectsAreRefusedBeforeLoading) {
  std::string text = R"({"objects": {"class": "Domain")";
  for (int i = 0; i < 300; ++i) text += R"(, "children": [{"class": "Node")";
  for (int i = 0; i < 300; ++i) text += "}]";
  const std::string error = load_error(text + "}}");
  EXPECT_NE(std::string::npos, error.find(": objects nested deeper than 256 levels")) << error;
}

TEST(WorldLoadTest, FaultsLoadDumpAndRefuseBadValues) {
  Loaded w;
  EXPECT_EQ(0, w.db.subscription_fault());
  EXPECT_FALSE(dump_world(w.db, w.config).contains("faults"));
  load_world_text(R"({"faults": {"subscription_status": 5}})", w.db, w.config);
  EXPECT_EQ(5, w.db.subscription_fault());
  Json dumped = dump_world(w.db, w.config);
  EXPECT_EQ(5, dumped["faults"]["subscription_status"]);
  Loaded again;
  load_world_text(dumped.dump(), again.db, again.config);
  EXPECT_EQ(5, again.db.subscription_fault());

  EXPECT_EQ("faults.subscription_status: expected a status from 0 to 2147483647",
            load_error(R"({"faults": {"subscription_status": -1}})"));
  EXPECT_EQ("faults.subscription_status: expected a status from 0 to 2147483647",
            load_error(R"({"faults": {"subscription_status": "5"}})"));
  EXPECT_EQ("faults.other: unknown member", load_error(R"({"faults": {"other": 1}})"));
}

TEST(WorldLoadTest, FailingCreatesAndUpdatesLoadDumpAndFail) {
  Loaded w;
  load_world_text(R"({"objects": {"class": "Domain", "id": "0.1",
                                  "children": [{"class": "Node", "id": "0.1.5"}]},
                      "faults": {"fail_create": ["ReportResultGraph"], "fail_update": ["Node"]}})",
                  w.db, w.config);
  dbms::Tql_Create_Data create;
  create.parent_id = tql::id_t{0, 1};
  create.class_ = 41;  // ReportResultGraph
  dbms::Return_Tql_Create_Data created = w.db.create(create);
  EXPECT_EQ(Database::kInjectedFailure, created.status);
  ASSERT_EQ(1u, created.details.size());
  EXPECT_EQ("Injected failure: creates of ReportResultGraph fail", created.details.front().msg);
  create.class_ = 39;  // ReportResultFolder: not failing
  EXPECT_EQ(0, w.db.create(create).status);
  dbms::Tql_Update_Data update;
  update.id = tql::id_t{0, 1, 5};
  update.version = w.db.objects().find(update.id)->version;
  EXPECT_EQ(Database::kInjectedFailure, w.db.update(update).status);
  update.id = tql::kRootId;
  update.version = w.db.objects().find(update.id)->version;
  EXPECT_EQ(0, w.db.update(update).status);

  const Json dumped = dump_world(w.db, w.config);
  EXPECT_EQ(Json::parse(R"({"fail_create": ["ReportResultGraph"], "fail_update": ["Node"]})"),
            dumped["faults"]);
  Loaded again;
  load_world_text(dumped.dump(), again.db, again.config);
  EXPECT_EQ(w.db.failing_creates(), again.db.failing_creates());
  EXPECT_EQ(w.db.failing_updates(), again.db.failing_updates());

  EXPECT_EQ("faults.fail_create: expected an array of class names",
            load_error(R"({"faults": {"fail_create": "Node"}})"));
  EXPECT_EQ("faults.fail_update[0]: expected a class name",
            load_error(R"({"faults": {"fail_update": [4]}})"));
}

TEST(WorldLoadTest, VanishAfterLoadsDumpsAndRefusesBadCounts) {
  Loaded w;
  EXPECT_FALSE(w.db.vanish_after().has_value());
  load_world_text(R"({"faults": {"vanish_after": 0}})", w.db, w.config);
  EXPECT_EQ(std::optional<int64_t>(0), w.db.vanish_after());
  load_world_text(R"({"faults": {"vanish_after": 80}})", w.db, w.config);
  const Json dumped = dump_world(w.db, w.config);
  EXPECT_EQ(Json::parse(R"({"vanish_after": 80})"), dumped["faults"]);
  Loaded again;
  load_world_text(dumped.dump(), again.db, again.config);
  EXPECT_EQ(std::optional<int64_t>(80), again.db.vanish_after());

  for (const char* bad : {"-1", "1.5", "\"80\"", "null"}) {
    EXPECT_EQ("faults.vanish_after: expected a number of requests from 0",
              load_error(std::string(R"({"faults": {"vanish_after": )") + bad + "}}"))
        << bad;
  }
}

TEST(WorldLoadTest, SyntaxErrorsAndMissingFilesAreWorldErrors) {
  EXPECT_EQ(0u, load_error(R"({"objects": )").find("not valid JSON: "));
  // The parser raises out_of_range, not parse_error, for a number that no
  // double holds; it once ended the process.
  const std::string overflow = load_error(R"({"config": {"log_mask": 1e9999}})");
  EXPECT_EQ(0u, overflow.find("not valid JSON: ")) << overflow;
  EXPECT_NE(std::string::npos, overflow.find("number overflow")) << overflow;
  Loaded w;
  EXPECT_THROW(load_world_file("/nonexistent/world.json", w.db, w.config), EWorldError);
}

// Any JSON nesting deeper than 1024 levels is refused before parsing, wherever
// it is (here in the comment, which is otherwise not looked at); brackets in
// strings don't count.
TEST(WorldLoadTest, DeepJsonIsRefusedBeforeParsing) {
  auto nested = [](int levels) {
    return R"({"comment": )" + std::string(levels - 1, '[') + std::string(levels - 1, ']') + "}";
  };
  EXPECT_EQ("loaded", load_error(nested(1024)));
  EXPECT_EQ("not valid JSON: arrays and objects nested deeper than 1024 levels at byte 1036",
            load_error(nested(1025)));
  EXPECT_EQ("not valid JSON: arrays and objects nested deeper than 1024 levels at byte 1025",
            load_error(std::string(100000, '{')));
  EXPECT_EQ("loaded", load_error(R"({"comment": ")" + std::string(5000, '[') + R"(\"{"})"));
}

TEST(WorldDumpTest, DumpLoadsAgainIntoAnEqualDatabase) {
  Loaded first;
  load_world_text(documented_example(), first.db, first.config);
  const Json dump = dump_world(first.db, first.config);
  Loaded second;
  load_world(dump, second.db, second.config);
  EXPECT_EQ(dump, dump_world(second.db, second.config));
  EXPECT_EQ(first.config, second.config);
  ASSERT_EQ(first.db.objects().size(), second.db.objects().size());
  for (const auto& [id, object] : first.db.objects().objects()) {
    const StoredObject* other = second.db.objects().find(id);
    ASSERT_NE(nullptr, other) << id.text();
    EXPECT_EQ(object.class_, other->class_);
    EXPECT_EQ(object.children, other->children);
    EXPECT_EQ(object.properties, other->properties) << id.text();
  }
  for (const auto& [key, series] : first.db.series().all()) {
    const Series* other = second.db.series().find(key.first, key.second);
    ASSERT_NE(nullptr, other);
    EXPECT_EQ(series.records, other->records);
  }
}

TEST(WorldDumpTest, DumpWritesIdsNamesAndNumbers) {
  Loaded w;
  load_world_text(R"({"objects": {"class": "Domain", "children": [
      {"class": "Node", "props": {"name": {"string": "n"}, "99999": {"uint": 1}}}]}})",
                  w.db, w.config);
  const Json dump = dump_world(w.db, w.config);
  EXPECT_EQ(Json::parse(R"({"class": "Domain", "id": "0.1", "children": [
      {"class": "Node", "id": "0.1.1", "props": {"name": {"string": "n"}, "99999": {"uint": 1}}}]})"),
            dump["objects"]);
  EXPECT_FALSE(dump.contains("cluster"));
  EXPECT_EQ(Json::array(), dump["series"]);
  EXPECT_EQ("", dump["config"]["mail_server"]);
}

}  // namespace
}  // namespace host
