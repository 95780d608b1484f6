// The bodies of a report mail and the picture generator: each body must be
// the encoded rendering it stands for, and the generator must attach each
// picture once, number the charts of each mail from 0 and try a missing
// spacer again.
#include "mailing/report_bodies.h"

#include <gtest/gtest.h>

#include <functional>
#include <sstream>

#include "base/error.h"
#include "email/encoding.h"
#include "email/mime_multipart.h"
#include "grapher/check_image.h"
#include "grapher/graph.h"
#include "mailing/mime_image_generator.h"
#include "mailing/report_mail_test_support.h"
#include "report/fake_report.h"
#include "report/html_renderer.h"
#include "report/text_renderer.h"
#include "tql/errors.h"

namespace {

namespace fake = report::fake;

// What a body writes behind its headers.
std::string bodyOf(email::MimeBody& body) {
  std::ostringstream out;
  int counter = 1;
  body.writeBody(out, "1", counter);
  return out.str();
}

// `content` as a leaf of `type` in `encoding` would write it.
// `content` through `encoding`, its bytes as they are (no text conversion).
std::string encoded(const std::string& content, const email::ContentTransferEncoding& encoding) {
  email::DataMimeBody leaf(content.data(), static_cast<uint32_t>(content.size()), "", "f",
                           "application/octet-stream", encoding);
  return bodyOf(leaf);
}

TEST(ReportBodiesTest, TextBodyIsTheTextRenderingInTheReportZone) {
  fake::Instance instance = sampleReport();
  const zone_t zone = timeZoneValue(7200);
  std::ostringstream text;
  report::render_report_text(instance, text, zone);
  ASSERT_NE(std::string::npos, text.str().find("up again"));
  ReportTextMimeBody body(instance, zone);
  EXPECT_EQ("text/plain;\r\n\tcharset=\"utf-8\"", [&] {
    int counter = 1;
    return body.contentType("1", counter);
  }());
  EXPECT_EQ("quoted-printable", body.transferEncoding());
  EXPECT_EQ(encoded(text.str(), email::quoted_printable_encoding()), bodyOf(body));

  // The zone is the one given: another zone shows other log times.
  ReportTextMimeBody otherZone(instance, timeZoneValue(0));
  EXPECT_NE(bodyOf(body), bodyOf(otherZone));
}

TEST(ReportBodiesTest, HtmlBodyCarriesTheStyleSheet) {
  fake::Instance instance = sampleReport();
  fake::Images images;
  ResourceFolder resources;
  const zone_t zone = timeZoneValue(kEnvironmentZone);
  const std::string style =
      "<style type=\"text/css\">\r\n<!--\r\n" + ResourceFolder::kStyleSheet + "-->\r\n</style>\r\n";
  EXPECT_EQ(style, ReportHtmlMimeBody::styleBlock(resources.store()));
  std::ostringstream html;
  report::render_report_html(html, instance, style, images, zone);
  ReportHtmlMimeBody body(instance, images, zone, resources.store());
  EXPECT_EQ("quoted-printable", body.transferEncoding());
  EXPECT_EQ(encoded(html.str(), email::quoted_printable_encoding()), bodyOf(body));
}

TEST(ReportBodiesTest, HtmlBodyWithoutStyleSheetGoesOutUnstyled) {
  fake::Instance instance = sampleReport();
  fake::Images images;
  ResourceFolder resources;
  resources.remove("tavrel.css");
  LogCapture log;
  const zone_t zone = timeZoneValue(kEnvironmentZone);
  std::ostringstream html;
  report::render_report_html(html, instance, "", images, zone);
  ReportHtmlMimeBody body(instance, images, zone, resources.store());
  EXPECT_EQ(encoded(html.str(), email::quoted_printable_encoding()), bodyOf(body));
  ASSERT_EQ(1u, log.lines.size());
  EXPECT_NE(std::string::npos, log.lines[0].find("tavrel.css")) << log.lines[0];
}

// A graph that records the chart it is asked to fill and fills it by `fill`.
class ProbeGraph : public report::ReportGraph {
 public:
  using Fill = std::function<void(grapher::Graph&)>;
  ProbeGraph(bool tabular, Fill fill) : tabular_(tabular), fill_(std::move(fill)) {}
  std::unique_ptr<report::ReportGraph> clone() const override {
    return std::make_unique<ProbeGraph>(tabular_, fill_);
  }
  void comment(std::string& out) override { out.clear(); }
  void name(std::string& out) override { out = "probe"; }
  void anchor(std::string& out) override { out = "id.probe"; }
  bool showMinMax() override { return false; }
  bool showNoResponse() override { return false; }
  bool tabular() override { return tabular_; }
  void generate_check_image(grapher::Graph& graph) override { fill_(graph); }

