#include "formats/programs/GCodeExpression.h"

#include <array>
#include <charconv>
#include <cmath>
#include <numbers>
#include <optional>
#include <string>

#include "formats/programs/DegreeTrigonometry.h"

namespace formats {
namespace {

constexpr int kDeepest = 100;        // brackets within brackets: a bound for the stack
constexpr double kEqual = 0.0001;    // EQ and NE: values closer than this are equal
constexpr double kInteger = 0.0001;  // how far from a whole number a variable's number may be

enum class Operator {
  kPower,
  kTimes,
  kOver,
  kModulo,
  kPlus,
  kMinus,
  kEq,
  kNe,
  kGt,
  kGe,
  kLt,
  kLe,
  kAnd,
  kOr,
  kXor
};

struct OperatorName {
  std::string_view name;
  Operator id;
  int precedence;  // higher binds tighter
};

// "**" stands before "*", so that the longer one is found first.
constexpr std::array<OperatorName, 15> kOperators = {{{"**", Operator::kPower, 5},
                                                      {"*", Operator::kTimes, 4},
                                                      {"/", Operator::kOver, 4},
                                                      {"mod", Operator::kModulo, 4},
                                                      {"+", Operator::kPlus, 3},
                                                      {"-", Operator::kMinus, 3},
                                                      {"eq", Operator::kEq, 2},
                                                      {"ne", Operator::kNe, 2},
                                                      {"gt", Operator::kGt, 2},
                                                      {"ge", Operator::kGe, 2},
                                                      {"lt", Operator::kLt, 2},
                                                      {"le", Operator::kLe, 2},
                                                      {"and", Operator::kAnd, 1},
                                                      {"or", Operator::kOr, 1},
                                                      {"xor", Operator::kXor, 1}}};

class Evaluator {
 public:
  Evaluator(GCodeCursor& cursor, const GCodeVariables& variables)
      : cursor_(cursor), variables_(variables) {}

  double Value() {
    const char next = cursor_.Peek();
    if (next == '[') {
      return Bracketed();
    }
    if (next == '#') {
      return Variable();
    }
    if (next >= 'a' && next <= 'z') {
      return Function();
    }
    if (next == '+' || next == '-') {
      const char after = cursor_.Rest().size() > 1 ? cursor_.Rest()[1] : '\0';
      if (after == '[' || after == '#' || (after >= 'a' && after <= 'z')) {
        cursor_.Take();
        return next == '-' ? -Nested() : Nested();
      }
    }
    return Number();
  }

 private:
  // One level deeper; keeps hostile input off the stack's end.
  double Nested() {
    if (++depth_ > kDeepest) {
      cursor_.Fail("expression nested deeper than " + std::to_string(kDeepest) + " levels");
    }
    const double value = Value();
    --depth_;
    return value;
  }

  double Number() {
    const std::string_view rest = cursor_.Rest();
    std::size_t length = 0;
    const bool plus = rest.starts_with('+');
    if (plus || rest.starts_with('-')) {
      ++length;
    }
    bool point = false;
    bool digit = false;
    for (; length < rest.size(); ++length) {
      if (rest[length] == '.' && !point) {
        point = true;
      } else if (rest[length] >= '0' && rest[length] <= '9') {
        digit = true;
      } else {
        break;
      }
    }
    double value = 0;
    const auto [end, error] = std::from_chars(rest.data() + (plus ? 1 : 0), rest.data() + length,
                                              value, std::chars_format::fixed);
    if (!digit || (error == std::errc() && end != rest.data() + length)) {
      cursor_.Fail("number expected");
    }
    if (error != std::errc()) {
      cursor_.Fail("number out of range");
    }
    cursor_.Skip(length);
    return value;
  }

  double Bracketed() {
    if (++depth_ > kDeepest) {
      cursor_.Fail("expression nested deeper than " + std::to_string(kDeepest) + " levels");
    }
    cursor_.Expect('[', "a function's name");
    const double value = Terms(1);
    if (!cursor_.TakeIf(']')) {
      cursor_.Fail("operator or \"]\" expected");
    }
    --depth_;
    return value;
  }

  // Operators of the given precedence and above, from left to right.
  double Terms(int precedence) {
    double left = Value();
    for (;;) {
      const OperatorName* found = NextOperator();
      if (found == nullptr || found->precedence < precedence) {
        return left;
      }
      const GCodeCursor at = cursor_;
      cursor_.Skip(found->name.size());
      left = Apply(found->id, left, Terms(found->precedence + 1), at);
    }
  }

  const OperatorName* NextOperator() const {
    for (const OperatorName& candidate : kOperators) {
      if (cursor_.Rest().starts_with(candidate.name)) {
        return &candidate;
      }
    }
    return nullptr;
  }

  static double Apply(Operator id, double left, double right, const GCodeCursor& at) {
    switch (id) {
      case Operator::kPower:
        return Finite(std::pow(left, right), "power has no value", at);
      case Operator::kTimes:
        return Finite(left * right, "product too large", at);
      case Operator::kOver:
        if (right == 0) {
          at.Fail("division by zero");
        }
        return Finite(left / right, "quotient too large", at);
      case Operator::kModulo: {
        if (right == 0) {
          at.Fail("MOD by zero");
        }
        const double rest = std::fmod(left, right);
        return rest < 0 ? rest + std::abs(right) : rest;
      }
      case Operator::kPlus:
        return Finite(left + right, "sum too large", at);
      case Operator::kMinus:
        return Finite(left - right, "difference too large", at);
      case Operator::kEq:
        return std::abs(left - right) < kEqual ? 1 : 0;
      case Operator::kNe:
        return std::abs(left - right) < kEqual ? 0 : 1;
      case Operator::kGt:
        return left > right ? 1 : 0;
      case Operator::kGe:
        return left >= right ? 1 : 0;
      case Operator::kLt:
        return left < right ? 1 : 0;
      case Operator::kLe:
        return left <= right ? 1 : 0;
      case Operator::kAnd:
        return left != 0 && right != 0 ? 1 : 0;
      case Operator::kOr:
        return left != 0 || right != 0 ? 1 : 0;
      case Operator::kXor:
        return (left != 0) != (right != 0) ? 1 : 0;
    }
    at.Fail("unknown operator");
  }

