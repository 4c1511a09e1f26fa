#include <climits>
#include <cstring>
#include <gtest/gtest.h>
#include <string>
#include <utility>

#include "MfcApi.h"

namespace {

std::string Text(const CString& string) {
  return std::string(string.GetString(), static_cast<size_t>(string.GetLength()));
}

TEST(CString, DefaultIsEmptyAndNeverNull) {
  const CString string;
  EXPECT_TRUE(string.IsEmpty());
  EXPECT_EQ(string.GetLength(), 0);
  ASSERT_NE(static_cast<const char*>(string), nullptr);
  EXPECT_STREQ(string, "");
}

TEST(CString, NullTextMakesAnEmptyString) {
  const CString string(static_cast<const char*>(nullptr));
  EXPECT_TRUE(string.IsEmpty());
  EXPECT_STREQ(string, "");
}

TEST(CString, TextWithLengthKeepsEmbeddedZeros) {
  const CString string("a\0b", 3);
  EXPECT_EQ(string.GetLength(), 3);
  EXPECT_EQ(Text(string), std::string("a\0b", 3));
}

TEST(CString, RepeatedCharacterFillsTheString) {
  EXPECT_STREQ(CString('x', 4), "xxxx");
  EXPECT_STREQ(CString('x', 0), "");
  EXPECT_STREQ(CString('x', -2), "");
}

TEST(CString, CopyIsIndependentOfTheOriginal) {
  CString original("Part7");
  CString copy(original);
  original.SetAt(0, 'C');
  EXPECT_STREQ(copy, "Part7");
  EXPECT_STREQ(original, "Cart7");
  EXPECT_NE(copy.GetString(), original.GetString());
}

TEST(CString, MovedFromStringIsEmptyAndUsable) {
  CString source("abc");
  CString target(std::move(source));
  EXPECT_STREQ(target, "abc");
  EXPECT_STREQ(source, "");
  source = "again";
  EXPECT_STREQ(source, "again");
}

TEST(CString, AssignmentToItselfChangesNothing) {
  CString string("abc");
  const CString& same = string;
  string = same;
  EXPECT_STREQ(string, "abc");
}

TEST(CString, AssignmentFromItsOwnMiddleKeepsThatPart) {
  CString string("0123456789");
  string = static_cast<const char*>(string) + 4;
  EXPECT_STREQ(string, "456789");
}

TEST(CString, AssignmentOfNullEmptiesTheString) {
  CString string("abc");
  string = static_cast<const char*>(nullptr);
  EXPECT_TRUE(string.IsEmpty());
}

TEST(CString, AppendTakesStringTextAndCharacter) {
  CString string("C:\\Jobs");
  string += '\\';
  string += "Part";
  string += CString("7");
  EXPECT_STREQ(string, "C:\\Jobs\\Part7");
}

TEST(CString, AppendOfItselfDoublesTheString) {
  CString string("abc");
  string += string;
  string += static_cast<const char*>(string);
  EXPECT_STREQ(string, "abcabcabcabc");
}

TEST(CString, AppendOfManyCharactersKeepsThemAll) {
  CString string;
  std::string expected;
  for (int index = 0; index < 5000; ++index) {
    const char c = static_cast<char>('a' + index % 26);
    string += c;
    expected += c;
  }
  EXPECT_EQ(Text(string), expected);
}

TEST(CString, PlusJoinsStringsTextsAndCharacters) {
  const CString a("ab");
  EXPECT_STREQ(a + CString("cd"), "abcd");
  EXPECT_STREQ(a + "cd", "abcd");
  EXPECT_STREQ("cd" + a, "cdab");
  EXPECT_STREQ(a + 'c', "abc");
  EXPECT_STREQ('c' + a, "cab");
  EXPECT_STREQ(CString() + CString(), "");
}

TEST(CString, ComparisonsFollowTheBytes) {
  const CString a("abc");
  EXPECT_TRUE(a == "abc");
  EXPECT_TRUE("abc" == a);
  EXPECT_TRUE(a == CString("abc"));
  EXPECT_TRUE(a != "abd");
  EXPECT_TRUE(a < "abd");
  EXPECT_TRUE("abb" < a);
  EXPECT_TRUE(a > CString("ab"));
  EXPECT_LT(a.Compare("abd"), 0);
  EXPECT_GT(a.Compare("ABC"), 0);
  EXPECT_EQ(a.Compare("abc"), 0);
  EXPECT_GT(CString("\xe9").Compare("z"), 0);
}

TEST(CString, CompareNoCaseIgnoresTheCaseOfLettersOnly) {
  EXPECT_EQ(CString("PATH.Tmp").CompareNoCase("path.tMP"), 0);
  EXPECT_NE(CString("a[").CompareNoCase("a{"), 0);
  EXPECT_LT(CString("ab").CompareNoCase("ABC"), 0);
}

TEST(CString, CharactersAreReadUpToTheTerminatingZero) {
  const CString string("abc");
  EXPECT_EQ(string.GetAt(1), 'b');
  EXPECT_EQ(string[2], 'c');
  EXPECT_EQ(string[3], '\0');
}

TEST(CString, LeftRightAndMidCutTheirCountsToTheString) {
  const CString string("0123456789");
  EXPECT_STREQ(string.Left(3), "012");
  EXPECT_STREQ(string.Left(99), "0123456789");
  EXPECT_STREQ(string.Left(-1), "");
  EXPECT_STREQ(string.Right(3), "789");
  EXPECT_STREQ(string.Right(99), "0123456789");
  EXPECT_STREQ(string.Mid(4), "456789");
  EXPECT_STREQ(string.Mid(4, 2), "45");
  EXPECT_STREQ(string.Mid(8, INT_MAX), "89");
  EXPECT_STREQ(string.Mid(12), "");
  EXPECT_STREQ(string.Mid(-2, 3), "012");
}

TEST(CString, FindStartsWhereItIsTold) {
  const CString string("C:\\A\\B\\");
  EXPECT_EQ(string.Find('\\'), 2);
  EXPECT_EQ(string.Find('\\', 3), 4);
  EXPECT_EQ(string.Find('\\', 7), -1);
  EXPECT_EQ(string.Find('x'), -1);
  EXPECT_EQ(string.Find("\\B"), 4);
  EXPECT_EQ(string.Find("\\", 5), 6);
  EXPECT_EQ(string.Find("zz"), -1);
  EXPECT_EQ(string.Find('\\', -1), -1);
}

TEST(CString, ReverseFindGivesTheLastPlace) {
  const CString string("C:\\A\\B\\");
  EXPECT_EQ(string.ReverseFind('\\'), 6);
  EXPECT_EQ(string.ReverseFind('C'), 0);
  EXPECT_EQ(string.ReverseFind('x'), -1);
}

TEST(CString, FormatReplacesTheContents) {
  CString string("old");
  string.Format("TmpPathInfo%d.tmp", 12);
  EXPECT_STREQ(string, "TmpPathInfo12.tmp");
  string.Format("%s", "");
  EXPECT_TRUE(string.IsEmpty());
}

TEST(CString, FormatMayReadTheOldContents) {
  CString string("abc");
  string.Format("%s-%s", string.GetString(), string.GetString());
  EXPECT_STREQ(string, "abc-abc");
}

TEST(CString, FormatTakesTextsLongerThanAnyBuffer) {
  const std::string text(100000, 'q');
  CString string;
  string.Format("<%s>", text.c_str());
  EXPECT_EQ(string.GetLength(), 100002);
  EXPECT_EQ(string[100001], '>');
}

TEST(CString, AppendFormatAddsBehindTheContents) {
  CString string("a");
  string.AppendFormat("%s%d", string.GetString(), 7);
  EXPECT_STREQ(string, "aa7");
}

TEST(CString, BufferTakesCharactersAndReleaseFindsTheLength) {
  CString string("ab");
  char* buffer = string.GetBuffer(10);
  EXPECT_STREQ(buffer, "ab");
  std::strcpy(buffer, "0123456789");
  string.ReleaseBuffer();
  EXPECT_EQ(string.GetLength(), 10);
  std::strcpy(string.GetBuffer(10), "xyz");
  string.ReleaseBuffer(2);
  EXPECT_STREQ(string, "xy");
}

TEST(CString, BufferOfAnEmptyStringIsTerminated) {
  CString string;
  char* buffer = string.GetBuffer(0);
  ASSERT_NE(buffer, nullptr);
  EXPECT_EQ(buffer[0], '\0');
  string.ReleaseBuffer();
  EXPECT_TRUE(string.IsEmpty());
}

TEST(CString, TrimsBlanksAtEitherEnd) {
  EXPECT_STREQ(CString(" \ta b\r\n").TrimRight(), " \ta b");
  EXPECT_STREQ(CString(" \ta b\r\n").TrimLeft(), "a b\r\n");
  EXPECT_STREQ(CString(" \ta b\r\n").Trim(), "a b");
  EXPECT_STREQ(CString("a\\\\").TrimRight('\\'), "a");
  EXPECT_STREQ(CString("  ").Trim(), "");
  EXPECT_STREQ(CString().Trim(), "");
}

TEST(CString, ChangesTheCaseOfLettersOnly) {
  EXPECT_STREQ(CString("Part-7\xc9").MakeUpper(), "PART-7\xc9");
  EXPECT_STREQ(CString("Part-7\xc9").MakeLower(), "part-7\xc9");
}

TEST(CString, SetAtOutsideTheStringDoesNothing) {
  CString string("abc");
  string.SetAt(1, 'X');
  string.SetAt(3, 'Y');
  string.SetAt(-1, 'Y');
  EXPECT_STREQ(string, "aXc");
}

TEST(CString, ReplaceCountsWhatItReplaced) {
  CString string("a\\b\\c");
  EXPECT_EQ(string.Replace('\\', '/'), 2);
  EXPECT_STREQ(string, "a/b/c");
  EXPECT_EQ(string.Replace('x', 'y'), 0);
}

TEST(CString, EmptyGivesTheCharactersBack) {
  CString string("abc");
  string.Empty();
  EXPECT_TRUE(string.IsEmpty());
  string += "d";
  EXPECT_STREQ(string, "d");
}

}  // namespace
