// Payload records of the parent process's events (namespace control).
#pragma once

#include <cstdint>
#include <set>
#include <string>

#include "base/time_value.h"
#include "protocol/queue.h"

namespace control {

// Event 2 SYS_EXIT.
struct Sys_Exit_Data {
  int32_t reason = 0;
  queues::queue_t requested_by = queues::main;
  std::string error_msg;

  template <class Self, class V>
  static void visit(Self& s, V& v) {
    v("reason", s.reason);
    v("requested_by", s.requested_by);
    v("error_msg", s.error_msg);
  }
  bool operator==(const Sys_Exit_Data&) const = default;
};

// Event 3 INIT_OK: the queues that the sender depends on.
struct Init_Ok_Data {
  std::set<queues::queue_t> depend_on;

  template <class Self, class V>
  static void visit(Self& s, V& v) {
    v("depend_on", s.depend_on);
  }
  bool operator==(const Init_Ok_Data&) const = default;
};

// Event 4 SYSTEM_LOG_REQUEST.
struct Log_Request_Data {
  std::string msg;
  uint32_t log_type = 0;

  template <class Self, class V>
  static void visit(Self& s, V& v) {
    v("msg", s.msg);
    v("log_type", s.log_type);
  }
  bool operator==(const Log_Request_Data&) const = default;
};

// Event 5 SERVER_CONFIGURATION: the whole configuration of the server, as
// the parent read it, in stream order. This process reads six fields
// (resource_directory, log_mask, stop_on_log_match, mail_server, mail_from,
// reply_mail_to); the others are kept as read. Until the reply has come
// every string is empty and every number 0.
struct Server_Configuration_Fields {
  std::string layout_conf_path;
  std::string dbms_tsdb_file_path;
  std::string dbms_odb_file_path;
  std::string dbms_odbj_file_path;
  std::string dbms_cache_tracefile;
  std::string dbms_event_tracefile;
  std::string dbms_tsdb_tracefile;
  int32_t dbms_cache_size = 0;
  int32_t dbms_cache_kin = 0;
  int32_t dbms_cache_kout = 0;
  int32_t dbms_buffer_blocks = 0;
  std::string variable_file;
  int32_t smem_size = 0;
  std::string smem_prefix;
  std::string resource_directory;
  int32_t log_mask = 0;
  bool passive = false;
  int32_t socketio_bind_port = 0;
  int32_t broadcast_bind_port = 0;
  bool socketio_legacy = false;
  int32_t socketio_max_connections = 0;
  int32_t socketio_max_inflight = 0;
  int32_t socketio_agentconf_rate = 0;
  int32_t socketio_agentconf_burst = 0;
  int32_t remcheck_limit_children = 0;
  int32_t remcheck_ping_spacing = 0;
  int32_t netcheck_process_pool_size = 0;
  std::string custom_netcheck_conf;
  int32_t dns_cache_secs = 0;
  std::string libssl;
  std::string system_log_dir_path;
  int32_t log_days = 0;
  std::string working_directory;
  bool disable_alerts = false;
  std::string alert_textmail_ending;
  std::string alert_sms_ending;
  std::string alert_sms_subject;
  std::string alert_htmlmail_ending;
  std::string webinterface_url;
  std::string mail_server;
  std::string mail_from;
  std::string reply_mail_to;
  std::string modem_port;
  std::string modem_init;
  std::string modem_sim_pin;
  std::set<std::string> modem_options;
  int32_t modem_baud_rate = 0;
  int32_t modem_pager_timeout = 0;
  bool alert_to_event_log = false;
  bool alert_to_incident_log = false;
  int32_t alert_defer_at_boot = 0;
  int32_t alert_attempts = 0;
  int32_t alert_retry_delay = 0;
  int32_t max_snmp_table_entries = 0;
  int32_t snmp_reconfig_delay = 0;
  int32_t snmp_max_retrans = 0;
  int32_t snmp_max_retrans_walk = 0;
  TimeValue snmp_timeout_initial;
  TimeValue snmp_timeout_max;
  int32_t snmp_packet_spacing = 0;
  int32_t mtu = 0;
  std::string host_name;
  std::string cluster_members;
  std::string cluster_options;
  std::string report_generator;
  bool upload_serverinfo = false;
  std::string agent_package_path;
  int32_t spare_keypool_size = 0;
  int32_t keypool_reuse = 0;
  int32_t skio_insecure = 0;
  int32_t concurrent_check_recoveries = 0;
  std::string stop_on_log_match;
  int32_t max_scan_processes = 0;
  int32_t ssec_keylength = 0;
  int32_t ssec_min_keylength = 0;
  int32_t ssec_secret_keylength = 0;
  int32_t ssec_secret_min_keylength = 0;
  int32_t ssec_secret_lifetime = 0;
  int32_t grid_default_ttl = 0;
  int32_t master_notify_queue = 0;
  int32_t satellite_tsdb_async = 0;
  int32_t allowed_candidate_nodes = 0;
  bool tsdb_upgrade_discard_bufferlevels = false;
  int32_t tsdb_buffer_entries = 0;
  int32_t tsdb_buffer_write_min = 0;
  int32_t tsdb_buffer_age_max = 0;
  int32_t tsdb_buffer_flush_batch = 0;
  template <class Self, class V>
  static void visit(Self& s, V& v) {
    v("layout_conf_path", s.layout_conf_path);
    v("dbms_tsdb_file_path", s.dbms_tsdb_file_path);
    v("dbms_odb_file_path", s.dbms_odb_file_path);
    v("dbms_odbj_file_path", s.dbms_odbj_file_path);
    v("dbms_cache_tracefile", s.dbms_cache_tracefile);
    v("dbms_event_tracefile", s.dbms_event_tracefile);
    v("dbms_tsdb_tracefile", s.dbms_tsdb_tracefile);
    v("dbms_cache_size", s.dbms_cache_size);
    v("dbms_cache_kin", s.dbms_cache_kin);
    v("dbms_cache_kout", s.dbms_cache_kout);
    v("dbms_buffer_blocks", s.dbms_buffer_blocks);
    v("variable_file", s.variable_file);
    v("smem_size", s.smem_size);
    v("smem_prefix", s.smem_prefix);
    v("resource_directory", s.resource_directory);
    v("log_mask", s.log_mask);
    v("passive", s.passive);
    v("socketio_bind_port", s.socketio_bind_port);
    v("broadcast_bind_port", s.broadcast_bind_port);
    v("socketio_legacy", s.socketio_legacy);
    v("socketio_max_connections", s.socketio_max_connections);
    v("socketio_max_inflight", s.socketio_max_inflight);
    v("socketio_agentconf_rate", s.socketio_agentconf_rate);
    v("socketio_agentconf_burst", s.socketio_agentconf_burst);
    v("remcheck_limit_children", s.remcheck_limit_children);
    v("remcheck_ping_spacing", s.remcheck_ping_spacing);
    v("netcheck_process_pool_size", s.netcheck_process_pool_size);
    v("custom_netcheck_conf", s.custom_netcheck_conf);
    v("dns_cache_secs", s.dns_cache_secs);
    v("libssl", s.libssl);
    v("system_log_dir_path", s.system_log_dir_path);
    v("log_days", s.log_days);
    v("working_directory", s.working_directory);
    v("disable_alerts", s.disable_alerts);
    v("alert_textmail_ending", s.alert_textmail_ending);
    v("alert_sms_ending", s.alert_sms_ending);
    v("alert_sms_subject", s.alert_sms_subject);
    v("alert_htmlmail_ending", s.alert_htmlmail_ending);
    v("webinterface_url", s.webinterface_url);
    v("mail_server", s.mail_server);
    v("mail_from", s.mail_from);
    v("reply_mail_to", s.reply_mail_to);
    v("modem_port", s.modem_port);
    v("modem_init", s.modem_init);
    v("modem_sim_pin", s.modem_sim_pin);
    v("modem_options", s.modem_options);
    v("modem_baud_rate", s.modem_baud_rate);
    v("modem_pager_timeout", s.modem_pager_timeout);
    v("alert_to_event_log", s.alert_to_event_log);
    v("alert_to_incident_log", s.alert_to_incident_log);
    v("alert_defer_at_boot", s.alert_defer_at_boot);
    v("alert_attempts", s.alert_attempts);
    v("alert_retry_delay", s.alert_retry_delay);
    v("max_snmp_table_entries", s.max_snmp_table_entries);
    v("snmp_reconfig_delay", s.snmp_reconfig_delay);
    v("snmp_max_retrans", s.snmp_max_retrans);
    v("snmp_max_retrans_walk", s.snmp_max_retrans_walk);
    v("snmp_timeout_initial", s.snmp_timeout_initial);
    v("snmp_timeout_max", s.snmp_timeout_max);
    v("snmp_packet_spacing", s.snmp_packet_spacing);
    v("mtu", s.mtu);
    v("host_name", s.host_name);
    v("cluster_members", s.cluster_members);
    v("cluster_options", s.cluster_options);
    v("report_generator", s.report_generator);
    v("upload_serverinfo", s.upload_serverinfo);
    v("agent_package_path", s.agent_package_path);
    v("spare_keypool_size", s.spare_keypool_size);
    v("keypool_reuse", s.keypool_reuse);
    v("skio_insecure", s.skio_insecure);
    v("concurrent_check_recoveries", s.concurrent_check_recoveries);
    v("stop_on_log_match", s.stop_on_log_match);
    v("max_scan_processes", s.max_scan_processes);
    v("ssec_keylength", s.ssec_keylength);
    v("ssec_min_keylength", s.ssec_min_keylength);
    v("ssec_secret_keylength", s.ssec_secret_keylength);
    v("ssec_secret_min_keylength", s.ssec_secret_min_keylength);
    v("ssec_secret_lifetime", s.ssec_secret_lifetime);
    v("grid_default_ttl", s.grid_default_ttl);
    v("master_notify_queue", s.master_notify_queue);
    v("satellite_tsdb_async", s.satellite_tsdb_async);
    v("allowed_candidate_nodes", s.allowed_candidate_nodes);
    v("tsdb_upgrade_discard_bufferlevels", s.tsdb_upgrade_discard_bufferlevels);
    v("tsdb_buffer_entries", s.tsdb_buffer_entries);
    v("tsdb_buffer_write_min", s.tsdb_buffer_write_min);
    v("tsdb_buffer_age_max", s.tsdb_buffer_age_max);
    v("tsdb_buffer_flush_batch", s.tsdb_buffer_flush_batch);
  }
  bool operator==(const Server_Configuration_Fields&) const = default;
};

}  // namespace control
