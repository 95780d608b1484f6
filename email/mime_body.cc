#include "email/mime_body.h"

#include "email/header_text.h"

namespace email {

std::string UnstructuredMimeBody::contentType(const std::string&, int&) {
  return type_ + ";\r\n\tcharset=\"iso-8859-1\"";
}

void UnstructuredMimeBody::writeBody(std::ostream& stream, const std::string&, int&) {
  auto encoder = encoding_->wrap(stream);
  std::ostream out(encoder.get());
  out.exceptions(std::ios::badbit);
  writeContent(out);
  out.flush();
  encoder->finish();
}

DataMimeBody::DataMimeBody(const void* data, uint32_t length, std::string contentId,
                           const std::string& fileName, std::string type,
                           const ContentTransferEncoding& encoding)
    : UnstructuredMimeBody(std::move(type), encoding,
                           "attachment;\r\n\tfilename=\"" + plain_header_text(fileName) + "\""),
      data_(static_cast<const char*>(data)),
      length_(length) {
  setContentId(std::move(contentId));
}

void DataMimeBody::writeContent(std::ostream& out) { out.write(data_, length_); }

}  // namespace email
