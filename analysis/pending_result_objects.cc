// Placeholders for the result writers and the generation context, which are
// being built with the walk: they create nothing, so that the row writers
// link before they exist. This file goes when they arrive.
#include "analysis/generation_context.h"
#include "analysis/result_objects.h"

ReportFlags& report_flags() {
  static ReportFlags flags;
  return flags;
}
tql::id_t& report_tree_root() {
  static tql::id_t root;
  return root;
}
uint32_t next_result_order() { return 0; }
tql::id_t addFolder(const tql::id_t&, uint32_t, const std::string&, const tql::id_t&) { return {}; }
tql::id_t addRow(const tql::id_t&, const std::string&, const std::string&, const tql::id_t&) {
  return {};
}
tql::id_t addLog(const tql::id_t&, const std::string&) { return {}; }
tql::id_t addText(const tql::id_t&, const std::string&) { return {}; }
void addPropertyRow(const tql::id_t&, const std::string&, const tql::patch_t&, int32_t, bool,
                    const std::string&, const tql::id_t&) {}
void addPropertyRowIfSet(const tql::id_t&, const std::string&, const tql::patch_t&, int32_t,
                         const tql::id_t&) {}
