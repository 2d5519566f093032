#include "driver/Driver.h"

#include <cstdlib>
#include <exception>
#include <iostream>
#include <new>

int main(int argc, char** argv) {
  try {
    return consolidator::runConsolidation(argc, argv);
  } catch (const std::bad_alloc&) {
    std::cerr << "Error: out of memory" << std::endl;
  } catch (const std::exception& error) {
    std::cerr << "Error: " << error.what() << std::endl;
  }
  return EXIT_FAILURE;
}
