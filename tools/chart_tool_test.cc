#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "base/error.h"
#include "tools/chart_input.h"
#include "tools/commands.h"

namespace tools {

std::vector<Command> chart_commands();

namespace {

const char* const kContinuous = R"({
  "start": 1767225600, "end": 1767312000, "data_type": 5,
  "unit": {"blob_hex": "1109"}, "warnIfAbove": {"real": 80},
  "alertIfAbove": null, "graphShowMinMax": {"uint": 1},
  "records": [[1767225600, 1767229200, 10, 20, 30, 5, 1],
              [1767229200, 1767232800, 15, 25, 35, 6, 0]]
})";

std::string parseError(const std::string& json) {
  try {
    parseChartInput(json);
  } catch (const error::EParseError& e) {
    return e.text();
  }
  return "no error";
}

TEST(ChartInput, ReadsPropertiesByNameAndRecords) {
  const ChartInput in = parseChartInput(kContinuous);
  EXPECT_EQ(1767225600, in.start);
  EXPECT_EQ(5, in.dataType);
  ASSERT_EQ(2u, in.records.size());
  std::string text;
  in.records[1]->text(text);
  EXPECT_NE(std::string::npos, text.find("(avg: 25"));
  EXPECT_EQ("80.000000", in.graphObject.property(510).text());  // warnIfAbove
  EXPECT_TRUE(in.graphObject.property(511).is_null);            // alertIfAbove
  EXPECT_EQ(std::string("\x11\x09", 2),
            static_cast<const tql::property_blob_t&>(in.graphObject.property(2300)).value);  // unit
  const ChartInput e = parseChartInput(
      R"({"start": 0, "end": 10, "data_type": 3, "stateColors": {"string": "gr"},
          "records": [[3, 1, 0, 0, 10]]})");
  e.records[0]->text(text);
  EXPECT_NE(std::string::npos, text.find("(mask: 3)"));
}

TEST(ChartInput, TellsWhatIsWrong) {
  EXPECT_EQ("missing field records", parseError(R"({"start": 0, "end": 1, "data_type": 5})"));
  EXPECT_EQ("data_type must be 2, 3, 5 or 6",
            parseError(R"({"start": 0, "end": 1, "data_type": 4, "records": []})"));
  EXPECT_EQ("nosuchthing: unknown property nosuchthing",
            parseError(R"({"start": 0, "end": 1, "data_type": 5, "records": [],
                           "nosuchthing": null})"));
  EXPECT_EQ("unit: unknown value kind hex",
            parseError(R"({"start": 0, "end": 1, "data_type": 5, "records": [],
                           "unit": {"hex": "11"}})"));
  EXPECT_EQ("records[0]: a continuous record is [start, end, min, avg, max, ngood, nbad]",
            parseError(R"({"start": 0, "end": 1, "data_type": 5, "records": [[1, 2]]})"));
  EXPECT_NE(
      std::string::npos,
      parseError(R"({"start": "x", "end": 1, "data_type": 5, "records": []})").find("start: "));
  EXPECT_EQ(0u, parseError("{").find("invalid JSON: "));
  EXPECT_EQ("expected a JSON object", parseError("[]"));
}

class ChartCommand : public ::testing::Test {
 protected:
  void SetUp() override {
    dir_ = std::filesystem::temp_directory_path() /
           ("chart_tool_test." +
            std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
    std::filesystem::create_directories(dir_);
  }
  void TearDown() override { std::filesystem::remove_all(dir_); }

  int run(const std::string& json, std::vector<std::string> extra) {
    std::ofstream(dir_ / "in.json") << json;
    std::vector<std::string> words = {"--in", (dir_ / "in.json").string(), "--out",
                                      (dir_ / "out.png").string()};
    words.insert(words.end(), extra.begin(), extra.end());
    Args args(words);
    return chart_commands().at(0).run(args);
  }
  // Width and height from the written PNG's header.
  std::pair<int, int> size() const {
    std::ifstream in(dir_ / "out.png", std::ios::binary);
    std::string bytes((std::istreambuf_iterator<char>(in)), {});
    auto word = [&](size_t at) {
      int v = 0;
      for (size_t i = 0; i < 4; ++i) v = v << 8 | uint8_t(bytes.at(at + i));
      return v;
    };
    return {word(16), word(20)};
  }

  std::filesystem::path dir_;
};

TEST_F(ChartCommand, DrawsTheChartAtEachSize) {
  EXPECT_EQ(0, run(kContinuous, {"--zone", "0"}));
  EXPECT_EQ((std::pair<int, int>{600, 151}), size());
  EXPECT_EQ(0, run(kContinuous, {"--size", "small"}));
  EXPECT_EQ((std::pair<int, int>{200, 101}), size());
  EXPECT_EQ(0, run(kContinuous, {"--size", "large", "--zone", "3600"}));
  EXPECT_EQ((std::pair<int, int>{1000, 231}), size());
}

TEST_F(ChartCommand, BadArgumentsAndFiles) {
  EXPECT_THROW(run(kContinuous, {"--size", "huge"}), error::EParseError);
  EXPECT_THROW(run(kContinuous, {"--zone", "99999999999"}), error::EParseError);
  EXPECT_THROW(run(kContinuous, {"--colour", "red"}), error::EParseError);
  Args missing({"--in", (dir_ / "none.json").string(), "--out", (dir_ / "x.png").string()});
  EXPECT_THROW(chart_commands().at(0).run(missing), error::Exception);
  Args unwritable(
      {"--in", (dir_ / "in.json").string(), "--out", (dir_ / "no" / "dir" / "x.png").string()});
  EXPECT_THROW(chart_commands().at(0).run(unwritable), error::Exception);
}

}  // namespace
}  // namespace tools
