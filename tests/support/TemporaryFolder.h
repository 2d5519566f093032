#pragma once

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <system_error>

namespace consolidator {

/// All bytes of a file; none when it cannot be read.
inline std::string readFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

/// Creates a file or replaces what it holds.
inline void writeFile(const std::string& path, std::string_view bytes) {
  std::ofstream out(path, std::ios::binary);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  out.close();
  if (!out) throw std::system_error(errno, std::generic_category(), path);
}

/// A folder of its own, empty at first and removed at the end with all that is in it.
class TemporaryFolder {
 public:
  TemporaryFolder() : path_(std::filesystem::temp_directory_path() / "consolidator-XXXXXX") {
    if (mkdtemp(path_.data()) == nullptr) {
      throw std::system_error(errno, std::generic_category(), path_);
    }
  }

  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  /// Path of a file in the folder, whether there is one or not.
  std::string path(std::string_view name) const { return path_ + "/" + std::string(name); }

  /// Writes a file in the folder and returns its path.
  std::string write(std::string_view name, std::string_view bytes) const {
    writeFile(path(name), bytes);
    return path(name);
  }

  /// All bytes of a file in the folder.
  std::string read(std::string_view name) const { return readFile(path(name)); }

  bool holds(std::string_view name) const { return std::filesystem::exists(path(name)); }

 private:
  std::string path_;
};

}  // namespace consolidator
