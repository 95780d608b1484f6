#include "email/encoding.h"

#include "email/base64_streambuf.h"
#include "email/quoting_streambuf.h"

namespace email {

std::unique_ptr<EncoderStreambuf> Base64Encoding::wrap(std::ostream& stream) const {
  return std::make_unique<Base64Streambuf>(stream);
}

std::unique_ptr<EncoderStreambuf> QuotedPrintableEncoding::wrap(std::ostream& stream) const {
  return std::make_unique<QuotingStreambuf>(stream);
}

const ContentTransferEncoding& base64_encoding() {
  static const Base64Encoding kEncoding;
  return kEncoding;
}

const ContentTransferEncoding& quoted_printable_encoding() {
  static const QuotedPrintableEncoding kEncoding;
  return kEncoding;
}

}  // namespace email
