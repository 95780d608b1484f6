// A multipart body: parts, each with its own headers, between boundary
// lines. It owns its parts.
//
// Parts may be added while the multipart is being written, by a part that
// writes itself: they come out behind all parts added before them. A report
// relies on that to attach the pictures that its HTML asks for.
#pragma once

#include <memory>
#include <vector>

#include "email/mime_body.h"

namespace email {

class MimeMultipart : public MimeBody {
 public:
  // The subtype; other values give "multipart/xxx".
  enum Kind : int { kMixed = 0, kAlternative = 1, kRelated = 2 };

  explicit MimeMultipart(int kind) : kind_(kind) {}

  // Appends `part`, also while this multipart is being written.
  void addPart(std::unique_ptr<MimeBody> part) { parts_.push_back(std::move(part)); }

  // Adds 1 to `counter` and keeps the result as this multipart's boundary
  // number: "---------_=_" stamp "." number.
  std::string contentType(const std::string& stamp, int& counter) override;
  // The preamble, then each part behind a boundary line with its headers,
  // then the closing boundary line.
  void writeBody(std::ostream& stream, const std::string& stamp, int& counter) override;

 private:
  void writePart(MimeBody& part, std::ostream& stream, const std::string& stamp, int& counter);

  int kind_;
  int32_t boundaryNumber_ = 0;  // set by contentType()
  std::vector<std::unique_ptr<MimeBody>> parts_;
};

}  // namespace email
