// The content transfer encodings of mail bodies. Each exists once, as a
// shared constant object that bodies point to and never own.
#pragma once

#include <memory>
#include <ostream>
#include <string>
#include <string_view>

#include "email/encoder_streambuf.h"

namespace email {

class ContentTransferEncoding {
 public:
  virtual ~ContentTransferEncoding() = default;
  // The name in the Content-Transfer-Encoding header.
  virtual std::string name() const = 0;
  // A new encoder that writes to `stream`, which must outlive it. The
  // caller owns it; call finish() on it to learn of a failed last write.
  virtual std::unique_ptr<EncoderStreambuf> wrap(std::ostream& stream) const = 0;
};

class Base64Encoding final : public ContentTransferEncoding {
 public:
  std::string name() const override { return "base64"; }
  std::unique_ptr<EncoderStreambuf> wrap(std::ostream& stream) const override;
};

class QuotedPrintableEncoding final : public ContentTransferEncoding {
 public:
  std::string name() const override { return "quoted-printable"; }
  std::unique_ptr<EncoderStreambuf> wrap(std::ostream& stream) const override;
};

// `bytes` in base64 on one line, padded, without a line end: for encoded
// words in headers and for SMTP authentication.
std::string base64_line(std::string_view bytes);

// The shared objects; they live as long as the process.
const ContentTransferEncoding& base64_encoding();
const ContentTransferEncoding& quoted_printable_encoding();

}  // namespace email
