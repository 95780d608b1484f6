// The event classes of the types that have readers: this process's own
// exchanges and what the stand-in host needs.
#pragma once

#include "dbms/control_records.h"
#include "dbms/metric_records.h"
#include "dbms/reporter_records.h"
#include "dbms/tql_records.h"
#include "dbms/tsdb_records.h"
#include "queues/event.h"
#include "queues/scheduler_records.h"

namespace queues {

// With the parent.
using Sys_Exit_Event = devent<SYS_EXIT, control::Sys_Exit_Data>;
using Init_Ok_Event = devent<INIT_OK, control::Init_Ok_Data>;
using Log_Request_Event = devent<SYSTEM_LOG_REQUEST, control::Log_Request_Data>;
using Server_Configuration_Event =
    devent<SERVER_CONFIGURATION, control::Server_Configuration_Fields>;
using Request_Server_Configuration_Event = devent<REQUEST_SERVER_CONFIGURATION, int>;

// Metering: the requests and their answers.
using Get_Metric_Event = devent<GET_METRIC, control::Get_Metric_Data>;
using Return_Metric_Error_Event = devent<RETURN_METRIC_ERROR, std::string>;
using Return_Metric_Uint64_Event = devent<RETURN_METRIC_UINT64, uint64_t>;
using Return_Metric_Timing_Event = devent<RETURN_METRIC_TIMING, control::Return_Metric_Timing_Data>;
using List_Metrics_Event = devent<LIST_METRICS, int>;
using Return_List_Metrics_Event = devent<RETURN_LIST_METRICS, control::Metric_Group>;
using Get_Metric_Type_Event = devent<GET_METRIC_TYPE, control::Get_Metric_Type_Data>;
using Return_Get_Metric_Type_Event = devent<RETURN_GET_METRIC_TYPE, control::Metric>;

// With the object database.
using Tql_Select_Event = devent<TQL_SELECT, dbms::Tql_Select_Data>;
using Return_Tql_Select_Event = devent<RETURN_TQL_SELECT, dbms::Return_Tql_Select_Data>;
using Return_Tql_Select_Patch_Event =
    devent<RETURN_TQL_SELECT_PATCH, dbms::Return_Tql_Select_Patch_Data>;
using Return_Tql_Select_Delete_Patch_Event =
    devent<RETURN_TQL_SELECT_DELETE_PATCH, dbms::Return_Tql_Select_Delete_Patch_Data>;
using Tql_Create_Event = devent<TQL_CREATE, dbms::Tql_Create_Data>;
using Return_Tql_Create_Event = devent<RETURN_TQL_CREATE, dbms::Return_Tql_Create_Data>;
using Tql_Update_Event = devent<TQL_UPDATE, dbms::Tql_Update_Data>;
using Return_Tql_Update_Event = devent<RETURN_TQL_UPDATE, dbms::Return_Tql_Update_Data>;
using Tql_Delete_Event = devent<TQL_DELETE, dbms::Tql_Delete_Data>;
using Return_Tql_Delete_Event = devent<RETURN_TQL_DELETE, dbms::Return_Tql_Delete_Data>;
using Tql_Acknowledge_Event = devent<TQL_ACKNOWLEDGE, dbms::Tql_Acknowledge_Data>;
using Tql_Forget_Event = devent<TQL_FORGET, dbms::Tql_Forget_Data>;
using Return_Tql_Forget_Event = devent<RETURN_TQL_FORGET, dbms::Return_Tql_Forget_Data>;

// With the time-series store.
using Tsdb_Get_Data_Event = devent<TSDB_GET_DATA, dbms::TSDB_Get_Data_Data>;
using Return_Tsdb_Get_Data_Event = devent<RETURN_TSDB_GET_DATA, dbms::Return_TSDB_Get_Data_Data>;
using Tsdb_Put_Data_Event = devent<TSDB_PUT_DATA, dbms::TSDB_Put_Data_Data>;
using Return_Tsdb_Put_Data_Event = devent<RETURN_TSDB_PUT_DATA, dbms::Return_TSDB_Put_Data_Data>;
using Return_Tsdb_Merge_Data_Event =
    devent<RETURN_TSDB_MERGE_DATA, dbms::Return_TSDB_Merge_Data_Data>;
using Tsdb_Append_Data_Record_Event =
    devent<TSDB_APPEND_DATA_RECORD, dbms::TSDB_Append_Data_Record_Data>;
using Return_Tsdb_Append_Data_Record_Event =
    devent<RETURN_TSDB_APPEND_DATA_RECORD, dbms::Return_TSDB_Append_Data_Record_Data>;
using Return_Tsdb_Append_Data_Event =
    devent<RETURN_TSDB_APPEND_DATA, dbms::Return_TSDB_Append_Data_Data>;
using Return_Tsdb_Truncate_Old_Data_Event =
    devent<RETURN_TSDB_TRUNCATE_OLD_DATA, dbms::Return_TSDB_Truncate_Old_Data_Data>;

// With the scheduler, and this process's own.
using Schedule_Event_Absolute_Event =
    devent<SCHEDULE_EVENT_ABSOLUTE, scheduler::Schedule_Event_Absolute_Data>;
using Schedule_Event_Relative_Event =
    devent<SCHEDULE_EVENT_RELATIVE, scheduler::Schedule_Event_Relative_Data>;
using Scheduled_Report_Generation_Event =
    devent<SCHEDULED_REPORT_GENERATION, reporter::Scheduled_Report_Generation_Data>;

}  // namespace queues
