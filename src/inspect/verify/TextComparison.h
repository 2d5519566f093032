#pragma once

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string_view>

namespace consolidator::inspect {

/// A stdio stream that keeps nothing of what is written to it, but compares it with a text. It
/// takes nothing more from the first difference on.
class TextComparison {
 public:
  /// The text must outlive this object.
  explicit TextComparison(std::string_view expected);
  TextComparison(const TextComparison&) = delete;
  TextComparison& operator=(const TextComparison&) = delete;
  ~TextComparison() = default;

  std::FILE* stream() const { return stream_.get(); }

  /// Whether something was written that is not in the text there, or that goes beyond its end.
  bool isDifferent() const { return isDifferent_; }

  /// How much of the text was written so far: up to the first difference.
  std::size_t equalSize() const { return equalSize_; }

 private:
  struct Close {
    void operator()(std::FILE* stream) const { static_cast<void>(std::fclose(stream)); }
  };

  bool take(std::string_view written);

  std::string_view expected_;
  std::size_t equalSize_ = 0;
  bool isDifferent_ = false;
  std::unique_ptr<std::FILE, Close> stream_;
};

}  // namespace consolidator::inspect
