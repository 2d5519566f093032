#pragma once

#include <random>
#include <string>
#include <string_view>

namespace consolidator {

/// Any of the choices.
template <typename Choices>
std::string_view pick(std::mt19937& random, const Choices& choices) {
  return choices[random() % choices.size()];
}

/// The text, at times cut off somewhere or with one byte replaced by any other.
inline std::string mutated(std::string text, std::mt19937& random) {
  if (!text.empty() && random() % 4 == 0) text.resize(random() % text.size());
  if (!text.empty() && random() % 4 == 0) {
    text[random() % text.size()] = static_cast<char>(random());
  }
  return text;
}

}  // namespace consolidator
