#include "driver/OutOfMemory.h"

#include <cstdlib>
#include <exception>
#include <iostream>
#include <new>

namespace consolidator {

void endOutOfMemory() {
  std::cerr << "Error: out of memory" << std::endl;
  std::exit(EXIT_FAILURE);
}

void endWhereMemoryRunsOut() {
  std::set_new_handler(endOutOfMemory);
  // All exceptions are caught, so the reason can only be that there was no memory for one.
  std::set_terminate(endOutOfMemory);
}

}  // namespace consolidator
