#include "analysis/generation_context.h"

ReportFlags& report_flags() {
  static ReportFlags flags;
  return flags;
}

tql::id_t& report_tree_root() {
  static tql::id_t root;
  return root;
}
