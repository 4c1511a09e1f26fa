// The heal. Its kernel writes the output itself.

#include "addin/exports.h"
#include "faults/StatusBarModel.h"
#include "faults/Trials.h"

namespace faults {
namespace {

constexpr const char* kHalf = "half of the healed surface";
constexpr const char* kWhole = "the healed surface";

class HealModel : public StatusBarModel {
 public:
  using StatusBarModel::StatusBarModel;

 protected:
  void Act() override {
    now.flag = 0;
    try {
      // Without memory for a kernel nothing is done, and that is a success.
      if (Memory()) Heal();
      now.flag = 1;
    } catch (const Stop&) {
    }
  }

 private:
  void Heal() {
    Kernel("IFHeal()");
    now.files["job\\out.iff"] = kHalf;
    Kernel("heal.Run");
    now.files["job\\out.iff"] = kWhole;
    Kernel("heal.Run ends");
  }
};

class HealTrial : public Trial {
 public:
  HealTrial() { Put("out.iff", "what an earlier job left"); }

  std::unique_ptr<Model> ModelFor(const World& before, const Injection& injection,
                                  const Counted& counted) const override {
    return std::make_unique<HealModel>(before, injection, counted);
  }

 protected:
  std::map<std::string, std::string> Inputs() const override {
    return {{"in.iff", support::BinarySurfaceBytes(support::Cube(4, 7))}};
  }

  void Work(const std::string& kernelCall) override {
    if (kernelCall == "heal.Run") Put("out.iff", kHalf);
    if (kernelCall == "heal.Run ends") Put("out.iff", kWhole);
  }

  void Export() override {
    bool succeeded = true;
    std::string input = Named("in.iff");
    std::string output = Named("out.iff");
    CallWith(&succeeded, [&] { qztutl_heal(0.01, input.data(), output.data(), &succeeded); });
  }
};

}  // namespace

std::unique_ptr<Trial> MakeHealTrial() { return std::make_unique<HealTrial>(); }

}  // namespace faults
