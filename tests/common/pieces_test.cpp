#include "common/pieces.h"

#include <gtest/gtest.h>

TEST(SplitPieces, CutsAsFgetsIntoAFixedBuffer) {
  using Pieces = std::vector<std::string>;
  const struct {
    const char* name;
    std::string text;
    std::size_t bufferSize;
    Pieces pieces;
  } cases[] = {
      {"lines keep their newline, the last may lack one",
       "one\ntwo\nend",
       100,
       {"one\n", "two\n", "end"}},
      {"nothing", "", 100, {}},
      {"a long line",
       std::string(249, 'x') + "\n",
       100,
       {std::string(99, 'x'), std::string(99, 'x'), std::string(51, 'x') + "\n"}},
      {"99 characters leave the newline alone",
       std::string(99, 'a') + "\nb",
       100,
       {std::string(99, 'a'), "\n", "b"}},
      {"an embedded NUL ends the piece", std::string("ab\0cd\nef\n", 9), 100, {"ab", "ef\n"}},
      {"a wider buffer",
       std::string(300, '5'),
       200,
       {std::string(199, '5'), std::string(101, '5')}},
  };
  for (const auto& c : cases) EXPECT_EQ(splitPieces(c.text, c.bufferSize), c.pieces) << c.name;
}
