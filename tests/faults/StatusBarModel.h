#pragma once

#include "faults/Model.h"

namespace faults {

/// What the operations have in common whose kernels report to the status bar.
class StatusBarModel : public Model {
 public:
  using Model::Model;

 protected:
  void Receive(Report report) override;
  void RecordFatal(const std::string& /*message*/) override {}
};

}  // namespace faults
