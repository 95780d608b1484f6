// Sending over TLS with a login to real SMTP servers (aiosmtpd, run by the
// system's Python): one that requires STARTTLS and one that speaks TLS from
// the start, both with a certificate of a CA made here with the openssl
// command. A wrong password, an untrusted certificate, a certificate for
// another name and a missing password file each fail with a clear error and
// deliver nothing; the password is in no text the client tells.
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "email/smtp_client.h"
#include "email/test_process.h"
#include "email/test_support.h"

namespace email {
namespace {

using namespace std::chrono_literals;

const std::string kServerPassword = "s3cret-Pa55 with blanks";

std::string fileText(const std::filesystem::path& path) {
  std::ifstream in(path);
  std::stringstream text;
  text << in.rdbuf();
  return text.str();
}

class TlsSendTest : public SmtpTest {
 protected:
  // A CA, a server certificate for localhost and 127.0.0.1 and one for
  // another name, made once for the program; and the password file.
  static void SetUpTestSuite() {
    dir_ = new std::filesystem::path(std::filesystem::temp_directory_path() /
                                     ("tavrel-tls-test-" + std::to_string(getpid())));
    std::filesystem::create_directories(*dir_);
    const std::string d = dir_->string();
    const std::string key = " -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes";
    const std::string commands =
        "cd '" + d + "' && openssl req -x509" + key +
        " -keyout ca.key -out ca.pem -days 2 -subj '/CN=Tavrel test CA' &&"
        " printf 'subjectAltName=DNS:localhost,IP:127.0.0.1\\n' >good.ext &&"
        " printf 'subjectAltName=DNS:other.example\\n' >other.ext &&"
        " for c in good other; do openssl req" +
        key +
        " -keyout $c.key -out $c.csr -subj /CN=$c &&"
        " openssl x509 -req -in $c.csr -CA ca.pem -CAkey ca.key -CAcreateserial -days 2"
        " -extfile $c.ext -out $c.pem || exit 1; done >openssl.log 2>&1";
    ASSERT_EQ(0, std::system(commands.c_str())) << fileText(*dir_ / "openssl.log");
    std::ofstream(*dir_ / "password") << kServerPassword << "\n";
  }
  static void TearDownTestSuite() {
    std::filesystem::remove_all(*dir_);
    delete dir_;
  }

  // Starts a server of `mode` with the certificate `cert` ("good" or
  // "other") and sends a message to it by `setting`, in which {port}, {ca}
  // and {password} stand for the server's port and the files.
  bool send(const std::string& mode, const std::string& cert, std::string setting) {
    server_ = std::make_unique<BackgroundPython>(
        kTestData + "/tls_server.py", std::initializer_list<std::pair<std::string, std::string>>{
                                          {"mode", mode},
                                          {"password", kServerPassword},
                                          {"server.pem", fileText(*dir_ / (cert + ".pem"))},
                                          {"server.key", fileText(*dir_ / (cert + ".key"))}});
    const int port = server_->port();
    EXPECT_NE(0, port) << server_->read("output");
    for (auto [name, value] : {std::pair<std::string, std::string>{"{port}", std::to_string(port)},
                               {"{ca}", (*dir_ / "ca.pem").string()},
                               {"{password}", (*dir_ / "password").string()}}) {
      for (size_t at; (at = setting.find(name)) != std::string::npos;)
        setting.replace(at, name.size(), value);
    }
    SmtpClient client(setting, "tavrel.test", log);
    client.setTimeout(30s);
    client.setHeloName("tavrel.test");
    auto m = makeMessage({"ops@example.org"});
    return client.send(*m);
  }

  int delivered() const {
    const auto box = server_->folder() / "maildir" / "new";
    if (!std::filesystem::exists(box)) return 0;
    return static_cast<int>(std::distance(std::filesystem::directory_iterator(box), {}));
  }

  // The last error told, and that no text holds the password.
  std::string lastError() const {
    std::string last;
    for (const LogLine& line : lines) {
      EXPECT_EQ(std::string::npos, line.text.find("s3cret")) << line.text;
      if (line.isError) last = line.text;
    }
    return last;
  }

  static std::filesystem::path* dir_;
  std::unique_ptr<BackgroundPython> server_;
};

std::filesystem::path* TlsSendTest::dir_ = nullptr;

TEST_F(TlsSendTest, StartTlsWithALoginDelivers) {
  ASSERT_TRUE(
      send("starttls", "good", "smtp://ops@localhost:{port}?password-file={password}&ca-file={ca}"))
      << ::testing::PrintToString(lines);
  EXPECT_EQ(1, delivered());
  ASSERT_TRUE(parse_maildir(*server_)) << server_->read("parsed");
  EXPECT_NE(std::string::npos, server_->read("parsed").find("defects 0"))
      << server_->read("parsed");
  EXPECT_EQ("", lastError());
}

TEST_F(TlsSendTest, ImplicitTlsWithALoginDelivers) {
  setenv("TAVREL_TEST_SMTP_PASSWORD", kServerPassword.c_str(), 1);
  ASSERT_TRUE(
      send("implicit", "good",
           "smtps://"
           "ops@127.0.0.1:{port}?password-env=TAVREL_TEST_SMTP_PASSWORD&ca-file={ca}&auth=login"))
      << ::testing::PrintToString(lines);
  unsetenv("TAVREL_TEST_SMTP_PASSWORD");
  EXPECT_EQ(1, delivered());
  EXPECT_EQ("", lastError());
}

TEST_F(TlsSendTest, AWrongPasswordDeliversNothing) {
  std::ofstream(*dir_ / "wrong") << "wrong\n";
  ASSERT_FALSE(send(
      "starttls", "good",
      "smtp://ops@localhost:{port}?password-file=" + (*dir_ / "wrong").string() + "&ca-file={ca}"));
  EXPECT_EQ(0, delivered());
  EXPECT_NE(std::string::npos, lastError().find("Authentication as \"ops\" refused"))
      << lastError();
}

TEST_F(TlsSendTest, AnUntrustedCertificateDeliversNothing) {
  ASSERT_FALSE(send("starttls", "good", "smtp://ops@localhost:{port}?password-file={password}"));
  EXPECT_EQ(0, delivered());
  EXPECT_NE(std::string::npos, lastError().find("certificate verify failed")) << lastError();
}

TEST_F(TlsSendTest, ACertificateForAnotherNameDeliversNothing) {
  ASSERT_FALSE(send("implicit", "other",
                    "smtps://ops@localhost:{port}?password-file={password}&ca-file={ca}"));
  EXPECT_EQ(0, delivered());
  EXPECT_NE(std::string::npos, lastError().find("hostname mismatch")) << lastError();
}

TEST_F(TlsSendTest, AMissingPasswordFileDeliversNothing) {
  ASSERT_FALSE(send("starttls", "good",
                    "smtp://ops@localhost:{port}?password-file=/nonexistent/pw&ca-file={ca}"));
  EXPECT_EQ(0, delivered());
  EXPECT_NE(std::string::npos,
            lastError().find("Cannot read the SMTP password file /nonexistent/pw"))
      << lastError();
}

}  // namespace
}  // namespace email
