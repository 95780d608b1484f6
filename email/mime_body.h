// The bodies of a MIME message tree. A body writes itself into the output
// stream when its turn comes, so nothing of a message is held as text; a
// body may even be produced (a chart drawn) at the very moment it is sent.
//
// Bodies are used on one thread. Writing raises whatever the target stream
// or the body's content raises (error::Exception and derived classes); the
// message is then incomplete and the stream should be dropped.
#pragma once

#include <cstdint>
#include <ostream>
#include <string>

#include "email/encoding.h"

namespace email {

class MimeBody {
 public:
  MimeBody() = default;
  MimeBody(const MimeBody&) = delete;
  MimeBody& operator=(const MimeBody&) = delete;
  virtual ~MimeBody() = default;

  // The Content-ID, without angle brackets; empty for none.
  virtual void setContentId(std::string id) { contentId_ = std::move(id); }
  virtual std::string getContentId() const { return contentId_; }
  // The Content-Transfer-Encoding header's value.
  virtual std::string transferEncoding() const { return "7bit"; }
  // The Content-Disposition header's value; empty for none.
  virtual std::string contentDisposition() const { return {}; }
  // The Content-Type header's value. `stamp` and `counter` number the
  // boundaries of multiparts, which take the next number from `counter`
  // here; so this must be called before writeBody().
  virtual std::string contentType(const std::string& stamp, int& counter) = 0;
  // Writes the body, encoded, behind its headers.
  virtual void writeBody(std::ostream& stream, const std::string& stamp, int& counter) = 0;

 private:
  std::string contentId_;
};

// A leaf: content of one type, written through a content transfer encoding.
class UnstructuredMimeBody : public MimeBody {
 public:
  // `encoding` is one of the shared objects of encoding.h.
  UnstructuredMimeBody(std::string type, const ContentTransferEncoding& encoding,
                       std::string disposition = {})
      : type_(std::move(type)), encoding_(&encoding), disposition_(std::move(disposition)) {}

  std::string transferEncoding() const override { return encoding_->name(); }
  std::string contentDisposition() const override { return disposition_; }
  // The type; for text ("text/...") with, on a folded line, charset
  // "utf-8".
  std::string contentType(const std::string& stamp, int& counter) override;
  // Writes writeContent() through an encoder on `stream`, then the
  // encoder's tail. The bytes of a text are made UTF-8 on the way: what is
  // no valid UTF-8 is read as ISO-8859-1 (base/utf8.h). A failure of the
  // target stream raises.
  void writeBody(std::ostream& stream, const std::string& stamp, int& counter) override;

 protected:
  // Writes the content, unencoded, to `out`, whose exception mask has
  // badbit set, so that a failed write raises.
  virtual void writeContent(std::ostream& out) = 0;

 private:
  std::string type_;
  const ContentTransferEncoding* encoding_;  // shared, not owned
  std::string disposition_;
};

// The Content-Disposition of a part that the mail shows where its HTML
// refers to it: "inline" with the file name on a folded line.
std::string inline_disposition(const std::string& fileName);

// An attachment of bytes that the caller keeps alive as long as the body;
// `asInline` makes it a part shown inline (a picture of the HTML).
class DataMimeBody : public UnstructuredMimeBody {
 public:
  DataMimeBody(const void* data, uint32_t length, std::string contentId,
               const std::string& fileName, std::string type,
               const ContentTransferEncoding& encoding, bool asInline = false);

 protected:
  void writeContent(std::ostream& out) override;

 private:
  const char* data_;  // not owned
  uint32_t length_;
};

}  // namespace email
