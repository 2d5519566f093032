#include "driver/StandardStreams.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <csignal>
#include <initializer_list>

namespace consolidator {

void prepareStandardStreams() {
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    // An unconnected socket takes the lowest number that is free, and it is as good as closed: it
    // can be neither read nor written nor opened under its name in /dev.
    if (fcntl(stream, F_GETFD) < 0) static_cast<void>(socket(AF_UNIX, SOCK_STREAM, 0));
  }
  static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
  static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
}

}  // namespace consolidator
