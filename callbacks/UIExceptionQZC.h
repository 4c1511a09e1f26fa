#pragma once

/// A user's stop or a fatal kernel error on its way out of a kernel that reports to the status bar.
/// Thrown by value, by UIDialogQZC only; carries nothing.
class UIExceptionQZC {};
