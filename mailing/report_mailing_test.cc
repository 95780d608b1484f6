// The stored side of report mailing against the stand-in's database in
// memory: mail_report reads the report, its instance and the result tree
// from the database and writes the mailing's lines to the report's incident
// series; treat_mail_reply mails only the jobs that are still due. The mail
// server is a plain SMTP peer on a thread of this process.
#include "mailing/report_mailing.h"

#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <list>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "dbms/tql_operations.h"
#include "host/report_test_world.h"
#include "queues/configuration.h"
#include "tql/pattern.h"
#include "tql/schema.h"

namespace {

using host::testing::kDataStart;
using host::testing::object_in;
using json = nlohmann::json;

// Accepts one connection on a loopback port and answers every command as a
// willing SMTP server, keeping what comes after DATA. Every read waits at
// most 10 s; the thread ends with the connection.
class OneMailServer {
 public:
  OneMailServer() {
    listener_ = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof(address);
    if (::bind(listener_, reinterpret_cast<sockaddr*>(&address), sizeof(address)) != 0 ||
        ::getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &length) != 0 ||
        ::listen(listener_, 1) != 0) {
      ADD_FAILURE() << "no loopback port for the mail server";
    }
    port_ = ntohs(address.sin_port);
    thread_ = std::thread([this] { serve(); });
  }
  ~OneMailServer() {
    ::shutdown(listener_, SHUT_RDWR);
    if (thread_.joinable()) thread_.join();
    ::close(listener_);
  }

  std::string address() const { return "127.0.0.1:" + std::to_string(port_); }
  // The message as it came, once the thread has ended.
  std::string received() {
    if (thread_.joinable()) thread_.join();
    return data_;
  }

 private:
  void serve() {
    const int fd = ::accept(listener_, nullptr, nullptr);
    if (fd < 0) return;
    timeval limit{10, 0};
    ::setsockopt(fd, SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof(limit));
    say(fd, "220 test\r\n");
    std::string buffer;
    bool in_data = false;
    char chunk[4096];
    for (ssize_t n; (n = ::read(fd, chunk, sizeof(chunk))) > 0;) {
      buffer.append(chunk, static_cast<size_t>(n));
      if (in_data) {
        const size_t end = buffer.find("\r\n.\r\n");
        if (end == std::string::npos) continue;
        data_ = buffer.substr(0, end + 2);
        buffer.erase(0, end + 5);
        in_data = false;
        say(fd, "250 kept\r\n");
      }
      for (size_t eol; !in_data && (eol = buffer.find("\r\n")) != std::string::npos;) {
        const std::string command = buffer.substr(0, 4);
        buffer.erase(0, eol + 2);
        if (command == "DATA") {
          in_data = true;
          say(fd, "354 go on\r\n");
        } else {
          say(fd, command == "QUIT" ? "221 bye\r\n" : "250 ok\r\n");
        }
      }
    }
    ::close(fd);
  }
  static void say(int fd, const std::string& text) {
    if (::write(fd, text.data(), text.size()) < 0) return;
  }

  int listener_;
  int port_ = 0;
  std::thread thread_;
  std::string data_;
};

// The report 0.1.90 with one finished instance 0.1.91 (number 2) that holds
// a folder "Servers" with one row.
json mailed_world() {
  json world = host::testing::report_world();
  json report = host::testing::report_object("0.1.90", "Weekly");
  report["children"] = {{{"class", "ReportInstance"},
                         {"id", "0.1.91"},
                         {"props",
                          {{"name", {{"string", "Weekly"}}},
                           {"startTime", {{"date", kDataStart}}},
                           {"duration", {{"uint", 14400}}},
                           {"generated", {{"date", kDataStart + 20000}}},
                           {"order", {{"uint", 2}}},
                           {"workerNode", {{"uint", 0}}}}},
                         {"children",
                          {{{"class", "ReportResultFolder"},
                            {"props",
                             {{"name", {{"string", "Servers"}}},
                              {"folderType", {{"enum", {65557, 2}}}},
                              {"order", {{"uint", 1}}}}},
                            {"children",
                             {{{"class", "ReportResultRow"},
                               {"props",
                                {{"name", {{"string", "Availability"}}},
                                 {"text", {{"string", "99.5 %"}}},
                                 {"order", {{"uint", 2}}}}}}}}}}}}};
  object_in(world, "0.1")["children"].push_back(report);
  return world;
}

class ReportMailingTest : public ::testing::Test {
 protected:
  void use_mail_server(const std::string& address) {
    control::Server_Configuration_Fields config;
    config.mail_server = address;
    config.mail_from = "reports@example.test";
    queues::set_configuration(config);
  }
  void mail(const std::vector<std::string>& to, const std::string& instance = "0.1.91",
            const std::string& report = "0.1.90") {
    mail_report(db_.db(), to, host::testing::id_of(instance), host::testing::id_of(report));
  }

  host::testing::WorldDatabase db_{mailed_world()};
};

