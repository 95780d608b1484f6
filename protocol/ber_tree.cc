#include "protocol/ber_tree.h"

#include <memory>
#include <vector>

#include "protocol/ber_encoding.h"
#include "protocol/ber_reader.h"
#include "protocol/ber_short_value.h"

namespace protocol {

namespace {

// A primitive of any tag that keeps its content.
class TreePrimitive final : public BerShortValue {
 public:
  explicit TreePrimitive(uint32_t tag) : BerShortValue(tag, kTreeMaxContent) {}
  std::unique_ptr<BerValue> clone() const override {
    return std::make_unique<TreePrimitive>(*this);
  }
  void readDone() override {}
  void write(BerOutput& out, bool) const override { write_content(out, bytes()); }
  int compare(const BerValue& other) const override {
    const TreePrimitive* o = same_class(*this, other);
    return o ? compare_values(bytes(), o->bytes()) : compare_classes(other);
  }
  const std::vector<uint8_t>& content() const { return bytes(); }
};

// A constructed value of any tag that keeps all its elements.
class TreeConstructed final : public BerConstructed {
 public:
  explicit TreeConstructed(uint32_t tag) : tag_(tag) {}
  TreeConstructed(const TreeConstructed& other) : BerConstructed(other), tag_(other.tag_) {
    for (const auto& child : other.children_) children_.push_back(child->clone());
  }
  std::unique_ptr<BerValue> clone() const override {
    return std::make_unique<TreeConstructed>(*this);
  }
  uint32_t tag(bool) const override { return tag_; }
  void write(BerOutput& out, bool legacy) const override {
    open_constructed(out, tag_);
    for (const auto& child : children_) child->write(out, legacy);
    close_constructed(out);
  }
  int compare(const BerValue& other) const override {
    const TreeConstructed* o = same_class(*this, other);
    if (o == nullptr) return compare_classes(other);
    for (size_t i = 0; i < children_.size() && i < o->children_.size(); ++i) {
      if (int c = children_[i]->compare(*o->children_[i])) return c;
    }
    return compare_values(children_.size(), o->children_.size());
  }
  BerValue* element(uint32_t index, uint32_t tag, bool) override {
    note_element(index);
    if (is_constructed(tag)) {
      children_.push_back(std::make_unique<TreeConstructed>(tag));
    } else {
      children_.push_back(std::make_unique<TreePrimitive>(tag));
    }
    return children_.back().get();
  }
  uint32_t required_elements() const override { return 0; }
  bool open_ended() const override { return true; }
  const std::vector<std::unique_ptr<BerValue>>& children() const { return children_; }

 private:
  uint32_t tag_;
  std::vector<std::unique_ptr<BerValue>> children_;
};

class TreeProtocol final : public BerProtocol {
 public:
  std::unique_ptr<BerConstructed> make(uint32_t tag, bool) const override {
    return std::make_unique<TreeConstructed>(tag);
  }
};

std::string content_text(const std::vector<uint8_t>& content) {
  static const char kHex[] = "0123456789ABCDEF";
  constexpr size_t kShown = 64;
  std::string hex, text;
  bool printable = true;
  for (size_t i = 0; i < content.size(); ++i) {
    uint8_t c = content[i];
    printable = printable && c >= 0x20 && c < 0x7F;
    if (printable) text += static_cast<char>(c);
    if (i >= kShown) continue;
    if (!hex.empty()) hex += ' ';
    hex += kHex[c >> 4];
    hex += kHex[c & 15];
  }
  if (content.size() > kShown) hex += " ... (" + std::to_string(content.size()) + " bytes)";
  if (printable && !content.empty()) hex += " \"" + text + "\"";
  return hex;
}

void render(const BerValue& value, bool legacy, int depth, std::string& out) {
  std::string line(2 * depth, ' ');
  uint32_t tag = value.tag(legacy);
  line += tag_class_text(tag);
  std::string words = tag_words(tag);
  if (words != std::to_string(tag)) line += " " + words;
  if (auto* node = dynamic_cast<const TreeConstructed*>(&value)) {
    out += line + " {\n";
    for (const auto& child : node->children()) render(*child, legacy, depth + 1, out);
    out += std::string(2 * depth, ' ') + "}\n";
    return;
  }
  const auto& content = static_cast<const TreePrimitive&>(value).content();
  out += line + ":" + (content.empty() ? "" : " " + content_text(content)) + "\n";
}

}  // namespace

std::string tag_class_text(uint32_t tag) {
  static const char* const kClasses[] = {"UNIVERSAL", "APPLICATION", "CONTEXT", "PRIVATE"};
  return std::string("[") + kClasses[(tag >> 1) & 3] + " " + std::to_string(tag >> 3) + "]";
}

std::string dump_ber(const uint8_t* data, size_t size, bool legacy, size_t* consumed) {
  BerReader reader(data, size, legacy);
  std::unique_ptr<BerConstructed> root = reader.read_message(TreeProtocol());
  std::string out;
  render(*root, legacy, 0, out);
  if (consumed) *consumed = reader.position();
  return out;
}

}  // namespace protocol
