#pragma once

#include "model/KernelRecord.h"
#include "observer/RunObserver.h"
#include "text/InputBuffer.h"

#include <istream>
#include <string_view>

namespace consolidator {

/// Base of the readers, one for each kind of input file: the open file and the kernel records that
/// come out of it. A reader is constructed on its file, asked isValid(), parsed once and destroyed.
class InputFile {
 public:
  /// Opens the file. The name is not copied and must outlive the reader. A file that cannot be
  /// opened leaves the reader not valid.
  explicit InputFile(const char* fileName);

  /// Reads from a text in memory; the name serves in messages only. Both must outlive the reader.
  InputFile(const char* fileName, std::string_view text);

  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;
  virtual ~InputFile() = default;

  /// Whether the input can be read: it is open and has met neither its end nor an error. A reader
  /// that has read its whole input is not valid any more.
  virtual bool isValid() const;

  /// Reads the whole input and fills kernels(). Returns false when nothing of it may be used; the
  /// message, if there is one, was printed on standard error.
  virtual bool parse() = 0;

  /// The records that came out of the input, in its order.
  virtual const KernelSequence& kernels() { return kernels_; }

  /// Merges kernels() into the list, in their order. They are handed over: the reader may be left
  /// without any.
  virtual void mergeInto(KernelList& known);

  /// Tells the observer, which must outlive the reader, what is left out from now on; also that the
  /// file could not be opened. To be called before parse().
  void observe(RunObserver& observer);

  /// How far the input was read. Only of an observed reader.
  virtual InputExtent extent() { return buffer_.extent(); }

  /// The version number that the input states; -1 when it states none.
  float version() const { return version_; }

 protected:
  // Tell the observer, if there is one, that what begins with these bytes, which were just read, is
  // left out; without any, what is next.
  void ignore(std::string_view reason, std::string_view bytes = {}) {
    if (observer_ != nullptr) tellIgnored(reason, bytes);
  }

  bool refuse(std::string_view reason, std::string_view bytes = {});

  std::uint64_t lineOf(std::string_view bytes);

  // Tells the observer if a line has more than its text.
  void observeEnd(std::string_view line);

  float version_ = -1.0F;
  const char* fileName_;
  InputBuffer buffer_;
  std::istream stream_{&buffer_};
  KernelSequence kernels_;
  RunObserver* observer_ = nullptr;

 private:
  void tellIgnored(std::string_view reason, std::string_view bytes);
};

}  // namespace consolidator
