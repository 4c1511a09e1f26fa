#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "support/CurveFile.h"
#include "support/JobFiles.h"

class UIDialog;

namespace support {

/// The geometry kernel of a unit test. One lives at a time; the kernel classes of the test program
/// do what it says and write every call into the living TestHost's sequence:
///
///     IFSweep()   OpenStockChannel   stock.Reset   stock.AddVertex 1   stock.AddTriangle 1
///     stock.Close   SetFiveAxisBufferingLevel 0   Run PATHFILE   Run ends   ~IFSweep()
///     OpenCompareSurfaceChannel   part.Reset and so on   stock.Reset and so on
///     Compare part stock   Compare ends
///     IFHeal()   heal.Run INPUT OUTPUT   heal.Run ends   ~IFHeal()
///     IFSilhouette()   silhouette.Run INPUT OUTPUT   silhouette.Run ends   ~IFSilhouette()
///     IFSpinsil()   OpenInputChannel   input.Reset and so on   spinsil.Run   spinsil.Run ends
///     IFSphoffset() and ~IFSphoffset() likewise
///
/// Every call but the destructors is numbered from 1, and a script can be run inside any of them
/// (after it was noted, before it does anything). What `Run` and `Compare` play into the output
/// channel is numbered as well: output.Reset, output.AddVertex N, output.AddTriangle N,
/// output.Close, Run ends; for curves output.Reset, output.BeginGroup, output.AddPoint N,
/// output.AddSegment N, output.EndGroup, output.Close. Of the channels for a comparison the first
/// opened is the part's. Heal and silhouette read and write no file by themselves; a script may.
class ScriptedKernel {
 public:
  ScriptedKernel();
  ~ScriptedKernel();
  ScriptedKernel(const ScriptedKernel&) = delete;
  ScriptedKernel& operator=(const ScriptedKernel&) = delete;

  using Script = std::function<void(UIDialog&)>;

  /// Runs the script inside the `k`-th kernel call.
  void AtCall(int k, Script script) { m_atNumber[k] = std::move(script); }
  /// Runs the script inside every call of that name, e.g. "Run" or "stock.AddVertex".
  void At(const std::string& call, Script script) { m_atName[call] = std::move(script); }

  /// Runs inside every destructor of a kernel class; the callbacks may be gone by then.
  void AtDestruction(std::function<void()> action) { m_atDestruction = std::move(action); }

  /// What Run, Compare and an offset play into the output channel, and what a spun silhouette does.
  Surface result;
  Outline outline;
  /// Whether they end the output with Close.
  bool closesOutput = true;
  /// From this vertex, or triangle, on (from 1) the input channels return null; 0: never.
  int vertexHandlesFailFrom = 0;
  int triangleHandlesFailFrom = 0;

  /// The tolerance that the last heal was run with.
  double healTolerance = 0.0;

  /// The distance that the last silhouette, spun silhouette or offset was run with, and the
  /// offset's other value.
  double distance = 0.0;
  double unscaledValue = 0.0;
  /// What the Close of the last spun silhouette's channel returned.
  int curvesClosed = -1;

  /// What the input channel of a spun silhouette or an offset received since its last Reset.
  Surface input;
  /// What the stock channel received since its last Reset, numbers one-based.
  Surface stock;
  /// The same of the part's channel.
  Surface part;
  /// What the last comparison was given besides its channels.
  Bands bands;

  int Calls() const { return static_cast<int>(m_calls.size()); }
  /// The names of the numbered calls, in order.
  const std::vector<std::string>& CallNames() const { return m_calls; }
  /// Kernel objects that were made and not destroyed.
  int LivingObjects() const { return m_livingObjects; }

  // For the kernel classes.
  void Enter(const std::string& call, const std::string& detail, UIDialog& callbacks);
  void Made() { ++m_livingObjects; }
  void Destroyed(const std::string& destructor);

  /// Scripts: a fatal error, a warning, a progress run, an exception that is not the kernel's.
  static Script Fatal(const std::string& message);
  static Script Warning(const std::string& message);
  static Script Progress(const std::string& message, int total);
  static Script Foreign();

 private:
  std::map<int, Script> m_atNumber;
  std::map<std::string, Script> m_atName;
  std::function<void()> m_atDestruction;
  std::vector<std::string> m_calls;
  int m_livingObjects = 0;
};

/// The living kernel; a test without one must not reach the kernel.
ScriptedKernel& CurrentScriptedKernel();

}  // namespace support
