// Runs in which a request for memory fails, or all from that one on: each comes to its usual end,
// since it can do without, or says in one line that there is no memory. A process that starts with
// CONSOLIDATOR_EVERY_ALLOCATION in its environment tries every request, else some of each run.

#include "endtoend/ExecutableTest.h"
#include "endtoend/VaddBuild.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator {
namespace {

#ifdef CONSOLIDATOR_ALLOCATION_FAULTS
constexpr const char* allocationFaults = CONSOLIDATOR_ALLOCATION_FAULTS;
#else
constexpr const char* allocationFaults = nullptr;
#endif

// Sets a variable of the environment, which the executable inherits, for as long as it lives.
class Variable {
 public:
  Variable(const char* name, const std::string& value) : name_(name) {
    setenv(name, value.c_str(), 1);
  }

  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;

  ~Variable() { unsetenv(name_); }

 private:
  const char* name_;
};

struct RunKind {
  std::string claim;
  std::vector<std::string> arguments;
};

void PrintTo(const RunKind& kind, std::ostream* out) { *out << kind.claim; }

// The name of an input in a folder that has one of each option.
std::string inputName(const InputOption& option) { return option.name.substr(2) + "/vadd.txt"; }

std::vector<RunKind> runKinds() {
  std::vector<RunKind> kinds{
      {"CreateFromHierarchy", {"-c", "-f", "out", "-p", "name", "-h", "hierarchy/vadd.txt"}},
      {"AddNothing", {"-f", "out", "-h", "missing"}},
      {"DumpDwarf", {"-f", "out", "--dump-dwarf", "dumped"}},
      {"DumpJson", {"-f", "out", "--dump-json", "dumped"}},
      {"Help", {"--help"}},
      {"Version", {"--version"}},
      {"WrongOption", {"--nonsense"}},
      {"RepeatedOption", {"-f", "out", "-f", "out"}},
      {"WrongProject", {"-f", "out", "-p", "other", "-h", "missing"}},
      {"MissingFolder", {"-f", "missing/out", "-h", "missing"}},
  };
  std::vector<std::string> all{"-f", "out", "-p", "name"};
  for (const InputOption& option : inputOptions()) {
    kinds.push_back(
        {"Add_" + option.name.substr(2), {"-f", "out", option.name, inputName(option)}});
    all.insert(all.end(), {option.name, inputName(option)});
  }
  kinds.push_back({"AddAll", all});
  return kinds;
}

class AllocationFailureTest : public ExecutableTest, public testing::WithParamInterface<RunKind> {
 protected:
  void SetUp() override {
    if (allocationFaults == nullptr) GTEST_SKIP() << "this build allocates in ways of its own";
    for (const InputOption& option : inputOptions()) {
      ASSERT_EQ(runScript("mkdir " + option.name.substr(2)), silence());
      write(inputName(option), option.text);
      inputs_[option.name.substr(2) + "/"];
      inputs_[inputName(option)] = option.text;
    }
  }

  // Runs with the requests for memory counted, and the one with that number refused.
  Outcome runWithFault(const std::string& fault) const {
    write("out", before_);
    remove("dumped");
    const Variable preload("LD_PRELOAD", allocationFaults);
    const Variable number("ALLOCATION_FAULT", fault);
    return run(GetParam().arguments);
  }

  // Runs as usual and returns how often memory was asked for.
  std::size_t countRequests() {
    const Variable file("ALLOCATION_COUNT", "count");
    usual_ = runWithFault("0");
    const std::size_t count = std::stoul(read("count"));
    remove("count");
    after_ = read("out");
    dumped_ = read("dumped");
    EXPECT_TRUE(hasUsualEnd(usual_));
    return count;
  }

  testing::AssertionResult hasUsualEnd(const Outcome& outcome) const {
    if (outcome != usual_) return testing::AssertionFailure() << outcome;
    return holds(after_, dumped_);
  }

  // Whether the run ended for want of memory, and no file holds anything that does not belong
  // there: the consolidated file is as it was, or empty, or lacks its header and the end of its
  // sections.
  testing::AssertionResult lackedMemory(const Outcome& outcome) const {
    const std::string out = read("out");
    const std::string dumped = read("dumped");
    const bool isPart = usual_.out.starts_with(outcome.out) && dumped_.starts_with(dumped);
    if (outcome.status != 1 || outcome.err != "Error: out of memory\n" || !isPart) {
      return testing::AssertionFailure() << outcome;
    }
    if (out != before_ && !isUnfinished(out)) {
      return testing::AssertionFailure() << "the consolidated file is neither old nor unfinished";
    }
    return holds(out, dumped);
  }

 private:
  testing::AssertionResult holds(const std::string& out, const std::string& dumped) const {
    Files files = inputs_;
    files["out"] = out;
    if (std::filesystem::exists(path("dumped"))) files["dumped"] = dumped;
    return folderHolds(files);
  }

  bool isUnfinished(const std::string& out) const {
    const std::size_t start = 16 + 24 * numberAt(after_, 12, 4);
    return (std::string(start, '\0') + after_.substr(start)).starts_with(out);
  }

  const std::string before_ =
      container({projectSection("name"), dwarfSection("debug"), jsonSection(VaddKernel().json()),
                 recordsSection({VaddKernel().record()})});
  Files inputs_;
  Outcome usual_;
  std::string after_;
  std::string dumped_;
};

INSTANTIATE_TEST_SUITE_P(, AllocationFailureTest, testing::ValuesIn(runKinds()),
                         [](const auto& kind) { return kind.param.claim; });

TEST_P(AllocationFailureTest, IsOneLineAndStatusOneUnlessTheRunCanDoWithout) {
  constexpr std::size_t some = 25;
  const std::size_t count = countRequests();
  const bool every = std::getenv("CONSOLIDATOR_EVERY_ALLOCATION") != nullptr;
  const std::size_t step = every ? 1 : std::max<std::size_t>(count / some, 1);
  std::size_t failures = 0;
  std::size_t tries = 0;
  for (std::size_t number = 1; number <= count; number += step) {
    for (const std::string& fault : {std::to_string(number), std::to_string(number) + "+"}) {
      const Outcome outcome = runWithFault(fault);
      ++tries;
      if (hasUsualEnd(outcome)) continue;
      ++failures;
      ASSERT_TRUE(lackedMemory(outcome)) << fault << " of " << count;
    }
  }
  EXPECT_GT(failures, tries / 2) << "few requests are ones to do without";
  RecordProperty("requests", static_cast<int>(count));
}

}  // namespace
}  // namespace consolidator
