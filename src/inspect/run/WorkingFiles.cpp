#include "inspect/run/WorkingFiles.h"

#include "inspect/explain/NullStream.h"
#include "inspect/explain/TargetStream.h"
#include "inspect/explain/WriteForecast.h"
#include "inspect/files/SameFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <memory>

namespace consolidator::inspect {

namespace {

constexpr off64_t writeBehind = off64_t{8} << 20U;

// Writes to a descriptor and remembers the first error. What is written is on its way to the disk
// at once, so that syncing the file waits for its end alone.
class CheckedTarget : public StreamTarget {
 public:
  CheckedTarget(int descriptor, int& error) : descriptor_(descriptor), error_(&error) {}

  bool take(off64_t offset, std::string_view bytes) override {
    while (!bytes.empty()) {
      const ssize_t written = ::pwrite(descriptor_, bytes.data(), bytes.size(), offset);
      if (written < 0 && errno == EINTR) continue;
      if (written <= 0) return fail(written == 0 ? ENOSPC : errno);
      bytes.remove_prefix(static_cast<std::size_t>(written));
      offset += written;
    }
    startSync(offset);
    return true;
  }

 private:
  bool fail(int error) {
    if (*error_ == 0) *error_ = error;
    return false;
  }

  void startSync(off64_t end) {
    if (end - started_ < writeBehind) return;
    static_cast<void>(
        ::sync_file_range(descriptor_, started_, end - started_, SYNC_FILE_RANGE_WRITE));
    started_ = end;
  }

  int descriptor_;
  int* error_;
  off64_t started_ = 0;
};

class SinkTarget : public StreamTarget {
 public:
  SinkTarget(OutputSink& sink, std::uint64_t& count) : sink_(&sink), count_(&count) {}

  bool take(off64_t /*offset*/, std::string_view bytes) override {
    sink_->write(bytes);
    *count_ += bytes.size();
    return true;
  }

 private:
  OutputSink* sink_;
  std::uint64_t* count_;
};

}  // namespace

// Whoever may not write to a file may not replace it.
StdioFile WorkingFiles::openConsolidatedFile(const std::string& path) {
  if (replacement_ == nullptr || !forecastWrite(path).isPossible) return nullptr;
  isOpened_ = true;
  return openTargetStream(std::make_unique<CheckedTarget>(replacement_->descriptor(), writeError_));
}

StdioFile WorkingFiles::openDump(const std::string& path) {
  hasDump_ = true;
  dumpsToOutput_ = isSameFile(path, STDOUT_FILENO);
  if (dumpsToOutput_) return openDumpStream(out_, dumpedOut_);
  if (isSameFile(path, STDERR_FILENO)) {
    errorSink_.emplace(STDERR_FILENO);
    return openDumpStream(out_ == nullptr ? nullptr : &*errorSink_, dumpedErr_);
  }
  dump_.emplace(path);
  if (dump_->error() != 0) return nullptr;
  return openDumpStream(&dump_->sink(), dumpedOut_);
}

StdioFile WorkingFiles::openDumpStream(OutputSink* sink, std::string& kept) {
  if (sink == nullptr) return openNullStream(&kept);
  return openTargetStream(std::make_unique<SinkTarget>(*sink, dumpedBytes_));
}

int WorkingFiles::dumpError() const {
  if (dump_) return dump_->error();
  return errorSink_ ? errorSink_->error() : 0;
}

std::uint64_t WorkingFiles::dumpedBytes() const {
  return dumpedBytes_ + dumpedOut_.size() + dumpedErr_.size();
}

int WorkingFiles::finishDump() {
  if (dump_) dump_->finish();
  if (errorSink_) errorSink_->flush();
  return dumpError();
}

}  // namespace consolidator::inspect
