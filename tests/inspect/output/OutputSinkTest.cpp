#include "inspect/output/OutputSink.h"
#include "support/MemoryFile.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <string>
#include <thread>

namespace consolidator::inspect {
namespace {

TEST(OutputSink, KeepsTheOrderOfAllThatIsWritten) {
  const MemoryFile file;
  OutputSink out(file.descriptor());
  std::string expected;
  for (int i = 0; i < 2000; ++i) {
    const std::string text(static_cast<std::size_t>(i) * 37 % 5000,
                           static_cast<char>('a' + i % 26));
    out.write(text);
    out.put('\n');
    *out.room(3) = '!';
    out.advance(1);
    expected += text + "\n!";
  }
  out.write(std::string(300'000, 'x'));
  expected += std::string(300'000, 'x');
  EXPECT_TRUE(out.flush());
  EXPECT_EQ(file.read(), expected);
}

TEST(OutputSink, RemembersAFullDisk) {
  const int full = ::open("/dev/full", O_WRONLY | O_CLOEXEC);
  OutputSink out(full);
  out.write("text");
  EXPECT_EQ(out.error(), 0);
  EXPECT_FALSE(out.flush());
  EXPECT_EQ(out.error(), ENOSPC);
  out.write(std::string(1'000'000, 'x'));
  EXPECT_FALSE(out.flush());
  ::close(full);
}

TEST(OutputSink, WaitsForRoomInAPipeThatDoesNotBlock) {
  std::array<int, 2> ends{};
  ASSERT_EQ(::pipe2(ends.data(), O_NONBLOCK | O_CLOEXEC), 0);
  const std::string sent(1'000'000, 'x');
  std::thread writer([&] {
    OutputSink out(ends[1]);
    out.write(sent);
    EXPECT_TRUE(out.flush());
    ::close(ends[1]);
  });
  ::fcntl(ends[0], F_SETFL, 0);
  std::string received;
  std::array<char, 1000> block{};
  for (ssize_t got = 0; (got = ::read(ends[0], block.data(), block.size())) > 0;) {
    received.append(block.data(), static_cast<std::size_t>(got));
  }
  writer.join();
  ::close(ends[0]);
  EXPECT_EQ(received, sent);
}

}  // namespace
}  // namespace consolidator::inspect
