// Keys as an enemy makes them for an index whose hash needs no secret.

#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace consolidator {

/// Texts of 64 visible characters that std::hash of the GNU library hashes alike, in all bits.
/// Numbers below 2^20 give different ones.
std::string collidingText(std::size_t number);

/// Numbers that come close together in any table of 2^10 to 2^18 places, once their hashes are
/// spread by multiplications: where a taken place leads to the next one, each passes all others.
class CollidingNumbers {
 public:
  using Hash = std::function<std::uint64_t(std::uint32_t number)>;

  explicit CollidingNumbers(Hash hash) : hash_(std::move(hash)) {}

  /// Returns the number at this position of them.
  std::uint32_t operator[](std::size_t position);

 private:
  Hash hash_;
  std::vector<std::uint32_t> found_;
  std::uint32_t next_ = 0;
};

}  // namespace consolidator
