#pragma once

#include <malloc.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <string>

namespace consolidator {

/// Work that can be done again and again.
using Work = std::function<void()>;

/// Makes work of a given size.
using PrepareWork = std::function<Work(std::size_t size)>;

/// The processor time of this process that the work takes, in seconds.
inline double timeOf(const Work& work) {
  const std::clock_t start = std::clock();
  work();
  return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

/// How the time for a work grows with its size. The usual work is so short that what it needs stays
/// in the processor's caches: beyond them each doubling takes up to 2.6 times as long where memory
/// is used at random, as by a hash table, however well it is made.
class Growth {
 public:
  /// So many times as much as usual, as the environment may ask for.
  static double factor() {
    const char* const text = std::getenv("CONSOLIDATOR_GROWTH");
    return text == nullptr ? 1.0 : std::atof(text);
  }

  /// The most by which the time may grow from a size to twice that size: less than the 4 of work
  /// that grows with the square, more than what the caches of a busy machine make of linear work.
  static double limit() { return factor() > 1 ? 3 : 2.7; }

  /// Finds a size, from the given one on, at which the work takes long enough to be measured, and
  /// compares it with eight times that size. A growth over the limit must go on with even larger
  /// sizes to count: leaving a cache is slow, but happens once.
  Growth(const PrepareWork& prepare, std::size_t size) : size_(size) {
    // Pages that are given back would have to be cleared anew by large work only.
    mallopt(M_MMAP_MAX, 0);
    mallopt(M_TRIM_THRESHOLD, -1);
    while (timeOf(prepare(size_)) < shortest() && size_ < largest()) size_ *= 2;
    compare(prepare);
    if (perDoubling() <= limit()) return;
    size_ *= doubled;
    compare(prepare);
  }

  /// By how much the time grows from a size to twice that size; 1 when even the largest size takes
  /// too little to be measured, as where nearly nothing of the data is read.
  double perDoubling() const {
    return timeOfMore_ < shortest() ? 1 : std::cbrt(timeOfMore_ / time_);
  }

  /// What was measured, for messages.
  std::string text() const {
    return std::to_string(size_) + " in " + std::to_string(time_) + " s, " +
           std::to_string(doubled) + " times that in " + std::to_string(timeOfMore_) + " s";
  }

 private:
  static constexpr std::size_t doubled = 8;  // three times

  // How long the work must take to be compared.
  static double shortest() { return 0.0005 * factor(); }

  // The largest size to be compared with larger ones.
  static std::size_t largest() {
    return (std::size_t{1} << 14U) * static_cast<std::size_t>(std::clamp(factor(), 1.0, 16.0));
  }

  // Sharing the machine makes work slower, never faster: so the least of several times counts, and
  // more are taken while the growth exceeds the limit.
  void compare(const PrepareWork& prepare) {
    constexpr int fewest = 5;
    constexpr int most = 20;
    const Work work = prepare(size_);
    const Work more = prepare(doubled * size_);
    time_ = timeOf(work);
    timeOfMore_ = timeOf(more);
    for (int i = 1; i < fewest || (i < most && perDoubling() > limit()); ++i) {
      time_ = std::min(time_, timeOf(work));
      timeOfMore_ = std::min(timeOfMore_, timeOf(more));
    }
  }

  std::size_t size_;
  double time_ = 0;
  double timeOfMore_ = 0;
};

}  // namespace consolidator
