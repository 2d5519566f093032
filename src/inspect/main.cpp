#include "driver/Process.h"
#include "inspect/Inspector.h"

#include <unistd.h>

#include <cstdlib>
#include <new>
#include <string>
#include <string_view>
#include <vector>

namespace {

[[noreturn]] void endOutOfMemory() {
  constexpr std::string_view message = "consolidator-inspect: there is no memory left\n";
  static_cast<void>(::write(STDERR_FILENO, message.data(), message.size()) > 0);
  std::_Exit(static_cast<int>(consolidator::inspect::Status::Unasked));
}

bool takesColour() {
  const char* const refusal = std::getenv("NO_COLOR");
  return ::isatty(STDOUT_FILENO) == 1 && (refusal == nullptr || *refusal == '\0');
}

}  // namespace

int main(int argc, char** argv) {
  std::set_new_handler(endOutOfMemory);
  consolidator::prepareStandardStreams();
  const std::vector<std::string> words(argv + (argc > 0 ? 1 : 0), argv + argc);
  consolidator::inspect::OutputSink out(STDOUT_FILENO);
  consolidator::inspect::Messages messages(STDERR_FILENO);
  const auto status = consolidator::inspect::runInspector(words, out, messages, takesColour());
  return static_cast<int>(status);
}
