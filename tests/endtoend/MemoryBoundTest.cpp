// The smallest things that inputs can be made of, each of which becomes an object in memory.

#include "endtoend/ExecutableTest.h"
#include "endtoend/Expected.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <ostream>
#include <string>
#include <utility>

namespace consolidator {
namespace {

struct MemoryCase {
  std::string name;
  std::string option;  // of the input; none for a consolidated file
  std::function<std::string(std::size_t size)> make;
};

void PrintTo(const MemoryCase& memoryCase, std::ostream* out) { *out << memoryCase.name; }

// Four letters and digits; different ones for numbers below 2^20.
std::string shortName(std::size_t number) {
  std::string name;
  for (int i = 0; i < 4; ++i, number /= 32) name += "abcdefghijklmnopqrstuvwxyz012345"[number % 32];
  return name;
}

// As many parts as have room in the size, each "@" in them replaced by a name of its own.
MemoryCase repeating(std::string name, std::string option, std::string start, std::string part,
                     std::string end = "") {
  return {std::move(name), std::move(option), [=](std::size_t size) {
            std::string text = start;
            for (std::size_t i = 0; text.size() < size; ++i) {
              const std::size_t at = std::min(part.find('@'), part.size());
              text += part.substr(0, at);
              if (at < part.size()) text += shortName(i) + part.substr(at + 1);
            }
            return text + end;
          }};
}

// A kernel's lists in their order, the type among them.
constexpr std::size_t listCount = 7;

// A file with one kernel, one list of which holds this element as often as the size has room.
MemoryCase filledList(std::string name, std::size_t list, std::string element) {
  return {std::move(name), "", [=](std::size_t size) {
            const std::size_t count = size / element.size();
            std::string record = text("k");
            for (std::size_t i = 0; i < listCount; ++i) {
              record += u32(i == list ? static_cast<std::uint32_t>(count) : 0);
              for (std::size_t j = 0; i == list && j < count; ++j) record += element;
            }
            return container({recordsSection({record})});
          }};
}

// A file with one condition of such parts.
MemoryCase condition(std::string name, std::string part) {
  return {std::move(name), "", [=](std::size_t size) {
            std::string expression;
            while (expression.size() < size) expression += part;
            std::string record = text("k");
            for (std::size_t i = 0; i + 2 < listCount; ++i) record += u32(0);
            record += u32(1) + u32(0) + text(expression + "z") + u32(0);
            return container({recordsSection({record})});
          }};
}

std::vector<MemoryCase> memoryCases() {
  const std::string core = "<project><platform><device><core>";
  const std::string coreEnd = "</core></device></platform></project>";
  const std::string function = "RTL a b c\nlocal\nat x:1\nx\n";
  return {
      repeating("HierarchyKernels", "-h", "", "k: "),
      repeating("HierarchyDifferentKernels", "-h", "", "@: "),
      repeating("HierarchyTypedKernels", "-h", "", "k: type: c "),
      repeating("HierarchyKernelsWithPath", "-h", "", "@: instance path: a "),
      repeating("HierarchyPaths", "-h", "k: ", "instance path: @ "),
      repeating("KernelXmlDifferentArguments", "-k", core + "<kernel>", "<arg name='@'/>",
                "</kernel>" + coreEnd),
      repeating("KernelXmlUnknownElements", "-k", core, "<x/>", coreEnd),
      repeating("HlsLocals", "-s", function, "local\nx\n"),
      repeating("HlsDifferentLocals", "-s", function, "local @\nx\n"),
      repeating("HlsFiles", "-s", "RTL a b c\nlocal\n", "a @:1\n"),
      repeating("HlsFunctions", "-s", "", "RTL a b @\nlocal\na :1\nx\n"),
      repeating("HlsScopes", "-s", "", "Begin Function\n"),
      repeating("AuxiliaryArguments", "-x", "", "<ak:arg ak:originalName=\"@\"\n"),
      {"StoredKernels", "",
       [](std::size_t size) {
         const std::string record = kernelRecord("", 0);
         return container({recordsSection(std::vector(size / record.size(), record))});
       }},
      filledList("StoredPaths", 0, text("")),
      filledList("StoredArguments", 2, text("") + text("") + text("") + u32(0)),
      filledList("StoredVariables", 3, text("") + text("") + text("") + u32(1) + u32(0)),
      filledList("StoredHardwareVariables", 4, text("") + u32(0)),
      filledList("StoredConditions", 5, u32(0) + text("")),
      filledList("StoredBrams", 6, text("")),
      condition("ConditionOfOperands", "a "),
      condition("ConditionOfOperators", "== "),
      condition("ConditionOfOpenings", "( "),
  };
}

class MemoryBoundTest : public ExecutableTest, public testing::WithParamInterface<MemoryCase> {};

TEST_P(MemoryBoundTest, IsFortyTimesTheInput) {
  constexpr std::size_t size = 4'200'000;  // just beyond 2^21 words of a letter: lists have grown
  constexpr std::size_t ofTheProgram = 8'000'000;
  // A sanitizer reserves more than that at the start, and its allocator adds to each request.
  if (runScript("ulimit -v 8000000; exec \"$0\" --version").status != 0) {
    GTEST_SKIP() << "memory that is watched is more";
  }
  const bool isStored = GetParam().option.empty();
  write(isStored ? "out" : "input", GetParam().make(size));
  const ExecutableRun run = isStored ? start({"-f", "out", "-h", "missing"})
                                     : start({"-f", "out", GetParam().option, "input"});
  EXPECT_EQ(run.outcome(), silence());
  EXPECT_LE(run.peakMemory(), static_cast<long>((40 * size + ofTheProgram) / 1024));
}

INSTANTIATE_TEST_SUITE_P(Inputs, MemoryBoundTest, testing::ValuesIn(memoryCases()),
                         [](const auto& made) { return made.param.name; });

}  // namespace
}  // namespace consolidator
