// Test helper: a Python script run in the background by /usr/bin/python3,
// in a fresh work folder of its own, and stopped by its process id. Built
// on the standard library only (the shell starts and stops the process).
//
// The script gets the work folder as its one argument and writes the port
// it listens on to "port" in that folder.
#pragma once

#include <filesystem>
#include <string>

namespace email {

// The folder of the tests' scripts and data (email/testdata).
inline const std::string kTestData = EMAIL_TESTDATA;

class BackgroundPython {
 public:
  // Makes the work folder and, when `files` name any, writes them into it
  // before the script starts (pairs of name and content).
  explicit BackgroundPython(const std::string& script,
                            std::initializer_list<std::pair<std::string, std::string>> files = {});
  // Stops the script if it still runs and removes the work folder.
  ~BackgroundPython();
  BackgroundPython(const BackgroundPython&) = delete;
  BackgroundPython& operator=(const BackgroundPython&) = delete;

  // The port that the script wrote, waiting up to 20 s for it; 0 if none
  // came.
  int port();
  // The content of a file in the work folder; empty if there is none.
  std::string read(const std::string& name) const;
  // Waits up to 20 s for the script to end by itself; true if it did.
  bool waitForExit();
  const std::filesystem::path& folder() const { return folder_; }

 private:
  bool running() const;

  std::filesystem::path folder_;
  std::string pid_;
};

// Parses the Maildir that `server` delivered into ("maildir" in its folder)
// with testdata/read_maildir.py, under Python's strict email policy, into
// the server's folder: "parsed", "parts/part<n>" and "parts/subject". False
// when the script failed (a mail the strict parser refused, say).
bool parse_maildir(BackgroundPython& server);

}  // namespace email
