#pragma once

/// A user's stop or a fatal kernel error on its way out of an IFSweep call. Thrown by value, by
/// UIDlgKernel only; carries nothing.
class UIExceptionKernel {};
