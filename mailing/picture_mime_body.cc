#include "mailing/picture_mime_body.h"

namespace email {

PictureMimeBody::PictureMimeBody(const resource::resource_t& resource, std::string contentId,
                                 const std::string& fileName)
    : PictureBytes{{resource.data().begin(), resource.data().end()}},
      DataMimeBody(bytes.data(), static_cast<uint32_t>(bytes.size()), std::move(contentId),
                   fileName, resource.mime_type(), base64_encoding(), true) {}

}  // namespace email
