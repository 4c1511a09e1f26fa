#pragma once

#include <cstddef>

namespace support {

/// Memory that the code under test asks for with operator new(std::nothrow): it is prepared to get
/// none (FaultPlan, "new"), and must give back what it got. A TestHost counts such blocks from its
/// beginning to its end, and there must be none left then. Where a block is left behind on purpose,
/// the test takes it first. No leak checker is needed for that, and none would see these blocks.

/// The blocks that are in use now.
std::size_t LivingBlocks();

/// Gives back all that are in use now, for code that has lost them; returns how many there were.
std::size_t TakeLostBlocks();

/// For TestHost. The end returns how many are still in use and leaves them to their owners.
void BeginBlockCount();
std::size_t EndBlockCount();

}  // namespace support
