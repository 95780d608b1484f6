#include "queues/event_io.h"

#include <array>
#include <map>

#include "base/error.h"
#include "base/fatal.h"
#include "queues/event_names.h"
#include "queues/events.h"

namespace queues {

namespace {

using Factory = std::unique_ptr<event> (*)();

template <class E>
std::unique_ptr<event> make_event() {
  return std::make_unique<E>();
}

template <class... E>
constexpr std::array<Factory, kLastEventType + 1> factory_table() {
  std::array<Factory, kLastEventType + 1> table{};
  ((table[E::kType] = &make_event<E>), ...);
  return table;
}

// Indexed by type index; null where the type has no reader. 195 is read
// apart (exevent).
constexpr auto kFactories =
    factory_table<Sys_Exit_Event, Init_Ok_Event, Log_Request_Event, Server_Configuration_Event,
                  Request_Server_Configuration_Event, Get_Metric_Event, Return_Metric_Error_Event,
                  Return_Metric_Uint64_Event, Return_Metric_Timing_Event, List_Metrics_Event,
                  Return_List_Metrics_Event, Get_Metric_Type_Event, Return_Get_Metric_Type_Event,
                  Tql_Select_Event, Return_Tql_Select_Event, Return_Tql_Select_Patch_Event,
                  Return_Tql_Select_Delete_Patch_Event, Tql_Create_Event, Return_Tql_Create_Event,
                  Tql_Update_Event, Return_Tql_Update_Event, Tql_Delete_Event,
                  Return_Tql_Delete_Event, Tql_Acknowledge_Event, Tql_Forget_Event,
                  Return_Tql_Forget_Event, Tsdb_Get_Data_Event, Return_Tsdb_Get_Data_Event,
                  Tsdb_Put_Data_Event, Return_Tsdb_Put_Data_Event, Return_Tsdb_Merge_Data_Event,
                  Tsdb_Append_Data_Record_Event, Return_Tsdb_Append_Data_Record_Event,
                  Return_Tsdb_Append_Data_Event, Return_Tsdb_Truncate_Old_Data_Event,
                  Schedule_Event_Absolute_Event, Schedule_Event_Relative_Event,
                  Scheduled_Report_Generation_Event>();

UnknownEventPolicy g_policy = UnknownEventPolicy::kFatal;

// The type and dest of the last event read from each stream, for the text of
// the unknown-type failure.
struct LastRead {
  int32_t type = INVALID_HEAD;
  queue_t dest = none;
};
std::map<const io::IStream*, LastRead>& last_reads() {
  static std::map<const io::IStream*, LastRead> table;
  return table;
}

// A failure of input that the process's rule makes fatal.
[[noreturn]] void bad_input(const std::string& text) {
  if (g_policy == UnknownEventPolicy::kRaise) throw error::EParseError(text);
  assertion_failed(text);
}

}  // namespace

bool has_reader(int32_t type_index) {
  if (type_index == MESSAGE_EXCEPTION) return true;
  return type_index >= kFirstEventType && type_index <= kLastEventType &&
         kFactories[type_index] != nullptr;
}

void set_unknown_event_policy(UnknownEventPolicy policy) { g_policy = policy; }

void forget_stream(const io::IStream& in) { last_reads().erase(&in); }

protocol::ioprim& operator<<(protocol::ioprim& io, const event& e) {
  TAVREL_ASSERT(e.type_index >= kFirstEventType && e.type_index <= kLastEventType,
                "fdio << event: unknown type index: " + std::to_string(e.type_index));
  io << e.type_index << e.dest << e.inresponse << e.exception;
  e.write_payload(io);
  return io;
}

namespace {

std::unique_ptr<event> read_event_unguarded(protocol::ioprim& io) {
  protocol::ioprim::Nesting level(io);
  int32_t type = 0;
  io >> type;
  LastRead& last = last_reads()[&io.input()];
  if (!has_reader(type)) {
    bad_input("fdio >> event: unknown type index: " + std::to_string(type) + " old was " +
              event_name(last.type) + " dest " + queue_name(last.dest));
  }
  queue_t dest = none;
  uint32_t inresponse = 0;
  uint32_t exception_word = 0;
  io >> dest >> inresponse >> exception_word;
  std::unique_ptr<event> e;
  if (exception_word != 0 || type == MESSAGE_EXCEPTION) {
    if (exception_word == 0) bad_input("Found exevent with .exception == 0");
    e = std::make_unique<exevent>();
  } else {
    e = kFactories[type]();
  }
  e->dest = dest;
  e->inresponse = inresponse;
  e->read_payload(io);
  TAVREL_ASSERT(e->exception || e->type_index == type, "spawn[] hash failure!");
  last = LastRead{e->type_index, e->dest};
  return e;
}

}  // namespace

std::unique_ptr<event> read_event(protocol::ioprim& io) {
  try {
    return read_event_unguarded(io);
  } catch (const error::EParseError& e) {
    // The rest of the message is still on the stream, and nothing marks where
    // the next one begins: no later read on this stream may start here.
    io.mark_broken(e.text());
    throw;
  }
}

protocol::ioprim& operator<<(protocol::ioprim& io, const event_ptr& e) {
  TAVREL_ASSERT(e, "No nested event to write");
  return io << *e;
}

protocol::ioprim& operator>>(protocol::ioprim& io, event_ptr& e) {
  e.reset(read_event(io));
  return io;
}

}  // namespace queues
