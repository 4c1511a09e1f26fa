#pragma once

#include "curves/Segment.h"

class SegmentLists;

/// Puts `count` segments, in their order, into `lists`. A list takes a segment at its head when the
/// segment ends where the list starts, else at its tail when the segment starts where the list
/// ends; of the lists that take it the one with the lowest number gets it, and one that no list
/// takes begins a new list. Lists are never joined. Point numbers are 1 to kMostPoints.
///
/// The list is found by the point, not by asking one after the other: n segments take n log n steps
/// at worst. False, and nothing changed, when there is no memory.
bool GroupSegments(const Segment* segments, int count, SegmentLists* lists);