 private:
  bool tabular_;
  Fill fill_;
};

TEST(ReportBodiesTest, GraphBodyDrawsTheChartOverTheReportPeriod) {
  fake::Instance instance = sampleReport();
  const zone_t zone = timeZoneValue(3600);
  int32_t kind = -1;
  int64_t start = 0, end = 0;
  const auto fill = [&](grapher::Graph& graph) {
    kind = graph.kind;
    start = graph.start;
    end = graph.end;
    graph.addUptimeLine({{kStart, kStart + 3600}, {kStart + 7200, kStart + kDay}}, "");
  };
  ReportGraphMimeBody body(instance, std::make_unique<ProbeGraph>(true, fill), "chart4", zone);
  EXPECT_EQ("chart4", body.getContentId());
  EXPECT_EQ("base64", body.transferEncoding());
  int counter = 1;
  EXPECT_EQ("image/png", body.contentType("1", counter));
  EXPECT_EQ("inline;\r\n\tfilename=\"chart4.png\"", body.contentDisposition());
  const std::string written = bodyOf(body);
  EXPECT_EQ(grapher::kTabular, kind);
  EXPECT_EQ(kStart, start);
  EXPECT_EQ(kStart + kDay, end);

  grapher::Graph expected(grapher::kTabular, kStart, kStart + kDay);
  fill(expected);
  const std::vector<uint8_t> png = grapher::chartPng(expected, zone);
  ASSERT_EQ(0, std::string(png.begin(), png.begin() + 4).compare("\x89PNG"));
  EXPECT_EQ(encoded(std::string(png.begin(), png.end()), email::base64_encoding()), written);
}

TEST(ReportBodiesTest, GraphBodyShowsADrawingFailureAsAPicture) {
  fake::Instance instance = sampleReport();
  // A size that no chart has makes the drawing fail.
  ReportGraphMimeBody body(
      instance, std::make_unique<ProbeGraph>(false, [](grapher::Graph& g) { g.size = 9; }),
      "chart0", timeZoneValue(0));
  const std::vector<uint8_t> png = grapher::errorPicture("Unhandled graph size");
  EXPECT_EQ(encoded(std::string(png.begin(), png.end()), email::base64_encoding()), bodyOf(body));
}

TEST(ReportBodiesTest, GraphBodyPassesAFailedReadOut) {
  fake::Instance instance = sampleReport();
  ReportGraphMimeBody body(
      instance,
      std::make_unique<ProbeGraph>(
          false, [](grapher::Graph&) { throw errors::tql(2, "graph object gone"); }),
      "chart0", timeZoneValue(0));
  EXPECT_THROW(bodyOf(body), errors::tql);
}

// "type <cid> "filename"" of each part of a written multipart, in order.
std::vector<std::string> partsOf(email::MimeMultipart& related) {
  std::ostringstream out;
  int counter = 1;
  related.contentType("1", counter);
  related.writeBody(out, "1", counter);
  std::istringstream in(out.str());
  std::vector<std::string> parts;
  std::string line, type, id, disposition, file;
  bool inHeaders = false;
  while (std::getline(in, line)) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line == "-----------_=_1.2") {
      inHeaders = true;
      type = id = disposition = file = "";
    } else if (inHeaders && line.empty()) {
      inHeaders = false;
      parts.push_back(type + id + disposition + file);
    } else if (inHeaders && line.starts_with("Content-Type: ")) {
      type = line.substr(14, line.find(';') - 14);
    } else if (inHeaders && line.starts_with("Content-Disposition: ")) {
      disposition = " " + line.substr(21, line.find(';') - 21);
    } else if (inHeaders && line.starts_with("Content-ID: ")) {
      id = " " + line.substr(12);
    } else if (inHeaders && line.starts_with("\tfilename=")) {
      file = " " + line.substr(10);
    }
  }
  return parts;
}

class ImageGeneratorTest : public ::testing::Test {
 protected:
  fake::Instance instance = sampleReport();
  ResourceFolder resources;
  email::MimeMultipart related{email::MimeMultipart::kRelated};
  MimeImageGenerator images{instance, related, timeZoneValue(0), resources.store()};
  std::string out;
};

