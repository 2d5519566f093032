# Interface target consolidator_hardening: what the hardening guides of Debian and of the OpenSSF
# ask of a program that reads foreign files. Sanitizers bring their own checks and get in the way of
# _FORTIFY_SOURCE, so a sanitized build does without.

add_library(consolidator_hardening INTERFACE)

include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

if(CONSOLIDATOR_HARDENING AND NOT CONSOLIDATOR_SANITIZERS)
  target_compile_options(
    consolidator_hardening
    INTERFACE
      -fstack-protector-strong
      -fstack-clash-protection
      $<$<STREQUAL:${CMAKE_SYSTEM_PROCESSOR},x86_64>:-fcf-protection=full>
      $<$<STREQUAL:${CMAKE_SYSTEM_PROCESSOR},aarch64>:-mbranch-protection=standard>
      # Needs the optimiser; distributions preset a lower level, which must go first.
      $<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE
      -D_FORTIFY_SOURCE=3>)
  target_compile_definitions(consolidator_hardening INTERFACE _GLIBCXX_ASSERTIONS)
  target_link_options(consolidator_hardening INTERFACE LINKER:-z,relro LINKER:-z,now
                      LINKER:-z,noexecstack LINKER:--as-needed)
endif()
