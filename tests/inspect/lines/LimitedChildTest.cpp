#include "inspect/lines/LimitedChild.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <string>
#include <vector>

namespace consolidator::inspect {
namespace {

constexpr ChildLimits childLimits{std::uint64_t{64} << 20U, 1000, std::chrono::seconds(1),
                                  std::chrono::seconds(600)};

bool answer(int output, const std::string& bytes) {
  return ::write(output, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
}

ChildAnswer run(const std::function<bool(int)>& work) { return runLimited(childLimits, work); }

TEST(LimitedChildTest, PassesAnswerOn) {
  const ChildAnswer found = run([](int output) { return answer(output, "yes"); });
  EXPECT_EQ(found.bytes, "yes");
  EXPECT_EQ(found.failure, "");
}

TEST(LimitedChildTest, KnowsStatusWhereChildrenAreIgnored) {
  const auto before = std::signal(SIGCHLD, SIG_IGN);
  EXPECT_EQ(run([](int output) { return answer(output, "yes"); }).bytes, "yes");
  EXPECT_EQ(std::signal(SIGCHLD, before), SIG_IGN);
}

TEST(LimitedChildTest, DropsAnswerThatIsNotWhole) {
  const ChildAnswer found = run([](int output) { return answer(output, "yes") && false; });
  EXPECT_EQ(found.bytes, "");
  EXPECT_EQ(found.failure, "reading it fails");
}

TEST(LimitedChildTest, SurvivesCrash) {
  const ChildAnswer found = run([](int output) {
    std::signal(SIGSEGV, SIG_DFL);
    return answer(output, "yes") && std::raise(SIGSEGV) == 0;
  });
  EXPECT_EQ(found.bytes, "");
  EXPECT_EQ(found.failure, "reading it ends with signal 11");
}

TEST(LimitedChildTest, EndsWorkWithoutEnd) {
  const ChildAnswer found = run([](int /*output*/) {
    for (volatile bool isEnd = false; !isEnd;) continue;
    return true;
  });
  EXPECT_EQ(found.failure, "reading it takes more than 1 seconds");
}

TEST(LimitedChildTest, EndsWaitingWithoutEnd) {
  const ChildLimits strict{childLimits.memory, childLimits.answer, childLimits.processor,
                           std::chrono::seconds(1)};
  const ChildAnswer found = runLimited(strict, [](int /*output*/) { return ::pause() == 0; });
  EXPECT_EQ(found.failure, "reading it takes more than 1 seconds");
}

TEST(LimitedChildTest, BoundsMemory) {
  const ChildAnswer found = run([](int output) {
    const auto size = static_cast<std::size_t>(2 * childLimits.memory);
    void* const memory =
        ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    return answer(output, memory == MAP_FAILED ? "none" : "there");
  });
  EXPECT_EQ(found.bytes, "none");
}

TEST(LimitedChildTest, EndsWhatThrows) {
  const ChildAnswer found = run([](int /*output*/) { return std::vector<int>().at(1) == 0; });
  EXPECT_NE(found.failure, "");
}

TEST(LimitedChildTest, BoundsAnswer) {
  const ChildAnswer found = run([](int output) {
    while (answer(output, "more")) continue;
    return true;
  });
  EXPECT_EQ(found.failure, "it holds too much");
}

TEST(LimitedChildTest, OpensNothing) {
  const ChildAnswer found = run([](int output) {
    return answer(output, ::open("/dev/null", O_RDONLY | O_CLOEXEC) < 0 ? "no" : "yes");
  });
  EXPECT_EQ(found.bytes, "no");
}

TEST(LimitedChildTest, TakesAnAbortForAWantOfMemory) {
  const ChildAnswer found = run([](int /*output*/) -> bool {
    std::signal(SIGABRT, SIG_DFL);
    std::abort();
  });
  EXPECT_EQ(found.failure, "reading it takes too much memory");
}

TEST(LimitedChildTest, StartsNothingWithoutDescriptors) {
  rlimit before{};
  ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
  const rlimit none{0, before.rlim_max};
  ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &none), 0);
  const ChildAnswer found = run([](int output) { return answer(output, "yes"); });
  ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &before), 0);
  EXPECT_EQ(found.failure, "no process can be started for it");
}

}  // namespace
}  // namespace consolidator::inspect