  static double Finite(double value, const char* otherwise, const GCodeCursor& at) {
    if (!std::isfinite(value)) {
      at.Fail(otherwise);
    }
    return value;
  }

  double Variable() {
    const GCodeCursor at = cursor_;
    cursor_.Take();
    if (cursor_.Peek() == '<') {
      const std::string_view name = ReadGCodeName(cursor_);
      const std::optional<double> value = variables_.GetNamed(name);
      if (!value) {
        at.Fail("variable #<" + std::string(name) + "> has no value");
      }
      return *value;
    }
    const double value = variables_.Get(VariableNumber());
    if (std::isnan(value)) {
      at.Fail("the position on this axis is not known yet");
    }
    return value;
  }

 public:
  int VariableNumber() {
    const GCodeCursor at = cursor_;
    const double number = Nested();
    const double whole = std::round(number);
    if (std::abs(number - whole) > kInteger || whole < 1 || whole > GCodeVariables::kLast) {
      at.Fail("variable numbers are whole, from 1 to " + std::to_string(GCodeVariables::kLast));
    }
    return static_cast<int>(whole);
  }

 private:
  double Function() {
    const GCodeCursor at = cursor_;
    if (cursor_.TakeIf("atan")) {
      const double y = Bracketed();
      cursor_.Expect('/', "ATAN[...]");
      return AngleOf(y, Bracketed()) * (180.0 / std::numbers::pi);
    }
    if (cursor_.TakeIf("exists")) {
      return Exists();
    }
    if (cursor_.TakeIf("abs")) {
      return std::abs(Bracketed());
    }
    if (cursor_.TakeIf("acos")) {
      const double cosine = Limited(Bracketed(), "ACOS", at);
      return AngleOf(std::sqrt((1 - cosine) * (1 + cosine)), cosine) * (180.0 / std::numbers::pi);
    }
    if (cursor_.TakeIf("asin")) {
      const double sine = Limited(Bracketed(), "ASIN", at);
      return AngleOf(sine, std::sqrt((1 - sine) * (1 + sine))) * (180.0 / std::numbers::pi);
    }
    if (cursor_.TakeIf("cos")) {
      return SineCosineOfDegrees(Bracketed()).cosine;
    }
    if (cursor_.TakeIf("exp")) {
      return Finite(std::exp(Bracketed()), "EXP too large", at);
    }
    if (cursor_.TakeIf("fix")) {
      return std::floor(Bracketed());
    }
    if (cursor_.TakeIf("fup")) {
      return std::ceil(Bracketed());
    }
    if (cursor_.TakeIf("ln")) {
      const double value = Bracketed();
      if (!(value > 0)) {
        at.Fail("LN of a value that is not above zero");
      }
      return std::log(value);
    }
    if (cursor_.TakeIf("round")) {
      return std::round(Bracketed());
    }
    if (cursor_.TakeIf("sin")) {
      return SineCosineOfDegrees(Bracketed()).sine;
    }
    if (cursor_.TakeIf("sqrt")) {
      const double value = Bracketed();
      if (value < 0) {
        at.Fail("SQRT of a negative value");
      }
      return std::sqrt(value);
    }
    if (cursor_.TakeIf("tan")) {
      const SineCosine angle = SineCosineOfDegrees(Bracketed());
      if (angle.cosine == 0) {
        at.Fail("TAN has no value there");
      }
      return angle.sine / angle.cosine;
    }
    at.Fail("number, variable, function or \"[\" expected");
  }

  static double Limited(double value, const char* function, const GCodeCursor& at) {
    if (!(value >= -1 && value <= 1)) {
      at.Fail(std::string(function) + " of a value outside -1 to 1");
    }
    return value;
  }

  double Exists() {
    cursor_.Expect('[', "EXISTS");
    cursor_.Expect('#', "EXISTS[");
    bool exists = true;
    if (cursor_.Peek() == '<') {
      exists = variables_.GetNamed(ReadGCodeName(cursor_)).has_value();
    } else {
      VariableNumber();
    }
    cursor_.Expect(']', "the variable");
    return exists ? 1 : 0;
  }

  GCodeCursor& cursor_;
  const GCodeVariables& variables_;
  int depth_ = 0;
};

}  // namespace

double ReadGCodeValue(GCodeCursor& cursor, const GCodeVariables& variables) {
  return Evaluator(cursor, variables).Value();
}

int ReadGCodeVariableNumber(GCodeCursor& cursor, const GCodeVariables& variables) {
  return Evaluator(cursor, variables).VariableNumber();
}

std::string_view ReadGCodeName(GCodeCursor& cursor) {
  const std::size_t end = cursor.Rest().find('>');
  if (end == std::string_view::npos) {
    cursor.Fail("\">\" expected after the variable's name");
  }
  if (end == 1) {
    cursor.Fail("variable without a name");
  }
  const std::string_view name = cursor.Rest().substr(1, end - 1);
  cursor.Skip(end + 1);
  return name;
}

}  // namespace formats
