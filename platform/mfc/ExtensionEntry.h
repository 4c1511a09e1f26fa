#pragma once

// MFC supplies a raw entry hook here, which runs before an extension library's own entry routine.
// Without MFC there is nothing to prepare.
