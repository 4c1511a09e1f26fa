#pragma once

// Numbers of the status message table (addin/status_messages.h) for the kernel's texts, by their
// first three letters.

/// For the current progress text: 2 to 10, and 1 for an unknown one. A "Pos" text whose character
/// 22 is '2' also sets the post-phase flag.
short ClassifyProgressMessage();

/// For a wait's text: 22 to 24, and 21 for an unknown one.
short ClassifyWaitMessage(const char* message);
