#include "faults/Trial.h"

#include "callbacks/ProgressState.h"
#include "callbacks/RunFlags.h"
#include "callbacks/UIDialog.h"
#include "faults/Answer.h"
#include "faults/Reports.h"
#include "support/NothrowBlocks.h"

namespace faults {

Trial::Trial() : m_probe(host), m_firstDirectory(std::filesystem::current_path()) {
  ResetAbortState();
  CurrentProgress() = {};
  KeepCopiesApart();
  host.temporaryDirectory = WorkDir().GetString();
}

void Trial::Put(const std::string& file, const std::string& bytes) {
  support::WriteWholeFile(InJob(file), bytes);
}

World Trial::PutInputs(World now) {
  for (const auto& [name, bytes] : Inputs()) {
    std::string& there = now.files["job\\" + name];
    if (there != bytes) Put(name, bytes);
    there = bytes;
  }
  m_box = Box();
  now.box = m_box;
  return now;
}

void Trial::MakeKernel(const std::vector<int>& reportingCalls) {
  m_kernel.reset();
  m_kernel.emplace();
  m_kernel->result = Answer();
  m_kernel->outline = support::Square(8);
  for (const int number : reportingCalls) {
    m_kernel->AtCall(number, [this](UIDialog& dialog) {
      const std::string& call = m_kernel->CallNames().back();
      Work(call);
      for (const Report report : ReportsIn(call)) {
        if (host.faults.Enter(kCallback)) {
          dialog.ErrorMessage(kFatalText, true);
        } else {
          Send(report, dialog);
        }
      }
    });
  }
}

void Trial::Run(const Injection& injection, const std::vector<int>& reportingCalls) {
  MakeKernel(reportingCalls);
  host.events.Clear();
  m_thrown = World::Thrown::kNothing;
  m_injection = injection;
  Export();
}

World Trial::Now() const {
  World world;
  world.flag = m_flag;
  world.thrown = m_thrown;
  for (const auto& [name, bytes] : support::FilesIn(InJob(""))) world.files["job\\" + name] = bytes;
  for (const auto& [name, bytes] : support::FilesIn(InKeep(""))) {
    world.files["keep\\" + name] = bytes;
  }
  world.streams = host.OpenStreams();
  world.blocks = support::LivingBlocks();
  world.isAtHome = IsAtHome();
  world.box = m_box;
  world.kernels = m_kernel ? m_kernel->LivingObjects() : 0;
  return world;
}

void Trial::GoHome() {
  std::filesystem::current_path(m_firstDirectory);
  support::TakeLostBlocks();
}

}  // namespace faults
