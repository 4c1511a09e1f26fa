#include "addin/exports.h"
#include "platform/QZCore.h"

namespace {

struct AddinFlags {
  bool loaded = false;
  bool second = false;  // the protocol has it, this add-in never sets it
};

void SetAddinFlags(AddinFlags& flags) { flags.loaded = true; }

}  // namespace

int m_version() { return 1500; }

int m_main() {
  AddinFlags flags;
  SetAddinFlags(flags);
  post_args[0][0] = flags.loaded ? 1 : 0;
  post_args[0][1] = flags.second ? 1 : 0;
  return flags.loaded ? 0 : 1;
}
