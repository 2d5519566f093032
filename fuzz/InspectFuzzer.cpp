// Every command of the inspector looks at any bytes, and diff at a copy with one other bit as well.
// What is promised must hold: strict JSON, a status that agrees with it, a database that holds the
// same, and nothing on standard output that a terminal could take for a command.

#include "../tests/support/DatabaseQuery.h"
#include "../tests/support/MemoryFile.h"
#include "../tests/support/StrictJson.h"
#include "../tests/support/TemporaryFolder.h"
#include "Require.h"
#include "consolidated/File.h"
#include "inspect/Inspector.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator {

namespace {

using inspect::Status;

struct Answer {
  Status status;
  std::string out;
  std::string err;
};

Answer ask(const std::vector<std::string>& words) {
  const MemoryFile outFile;
  const MemoryFile errFile;
  inspect::OutputSink out(outFile.descriptor());
  inspect::Messages messages(errFile.descriptor());
  const Status status = inspect::runInspector(words, out, messages, false);
  return {status, outFile.read(), errFile.read()};
}

bool isPlain(std::string_view text) {
  return std::none_of(text.begin(), text.end(), [](char c) {
    return c != '\n' && (static_cast<unsigned char>(c) < 0x20 || c == 0x7F);
  });
}

void requireMessages(const std::string& text) {
  require(isPlain(text), "messages are plain");
  require(text.empty() || text.back() == '\n', "messages are whole lines");
}

void requireText(const std::vector<std::string>& words, Status worst) {
  const Answer answer = ask(words);
  requireMessages(answer.err);
  require(isPlain(answer.out), "texts are plain");
  require(answer.status <= worst, "the status is no worse than the file");
}

rapidjson::Document requireDocument(const std::vector<std::string>& words, const Status* status) {
  const Answer answer = ask(words);
  rapidjson::Document document;
  require(jsonFault(answer.out, document).empty(), "a document is strict JSON");
  require(document.IsObject() && document.MemberBegin()->name == "format", "the format is first");
  require(status == nullptr || answer.status == *status, "the status is that of the file");
  requireMessages(answer.err);
  return document;
}

void requireJson(const std::string& path, const consolidated::File& file, Status status) {
  for (const char* const layout : {"--pretty", "--"}) {
    const auto document = requireDocument({"json", layout, path}, &status);
    require(document["complete"].GetBool() == file.complete(), "completeness is told");
    const auto kernels = file.kernels();
    const auto count = std::distance(kernels.begin(), kernels.end());
    require(document["kernels"].Size() == static_cast<std::size_t>(count),
            "each kernel is in the document");
  }
}

void requireDatabase(const std::string& path, Status status) {
  static const TemporaryFolder folder;
  const std::string database = folder.path("database");
  require(ask({"sql", path, "-o", database}).status == status, "a database is made of each file");
  auto wanted = requireDocument({"json", path}, &status);
  wanted.RemoveMember("format");
  wanted.RemoveMember("path");
  rapidjson::Document found;
  const std::string stored = DatabaseQuery(database).row(documentQuery());
  require(jsonFault(stored, found).empty() && found == wanted, "a database holds the document");
}

void requireExtracts(const std::string& path, const consolidated::File& file) {
  const auto dwarf = file.dwarf();
  const Answer answer = ask({"extract", path, "dwarf", "-o", "-"});
  require(answer.out == (dwarf ? dwarf->stored() : ""), "an extract has the bytes of its section");
  require((answer.status == Status::Holds) == (dwarf.has_value() && file.complete()),
          "an extract of a whole file holds");
  for (const char* const section : {"project", "json", "records"}) {
    require(ask({"extract", path, section, "-o", "-"}).status != Status::Unasked,
            "an extract is answered");
  }
}

// Names that are in the file, so that something is found.
std::vector<std::string> namesIn(const consolidated::File& file) {
  std::vector<std::string> names{"a", "0:0", "5:6"};
  for (const auto& kernel : file.kernels()) {
    if (names.size() > 12) break;
    names.emplace_back(kernel.name().view());
    for (const auto& variable : kernel.variables()) names.emplace_back(variable.name().view());
    for (const auto& hardware : kernel.hardwareVariables()) {
      names.emplace_back(hardware.rtlName().view());
    }
  }
  names.resize(std::min<std::size_t>(names.size(), 12));
  return names;
}

void requireFound(const std::string& path, const consolidated::File& file) {
  for (const std::string& name : namesIn(file)) {
    if (name.starts_with('-')) continue;
    const auto document = requireDocument({"find", "--format", "json", path, name}, nullptr);
    const bool isFound = document["matches"].GetUint64() > 0;
    require(isFound == !document["kernels"].Empty(), "what is found is counted");
    requireText({"find", path, name}, Status::Fails);
  }
}

void requireVerified(const std::string& path, const consolidated::File& file) {
  const Answer quiet = ask({"verify", "--quiet", path});
  require(quiet.out.empty() && quiet.err.empty(), "a quiet command says nothing");
  require(quiet.status == Status::Fails || file.complete(), "a sound file is complete");
  for (const char* const listed : {"--all", "--"}) {
    const auto document = requireDocument({"verify", "--format=json", listed, path}, &quiet.status);
    const bool isSound = document["files"][0]["verdict"] == "sound";
    require(isSound == (quiet.status == Status::Holds), "the status tells the verdict");
  }
  requireText({"verify", "--notes", path}, quiet.status);
}

// The same bytes with one bit changed, which the last byte chooses.
std::string changed(std::string bytes) {
  if (bytes.size() > 16) {
    const std::size_t position =
        16 + static_cast<unsigned char>(bytes.back()) % (bytes.size() - 16);
    bytes[position] = static_cast<char>(bytes[position] ^ 1);
  }
  return bytes;
}

void requireCompared(const std::string& path, const std::string& bytes, Status status) {
  const MemoryFile other;
  other.write(changed(bytes));
  require(requireDocument({"diff", "--format=json", "--sections", path, path}, &status)["equal"]
              .GetBool(),
          "a file equals itself");
  for (const char* const options : {"--exact", "--sections", "--"}) {
    const auto there =
        requireDocument({"diff", "--format=json", options, path, other.path()}, nullptr);
    const auto back =
        requireDocument({"diff", "--format=json", options, other.path(), path}, nullptr);
    require(there["equal"] == back["equal"], "equality is mutual");
    require(there["changes"].Size() == back["changes"].Size(), "changes go back");
  }
  requireText({"diff", path, other.path()}, Status::Fails);
}

void requireCovered(const std::string& path, Status status) {
  const auto document = requireDocument({"coverage", "--format=json", path}, &status);
  for (const char* const list : {"arguments", "variables"}) {
    const auto& total = document["total"][list];
    std::uint64_t sum = 0;
    for (const char* const state : {"without_gap", "with_gap", "none", "doubtful"}) {
      sum += total[state].GetUint64();
    }
    require(sum == total["total"].GetUint64(), "each pair has one state");
    require(total["percent"].IsNull() == (sum == 0), "a percentage needs pairs");
  }
  const auto same =
      requireDocument({"coverage", "--format=json", "--baseline", path, path}, nullptr);
  require(same["lost"].Empty(), "nothing is lost since the same file");
  requireText({"coverage", path}, status);
}

// Markup comes from the program alone: a file changes which pieces of it there are, never what they
// are made of.
void requirePage(const std::string& path, Status status) {
  const Answer answer = ask({"report", path, "-o", "-"});
  requireMessages(answer.err);
  require(answer.status == status, "the status of a page is that of the file");
  require(answer.out.ends_with("</html>\n"), "a page is written to its end");
  const std::size_t body = answer.out.find("<body>");
  const std::size_t script = answer.out.find("<script>", body);
  std::string_view page(answer.out);
  page = page.substr(body, script - body);
  std::size_t open = 0;
  for (const char c : page) {
    require(c == '<' ? open == 0 : c != '>' || open == 1, "tags do not nest");
    open = c == '<' ? 1 : c == '>' ? 0 : open;
    require(static_cast<unsigned char>(c) >= 0x20 || c == '\n' || c == '\t', "texts are plain");
  }
  for (const std::string_view begin : {"<script", "<img", "<iframe", "<object"}) {
    require(page.find(begin) == std::string_view::npos, "nothing in a page is code");
  }
}

}  // namespace

}  // namespace consolidator

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace consolidator;  // NOLINT(google-build-using-namespace)
  const std::string bytes(data, data + size);
  const MemoryFile stored;
  stored.write(bytes);
  const auto file = consolidated::File::fromBytes(bytes);
  if (!file) {
    const Status unasked = Status::Unasked;
    const auto document = requireDocument({"json", stored.path()}, &unasked);
    require(document.HasMember("error"), "what is no file is refused");
    return 0;
  }
  const Status status = file->complete() ? Status::Holds : Status::Fails;
  requireJson(stored.path(), *file, status);
  requireText({"show", stored.path()}, status);
  requireText({"show", "--kernel", "a", stored.path()}, Status::Fails);
  requireDatabase(stored.path(), status);
  requireExtracts(stored.path(), *file);
  requireFound(stored.path(), *file);
  requireVerified(stored.path(), *file);
  requireCompared(stored.path(), bytes, status);
  requireCovered(stored.path(), status);
  requirePage(stored.path(), status);
  return 0;
}
