#include "inspect/verify/StrictJson.h"

#include <gtest/gtest.h>
#include <rapidjson/error/error.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>

#include <random>
#include <string>
#include <string_view>

namespace consolidator::inspect {
namespace {

using namespace std::string_literals;

constexpr std::size_t none = std::string_view::npos;

TEST(StrictJsonTest, TakesStrictTexts) {
  for (const std::string& text :
       {"0"s, "-0"s, "120"s, "-1.50e+08"s, "1E5"s, "1e-5"s, "1e999999"s, "true"s, "false"s, "null"s,
        "\"\""s, "\"a\\\"\\\\\\/\\b\\f\\n\\r\\t\\u00aF\\ud800\""s, "\"\x7F \xC3\xA4\""s, "[]"s,
        "{}"s, " [ 1 , [ ] , { \"a\" : { } , \"a\" : [ null ] } ]\r\n\t "s}) {
    EXPECT_EQ(findNotStrict(text), none) << text;
  }
}

TEST(StrictJsonTest, FindsWhereATextStopsBeingStrict) {
  for (const auto& [text, position] :
       std::vector<std::pair<std::string, std::size_t>>{{"", 0},
                                                        {"  ", 2},
                                                        {"[1,]", 3},
                                                        {"[1", 2},
                                                        {"[1}", 2},
                                                        {"{\"a\"}", 4},
                                                        {"{\"a\":}", 5},
                                                        {"{\"a\":1,}", 7},
                                                        {"{ 1, 2}", 2},
                                                        {"{\"a\" 1", 5},
                                                        {"1 2", 2},
                                                        {"01", 1},
                                                        {"-", 1},
                                                        {"-x", 1},
                                                        {"1.", 2},
                                                        {"1.x", 2},
                                                        {".5", 0},
                                                        {"1e", 2},
                                                        {"1e+", 3},
                                                        {"+1", 0},
                                                        {"tru", 3},
                                                        {"trux", 3},
                                                        {"nul!", 3},
                                                        {"falsey", 5},
                                                        {"\"a", 2},
                                                        {"\"\\x\"", 2},
                                                        {"\"\\", 2},
                                                        {"\"\\u12", 5},
                                                        {"\"\\u12g4\"", 5},
                                                        {"\"a\nb\"", 2},
                                                        {"\"a\0b\""s, 2},
                                                        {"\"\xC3(\"", 1},
                                                        {"\"\xED\xA0\x80\"", 1},
                                                        {"[]]", 2},
                                                        {"'a'", 0},
                                                        {"[1 2]", 3},
                                                        {"\xEF\xBB\xBF[]", 0},
                                                        {"\"a\\\0\""s, 3}}) {
    EXPECT_EQ(findNotStrict(text), position) << text;
  }
}

TEST(StrictJsonTest, TakesAnyDepth) {
  const std::size_t depth = 1'000'000;
  EXPECT_EQ(findNotStrict(std::string(depth, '[') + std::string(depth, ']')), none);
  EXPECT_EQ(findNotStrict(std::string(depth, '[')), depth);
}

// The library's reader, which agrees on all texts without long numbers.
bool isStrictToLibrary(const std::string& text) {
  rapidjson::MemoryStream bytes(text.data(), text.size());
  rapidjson::EncodedInputStream<rapidjson::UTF8<>, rapidjson::MemoryStream> stream(bytes);
  rapidjson::BaseReaderHandler<> nothing;
  rapidjson::Reader reader;
  return !reader
              .Parse<rapidjson::kParseValidateEncodingFlag | rapidjson::kParseIterativeFlag>(
                  stream, nothing)
              .IsError();
}

TEST(StrictJsonTest, AgreesWithALibrary) {
  const std::vector<std::string> pieces{"{",    "}", "[",  "]", ",",   ":",  "\"a\"",
                                        "\"",   "1", "-",  "0", ".5",  "e1", "true",
                                        "null", " ", "\n", "x", "\xC3"};
  std::mt19937 random(3);
  int strict = 0;
  for (int i = 0; i < 200'000; ++i) {
    std::string text;
    for (std::size_t left = 1 + random() % 7; left > 0; --left) {
      text += pieces[random() % pieces.size()];
    }
    const bool isStrict = isStrictToLibrary(text);
    EXPECT_EQ(findNotStrict(text) == none, isStrict) << text;
    strict += isStrict ? 1 : 0;
  }
  EXPECT_GT(strict, 1000);
}

}  // namespace
}  // namespace consolidator::inspect
