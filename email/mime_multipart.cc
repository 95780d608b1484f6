#include "email/mime_multipart.h"

#include "email/header_text.h"

namespace email {
namespace {

constexpr char kPreamble[] =
    "Your email program does not understand MIME format.\r\n"
    "You can edit your Tavrel alert path to use plain-text only,\r\n"
    "or your could upgrade your mail reader in order to read\r\n"
    "this mail.\r\n"
    "\r\n";

}  // namespace

std::string MimeMultipart::contentType(const std::string& stamp, int& counter) {
  boundaryNumber_ = ++counter;
  const std::string boundary =
      "boundary=\"---------_=_" + stamp + "." + std::to_string(boundaryNumber_) + "\"";
  switch (kind_) {
    case kMixed:
      return "multipart/mixed;\r\n\t" + boundary;
    case kAlternative:
      return "multipart/alternative;\r\n\t" + boundary;
    case kRelated:
      return "multipart/related;\r\n\ttype=\"multipart/alternative\";\r\n\t" + boundary;
    default:
      return "multipart/xxx";
  }
}

void MimeMultipart::writeBody(std::ostream& stream, const std::string& stamp, int& counter) {
  const std::string delimiter = "-----------_=_" + stamp + "." + std::to_string(boundaryNumber_);
  stream << kPreamble;
  // By index, as a part may add parts while it writes itself.
  for (std::size_t i = 0; i < parts_.size(); ++i) {
    stream << delimiter << "\r\n";
    writePart(*parts_[i], stream, stamp, counter);
  }
  stream << delimiter << "--\r\n";
}

void MimeMultipart::writePart(MimeBody& part, std::ostream& stream, const std::string& stamp,
                              int& counter) {
  stream << "Content-Type: " << part.contentType(stamp, counter) << "\r\n"
         << "Content-Transfer-Encoding: " << part.transferEncoding() << "\r\n";
  const std::string disposition = part.contentDisposition();
  if (!disposition.empty()) stream << "Content-Disposition: " << disposition << "\r\n";
  const std::string id = part.getContentId();
  if (!id.empty()) stream << "Content-ID: <" << plain_header_text(id) << ">\r\n";
  stream << "\r\n";
  part.writeBody(stream, stamp, counter);
  stream << "\r\n";
}

}  // namespace email
