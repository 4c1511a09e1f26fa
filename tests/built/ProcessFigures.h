#pragma once

#include <cstddef>

/// What this process holds of the system's at the moment.
struct ProcessFigures {
  std::size_t memory;   // bytes in use of all heaps; 0 where a sanitizer counts them itself
  std::size_t handles;  // descriptors, on systems that call them so
  std::size_t threads;
};

ProcessFigures FiguresOfThisProcess();

/// What all its threads have had so far.
double ProcessorSeconds();
