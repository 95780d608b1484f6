#include "email/mime_body.h"

#include "base/error.h"
#include "base/utf8.h"
#include "email/header_text.h"

namespace email {

namespace {

bool is_text(const std::string& type) { return type.rfind("text/", 0) == 0; }

}  // namespace

std::string inline_disposition(const std::string& fileName) {
  return "inline;\r\n\tfilename=\"" + plain_header_text(fileName) + "\"";
}

std::string UnstructuredMimeBody::contentType(const std::string&, int&) {
  return is_text(type_) ? type_ + ";\r\n\tcharset=\"utf-8\"" : type_;
}

void UnstructuredMimeBody::writeBody(std::ostream& stream, const std::string&, int&) {
  auto encoder = encoding_->wrap(stream);
  if (!is_text(type_)) {
    std::ostream out(encoder.get());
    out.exceptions(std::ios::badbit);
    writeContent(out);
    out.flush();
  } else {
    text::Utf8Streambuf utf8(*encoder);
    std::ostream out(&utf8);
    out.exceptions(std::ios::badbit);
    writeContent(out);
    out.flush();
    if (!utf8.finish()) throw error::ESystemError("Writing the encoded mail text failed");
  }
  encoder->finish();
}

DataMimeBody::DataMimeBody(const void* data, uint32_t length, std::string contentId,
                           const std::string& fileName, std::string type,
                           const ContentTransferEncoding& encoding, bool asInline)
    : UnstructuredMimeBody(
          std::move(type), encoding,
          asInline ? inline_disposition(fileName)
                   : "attachment;\r\n\tfilename=\"" + plain_header_text(fileName) + "\""),
      data_(static_cast<const char*>(data)),
      length_(length) {
  setContentId(std::move(contentId));
}

void DataMimeBody::writeContent(std::ostream& out) { out.write(data_, length_); }

}  // namespace email
