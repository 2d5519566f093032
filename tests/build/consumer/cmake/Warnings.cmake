message(FATAL_ERROR "a module of the project around")
