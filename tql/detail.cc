#include "tql/detail.h"

namespace tql {

std::string join_details(const details_t& details) {
  std::string out;
  for (const detail_t& d : details) {
    if (!out.empty()) out += "; ";
    out += d.msg;
  }
  return out;
}

}  // namespace tql
