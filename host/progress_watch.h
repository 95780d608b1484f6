// ProgressWatch: tells a person how far each report generation has come.
// After each change of the database the endpoint hands it the changed
// object; when that is a ReportInstance whose `progress` differs from what
// was last told for it (or wasn't told yet), it writes one line:
//
//   progress: <instance id> <percent>% <instance name>
//
// The name is the Report's name, which the reporter copies to the instance;
// it may hold blanks and stands last so that a reader can take the rest of
// the line. An instance without a `progress`, or with a null or non-uint
// one, gives no line. Not thread safe; writes go straight to `out`.
#pragma once

#include <cstdint>
#include <map>
#include <ostream>

#include "host/store_objects.h"

namespace host {

class ProgressWatch {
 public:
  // `out` must outlive the watch.
  explicit ProgressWatch(std::ostream& out) : out_(out) {}

  // Looks at object `id` in `store` after it was created or updated; an
  // id that isn't (or no longer is) in the store is passed over.
  void changed(const ObjectStore& store, const tql::id_t& id);

 private:
  std::ostream& out_;
  std::map<tql::id_t, uint32_t> told_;  // Last percentage written, by instance.
};

}  // namespace host
