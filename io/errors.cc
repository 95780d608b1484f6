#include "io/errors.h"

namespace io {

namespace {

std::string end_of_stream_text(const std::string& stream_name, const std::string& reason) {
  std::string text = "EOS from " + stream_name;
  if (!reason.empty()) text += " (" + reason + ")";
  return text;
}

}  // namespace

EEndOfStream::EEndOfStream(const std::string& stream_name, const std::string& reason)
    : TextException(end_of_stream_text(stream_name, reason)) {}

ENotReady::ENotReady(const std::string& selectable_name)
    : TextException("Selectable " + selectable_name + " not ready") {}

ETimeout::ETimeout(const std::string& selectable_name)
    : TextException("Timeout waiting for " + selectable_name) {}

}  // namespace io
