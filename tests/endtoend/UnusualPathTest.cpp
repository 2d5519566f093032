// What every option that names a file makes of paths that are out of the ordinary.

#include "endtoend/ExecutableTest.h"
#include "endtoend/TimedRun.h"
#include "endtoend/VaddBuild.h"

#include <unistd.h>

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator {
namespace {

enum class Opening { Works, Creates, Fails };

struct PathKind {
  std::string_view claim;
  Opening opening;
  std::string path;
  std::string setUp;       // script that puts it there; before it, there is a file vadd.txt
  std::string tearDown{};  // script that leaves nothing but what a listing can show
  std::string file{};      // the name of what was vadd.txt, in the end
  std::string folder{};    // the name of a folder that is there in the end, with its slash
  bool asOrdinaryUser = false;
};

// The claim alone: the paths are too long for a list of tests.
void PrintTo(const PathKind& kind, std::ostream* out) { *out << kind.claim; }

constexpr std::size_t longest = 4095;

std::string pathOfLength(std::size_t length) {
  const std::string name = "vadd.txt";
  std::string path;
  while (path.size() + name.size() + 2 <= length) path += "./";
  while (path.size() + name.size() < length) path += '/';
  return path + name;
}

std::vector<PathKind> pathKinds() {
  const std::string name = "vadd.txt";
  const std::string foreign = "f\xFFlder \xC3(/";
  return {
      {"Missing", Opening::Creates, name, "rm vadd.txt"},
      {"BelowAFile", Opening::Fails, name + "/vadd.txt", "", "", name},
      {"Folder", Opening::Fails, name, "rm vadd.txt; mkdir vadd.txt", "", "", name + "/"},
      {"WithoutPermission", Opening::Fails, name, "chmod 0 vadd.txt", "chmod 600 vadd.txt", name,
       "", true},
      {"SymbolicLinkToItself", Opening::Fails, name, "rm vadd.txt; ln -s vadd.txt vadd.txt",
       "test -L vadd.txt && rm vadd.txt"},
      {"SymbolicLink", Opening::Works, "vadd.lnk", "ln -s vadd.txt vadd.lnk",
       "test -L vadd.lnk && rm vadd.lnk", name},
      {"NameThatIsNotUtf8", Opening::Works, foreign + name,
       "mkdir '" + foreign + "'; mv vadd.txt '" + foreign + "'", "", foreign + name, foreign},
      {"LongestPath", Opening::Works, pathOfLength(longest), "", "", name},
      {"PathOverTheLongest", Opening::Fails, pathOfLength(longest + 1), "", "", name},
      {"NameAsLongAsTheLongestPath", Opening::Fails, std::string(longest, 'n'), "", "", name},
  };
}

class UnusualPathTest : public ExecutableTest, public testing::WithParamInterface<PathKind> {
 protected:
  void SetUp() override {
    if (!GetParam().asOrdinaryUser || geteuid() != 0) return;
    // What root may do beyond others stands in two capabilities.
    prefix_ = "setpriv --bounding-set=-dac_override,-dac_read_search --inh-caps=-all ";
    if (runScript(prefix_ + "true").status != 0) GTEST_SKIP() << "cannot run as an ordinary user";
  }

  // Expects what a run comes to on a path of this kind and what it leaves. `before` is in the file
  // at that path at first, `after` is there in the end; `beside` are all other files.
  void expectRun(const std::string& options, const Outcome& outcome, const std::string& before,
                 const std::string& after, Files beside) const {
    const PathKind& kind = GetParam();
    SCOPED_TRACE(options.substr(0, options.find(kind.path)));
    write("vadd.txt", before);
    ASSERT_EQ(runScript(kind.setUp), silence());
    EXPECT_EQ(runScript("exec " + prefix_ + foretold + options), outcome);
    EXPECT_EQ(runScript(kind.tearDown), silence());

    if (!kind.folder.empty()) beside[kind.folder];
    const bool isCreated = kind.opening == Opening::Creates && !after.empty();
    const std::string& file = isCreated ? kind.path : kind.file;
    if (!file.empty()) beside[file] = after;
    EXPECT_TRUE(folderHolds(beside));
    remove(kind.folder.empty() ? "vadd.txt" : kind.folder.substr(0, kind.folder.size() - 1));
  }

  bool works() const { return GetParam().opening == Opening::Works; }

  bool fails() const { return GetParam().opening == Opening::Fails; }

  std::string path() const { return " '" + GetParam().path + "' "; }

  Outcome cannotOpen() const { return failed("Unable to open " + GetParam().path + "\n"); }

 private:
  std::string prefix_;
};

INSTANTIATE_TEST_SUITE_P(, UnusualPathTest, testing::ValuesIn(pathKinds()),
                         [](const auto& kind) { return std::string(kind.param.claim); });

TEST_P(UnusualPathTest, AsAnInputIsReadOrSkipped) {
  for (const InputOption& option : inputOptions()) {
    write("vadd.out", VaddKernel().file());
    expectRun("-f vadd.out " + option.name + path(), silence(), option.text,
              GetParam().opening == Opening::Creates ? "" : option.text,
              {{"vadd.out", works() ? option.read : VaddKernel().file()}});
  }
}

// A project's name is no path, whatever it looks like.
TEST_P(UnusualPathTest, AsTheNameOfAProjectIsStored) {
  const VaddKernel vadd;
  const std::string stored = container(
      {jsonSection(vadd.json()), recordsSection({vadd.record()}), projectSection(GetParam().path)});
  write("vadd.out", vadd.file());
  expectRun("-f vadd.out -h vadd.txt/missing --project" + path(), silence(), "x",
            GetParam().opening == Opening::Creates ? "" : "x", {{"vadd.out", stored}});
}

TEST_P(UnusualPathTest, AsTheFileOfADumpIsWrittenOrSkipped) {
  const std::string json = jsonText(VaddKernel().json()) + '\0';
  const std::string full = container({dwarfSection("debug"), section(3, json)});
  write("vadd.out", full);
  const std::string before(full.size(), 'x');
  expectRun("-f vadd.out --dump-dwarf" + path(), silence(), before, fails() ? before : "debug",
            {{"vadd.out", full}});
  expectRun("-f vadd.out --dump-json" + path(), silence(), before, fails() ? before : json,
            {{"vadd.out", full}});
}

TEST_P(UnusualPathTest, AsTheConsolidatedFileIsAddedToOrRefused) {
  const InputOption hierarchy = hierarchyOption();
  write("h", hierarchy.text);
  const std::string before = VaddKernel().file();
  const std::string added = works() ? hierarchy.read : createdFromHierarchy();
  expectRun("-h h -f" + path(), fails() ? cannotOpen() : silence(), before,
            fails() ? before : added, {{"h", hierarchy.text}});
}

TEST_P(UnusualPathTest, AsTheConsolidatedFileIsCreatedOrRefused) {
  const InputOption hierarchy = hierarchyOption();
  write("h", hierarchy.text);
  const std::string before = VaddKernel().file();
  expectRun("-h h -c -f" + path(), fails() ? cannotOpen() : silence(), before,
            fails() ? before : createdFromHierarchy(), {{"h", hierarchy.text}});
}

TEST_P(UnusualPathTest, AsTheConsolidatedFileOfADumpIsReadOrRefused) {
  const std::string file = VaddKernel().file();
  const std::string after = GetParam().opening == Opening::Creates ? "" : file;
  const bool isFolder = !GetParam().folder.empty() && fails();
  const std::string json = jsonText(VaddKernel().json()) + '\0';
  Files dumped;
  if (works()) dumped["json"] = json;
  if (isFolder) dumped["json"];  // opens for reading, but holds nothing
  expectRun("-j json -f" + path(), works() || isFolder ? silence() : cannotOpen(), file, after,
            dumped);
}

}  // namespace
}  // namespace consolidator
