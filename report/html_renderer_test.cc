#include "report/html_renderer.h"

#include <gtest/gtest.h>

#include <sstream>

#include "base/error.h"
#include "report/fake_report.h"
#include "tql/schema.h"

namespace report {
namespace {

using fake::commented;
using fake::folder;
using fake::graph;
using fake::Item;
using fake::row;

zone_t gmt() { return timeZoneValue(0); }

std::string Render(const Item& item) {
  fake::Images images;
  fake::Instance instance({item});
  ContentList items;
  instance.contents(items);
  std::ostringstream out;
  render_folder(dynamic_cast<ReportFolder&>(*items.front()), out, images, gmt());
  return out.str();
}

std::string Document(fake::Instance& instance, const std::string& style_block = "") {
  fake::Images images;
  std::ostringstream out;
  render_report_html(out, instance, style_block, images, gmt());
  return out.str();
}

// What the document holds between the header's ruler and the end of the body.
std::string Body(fake::Instance& instance) {
  std::string doc = Document(instance);
  const std::string header_end = "</table>\r\n<hr class='report'>";
  size_t from = doc.find(header_end) + header_end.size();
  return doc.substr(from, doc.find("</body>") - from);
}

// The first line of the header block's inner table: the period.
std::string PeriodLine(fake::Instance& instance) {
  std::string doc = Document(instance);
  const std::string inner = "<table width='0%'>\r\n";
  size_t from = doc.find(inner) + inner.size();
  return doc.substr(from, doc.find("\r\n", from) - from);
}

// A folder with nothing in it writes no table.
const char kEmptyCheck[] = "<a name='id.ping'><span class='reportcheck'>ping</span></a>";

TEST(HtmlFolder, LabelledRowsShareOneInnerTable) {
  EXPECT_EQ(
      "<a name='id.cpu'><span class='reportcheck'>cpu</span></a><table>\r\n"
      "<tr><td><table>\r\n"
      "<tr><td>Avail</td><td align='right'>99%</td></tr>\r\n"
      "<tr><td><a href='#id.web1'>Max</a></td><td align='right'>5</td></tr>\r\n"
      "<tr><td colspan='2'><span class='reportcomment'>peak</span></td></tr>\r\n"
      "</table>\r\n"
      "</td></tr>\r\n"
      "</table>\r\n",
      Render(folder(schema::kFolderCheck, "cpu",
                    {row("Avail", "99%"), commented(row("Max", "5", "id.web1"), "peak")})));
}

TEST(HtmlFolder, GraphClosesTheInnerTableAndTheNextRowOpensANewOne) {
  EXPECT_EQ(
      "<a name='id.cpu'><span class='reportcheck'>cpu</span></a><table>\r\n"
      "<tr><td><table>\r\n"
      "<tr><td>A</td><td align='right'>1</td></tr>\r\n"
      "<tr><td>B</td><td align='right'>2</td></tr>\r\n"
      "</table>\r\n"
      "</td></tr>\r\n"
      "<tr><td>[chart load]</td></tr>\r\n"
      "<tr><td><span class='reportcomment'>hourly</span></td></tr>\r\n"
      "<tr><td><table>\r\n"
      "<tr><td>C</td><td align='right'>3</td></tr>\r\n"
      "</table>\r\n"
      "</td></tr>\r\n"
      "</table>\r\n",
      Render(folder(
          schema::kFolderCheck, "cpu",
          {row("A", "1"), row("B", "2"), commented(graph("load"), "hourly"), row("C", "3")})));
}

TEST(HtmlFolder, RowWithoutLabelSpansBothColumnsOfTheFolderTable) {
  EXPECT_EQ(
      "<a name='id.cpu'><span class='reportcheck'>cpu</span></a><table>\r\n"
      "<tr><td><table>\r\n"
      "<tr><td>A</td><td align='right'>1</td></tr>\r\n"
      "</table>\r\n"
      "</td></tr>\r\n"
      "<tr><td colspan='2'><a href='#id.db'>see &lt;b&gt;db&lt;/b&gt;</a></td></tr>\r\n"
      "<tr><td colspan='2'><span class='reportcomment'>x</span></td></tr>\r\n"
      "<tr><td><table>\r\n"
      "<tr><td>B</td><td align='right'>2</td></tr>\r\n"
      "</table>\r\n"
      "</td></tr>\r\n"
      "</table>\r\n",
      Render(folder(
          schema::kFolderCheck, "cpu",
          {row("A", "1"), commented(row("", "see <b>db</b>", "id.db"), "x"), row("B", "2")})));
}

TEST(HtmlFolder, NodeHeadsItsChildFoldersWithChecks) {
  EXPECT_EQ(
      std::string("<a name='id.web1'><span class='reportnode'>Node: web1</span></a>"
                  "<table>\r\n"
                  "<tr><td><table>\r\n"
                  "<tr><td colspan='2'><span class='reportcheckh'>Checks</span></td></tr>\r\n"
                  "<tr><td width='0%'>[spacer 10x1]</td><td>") +
          kEmptyCheck + kEmptyCheck +
          "</td></tr>\r\n"
          "</table>\r\n"
          "</td></tr>\r\n"
          "</table>\r\n",
      Render(folder(schema::kFolderNode, "web1", {},
                    {folder(schema::kFolderCheck, "ping"), folder(schema::kFolderCheck, "ping")})));
}

TEST(HtmlFolder, DomainAndExplanationShowNoChecksHeading) {
  std::string children =
      std::string("<tr><td><table>\r\n<tr><td width='0%'>[spacer 10x1]</td><td>") + kEmptyCheck +
      "</td></tr>\r\n</table>\r\n</td></tr>\r\n</table>\r\n";
  EXPECT_EQ(
      "<a name='id.Main'><span class='reportdomain'>Domain: Main</span></a><table>\r\n" + children,
      Render(folder(schema::kFolderDomain, "Main", {}, {folder(schema::kFolderCheck, "ping")})));
  EXPECT_EQ("<a name='id.About'><span class='reportdomain'>About</span></a><table>\r\n" + children,
            Render(folder(schema::kFolderExplanation, "About", {},
                          {folder(schema::kFolderCheck, "ping")})));
}

TEST(HtmlFolder, SubSectionHasNoAnchorAndStandsInARowOfItsOwn) {
  EXPECT_EQ(
      "<a name='id.cpu'><span class='reportcheck'>cpu</span></a><table>\r\n"
      "<tr><td><span class='reportgrouping'>Totals</span><table>\r\n"
      "<tr><td><table>\r\n"
      "<tr><td>A</td><td align='right'>1</td></tr>\r\n"
      "</table>\r\n"
      "</td></tr>\r\n"
      "</table>\r\n"
      "</td></tr></table>\r\n",
      Render(folder(schema::kFolderCheck, "cpu",
                    {folder(schema::kFolderSubSection, "Totals", {row("A", "1")})})));
}

TEST(HtmlFolder, HeadingAndCommentAreEscaped) {
  EXPECT_EQ(
      "<a name='id.a<b & \"c\"'><span class='reportcheck'>a&lt;b &amp; &quot;c&quot;</span></a>"
      "<span class='reportcomment'>line one<BR>\nline two &#9;</span>",
      Render(commented(folder(schema::kFolderCheck, "a<b & \"c\""), "line one\r\nline two \t")));
}

TEST(HtmlFolder, UnknownTypesAndContentsAreNamedInPlace) {
  EXPECT_EQ(
      "Unknown folder type!<table>\r\n"
      "Unknown folder content!"
      "</table>\r\n",
      Render(folder(9, "odd", {fake::stranger()})));
}

TEST(HtmlLog, EntriesWithLampsTimesAndTexts) {
  EXPECT_EQ(
      "<a name='id.ping'><span class='reportcheck'>ping</span></a><table>\r\n"
      "<tr><td>disk &lt;log&gt;</td></tr>\r\n"
      "<tr><td><table class='reportincidentlog'>\r\n"
      "<tr><td width='0%'>[picture 0]</td><td nowrap='nowrap'>01/01/1970 00:00:00</td>"
      "<td>up</td></tr>\r\n"
      "<tr><td width='0%'>[picture 1]</td><td nowrap='nowrap'>02/01/1970 00:01:00</td>"
      "<td>slow &lt;i&gt;disk&lt;/i&gt;</td></tr>\r\n"
      "<tr><td width='0%'>[picture 2]</td><td nowrap='nowrap'>31/12/1999 23:59:59</td>"
      "<td>down</td></tr>\r\n"
      "<tr><td width='0%'>Unknown severity</td><td nowrap='nowrap'>01/01/1970 01:00:00</td>"
      "<td>odd</td></tr>\r\n"
      "</table>\r\n"
      "</td></tr>\r\n"
      "<tr><td colspan='2'><span class='reportcomment'>last week</span></td></tr>\r\n"
      "</table>\r\n",
      Render(
          folder(schema::kFolderCheck, "ping",
                 {commented(fake::log("disk <log>", {{kSeverityOk, "up", 0},
                                                     {kSeverityWarning, "slow <i>disk</i>", 86460},
                                                     {kSeverityAlert, "down", 946684799},
                                                     {3, "odd", 3600}}),
                            "last week")})));
}

TEST(HtmlLog, WithoutEntriesSaysNoEventsAndShowsNoLamp) {
  EXPECT_EQ(
      "<a name='id.ping'><span class='reportcheck'>ping</span></a><table>\r\n"
      "<tr><td>events</td></tr>\r\n"
      "<tr><td><table class='reportincidentlog'>\r\n"
      "<tr><td>No events in period</td></tr>\r\n"
      "</table>\r\n"
      "</td></tr>\r\n"
      "</table>\r\n",
      Render(folder(schema::kFolderCheck, "ping", {fake::log("events", {})})));
}

TEST(HtmlDocument, HeadHeaderAndEnd) {
  fake::Instance instance({});
  instance.name_ = "Weekly <web>";
  instance.start_ = 86400;
  instance.duration_ = 86400;
  EXPECT_EQ(
      "<!DOCTYPE HTML PUBLIC '-//W3C//DTD HTML 4.01 Transitional//EN'>\r\n"
      "<html>\r\n"
      "<head>\r\n"
      "<style>b{}</style>\r\n"
      "<title>Tavrel Report: Weekly &lt;web&gt;</title>\r\n"
      "<meta http-equiv='Content-Type' content='text/html; charset=UTF-8'>\r\n"
      "</head>\r\n"
      "<body class=\"report\">\r\n"
      "<span class='reporttitle'>Monitoring Report: Weekly &lt;web&gt;</span>"
      "<table width='100%'>\r\n"
      "<tr><td><table width='0%'>\r\n"
      "<tr><td><span class='header'>Period:</span></td>"
      "<td>1970-01-02 00:00:00 - 1970-01-03 00:00:00</td></tr>\r\n"
      "<tr><td><span class='header'>Generated by:</span></td><td>Tavrel 5.2</td></tr>\r\n"
      "</table>\r\n"
      "</td><td align='right'>[picture 3]</td></tr>\r\n"
      "</table>\r\n"
      "<hr class='report'>"
      "</body>\r\n"
      "</html>\r\n",
      Document(instance, "<style>b{}</style>"));
}

TEST(HtmlDocument, PeriodLineByWhatIsKnown) {
  fake::Instance instance({});
  instance.duration_ = 7200;
  EXPECT_EQ(
      "<tr><td><span class='header'>Period:</span></td>"
      "<td>From start of monitoring - 1970-01-01 02:00:00</td></tr>",
      PeriodLine(instance));
  instance.duration_ = 0;
  EXPECT_EQ("<tr><td><span class='header'>Period:</span></td><td>N/A</td></tr>",
            PeriodLine(instance));
  instance.generated_ = 1767600189;
  EXPECT_EQ("<tr><td><span class='header'>Generated:</span></td><td>2026-01-05 08:03:09</td></tr>",
            PeriodLine(instance));
}

TEST(HtmlDocument, StoredTimeBefore1970IsADamagedValue) {
  fake::Instance instance({});
  instance.start_ = -10;
  instance.duration_ = 100;
  EXPECT_THROW(Document(instance), error::EParseError);
}

const char kRuler[] = "<hr class='report'>";

TEST(HtmlDocument, OpeningTextStandsBetweenRulersAndClosingTextFollowsOne) {
  fake::Instance instance(
      {fake::text("Hello <b>all</b>"), folder(schema::kFolderCheck, "ping"), fake::text("Bye")});
  EXPECT_EQ(std::string("<div class='reporttext'>Hello <b>all</b></div>\r\n") + kRuler +
                kEmptyCheck + kRuler + "<div class='reporttext'>Bye</div>\r\n",
            Body(instance));
}

TEST(HtmlDocument, WithoutOpeningTextOnlyTheClosingTextGetsARuler) {
  fake::Instance instance({folder(schema::kFolderCheck, "ping"), fake::text("Bye")});
  EXPECT_EQ(std::string(kEmptyCheck) + kRuler + "<div class='reporttext'>Bye</div>\r\n",
            Body(instance));
}

TEST(HtmlDocument, TextsAheadOfAllFoldersGetNoRulerBetweenThem) {
  fake::Instance instance({fake::text("A"), fake::text("B"), fake::stranger()});
  EXPECT_EQ(std::string("<div class='reporttext'>A</div>\r\n") + kRuler +
                "<div class='reporttext'>B</div>\r\nUnknown ReportInstanceContent",
            Body(instance));
}

TEST(HtmlDocument, MarkupParseErrorShowsInPlaceOfTheText) {
  fake::Instance instance({fake::text("a <x> & \"q\"")});
  EXPECT_EQ(std::string("<div class='reporttext'>Parse error: Unrecognized tag: x in "
                        "\"a &lt;x&gt; &amp; &quot;q&quot;\"</div>\r\n") +
                kRuler,
            Body(instance));
}

TEST(HtmlDocument, KeepsOnlyThePathToTheCurrentItemAlive) {
  Item check = folder(schema::kFolderCheck, "ping", {row("A", "1"), row("B", "2"), graph("g")});
  Item node = folder(schema::kFolderNode, "web", {row("", "x")}, {check, check, check});
  fake::Instance instance(
      {folder(schema::kFolderDomain, "Main", {}, {node, node}), fake::text("end")});
  fake::reset_peak();
  Document(instance);
  // At the first row of the first check: the instance's two items, the two
  // nodes, the three checks of the first node and the three items of the
  // first check; keeping what was written would hold over thirty.
  EXPECT_EQ(2 + 2 + 3 + 3, fake::peak_alive());
  EXPECT_EQ(0, fake::alive());
}

TEST(HtmlDocument, ReadFailurePassesThroughAndFreesWhatWasRead) {
  Item broken = folder(schema::kFolderCheck, "ping", {row("A", "1")});
  broken.fail_contents = true;
  fake::Instance instance({folder(schema::kFolderNode, "web", {}, {broken})});
  try {
    Document(instance);
    FAIL() << "no exception";
  } catch (const error::ESystemError& e) {
    EXPECT_EQ(fake::kReadFailure, e.text());
  }
  EXPECT_EQ(0, fake::alive());
}

}  // namespace
}  // namespace report
