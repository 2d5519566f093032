// Stands in for libFuzzer where it is not linked: runs a fuzz target once on every file of the
// folders given, so that each input that ever broke a parser stays an ordinary test.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

// All regular files of a folder and of the folders in it, in the order of their names.
std::vector<std::filesystem::path> filesBelow(const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    if (entry.is_regular_file()) {
      files.push_back(entry.path());
    }
  }
  std::sort(files.begin(), files.end());
  return files;
}

// Runs the fuzz target on the bytes of one file; false when the file cannot be opened.
bool replay(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) {
    return false;
  }
  const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
  const std::vector<std::uint8_t> input(bytes.begin(), bytes.end());
  LLVMFuzzerTestOneInput(input.data(), input.size());
  return true;
}

// Replays every file of every folder; the number of files replayed.
std::size_t replayAll(const std::vector<std::string>& folders) {
  std::size_t replayed = 0;
  for (const std::string& folder : folders) {
    for (const std::filesystem::path& file : filesBelow(folder)) {
      // Named before the run: a crash must tell its input.
      std::cout << file.string() << std::endl;
      if (!replay(file)) {
        throw std::filesystem::filesystem_error("cannot read", file, std::error_code());
      }
      ++replayed;
    }
  }
  return replayed;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    const std::size_t replayed = replayAll(std::vector<std::string>(argv + 1, argv + argc));
    std::cout << replayed << " inputs replayed" << std::endl;
    return replayed == 0 ? EXIT_FAILURE : EXIT_SUCCESS;
  } catch (const std::filesystem::filesystem_error& error) {
    std::cerr << error.what() << std::endl;
    return EXIT_FAILURE;
  }
}