TEST_F(ReportMailingTest, TheStoredReportGoesOutWithItsNumberInTheHistory) {
  OneMailServer server;
  use_mail_server(server.address());
  mail({"ops@example.test"});
  const std::string message = server.received();
  EXPECT_NE(std::string::npos, message.find("Weekly")) << message;
  EXPECT_NE(std::string::npos, message.find("Servers")) << message;
  EXPECT_NE(std::string::npos, message.find("99.5 %")) << message;
  EXPECT_EQ((std::vector<std::string>{"Sending report number 2 to ops@example.test...",
                                      "Report number 2 sent to ops@example.test"}),
            db_.incidents("0.1.90"));
}

TEST_F(ReportMailingTest, NothingIsMailedWithoutAddressesOrWithoutTheStoredObjects) {
  use_mail_server("127.0.0.1:1");
  mail({});
  mail({"ops@example.test"}, "0.1.91", "0.1.99");
  mail({"ops@example.test"}, "0.1.99", "0.1.90");
  EXPECT_TRUE(db_.incidents("0.1.90").empty());
  EXPECT_TRUE(db_.incidents("0.1.99").empty());
}

TEST_F(ReportMailingTest, AMailThatCannotGoOutStandsInTheHistory) {
  use_mail_server("127.0.0.1:1");  // Nothing listens there.
  mail({"ops@example.test"});
  EXPECT_EQ((std::vector<std::string>{"Sending report number 2 to ops@example.test...",
                                      "Report number 2 has not been send to ops@example.test!"}),
            db_.incidents("0.1.90"));
}

// A job's `destination`: a list of one address.
tql::property_ptr destination(const std::string& address) {
  return tql::make_property<tql::kind::kStringList>(schema::kDestination,
                                                    std::list<std::string>{address});
}

// The mailing subscription's reply, made by the database from the root.
dbms::Return_Tql_Select_Data mailing_reply(dbms::Database& db) {
  auto sendto = tql::make_pattern(schema::kReportSendTo, tql::kPatternAllProps);
  auto instance = tql::add_next(tql::make_pattern(schema::kReportInstance, 0), std::move(sendto));
  auto report = tql::add_next(tql::make_pattern(schema::kReport, 0), std::move(instance));
  dbms::Tql_Select_Data request;
  request.root_ids = {tql::kRootId};
  request.pattern = std::move(
      *tql::add_next(tql::make_pattern(schema::kDomain, tql::kPatternNested), std::move(report)));
  return db.select(request);
}

TEST_F(ReportMailingTest, OnlyJobsStillDueAreMailedAndDeleted) {
  use_mail_server("127.0.0.1:1");
  const tql::id_t instance{0, 1, 91};
  std::vector<tql::property_ptr> to;
  to.push_back(destination("ops@example.test"));
  const tql::created_t due =
      tql::create_object(db_.db(), instance, schema::kReportSendTo, std::move(to), 0);
  to.clear();
  to.push_back(destination("cto@example.test"));
  const tql::created_t changed =
      tql::create_object(db_.db(), instance, schema::kReportSendTo, std::move(to), 0);
  dbms::Return_Tql_Select_Data reply = mailing_reply(db_.db());
  // Changed after the reply was made: the reply that shows the change serves it.
  to.clear();
  to.push_back(destination("boss@example.test"));
  tql::update_object(db_.db(), changed.new_id, changed.new_version, std::move(to), 0);
  treat_mail_reply(db_.db(), reply, 7, 7);
  EXPECT_EQ((std::vector<std::string>{"Sending report number 2 to ops@example.test...",
                                      "Report number 2 has not been send to ops@example.test!"}),
            db_.incidents("0.1.90"));
  const std::vector<json> left = db_.children("0.1.91", "ReportSendTo");
  ASSERT_EQ(1u, left.size());
  EXPECT_EQ(changed.new_id.text(), left[0]["id"]);
  EXPECT_NE(due.new_id.text(), left[0]["id"]);
}

TEST_F(ReportMailingTest, JobsOfAnUnfinishedInstanceWaitForItsGeneration) {
  use_mail_server("127.0.0.1:1");
  const tql::id_t instance{0, 1, 91};
  std::vector<tql::property_ptr> p;
  p.push_back(tql::make_property<tql::kind::kUint>(schema::kWorkerNode, 1));
  const host::StoredObject* stored = db_.store().objects().find(instance);
  tql::update_object(db_.db(), instance, stored->version, std::move(p), 0);
  p.clear();
  p.push_back(destination("ops@example.test"));
  tql::create_object(db_.db(), instance, schema::kReportSendTo, std::move(p), 0);
  dbms::Return_Tql_Select_Data reply = mailing_reply(db_.db());
  treat_mail_reply(db_.db(), reply, 7, 7);
  EXPECT_TRUE(db_.incidents("0.1.90").empty());
  EXPECT_EQ(1u, db_.children("0.1.91", "ReportSendTo").size());
}

}  // namespace
