// Checks every number of schema.h against the catalogue. The header is read
// as text, so that each constant added to it later is checked as well.
#include "tql/schema.h"

#include <gtest/gtest.h>

#include <cctype>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "tql/catalogue.h"

namespace tql {
namespace {

struct SchemaReading {
  std::map<std::string, int64_t> values;  // Every constant, by its C++ name.
  std::vector<std::string> faults;        // What disagrees with the catalogue.
};

const char* const kSchemaSections[] = {"Classes.", "Properties.", "Enumerations", "Folder types"};

// The catalogue name a constant stands for: the backquoted name that its
// comment begins with, else its C++ name without the `k`, with a lower-case
// first letter for a property.
std::string catalogue_name_of(const std::string& name, const std::string& comment, bool property) {
  if (comment.size() > 1 && comment[0] == '`') return comment.substr(1, comment.find('`', 1) - 1);
  std::string out = name.substr(1);
  if (property) out[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(out[0])));
  return out;
}

bool is_property_name(const std::string& name) {
  for (const auto& [number, known] : property_names()) {
    if (known == name) return true;
  }
  return false;
}

// The fault of one constant of `section` (an index into kSchemaSections), or "".
// `index` counts the constants of the section before this one; `previous` is
// the value of the one before it.
std::string schema_fault_of(size_t section, const std::string& type, const std::string& name,
                            int64_t value, const std::string& comment, int index,
                            int64_t previous) {
  const std::string head = name + " = " + std::to_string(value) + ": ";
  const bool numbered = section < 3;
  if (numbered && index > 0 && value <= previous) return head + "out of order";
  if (section == 0 || section == 1) {
    if (type != "int32_t") return head + "not int32_t";
    const std::string want = catalogue_name_of(name, comment, section == 1);
    const std::string have = section == 0 ? class_name(static_cast<int32_t>(value))
                                          : property_name(static_cast<int32_t>(value));
    if (have != want) return head + "the catalogue says `" + have + "`, not `" + want + "`";
    return "";
  }
  if (type != "uint32_t") return head + "not uint32_t";
  if (section == 2) {
    if (name.size() < 5 || name.compare(name.size() - 4, 4, "Enum") != 0) {
      return head + "an enumeration's name ends in Enum";
    }
    if (value < 0x10000 || value > 0x1ffff) return head + "not an enumeration type number";
    const std::string property = catalogue_name_of("k", comment, true);
    if (property.empty() || !is_property_name(property)) return head + "names no property";
    return "";
  }
  if (name.rfind("kFolder", 0) != 0) return head + "a folder type's name begins with kFolder";
  if (value != index) return head + "folder types count up from 0";
  return "";
}

SchemaReading read_schema_text(std::istream& in) {
  static const std::regex kDeclaration(
      R"(inline constexpr (int32_t|uint32_t) (k[A-Za-z0-9]+) = (0x[0-9a-f]+|[0-9]+);(?: +// (.*))?)");
  SchemaReading out;
  size_t section = std::size(kSchemaSections);  // None yet.
  int index = 0;
  int64_t previous = 0;
  std::string line;
  for (int number = 1; std::getline(in, line); ++number) {
    for (size_t s = 0; s < std::size(kSchemaSections); ++s) {
      if (line.rfind(std::string("// ") + kSchemaSections[s], 0) == 0) {
        section = s;
        index = 0;
      }
    }
    if (line.find("constexpr") == std::string::npos) continue;
    std::smatch m;
    if (!std::regex_match(line, m, kDeclaration)) {
      out.faults.push_back("line " + std::to_string(number) + ": not understood");
      continue;
    }
    const std::string name = m[2];
    const int64_t value = std::stoll(m[3], nullptr, 0);
    out.values[name] = value;
    std::string fault = section == std::size(kSchemaSections)
                            ? name + ": before the first section"
                            : schema_fault_of(section, m[1], name, value, m[4], index, previous);
    if (!fault.empty()) out.faults.push_back(fault);
    ++index;
    previous = value;
  }
  return out;
}

// The faults of a header text, joined by "; ".
std::string schema_faults(const std::string& text) {
  std::istringstream in(text);
  std::string out;
  for (const std::string& f : read_schema_text(in).faults) out += (out.empty() ? "" : "; ") + f;
  return out;
}

TEST(SchemaTest, EveryNumberIsTheCatalogues) {
  std::ifstream in(TQL_SCHEMA_HEADER);
  ASSERT_TRUE(in.is_open()) << TQL_SCHEMA_HEADER;
  const SchemaReading r = read_schema_text(in);
  EXPECT_TRUE(r.faults.empty()) << ::testing::PrintToString(r.faults);
  // The text read is the header compiled here.
  EXPECT_EQ(schema::kCheck, r.values.at("kCheck"));
  EXPECT_EQ(schema::kUnexpectedEvent, r.values.at("kUnexpectedEvent"));
  EXPECT_EQ(schema::kId, r.values.at("kId"));
  EXPECT_EQ(schema::kAutoPromote, r.values.at("kAutoPromote"));
  EXPECT_EQ(schema::kReportTextTypeEnum, r.values.at("kReportTextTypeEnum"));
  EXPECT_EQ(schema::kFolderSubSection, r.values.at("kFolderSubSection"));
}

TEST(SchemaTest, WrongNumbersAndNamesAreFound) {
  EXPECT_EQ("kCheck = 2: the catalogue says `NodeSummary`, not `Check`",
            schema_faults("// Classes.\ninline constexpr int32_t kCheck = 2;\n"));
  EXPECT_EQ("kName = 52: the catalogue says `siblingName`, not `name`",
            schema_faults("// Properties.\ninline constexpr int32_t kName = 52;\n"));
  EXPECT_EQ("kUserProperty = 517: the catalogue says `user`, not `userProperty`",
            schema_faults("// Properties.\ninline constexpr int32_t kUserProperty = 517;\n"));
  EXPECT_EQ(
      "kUserProperty = 517: the catalogue says `user`, not `users`",
      schema_faults("// Properties.\ninline constexpr int32_t kUserProperty = 517;  // `users`\n"));
  EXPECT_EQ("kRootClass = 13: the catalogue says `.`, not `RootClass`",
            schema_faults("// Classes.\ninline constexpr int32_t kRootClass = 13;  // the root\n"));
  EXPECT_EQ(
      "", schema_faults("// Classes.\ninline constexpr int32_t kRootClass = 13;  // `.`: root\n"));
}

TEST(SchemaTest, LayoutFaultsAreFound) {
  EXPECT_EQ("kId = 0: out of order",
            schema_faults("// Properties.\ninline constexpr int32_t kName = 51;\n"
                          "inline constexpr int32_t kId = 0;\n"));
  EXPECT_EQ("kName: before the first section",
            schema_faults("inline constexpr int32_t kName = 51;\n"));
  EXPECT_EQ("line 2: not understood",
            schema_faults("// Properties.\ninline constexpr int kName = 51;\n"));
  EXPECT_EQ("kName = 51: not int32_t",
            schema_faults("// Properties.\ninline constexpr uint32_t kName = 51;\n"));
}

TEST(SchemaTest, EnumerationsAndFolderTypesAreChecked) {
  const std::string enums = "// Enumerations.\ninline constexpr uint32_t ";
  EXPECT_EQ("", schema_faults(enums + "kPeriodEnum = 0x1000a;  // `period`\n"));
  EXPECT_EQ("kPeriodEnum = 10: not an enumeration type number",
            schema_faults(enums + "kPeriodEnum = 10;  // `period`\n"));
  EXPECT_EQ("kPeriodEnum = 65546: names no property",
            schema_faults(enums + "kPeriodEnum = 0x1000a;  // `periods`\n"));
  EXPECT_EQ("kPeriod = 65546: an enumeration's name ends in Enum",
            schema_faults(enums + "kPeriod = 0x1000a;  // `period`\n"));
  EXPECT_EQ(
      "kFolderDomain = 2: folder types count up from 0; "
      "kCheckFolder = 3: a folder type's name begins with kFolder",
      schema_faults("// Folder types: the values.\n"
                    "inline constexpr uint32_t kFolderExplanation = 0;\n"
                    "inline constexpr uint32_t kFolderDomain = 2;\n"
                    "inline constexpr uint32_t kCheckFolder = 3;\n"));
}

}  // namespace
}  // namespace tql
