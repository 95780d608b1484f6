#include "resource/collection.h"

#include "base/log.h"

namespace resource {
namespace {

constexpr const char* kFileNames[kResourceCount] = {
    "tavrel.css",
    "ok_lamp_small.png",
    "warning_lamp_small.png",
    "error_lamp_small.png",
    "downok_lamp_small.png",
    "downwarning_lamp_small.png",
    "downerror_lamp_small.png",
    "downunknown_lamp_small.png",
    "dependok_lamp_small.png",
    "dependwarning_lamp_small.png",
    "dependerror_lamp_small.png",
    "dependunknown_lamp_small.png",
    "unknown_lamp_small.png",
    "blank_lamp_small.png",
    "wok_lamp_small.png",
    "wwarning_lamp_small.png",
    "werror_lamp_small.png",
    "wdownok_lamp_small.png",
    "wdownwarning_lamp_small.png",
    "wdownerror_lamp_small.png",
    "wdownunknown_lamp_small.png",
    "wdependok_lamp_small.png",
    "wdependwarning_lamp_small.png",
    "wdependerror_lamp_small.png",
    "wdependunknown_lamp_small.png",
    "wunknown_lamp_small.png",
    "wblank_lamp_small.png",
    "graph.png",
    "fadeheaderbg.png",
    "link_small.gif",
    "note_small.png",
    "smallarrow.png",
    "report_logo.png",
    "hammer_small.png",
    "spacer.gif",
};

}  // namespace

const char* resource_file_name(int32_t number) {
  if (number < 0 || number >= kResourceCount) return nullptr;
  return kFileNames[number];
}

const resource_t& resource_collection::get(int32_t number) {
  auto it = resources_.find(number);
  if (it == resources_.end()) {
    const char* file = resource_file_name(number);
    if (file == nullptr) throw resource_error("Unknown resource number: " + std::to_string(number));
    std::string path = directory_.empty() ? file : directory_ + "/" + file;
    return resources_.emplace(number, resource_t(std::move(path), clock_)).first->second;
  }
  try {
    it->second.update();
  } catch (const resource_error& e) {
    log("Error updating resource: " + e.text(), kLogAlways);
  }
  return it->second;
}

resource_collection& resources() {
  static resource_collection store;
  return store;
}

}  // namespace resource
