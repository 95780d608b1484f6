// Checks the default resource files of the build tree as the report sees
// them: through the resource store.
#include <gtest/gtest.h>

#include <string>

#include "resource/collection.h"

namespace resource {
namespace {

std::string Bytes(const resource_t& r) { return std::string(r.data().begin(), r.data().end()); }

// Width and height from a PNG's IHDR or a GIF's screen descriptor.
std::pair<int, int> Dimensions(const std::string& b) {
  auto u = [&](size_t i) { return static_cast<unsigned char>(b.at(i)); };
  if (b.rfind("GIF89a", 0) == 0) return {u(6) | u(7) << 8, u(8) | u(9) << 8};
  return {u(16) << 24 | u(17) << 16 | u(18) << 8 | u(19),
          u(20) << 24 | u(21) << 16 | u(22) << 8 | u(23)};
}

class DefaultResources : public testing::Test {
 protected:
  DefaultResources() { store_.set_directory(TAVREL_RESOURCE_DIR); }
  resource_collection store_;
};

TEST_F(DefaultResources, EveryNumberLoadsWithTheSignatureOfItsType) {
  for (int32_t n = 0; n < kResourceCount; ++n) {
    const resource_t& r = store_.get(n);
    const std::string b = Bytes(r);
    ASSERT_GT(b.size(), 20u) << r.name();
    EXPECT_LT(b.size(), 4000u) << r.name();
    switch (r.type()) {
      case png:
        EXPECT_EQ(0u, b.rfind("\x89PNG\r\n\x1a\n", 0)) << r.name();
        break;
      case gif:
        EXPECT_EQ(0u, b.rfind("GIF89a", 0)) << r.name();
        break;
      case css:
        EXPECT_EQ(0, n);
        break;
    }
  }
}

TEST_F(DefaultResources, LampsSpacerAndLogoHaveTheirSizes) {
  for (int32_t n = 1; n <= 26; ++n) {
    EXPECT_EQ(std::make_pair(13, 13), Dimensions(Bytes(store_.get(n)))) << resource_file_name(n);
  }
  const std::string spacer = Bytes(store_.get(kSpacer));
  EXPECT_EQ(std::make_pair(1, 1), Dimensions(spacer));
  // A graphic control extension with the transparency flag set.
  const size_t gce = spacer.find("\x21\xf9\x04");
  ASSERT_NE(std::string::npos, gce);
  EXPECT_EQ(1, spacer.at(gce + 3) & 1);
  EXPECT_EQ(std::make_pair(150, 40), Dimensions(Bytes(store_.get(kReportLogo))));
}

TEST_F(DefaultResources, LampsOfDifferentStatesDiffer) {
  EXPECT_NE(Bytes(store_.get(1)), Bytes(store_.get(2)));
  EXPECT_NE(Bytes(store_.get(2)), Bytes(store_.get(3)));
  EXPECT_NE(Bytes(store_.get(1)), Bytes(store_.get(4)));
  EXPECT_NE(Bytes(store_.get(1)), Bytes(store_.get(8)));
  EXPECT_NE(Bytes(store_.get(1)), Bytes(store_.get(14)));
}

TEST_F(DefaultResources, StyleSheetStylesEveryClassOfTheHtmlReport) {
  const resource_t& css = store_.get(kStyleSheet);
  EXPECT_STREQ("text/css", css.mime_type());
  const std::string text = css.text();
  for (const char* selector :
       {"body.report", "hr.report", "span.reporttitle", "span.header", "span.reportdomain",
        "span.reportnode", "span.reportcheck ", "span.reportcheckh", "span.reportgrouping",
        "span.reportcomment", "table.reportincidentlog", "div.reporttext"}) {
    EXPECT_NE(std::string::npos, text.find(selector)) << selector;
  }
  // It is sent inside "<style><!-- ... -->", which these would end early.
  EXPECT_EQ(std::string::npos, text.find("-->"));
  EXPECT_EQ(std::string::npos, text.find("</"));
}

}  // namespace
}  // namespace resource
