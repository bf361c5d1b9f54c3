#include "common/pieces.h"

#include <gtest/gtest.h>

TEST(SplitPieces, LongLineArrivesInBufferSizedPieces) {
  const std::string line = std::string(249, 'x') + "\n";
  const auto pieces = splitPieces(line);
  ASSERT_EQ(pieces.size(), 3u);
  EXPECT_EQ(pieces[0].size(), 99u);
  EXPECT_EQ(pieces[1].size(), 99u);
  EXPECT_EQ(pieces[2].size(), 52u);
  EXPECT_EQ(pieces[2].back(), '\n');
}

TEST(SplitPieces, NinetyNineCharactersLeaveTheNewlineAsAPieceOfItsOwn) {
  const auto pieces = splitPieces(std::string(99, 'a') + "\nb");
  ASSERT_EQ(pieces.size(), 3u);
  EXPECT_EQ(pieces[1], "\n");
  EXPECT_EQ(pieces[2], "b");
}

TEST(SplitPieces, LinesKeepTheirNewlineAndTheLastMayLackOne) {
  EXPECT_EQ(splitPieces("one\ntwo\nend"), (std::vector<std::string>{"one\n", "two\n", "end"}));
  EXPECT_TRUE(splitPieces("").empty());
}

TEST(SplitPieces, MatchStringSplitAcrossPiecesIsNotSeen) {
  const std::string line = std::string(95, ' ') + "Link detected: yes\n";
  for (const auto& piece : splitPieces(line)) EXPECT_FALSE(contains(piece, "Link detected:"));
}

TEST(SplitPieces, EmbeddedNulEndsThePieceAsAFgetsBufferWould) {
  const auto pieces = splitPieces(std::string("ab\0cd\nef\n", 9));
  EXPECT_EQ(pieces, (std::vector<std::string>{"ab", "ef\n"}));
}

TEST(SplitPieces, WiderBufferTakesLongerPieces) {
  const auto pieces = splitPieces(std::string(300, '5'), 200);
  ASSERT_EQ(pieces.size(), 2u);
  EXPECT_EQ(pieces[0].size(), 199u);
}
