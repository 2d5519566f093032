#include "inspect/output/Messages.h"

namespace consolidator::inspect {

void Messages::say(std::string_view message) {
  out_.write("consolidator-inspect: ");
  out_.write(message);
  out_.put('\n');
  out_.flush();
}

}  // namespace consolidator::inspect
