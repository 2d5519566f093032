#pragma once

#include "inspect/InspectRun.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>

namespace consolidator::inspect {

/// Sources in a folder of their own, of which a compiler makes tables of lines: src/k.c has code
/// for the lines 4 and 5, include/twice.h for line 3.
class CompiledSources {
 public:
  /// Runs a script in the folder, where there is an empty folder "build", too; returns the bytes of
  /// the file "dwarf" that it makes.
  std::string compile(const std::string& script) const {
    const std::string head =
        "mkdir -p src include build\n"
        "printf 'static inline int twice(int x)\\n{\\n  return 2 * x;\\n}\\n' >include/twice.h\n"
        "printf '#include \"../include/twice.h\"\\nint k(int a)\\n{\\n  a += 3;\\n"
        "  return twice(a);\\n}\\n' >src/k.c\n";
    EXPECT_EQ(startInspectScript("set -e\n" + head + script, folder_.path("")).outcome(),
              holds(""));
    return folder_.read("dwarf");
  }

  /// Path of a file in the folder, whether there is one or not.
  std::string path(std::string_view name) const { return folder_.path(name); }

 private:
  TemporaryFolder folder_;
};

}  // namespace consolidator::inspect
