#pragma once

#include <array>
#include <filesystem>
#include <map>
#include <memory>
#include <new>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "faults/Injection.h"
#include "faults/Model.h"
#include "faults/Probe.h"
#include "faults/World.h"
#include "support/JobTest.h"
#include "support/ScriptedKernel.h"

namespace faults {

/// A job for one of the exports, with all that it can use, in a directory of its own. It can be run
/// more than once; each time the host writes its inputs anew.
class Trial : public support::JobTest {
 public:
  Trial();
  ~Trial() override = default;

  /// Has the host write its inputs where they are not in `now`, the world as it is, and put the box
  /// back; returns the world with them.
  World PutInputs(World now);

  /// Calls the export. The kernel reports in those of its calls that are named by number.
  void Run(const Injection& injection, const std::vector<int>& reportingCalls);

  virtual std::unique_ptr<Model> ModelFor(const World& before, const Injection& injection,
                                          const Counted& counted) const = 0;

  /// What the host finds now.
  World Now() const;

  const Counted& Calls() const { return m_probe.Calls(); }
  /// The kernel's calls in the run before.
  const std::vector<std::string>& KernelCalls() const { return m_kernel->CallNames(); }

  /// Back to where the process was, for the next run; and gives back memory that was lost.
  void GoHome();

 protected:
  /// Makes the arguments and calls the export with them, through CallWith.
  virtual void Export() = 0;

  /// Calls the export, and counts while it runs. `flag` is what it answers with.
  template <class Flag, class Export>
  void CallWith(const Flag* flag, Export callExport) {
    m_probe.Begin(m_injection);
    try {
      callExport();
    } catch (const std::runtime_error&) {
      m_thrown = World::Thrown::kForeign;
    } catch (const std::bad_alloc&) {
      m_thrown = World::Thrown::kNoMemory;
    }
    m_probe.End();
    m_flag = static_cast<int>(*flag);
  }

  /// The inputs, whole, by their names.
  virtual std::map<std::string, std::string> Inputs() const = 0;
  virtual std::array<double, 6> Box() const { return {}; }
  /// What the kernel has done up to one of its calls.
  virtual void Work(const std::string& /*kernelCall*/) {}

  std::string Named(const std::string& file) const { return WorkDir().GetString() + file; }
  void Put(const std::string& file, const std::string& bytes);

  std::array<double, 6> m_box{};

 private:
  void MakeKernel(const std::vector<int>& reportingCalls);
  void TestBody() override {}

  std::optional<support::ScriptedKernel> m_kernel;
  Probe m_probe;
  Injection m_injection;
  int m_flag = 0;
  World::Thrown m_thrown = World::Thrown::kNothing;
  std::filesystem::path m_firstDirectory;
};

}  // namespace faults
