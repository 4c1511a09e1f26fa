// Input that no one wrote on purpose: none of it may crash, hang or fill the memory.
#include <string>

#include "tests/formats/programs/ProgramRunner.h"

namespace {

TEST(GCodeHostile, DeepBracketsEndInAnError) {
  EXPECT_NE(ErrorOf("#1=" + std::string(50000, '[') + "\n"), "");
  EXPECT_NE(ErrorOf("#1=" + std::string(50000, '#') + "\n"), "");
  std::string functions;
  for (int i = 0; i < 20000; ++i) {
    functions += "-abs[";
  }
  EXPECT_NE(ErrorOf("#1=" + functions + "\n"), "");
}

TEST(GCodeHostile, LinesLongerThanAnyProgramsEndInAnError) {
  EXPECT_EQ(ErrorOf(std::string(100001, ' ')), "p.ngc: line longer than any program's (line 1)");
  EXPECT_EQ(ErrorOf(std::string(100000, ' ')), "");
}

TEST(GCodeHostile, HugeNumbersEndInAnError) {
  const std::string huge = std::string(400, '9');
  EXPECT_NE(ErrorOf("G0 X" + huge + "\n"), "");
  EXPECT_NE(ErrorOf("T" + std::string(300, '9') + "\n"), "");
  EXPECT_NE(ErrorOf("G" + std::string(300, '9') + "\n"), "");
  EXPECT_NE(ErrorOf("T1 M6\nG20 G0 X" + std::string(308, '9') + "\n"), "");
  EXPECT_NE(ErrorOf("#" + std::string(300, '9') + "=1\n"), "");
  EXPECT_NE(ErrorOf("G10 L2 P" + std::string(300, '9') + "\n"), "");
  EXPECT_EQ(RunProgram("G10 L" + std::string(300, '9') + "\n").report.unknown.size(), 1U);
}

TEST(GCodeHostile, CountsBeyondReasonEndInAnError) {
  const std::string start = "T1 M6\nG0 X1 Y0 Z9\n";
  EXPECT_NE(ErrorOf(start + "G2 I-1 P1000000\n"), "");
  EXPECT_NE(ErrorOf(start + "G81 X0 Z0 R1 L99999999\n"), "");
  EXPECT_NE(ErrorOf(start + "G83 X0 Z0 R1 Q0.001 L900000\n"), "");
}

TEST(GCodeHostile, BytesThatAreNoTextEndInAnError) {
  EXPECT_NE(ErrorOf(std::string("G0\0X1\n", 6)), "");
  EXPECT_NE(ErrorOf("G0 X1\x80\n"), "");
  EXPECT_EQ(ErrorOf("(Fr\xC3\xA4ser \x01)\n"), "");
  EXPECT_NE(ErrorOf("X=5\n"), "");
  EXPECT_NE(ErrorOf("%%\n"), "");
  EXPECT_NE(ErrorOf("#5\n"), "");
}

TEST(GCodeHostile, EveryBeginningOfAProgramIsAnErrorOrARun) {
  const std::string program =
      "%\n#<a>=[2**[1+1]/atan[1]/[2]] (x)\nT1M6 G10 L2 P1 X#<a>\nG0X1Y2Z3\nG83 X1 Z-5 R2 Q1\nG18 "
      "G2 X5 Z#5422 R9\nG80 G91.1 G28 Z1\n#[1]=exists[#<a>] o1 call\n%\n";
  for (std::size_t length = 0; length <= program.size(); ++length) {
    ErrorOf(program.substr(0, length));
  }
}

}  // namespace
