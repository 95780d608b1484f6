#include "queues/configuration.h"

namespace queues {
namespace {

control::Server_Configuration_Fields& stored() {
  static control::Server_Configuration_Fields fields;
  return fields;
}

}  // namespace

const control::Server_Configuration_Fields& configuration() { return stored(); }

void set_configuration(const control::Server_Configuration_Fields& fields) { stored() = fields; }

}  // namespace queues
