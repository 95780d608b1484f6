#include "host/parent_service.h"

#include "base/time_text.h"
#include "base/time_value.h"
#include "base/zone.h"
#include "queues/events.h"

namespace host {

void ParentService::handle(const queues::event& e, queues::childqueue& queue) {
  using namespace queues;
  if (e.exception) return;
  switch (e.type_index) {
    case REQUEST_SERVER_CONFIGURATION:
      queue.send(Server_Configuration_Event(e.dest, e.inresponse, config_));
      break;
    case INIT_OK:
      initialized_ = true;
      break;
    case SYSTEM_LOG_REQUEST: {
      const auto& request = dynamic_cast<const Log_Request_Event&>(e).data;
      std::string level = request.log_type == 0      ? "log"
                          : request.log_type == 4096 ? "trace"
                                                     : "level " + std::to_string(request.log_type);
      int32_t now = TimeValue::now().seconds;  // One reading for date and clock.
      log_ << date2str(now, timeZoneValue(0)) << " " << clock2str(now % 86400) << " " << level
           << ": " << request.msg
           << "\n";
      log_.flush();
      break;
    }
    default:
      break;
  }
}

}  // namespace host
