// Another process may write to a file that is mapped. Whatever the views show then, they must not
// leave the bytes: under the address sanitizer, a read outside ends the test.

#include "consolidated/File.h"
#include "support/FullContainer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

namespace consolidated {
namespace {

std::size_t shown = 0;

void show(const Text& text) { shown += text.view().size() + text.stored().size(); }

void show(const Locations& locations) {
  for (const Location location : locations) shown += location.first;
}

void show(const Variable& variable) {
  show(variable.name());
  show(variable.second());
  show(variable.cType());
  for (const Locations& locations : variable.instanceBits()) show(locations);
}

void show(const HardwareVariable& variable) {
  show(variable.rtlName());
  show(variable.logicLocations());
}

void show(const BreakableCondition& condition) {
  show(condition.condition());
  show(condition.file());
}

template <typename T>
void show(const List<T>& list) {
  for (const T& element : list) show(element);
}

void show(const Kernel& kernel) {
  show(kernel.name());
  show(kernel.instancePaths());
  show(kernel.arguments());
  show(kernel.variables());
  show(kernel.hardwareVariables());
  show(kernel.breakableConditions());
  show(kernel.brams());
  shown += kernel.instanceSuffix().size();
}

class ChangingBytesTest : public testing::Test {
 protected:
  ChangingBytesTest() : bytes_(std::make_unique<char[]>(intact_.size())) { restore(); }

  void restore() { std::copy(intact_.begin(), intact_.end(), bytes_.get()); }

  std::string_view bytes() const { return {bytes_.get(), intact_.size()}; }

  // Goes over all kernels; after the first `steps` of them the four bytes at a place change.
  void change(std::size_t steps, std::size_t place, std::uint32_t value) {
    restore();
    const Result<File> file = File::fromBytes(bytes());
    ASSERT_TRUE(file);
    auto at = file->kernels().begin();
    for (std::size_t i = 0; i < steps; ++i) ++at;
    std::memcpy(bytes_.get() + place, &value, sizeof value);
    for (; at != file->kernels().end(); ++at) show(*at);
    file->project();
    file->dwarf();
    file->complete();
  }

  const std::string intact_ = consolidator::fullContainer();

 private:
  std::unique_ptr<char[]> bytes_;
};

TEST_F(ChangingBytesTest, AnyNumberMayGrowWhileKernelsAreGoneOver) {
  for (std::size_t place = 0; place + 4 <= intact_.size(); ++place) {
    for (const std::uint32_t value : {0U, 1U, 100U, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
      change(0, place, value);
      change(1, place, value);
    }
  }
  EXPECT_GT(shown, 0U);
}

// Each list of a kernel, by its elements: the first one is had, then everything changes.
TEST_F(ChangingBytesTest, AllMayChangeWhileAListIsGoneOver) {
  for (const char byte : {'\0', '\1', '\xFF'}) {
    restore();
    const Result<File> file = File::fromBytes(bytes());
    ASSERT_TRUE(file);
    const Kernel kernel = *++file->kernels().begin();
    auto argument = kernel.arguments().begin();
    auto instance = argument->instanceBits().begin();
    auto condition = kernel.breakableConditions().begin();
    auto bram = kernel.brams().begin();
    std::memset(const_cast<char*>(bytes().data()), byte, bytes().size());
    for (std::uint32_t left = 2; left > 0 && argument != kernel.arguments().end(); --left) {
      show(*argument);
      ++argument;
    }
    show(*instance);
    show(*++instance);
    show(*++condition);
    show(*++bram);
    show(kernel);
  }
}

}  // namespace
}  // namespace consolidated
