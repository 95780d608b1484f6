#include "host/progress_watch.h"

#include "tql/property.h"
#include "tql/schema.h"

namespace host {

void ProgressWatch::changed(const ObjectStore& store, const tql::id_t& id) {
  const StoredObject* object = store.find(id);
  if (!object || object->class_ != schema::kReportInstance) return;
  auto progress = object->properties.find(schema::kProgress);
  if (progress == object->properties.end()) return;
  const auto* percent = dynamic_cast<const tql::property_uint_t*>(progress->second.get());
  if (!percent || percent->is_null) return;
  auto [told, fresh] = told_.try_emplace(id, percent->value);
  if (!fresh && told->second == percent->value) return;
  told->second = percent->value;

  std::string name;
  auto named = object->properties.find(schema::kName);
  if (named != object->properties.end()) {
    const auto* text = dynamic_cast<const tql::property_string_t*>(named->second.get());
    if (text && !text->is_null) name = text->value;
  }
  out_ << "progress: " << id.text() << " " << percent->value << "% " << name << std::endl;
}

}  // namespace host
