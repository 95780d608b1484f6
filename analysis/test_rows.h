// A RowSink and an ObjectSource for the row writer tests: the rows go into
// a list of lines, and the lookups are answered from canned objects.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "analysis/row_sink.h"
#include "tql/catalogue.h"
#include "tql/decode.h"

namespace testing_rows {

// Folders get the ids 9.N, N counting from 1. A property row's value is the
// string, or the text form of another kind. Lines:
//   folder 9.1 under P type T "NAME" origin O
//   row under P "LABEL" = "VALUE" origin O
class Rows : public RowSink {
 public:
  std::vector<std::string> lines;

  tql::id_t folder(const tql::id_t& parent, uint32_t folderType, const std::string& name,
                   const tql::id_t& origin) override {
    const tql::id_t id{9, ++folders_};
    lines.push_back("folder " + id.text() + " under " + parent.text() + " type " +
                    std::to_string(folderType) + " \"" + name + "\" origin " + origin.text());
    return id;
  }
  void row(const tql::id_t& parent, const std::string& label, const std::string& value,
           const tql::id_t& origin) override {
    lines.push_back("row under " + parent.text() + " \"" + label + "\" = \"" + value +
                    "\" origin " + origin.text());
  }
  void propertyRow(const tql::id_t& parent, const std::string& label, const tql::patch_t& object,
                   int32_t property, bool useDefault, const std::string& defaultText,
                   const tql::id_t& origin) override {
    const tql::property_t* p = object.find_property(property);
    if (p != nullptr && !p->is_null) {
      std::string text;
      tql::decode_string_or_text(*p, text);
      row(parent, label, text, origin);
    } else if (useDefault) {
      row(parent, label, defaultText, origin);
    }
  }
  void propertyRowIfSet(const tql::id_t& parent, const std::string& label,
                        const tql::patch_t& object, int32_t property,
                        const tql::id_t& origin) override {
    propertyRow(parent, label, object, property, false, "", origin);
  }

 private:
  uint32_t folders_ = 0;
};

// "Domain/1 > Node/2 > Check/0[id=0.1.5]": class names, flags and the ids
// of where conditions, along the first `next` of each step (further steps
// in braces).
inline std::string describe(const tql::pattern_t& p) {
  std::string out = tql::class_name(p.class_) + "/" + std::to_string(p.flags);
  for (const tql::condition_t& c : p.where) {
    std::string text;
    if (const auto* ref = dynamic_cast<const tql::property_object_t*>(c.prop.get())) {
      text = ref->value.id.text();
    } else {
      c.prop->value_text(text);
    }
    out += "[" + tql::property_name(c.prop->name) + "=" + text + "]";
  }
  if (p.next.size() == 1) out += " > " + describe(p.next[0]);
  if (p.next.size() > 1) {
    out += " > {";
    for (size_t i = 0; i < p.next.size(); ++i) out += (i ? ", " : "") + describe(p.next[i]);
    out += "}";
  }
  return out;
}

// Answers select_one by the id asked from and the whole pattern, as
// "ID " + describe(pattern); a select with every stored object whose id
// was asked for; get_object by id and class. Records each call.
class Objects : public ObjectSource {
 public:
  std::map<std::string, tql::patch_t> selectOneReplies;  // "ID PATTERN"
  std::map<tql::id_t, tql::patch_t> stored;              // for get_object and select
  std::vector<std::string> calls;

  std::unique_ptr<tql::patch_t> selectOne(const tql::id_t& id,
                                          std::unique_ptr<tql::pattern_t> pattern) override {
    const std::string key = id.text() + " " + describe(*pattern);
    calls.push_back("selectOne " + key);
    const auto found = selectOneReplies.find(key);
    if (found == selectOneReplies.end()) return nullptr;
    return std::make_unique<tql::patch_t>(found->second);
  }
  std::vector<tql::patch_t> select(const std::list<tql::id_t>& ids,
                                   std::unique_ptr<tql::pattern_t> pattern) override {
    std::string call = "select";
    std::vector<tql::patch_t> out;
    for (const tql::id_t& id : ids) {
      call += " " + id.text();
      if (auto s = stored.find(id); s != stored.end()) out.push_back(s->second);
    }
    calls.push_back(call + " " + describe(*pattern));
    return out;
  }
  std::unique_ptr<tql::patch_t> getObject(const tql::id_t& id, int32_t class_) override {
    calls.push_back("getObject " + id.text() + " " + tql::class_name(class_));
    const auto s = stored.find(id);
    if (s == stored.end() || s->second.class_ != class_) return nullptr;
    return std::make_unique<tql::patch_t>(s->second);
  }
};

}  // namespace testing_rows
