// A picture from the resource files, attached to a mail in base64.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "email/mime_body.h"
#include "resource/resource.h"

namespace email {

// Holds the bytes of a PictureMimeBody; a base of its own so that they
// exist before the DataMimeBody that points to them.
struct PictureBytes {
  std::vector<uint8_t> bytes;
};

class PictureMimeBody : private PictureBytes, public DataMimeBody {
 public:
  // The resource's bytes and MIME type, base64, with `contentId`, shown
  // inline under the file name `fileName`. The bytes are copied: a resource may
  // be reloaded (and its old bytes freed) while the mail is still being
  // written, and pictures are small.
  PictureMimeBody(const resource::resource_t& resource, std::string contentId,
                  const std::string& fileName);
};

}  // namespace email
