#include "endtoend/ExecutableTest.h"

#include "endtoend/ForetoldRun.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <iomanip>
#include <sstream>

namespace consolidator {

namespace {

namespace fs = std::filesystem;

constexpr const char* executable = CONSOLIDATOR_EXECUTABLE;

// Bytes from `start` on, in hexadecimal.
std::string hexFrom(const std::string& bytes, std::size_t start) {
  constexpr std::size_t shown = 16;
  std::ostringstream text;
  text << std::hex << std::setfill('0');
  for (std::size_t i = start; i < std::min(bytes.size(), start + shown); ++i) {
    text << ' ' << std::setw(2) << unsigned{static_cast<unsigned char>(bytes[i])};
  }
  return text.str();
}

// What scripts need for them.
std::string forForetoldRuns() {
  const std::string inspector = CONSOLIDATOR_INSPECT_EXECUTABLE;
  if (inspector.empty()) return {};
  return "INSPECT='" + inspector + "' FORETELL='" CONSOLIDATOR_FORETOLD_RUN "'; ";
}

std::string difference(const std::string& actual, const std::string& expected) {
  const auto [inActual, inExpected] =
      std::mismatch(actual.begin(), actual.end(), expected.begin(), expected.end());
  const auto position = static_cast<std::size_t>(inActual - actual.begin());
  std::ostringstream text;
  text << actual.size() << " bytes, expected " << expected.size() << "; from byte " << position
       << "\n  actual:  " << hexFrom(actual, position)
       << "\n  expected:" << hexFrom(expected, position);
  return text.str();
}

}  // namespace

ExecutableRun ExecutableTest::start(const Arguments& arguments, const std::string& name) const {
  Arguments words{name};
  words.insert(words.end(), arguments.begin(), arguments.end());
  const ForetoldRun foretold(words, path(""));
  soundFiles_.beforeRun(arguments, path(""));
  ExecutableRun run(executable, words, path(""));
  foretold.expect(run.outcome());
  soundFiles_.afterRun(run.outcome().status);
  return run;
}

ExecutableRun ExecutableTest::startScript(const std::string& script) const {
  // Processes that the script starts at once would escape a limit that comes from outside.
  const std::string limit = "ulimit -t " + std::to_string(ExecutableRun::cpuLimit) + "; ";
  return {"/bin/bash", {"bash", "-c", limit + forForetoldRuns() + script, executable}, path("")};
}

void ExecutableTest::remove(std::string_view name) const { fs::remove_all(path(name)); }

std::string ExecutableTest::dumpedJson(const std::string& file) const {
  const Outcome outcome = run({"-f", file, "--dump-json", "dumped.json"});
  EXPECT_EQ(outcome, silence());
  std::string text = read("dumped.json");
  remove("dumped.json");
  EXPECT_TRUE(text.ends_with('\0')) << "the stored text ends with a zero byte";
  if (!text.empty()) text.pop_back();
  return text;
}

testing::AssertionResult ExecutableTest::folderHolds(const Files& expected) const {
  const Files actual = files();
  for (const auto& [name, bytes] : actual) {
    if (!expected.contains(name)) {
      return testing::AssertionFailure() << "unexpected file " << name << ", " << bytes.size()
                                         << " bytes:" << hexFrom(bytes, 0);
    }
  }
  for (const auto& [name, bytes] : expected) {
    const auto found = actual.find(name);
    if (found == actual.end()) return testing::AssertionFailure() << "no file " << name;
    if (found->second != bytes) {
      return testing::AssertionFailure() << name << ": " << difference(found->second, bytes);
    }
  }
  return testing::AssertionSuccess();
}

ExecutableTest::Files ExecutableTest::files() const {
  Files files;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(path(""))) {
    const std::string name = fs::relative(entry.path(), path("")).string();
    if (entry.is_regular_file()) {
      files[name] = read(name);
    } else {
      files[name + (entry.is_directory() ? "/" : "|")];
    }
  }
  return files;
}

}  // namespace consolidator
