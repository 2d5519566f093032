#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace consolidator::inspect {

/// A number with a comma after each third digit: "1,234,567".
std::string grouped(std::uint64_t number);

/// A number and a noun: "1 kernel", "2,000 kernels".
std::string counted(std::uint64_t number, std::string_view noun);

/// The beginning of a text of at most `size` bytes, without a part of a character at its end.
std::string_view beginningOf(std::string_view text, std::size_t size);

/// A text as it is where it is named beside others, any number of times: shortened to 100 bytes.
std::string shortened(std::string_view text);

}  // namespace consolidator::inspect
