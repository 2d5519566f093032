#pragma once

#include "endtoend/ExecutableRun.h"
#include "endtoend/SoundFiles.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator {

/// Base of the tests that run the built executable in an empty folder and compare all that it
/// leaves: both outputs, the status and every byte of every file.
class ExecutableTest : public testing::Test {
 protected:
  using Arguments = std::vector<std::string>;

  /// Files of a folder by name. The name of a folder ends with "/", that of a named pipe with "|";
  /// they have no bytes.
  using Files = std::map<std::string, std::string>;

  /// Runs the executable, which gets "consolidator" as its own name unless another one is given.
  /// The inspector must foretell how it ends, and find sound what it makes from nothing; see
  /// ForetoldRun and SoundFiles.
  ExecutableRun start(const Arguments& arguments, const std::string& name = "consolidator") const;

  /// Runs a script of bash in which "$0" is the executable.
  ExecutableRun startScript(const std::string& script) const;

  Outcome run(const Arguments& arguments) const { return start(arguments).outcome(); }

  Outcome runScript(const std::string& script) const { return startScript(script).outcome(); }

  void write(std::string_view name, std::string_view bytes) const { folder_.write(name, bytes); }

  void remove(std::string_view name) const;

  std::string path(std::string_view name) const { return folder_.path(name); }

  /// All bytes of a file; none when there is no such file.
  std::string read(std::string_view name) const { return folder_.read(name); }

  /// The JSON text of a file that the executable saved, taken by a dump without its zero byte.
  std::string dumpedJson(const std::string& file) const;

  /// Whether these are all files that there are, byte for byte. Tells where they differ.
  testing::AssertionResult folderHolds(const Files& expected) const;

 private:
  Files files() const;

  TemporaryFolder folder_;
  mutable SoundFiles soundFiles_;  // looks on, and changes nothing that a test sees
};

/// The outcome of a run that has nothing to say.
inline Outcome silence() { return {}; }

/// The outcome of a run that ends well and prints a text on standard output.
inline Outcome printed(std::string text) { return {0, std::move(text), {}}; }

/// The outcome of a run that ends well although it complained on standard error.
inline Outcome complained(std::string text) { return {0, {}, std::move(text)}; }

/// The outcome of a run that fails with a text on standard error.
inline Outcome failed(std::string text) { return {1, {}, std::move(text)}; }

}  // namespace consolidator
