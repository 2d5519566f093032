#include "inspect/report/InstanceTree.h"
#include "support/MemoryFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <string>
#include <vector>

namespace consolidator::inspect {
namespace {

std::string htmlOf(const std::vector<std::string>& paths) {
  InstanceTree tree;
  std::uint64_t kernel = 0;
  for (const std::string& path : paths) tree.add(path, kernel++, "k");
  tree.finish();
  const MemoryFile file;
  OutputSink out(file.descriptor());
  HtmlWriter html(out);
  tree.write(html);
  out.flush();
  return file.read();
}

// The tree in short: branches as "name(...)", leaves as "name#kernel".
std::string treeOf(const std::vector<std::string>& paths) {
  std::string text = std::regex_replace(htmlOf(paths), std::regex("\n"), "");
  const auto shorten = [&](const char* from, const char* to) {
    text = std::regex_replace(text, std::regex(from), to);
  };
  shorten("<li><details open><summary><bdi>([^<]*)</bdi></summary>", "$1");
  shorten("</details></li>", "");
  shorten("<ul class=\"tree\">", "(");
  shorten("</ul>", ")");
  shorten(" *<a href=\"#k([0-9]+)\"><bdi>k</bdi></a>", "#$1");
  shorten("<li><span><bdi>([^<]*)</bdi>", "$1");
  shorten("</span></li>", " ");
  return text;
}

TEST(InstanceTree, NestsTheirCommonParts) {
  EXPECT_EQ(treeOf({"/a/b/x", "/a/b/y", "/a/c"}), "(/a(/b(/x#0 /y#1 )/c#2 ))");
}

TEST(InstanceTree, JoinsPartsThatLeadToOneAlone) {
  EXPECT_EQ(treeOf({"/a/b/c/x", "/a/b/c/y"}), "(/a/b/c(/x#0 /y#1 ))");
  EXPECT_EQ(treeOf({"/a/b/c"}), "(/a/b/c#0 )");
}

TEST(InstanceTree, KeepsPartsTogetherWhateverTheyBeginWith) {
  EXPECT_EQ(treeOf({"/a/x", "/a-b", "/a/y"}), "(/a(/x#0 /y#2 )/a-b#1 )");
  EXPECT_EQ(treeOf({"/k_1/i", "/k_10/i"}), "(/k_1/i#0 /k_10/i#1 )");
}

TEST(InstanceTree, ShowsAnInstanceInsideAnother) {
  EXPECT_EQ(treeOf({"/a", "/a/b", "/a/c"}), "(/a#0 /a(/b#1 /c#2 ))");
}

TEST(InstanceTree, ShowsEqualPathsOnce) {
  EXPECT_EQ(treeOf({"/a", "/a"}), "(/a#0#1 )");
  EXPECT_EQ(treeOf({"", ""}), "(#0#1 )");
}

TEST(InstanceTree, TakesPathsWithoutSeparatorsAndOfSeparatorsAlone) {
  EXPECT_EQ(treeOf({"a", "b/c", "b/d"}), "(a#0 b(/c#1 /d#2 ))");
  EXPECT_EQ(treeOf({"//", "///"}), "(//#0 //(/#1 ))");
}

TEST(InstanceTree, IsNotDeeperThanBrowsersTake) {
  std::vector<std::string> paths;
  for (std::string path; paths.size() < 400; path += "/a") paths.push_back(path);
  const std::string tree = treeOf(paths);
  EXPECT_EQ(std::count(tree.begin(), tree.end(), '#'), 400);
  EXPECT_LE(std::count(tree.begin(), tree.end(), '('), 42);
}

TEST(InstanceTree, KeepsTheFirst) {
  InstanceTree tree;
  for (std::size_t i = 0; i < InstanceTree::mostPaths + 5; ++i) tree.add("/a", 0, "k");
  EXPECT_EQ(tree.size(), InstanceTree::mostPaths);
}

}  // namespace
}  // namespace consolidator::inspect
