#include "tql/catalogue.h"

#include "tql/catalogue_tables.h"

namespace tql {

namespace {

struct Catalogue {
  std::map<int32_t, std::string> classes;
  std::map<int32_t, std::string> properties;
};

const Catalogue& catalogue() {
  static const Catalogue c = [] {
    Catalogue out;
    for (int32_t i = 0; i < detail::kClassCount; ++i) {
      if (detail::kClassNames[i][0] != '\0') out.classes.emplace(i, detail::kClassNames[i]);
    }
    for (const detail::PropertyEntry* p = detail::kPropertyNames; p->name != nullptr; ++p) {
      out.properties.emplace(p->number, p->name);
    }
    return out;
  }();
  return c;
}

std::string lookup(const std::map<int32_t, std::string>& names, int32_t number,
                   const char* unknown) {
  auto it = names.find(number);
  if (it != names.end()) return it->second;
  return std::string(unknown) + std::to_string(number) + ">";
}

}  // namespace

std::string class_name(int32_t class_number) {
  return lookup(catalogue().classes, class_number, "<unknown class: ");
}

std::string property_name(int32_t property_number) {
  return lookup(catalogue().properties, property_number, "<unknown property: ");
}

const std::map<int32_t, std::string>& class_names() { return catalogue().classes; }
const std::map<int32_t, std::string>& property_names() { return catalogue().properties; }

}  // namespace tql
