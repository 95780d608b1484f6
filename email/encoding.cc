#include "email/encoding.h"

#include <algorithm>
#include <cstdint>

#include "email/base64_streambuf.h"
#include "email/quoting_streambuf.h"

namespace email {

std::string base64_line(std::string_view bytes) {
  static constexpr char kAlphabet[] =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string out;
  for (size_t i = 0; i < bytes.size(); i += 3) {
    const size_t n = std::min<size_t>(3, bytes.size() - i);
    uint32_t group = 0;
    for (size_t k = 0; k < 3; ++k) {
      group = group << 8 | (k < n ? static_cast<unsigned char>(bytes[i + k]) : 0);
    }
    for (size_t k = 0; k < 4; ++k) out += k <= n ? kAlphabet[(group >> (18 - 6 * k)) & 63] : '=';
  }
  return out;
}

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
