#include "endtoend/ForetoldRun.h"

#include <gtest/gtest.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <iterator>
#include <map>
#include <numeric>
#include <string_view>
#include <system_error>
#include <tuple>

namespace consolidator {

namespace {

namespace fs = std::filesystem;
using RunWords = std::vector<std::string>;
using FileStamp = std::tuple<ino_t, mode_t, off_t, time_t, long>;

// Empty in a build without it.
constexpr const char* inspectorPath = CONSOLIDATOR_INSPECT_EXECUTABLE;

// What changes when a file is touched, of all that is in a folder, and of the folder.
std::map<std::string, FileStamp> stampsIn(const fs::path& folder) {
  std::map<std::string, FileStamp> found;
  const auto note = [&](const fs::path& path) {
    struct stat status {};

    lstat(path.c_str(), &status);
    found[path] = {status.st_ino, status.st_mode, status.st_size, status.st_mtim.tv_sec,
                   status.st_mtim.tv_nsec};
  };
  note(folder);
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) note(entry);
  return found;
}

bool namesPipe(const RunWords& words, const fs::path& folder) {
  return std::any_of(words.begin(), words.end(), [&](const std::string& word) {
    std::error_code none;
    return fs::is_fifo(folder / word, none);
  });
}

bool canBeAsked(const RunWords& words, const fs::path& folder) {
  constexpr std::size_t ample = 100'000;
  // Memory faults meet every program that is started.
  if (*inspectorPath == '\0' || std::getenv("LD_PRELOAD") != nullptr) return false;
  const std::size_t size =
      std::transform_reduce(words.begin(), words.end(), std::size_t{0}, std::plus(),
                            [](const std::string& word) { return word.size() + 9; });
  return words.front() == "consolidator" && size < ample && !namesPipe(words, folder);
}

// In JSON; nothing if the text is not UTF-8.
std::string inJson(std::string_view text) {
  rapidjson::StringBuffer out;
  rapidjson::Writer<rapidjson::StringBuffer, rapidjson::UTF8<>, rapidjson::UTF8<>,
                    rapidjson::CrtAllocator, rapidjson::kWriteValidateEncodingFlag>
      writer(out);
  const bool isWritten = writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
  return isWritten ? out.GetString() : std::string();
}

std::string joinedWords(const RunWords& words) {
  std::string text;
  for (const std::string& word : words) text += "[" + word + "] ";
  return text;
}

}  // namespace

// The document of a large run has as much to say as the run has: all but the beginning is dropped.
ForetoldRun::ForetoldRun(const RunWords& words, const std::string& folder)
    : line_(joinedWords(words)) {
  if (!canBeAsked(words, folder)) return;
  RunWords asked{"bash", "-c", R"("$0" explain --format=json -- "$@" | head --bytes=1000000)",
                 inspectorPath};
  asked.insert(asked.end(), std::next(words.begin()), words.end());
  const auto before = stampsIn(folder);
  document_ = ExecutableRun("/bin/bash", asked, folder).outcome().out;
  EXPECT_EQ(stampsIn(folder), before) << line_;
}

void ForetoldRun::expect(const Outcome& outcome) const {
  if (!document_) return;
  std::string expected = R"({"format":"consolidator-explain/1","status":)" +
                         std::to_string(outcome.status) + R"(,"stdout":)";
  const std::string out = inJson(outcome.out);
  if (!out.empty()) expected += out + R"(,"stderr":)";
  const std::string err = inJson(outcome.err);
  if (!out.empty() && !err.empty()) expected += err + ",";
  EXPECT_EQ(document_->substr(0, expected.size()), expected) << line_;
}

}  // namespace consolidator
