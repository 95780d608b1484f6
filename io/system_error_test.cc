#include "io/system_error.h"

#include <gtest/gtest.h>

#include "base/error.h"
#include "io/errors.h"

namespace io {
namespace {

// Linux codes: ENOENT 2, EEXIST 17, ENOTDIR 20, EPIPE 32.
TEST(SystemErrorTest, CodesPickTheClassAndText) {
  try {
    raise_system_error("Cannot open file x", 2);
  } catch (const error::EFileNotFoundError& e) {
    EXPECT_EQ("Cannot open file x: No such file or directory", e.text());
  }
  EXPECT_THROW(raise_system_error("a", 20), error::EFileNotFoundError);
  EXPECT_THROW(raise_system_error("a", 17), error::EFileExistsError);
  try {
    raise_system_error("pout write", 32);
  } catch (const error::EFileNotFoundError&) {
    FAIL() << "wrong class";
  } catch (const error::ESystemError& e) {
    EXPECT_EQ("pout write: Broken pipe", e.text());
  }
  EXPECT_EQ("Unknown error 99999", system_error_text(99999));
}

TEST(SystemErrorTest, ExceptionTexts) {
  EXPECT_EQ("EOS from s", EEndOfStream("s").text());
  EXPECT_EQ("EOS from s (gone)", EEndOfStream("s", "gone").text());
  EXPECT_EQ("Selectable x not ready", ENotReady("x").text());
  EXPECT_EQ("Timeout waiting for x", ETimeout("x").text());
  EConnection connection("c");
  const error::ESystemError& base = connection;  // Caught as a system error.
  EXPECT_EQ("c", base.text());
}

}  // namespace
}  // namespace io
