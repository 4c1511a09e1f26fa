#include "faults/StatusBarModel.h"

namespace faults {

void StatusBarModel::Receive(Report report) {
  switch (report) {
    case Report::kCreateWait:
    case Report::kUpdateWait:
      // There are no texts for them.
      Call("clearprompt");
      Call("cleartext");
      return;
    case Report::kNewStep:
      Call("UpdateStatusBarText");
      if (Asked("KeyPress")) throw Stop{true};
      Call("UpdateStatusBarText");
      return;
    case Report::kSameStep:
      Call("UpdateStatusBarText");
      return;
    default:
      return;
  }
}

}  // namespace faults
