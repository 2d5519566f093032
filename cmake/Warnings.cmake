# Interface target consolidator_warnings: every warning that has a reason, for both compilers.

add_library(consolidator_warnings INTERFACE)
target_compile_options(
  consolidator_warnings
  INTERFACE
    -Wall
    -Wextra
    -Wpedantic
    -Wshadow
    -Wconversion
    -Wsign-conversion
    -Wdouble-promotion
    -Wold-style-cast
    -Wcast-align
    -Wcast-qual
    -Wformat=2
    -Wundef
    -Wextra-semi
    -Wimplicit-fallthrough
    -Wnon-virtual-dtor
    -Woverloaded-virtual
    -Wmissing-declarations
    -Wzero-as-null-pointer-constant
    $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond
    -Wduplicated-branches
    -Wlogical-op
    -Wsuggest-override
    # GCC 12 reports plain concatenations of std::string (its bug 105651).
    -Wno-restrict>
    $<$<CXX_COMPILER_ID:Clang>:-Wshadow-all
    -Winconsistent-missing-override
    -Wunreachable-code>
    $<$<BOOL:${CONSOLIDATOR_WERROR}>:-Werror>)