TEST_F(ImageGeneratorTest, EachPictureIsAttachedOnce) {
  const std::vector<std::pair<int, std::string>> asked = {
      {0, "<img src=\"cid:ok_lamp\" border='0' alt=\"OK\">"},
      {1, "<img src=\"cid:warn_lamp\" border='0' alt=\"Warning\">"},
      {0, "<img src=\"cid:ok_lamp\" border='0' alt=\"OK\">"},
      {2, "<img src=\"cid:alert_lamp\" border='0' alt=\"Alert\">"},
      {3, "<img src=\"cid:report_logo\" border='0' alt=\"Tavrel\">"},
      {3, "<img src=\"cid:report_logo\" border='0' alt=\"Tavrel\">"},
  };
  for (const auto& [which, html] : asked) {
    images.picture(out, which);
    EXPECT_EQ(html, out) << which;
  }
  images.spacer(out, 10, 1);
  EXPECT_EQ("<img src=\"cid:spacer\" border='0' width='10' height='1' alt=\"\">", out);
  images.spacer(out, 3, 4);
  EXPECT_EQ("<img src=\"cid:spacer\" border='0' width='3' height='4' alt=\"\">", out);
  const std::vector<std::string> expected = {
      "image/png <ok_lamp> inline \"ok_lamp.png\"",
      "image/png <warn_lamp> inline \"warning_lamp.png\"",
      "image/png <alert_lamp> inline \"alert_lamp.png\"",
      "image/png <report_logo> inline \"report_logo.png\"",
      "image/gif <spacer> inline \"spacer.gif\"",
  };
  EXPECT_EQ(expected, partsOf(related));
}

TEST_F(ImageGeneratorTest, UnknownPictureIsAnError) {
  for (int which : {-1, 4, 34}) {
    try {
      images.picture(out, which);
      ADD_FAILURE() << which;
    } catch (const error::EFatal& e) {
      EXPECT_EQ("Unknown picture!", e.text());
    }
  }
  EXPECT_TRUE(partsOf(related).empty());
}

TEST_F(ImageGeneratorTest, UnreadablePictureIsLoggedOnceAndItsTagStays) {
  resources.remove("ok_lamp_small.png");
  LogCapture log;
  images.picture(out, 0);
  EXPECT_EQ("<img src=\"cid:ok_lamp\" border='0' alt=\"OK\">", out);
  images.picture(out, 0);
  EXPECT_EQ("<img src=\"cid:ok_lamp\" border='0' alt=\"OK\">", out);
  images.picture(out, 1);
  ASSERT_EQ(1u, log.lines.size());
  EXPECT_NE(std::string::npos, log.lines[0].find("ok_lamp_small.png")) << log.lines[0];
  const std::vector<std::string> expected = {"image/png <warn_lamp> inline \"warning_lamp.png\""};
  EXPECT_EQ(expected, partsOf(related));
}

TEST_F(ImageGeneratorTest, SpacerIsTriedAgainAfterAFailedLoad) {
  resources.remove("spacer.gif");
  LogCapture log;
  images.spacer(out, 10, 1);
  EXPECT_EQ("<img src=\"cid:spacer\" border='0' width='10' height='1' alt=\"\">", out);
  images.spacer(out, 10, 1);
  EXPECT_EQ(2u, log.lines.size());
  resources.write("spacer.gif", "GIF89a");
  images.spacer(out, 10, 1);
  images.spacer(out, 10, 1);
  EXPECT_EQ(2u, log.lines.size());
  const std::vector<std::string> expected = {"image/gif <spacer> inline \"spacer.gif\""};
  EXPECT_EQ(expected, partsOf(related));
}

// Asks `images` for a chart of each graph of `instance`; the graphs are gone
// when it returns, as the HTML renderer drops each item after writing it.
std::string chartsOf(fake::Instance& instance, MimeImageGenerator& images) {
  report::ContentList graphs;
  instance.contents(graphs);
  std::string tags;
  for (const auto& graph : graphs) {
    std::string out;
    images.chart(out, dynamic_cast<const report::ReportGraph&>(*graph));
    tags += out;
  }
  return tags;
}

TEST_F(ImageGeneratorTest, ChartsAreNumberedFromZeroInEachMail) {
  fake::Instance charts({fake::graph("a"), fake::graph("b")});
  EXPECT_EQ("<img src=\"cid:chart0\" alt=\"a\"><img src=\"cid:chart1\" alt=\"b\">",
            chartsOf(charts, images));
  images.picture(out, 3);
  // Each part holds a graph of its own, drawn when the part is written.
  EXPECT_EQ(2, fake::alive());
  const std::vector<std::string> expected = {"image/png <chart0> inline \"chart0.png\"",
                                             "image/png <chart1> inline \"chart1.png\"",
                                             "image/png <report_logo> inline \"report_logo.png\""};
  EXPECT_EQ(expected, partsOf(related));

  email::MimeMultipart nextRelated(email::MimeMultipart::kRelated);
  MimeImageGenerator nextMail(instance, nextRelated, timeZoneValue(0), resources.store());
  fake::Instance one({fake::graph("c & <d>"), fake::graph("")});
  EXPECT_EQ(
      "<img src=\"cid:chart0\" alt=\"c &amp; &lt;d&gt;\"><img src=\"cid:chart1\" alt=\"Chart\">",
      chartsOf(one, nextMail));
}

}  // namespace
