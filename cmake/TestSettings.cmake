# A test or a replay takes longer to compile than to run: only what it runs is optimised in full.

add_library(test_settings INTERFACE)
if(CONSOLIDATOR_SANITIZERS)
  target_compile_options(test_settings INTERFACE -O0)
else()
  target_compile_options(test_settings INTERFACE $<$<CONFIG:Release>:-O1>)
endif()
