#include <cmath>
#include <numbers>

#include "tests/formats/programs/ProgramRunner.h"

namespace {

// The X coordinate that a word leads to, after the lines ahead.
double ValueOf(const std::string& value, const std::string& ahead = "") {
  const ProgramRun run = RunProgram(ahead + "\nT1 M6\nG0 Z0 Y0 X" + value + "\n");
  return run.moves.tips.size() == 1 ? run.moves.tips[0][0] : std::nan("");
}

std::string FaultIn(const std::string& value) {
  return ErrorOf("T1 M6\nG0 Y0 Z0 X" + value + "\n");
}

TEST(GCodeExpression, ReadsNumbersInEverySpelling) {
  EXPECT_EQ(ValueOf("12"), 12);
  EXPECT_EQ(ValueOf("-.5"), -0.5);
  EXPECT_EQ(ValueOf("+7."), 7);
  EXPECT_EQ(ValueOf("1 2 . 2 5"), 12.25);
  EXPECT_EQ(ValueOf("007"), 7);
}

TEST(GCodeExpression, ReadsADecimalToTheNearestDouble) {
  EXPECT_EQ(ValueOf("53.293000000000001"), 53.293000000000001);
  EXPECT_EQ(ValueOf("0.1"), 0.1);
}

TEST(GCodeExpression, GivesEachOperatorItsPrecedence) {
  EXPECT_EQ(ValueOf("[2+3*4]"), 14);
  EXPECT_EQ(ValueOf("[2*3**2]"), 18);
  EXPECT_EQ(ValueOf("[1+2 eq 3]"), 1);
  EXPECT_EQ(ValueOf("[1 or 0 eq 1]"), 1);
  EXPECT_EQ(ValueOf("[[2+3]*4]"), 20);
}

TEST(GCodeExpression, WorksFromLeftToRightWithinOnePrecedence) {
  EXPECT_EQ(ValueOf("[10-4-3]"), 3);
  EXPECT_EQ(ValueOf("[100/10/2]"), 5);
  EXPECT_EQ(ValueOf("[2**3**2]"), 64);
  EXPECT_EQ(ValueOf("[7 mod 4 * 2]"), 6);
}

TEST(GCodeExpression, TakesSignsAheadOfEveryKindOfValue) {
  EXPECT_EQ(ValueOf("[3 - -2]"), 5);
  EXPECT_EQ(ValueOf("-[3+1]"), -4);
  EXPECT_EQ(ValueOf("-#1", "#1=6"), -6);
  EXPECT_EQ(ValueOf("[5*-sqrt[4]]"), -10);
  EXPECT_EQ(ValueOf("[-2**2]"), 4);
}

TEST(GCodeExpression, ModuloIsNeverNegative) {
  EXPECT_EQ(ValueOf("[-1 mod 3]"), 2);
  EXPECT_EQ(ValueOf("[-1 mod -3]"), 2);
  EXPECT_EQ(ValueOf("[7.5 mod 2]"), 1.5);
}

TEST(GCodeExpression, ComparesAndJoins) {
  EXPECT_EQ(ValueOf("[1 ne 1.00001]"), 0);
  EXPECT_EQ(ValueOf("[1 eq 1.001]"), 0);
  EXPECT_EQ(ValueOf("[2 gt 1]"), 1);
  EXPECT_EQ(ValueOf("[2 ge 2]"), 1);
  EXPECT_EQ(ValueOf("[2 lt 2]"), 0);
  EXPECT_EQ(ValueOf("[2 le 1]"), 0);
  EXPECT_EQ(ValueOf("[5 and -1]"), 1);
  EXPECT_EQ(ValueOf("[5 xor 2]"), 0);
  EXPECT_EQ(ValueOf("[0 xor 2]"), 1);
  EXPECT_EQ(ValueOf("[0 or 0]"), 0);
}

TEST(GCodeExpression, AnglesAreInDegrees) {
  EXPECT_EQ(ValueOf("sin[90]"), 1);
  EXPECT_EQ(ValueOf("cos[90]"), 0);
  EXPECT_EQ(ValueOf("cos[720]"), 1);
  EXPECT_NEAR(ValueOf("sin[30]"), 0.5, 1e-15);
  EXPECT_NEAR(ValueOf("sin[-217.3]"), std::sin(-217.3 * std::numbers::pi / 180), 1e-15);
  EXPECT_NEAR(ValueOf("tan[45]"), 1, 1e-15);
  EXPECT_NEAR(ValueOf("atan[-1]/[-1]"), -135, 1e-13);
  EXPECT_NEAR(ValueOf("acos[0.5]"), 60, 1e-13);
  EXPECT_NEAR(ValueOf("asin[-1]"), -90, 1e-13);
}

TEST(GCodeExpression, KnowsTheOtherFunctions) {
  EXPECT_EQ(ValueOf("abs[-3.5]"), 3.5);
  EXPECT_EQ(ValueOf("fix[-2.8]"), -3);
  EXPECT_EQ(ValueOf("fix[2.8]"), 2);
  EXPECT_EQ(ValueOf("fup[2.1]"), 3);
  EXPECT_EQ(ValueOf("fup[-2.8]"), -2);
  EXPECT_EQ(ValueOf("round[2.5]"), 3);
  EXPECT_EQ(ValueOf("round[-2.5]"), -3);
  EXPECT_EQ(ValueOf("sqrt[6.25]"), 2.5);
  EXPECT_NEAR(ValueOf("ln[exp[3]]"), 3, 1e-15);
}

TEST(GCodeExpression, VariablesAreFoundThroughOtherVariables) {
  EXPECT_EQ(ValueOf("##2", "#2=7\n#7=1.25"), 1.25);
  EXPECT_EQ(ValueOf("#[1+1]", "#2=3"), 3);
  EXPECT_EQ(ValueOf("#3000"), 0);
}

TEST(GCodeExpression, NamesIgnoreCaseAndSpaces) {
  EXPECT_EQ(ValueOf("#<TheFeed>", "#<the feed>=9"), 9);
}

TEST(GCodeExpression, ExistsTellsWhetherAVariableHasBeenSet) {
  EXPECT_EQ(ValueOf("exists[#<a>]"), 0);
  EXPECT_EQ(ValueOf("exists[#<a>]", "#<a>=0"), 1);
  EXPECT_EQ(ValueOf("exists[#5]"), 1);
}

TEST(GCodeExpression, ASettingCountsFromTheNextLineOn) {
  EXPECT_EQ(CallsOf("T1 M6\n#1=5\nG0 X#1 Y0 Z0 #1=7\nX#1\n"),
            (Calls{"tool 1", "start rapid 5 0 0", "rapid 7 0 0"}));
}

TEST(GCodeExpression, SettingsOfOneLineSeeTheValuesBeforeIt) {
  EXPECT_EQ(ValueOf("#2", "#1=1 #2=2\n#1=#2 #2=[#1+10]"), 11);
}

TEST(GCodeExpression, FaultsNameLineColumnAndReason) {
  EXPECT_EQ(FaultIn("[1/0]"), "p.ngc: division by zero (line 2, column 13)");
  EXPECT_EQ(FaultIn("[1+"), "p.ngc: number expected (line 2, column 14)");
  EXPECT_EQ(FaultIn("[1"), "p.ngc: operator or \"]\" expected (line 2, column 13)");
  EXPECT_EQ(FaultIn("#<none>"), "p.ngc: variable #<none> has no value (line 2, column 11)");
  EXPECT_EQ(FaultIn("sqrt[-1]"), "p.ngc: SQRT of a negative value (line 2, column 11)");
}

TEST(GCodeExpression, RefusesWhatHasNoValue) {
  for (const char* value : {"",
                            "-",
                            ".",
                            "[]",
                            "[1 mod 0]",
                            "ln[0]",
                            "ln[-1]",
                            "acos[1.1]",
                            "asin[-2]",
                            "tan[90]",
                            "[[-8]**0.5]",
                            "[0**-1]",
                            "exp[1000]",
                            "atan[1]",
                            "atan[1]/2",
                            "#0",
                            "#5603",
                            "#1.5",
                            "#-1",
                            "#<>",
                            "#<a",
                            "exists[5]",
                            "foo[1]",
                            "1.2.3",

                            "[10**300*10**300]"}) {
    EXPECT_NE(FaultIn(value), "") << value;
  }
}

}  // namespace
