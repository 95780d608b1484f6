#include "report/fake_report.h"

#include <algorithm>

#include "base/error.h"

namespace report::fake {
namespace {

int g_alive = 0;
int g_peak = 0;

// Counts the objects of the model that exist.
class Counted {
 public:
  Counted() { g_peak = std::max(g_peak, ++g_alive); }
  Counted(const Counted&) : Counted() {}
  ~Counted() { --g_alive; }
};

class FakeRow : public ReportRow, Counted {
 public:
  explicit FakeRow(const Item& item) : item_(item) {}
  void comment(std::string& out) override { out = item_.comment; }
  void label(std::string& out) override { out = item_.label; }
  void value(std::string& out) override { out = item_.value; }
  void origin(std::string& out) override { out = item_.origin; }

 private:
  Item item_;
};

class FakeGraph : public ReportGraph, Counted {
 public:
  explicit FakeGraph(const Item& item) : item_(item) {}
  void comment(std::string& out) override { out = item_.comment; }
  std::unique_ptr<ReportGraph> clone() const override { return std::make_unique<FakeGraph>(item_); }
  void name(std::string& out) override { out = item_.name; }
  void anchor(std::string& out) override { out = "id." + item_.name; }
  bool showMinMax() override { return false; }
  bool showNoResponse() override { return false; }
  bool tabular() override { return false; }
  // The fake holds no samples; the renderers never draw.
  void generate_check_image(grapher::Graph&) override {}

 private:
  Item item_;
};

class FakeLog : public ReportLog, Counted {
 public:
  explicit FakeLog(const Item& item) : item_(item) {}
  void comment(std::string& out) override { out = item_.comment; }
  void name(std::string& out) override { out = item_.name; }
  bool next() override { return ++current_ < item_.entries.size(); }
  uint32_t severity() override { return entry().severity; }
  const std::string& text() override { return entry().text; }
  int64_t time() override { return entry().time; }

 private:
  const Entry& entry() const { return item_.entries.at(current_); }

  Item item_;
  size_t current_ = static_cast<size_t>(-1);  // before the first entry
};

class FakeFolder : public ReportFolder, Counted {
 public:
  explicit FakeFolder(const Item& item) : item_(item) {}
  void comment(std::string& out) override { out = item_.comment; }
  uint32_t folderType() override { return item_.folder_type; }
  void name(std::string& out) override { out = item_.name; }
  void contents(ContentList& out) override;
  void subfolders(std::vector<std::unique_ptr<ReportFolder>>& out) override {
    for (const Item& child : item_.subfolders) out.push_back(std::make_unique<FakeFolder>(child));
  }
  void anchor(std::string& out) override { out = "id." + item_.name; }

 private:
  Item item_;
};

class FakeText : public ReportText, Counted {
 public:
  explicit FakeText(const Item& item) : markup_(item.comment) {}
  void comment(std::string& out) override { out = markup_; }

 private:
  std::string markup_;
};

class Stranger : public ReportFolderContent, Counted {
 public:
  void comment(std::string& out) override { out.clear(); }
};

std::unique_ptr<ReportFolderContent> make(const Item& item) {
  switch (item.kind) {
    case Item::Kind::kRow:
      return std::make_unique<FakeRow>(item);
    case Item::Kind::kGraph:
      return std::make_unique<FakeGraph>(item);
    case Item::Kind::kLog:
      return std::make_unique<FakeLog>(item);
    case Item::Kind::kFolder:
      return std::make_unique<FakeFolder>(item);
    case Item::Kind::kText:
      return std::make_unique<FakeText>(item);
    case Item::Kind::kStranger:
      break;
  }
  return std::make_unique<Stranger>();
}

void make_all(const std::vector<Item>& items, ContentList& out) {
  for (const Item& item : items) out.push_back(make(item));
}

void FakeFolder::contents(ContentList& out) {
  if (item_.fail_contents) throw error::ESystemError(kReadFailure);
  make_all(item_.contents, out);
}

}  // namespace

Item row(std::string label, std::string value, std::string origin) {
  return {.kind = Item::Kind::kRow,
          .label = std::move(label),
          .value = std::move(value),
          .origin = std::move(origin)};
}

Item graph(std::string name) { return {.kind = Item::Kind::kGraph, .name = std::move(name)}; }

Item log(std::string name, std::vector<Entry> entries) {
  return {.kind = Item::Kind::kLog, .name = std::move(name), .entries = std::move(entries)};
}

Item folder(uint32_t type, std::string name, std::vector<Item> contents,
            std::vector<Item> subfolders) {
  return {.kind = Item::Kind::kFolder,
          .name = std::move(name),
          .folder_type = type,
          .contents = std::move(contents),
          .subfolders = std::move(subfolders)};
}

Item text(std::string markup) { return {.kind = Item::Kind::kText, .comment = std::move(markup)}; }

Item stranger() { return {.kind = Item::Kind::kStranger}; }

Item commented(Item item, std::string comment) {
  item.comment = std::move(comment);
  return item;
}

int alive() { return g_alive; }
int peak_alive() { return g_peak; }
void reset_peak() { g_peak = g_alive; }

void Instance::contents(ContentList& out) { make_all(items_, out); }

void Images::picture(std::string& out, int which) {
  if (which < html::kPictureOkLamp || which > html::kPictureLogo) {
    throw error::EFatal("Unknown picture!");
  }
  out = "[picture " + std::to_string(which) + "]";
}

void Images::spacer(std::string& out, int width, int height) {
  out = "[spacer " + std::to_string(width) + "x" + std::to_string(height) + "]";
}

void Images::chart(std::string& out, const ReportGraph& graph) {
  std::unique_ptr<ReportGraph> copy = graph.clone();
  std::string name;
  copy->name(name);
  out = "[chart " + name + "]";
}

}  // namespace report::fake
