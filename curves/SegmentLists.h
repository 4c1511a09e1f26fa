#pragma once

#include <memory>

#include "curves/SegIpb.h"

/// Lists of segments, each the continuation of the one before it. Lists and records are numbered
/// from 0 in the order made; a list is never empty and never goes. Everything lies in two arrays,
/// so that a million short lists cost no more than one long one.
class SegmentLists {
 public:
  static constexpr int kNone = -1;

  /// Room for `records` more, each perhaps in a list of its own. False, and nothing changed, when
  /// there is no memory.
  bool Reserve(int records);

  int Count() const { return m_listCount; }
  const SegIpb& Head(int list) const { return At(Of(list).head).record; }
  const SegIpb& Tail(int list) const { return At(Of(list).tail).record; }

  /// These three take from the room that was reserved.
  void AddHead(int list, const SegIpb& record);
  void AddTail(int list, const SegIpb& record);
  /// A new list, the last one, of this record alone.
  void AddList(const SegIpb& record);

  /// Clears the open flags of the list's head and tail.
  void CloseOff(int list);

  /// Calls action(record) head to tail until it returns false; whether it never did.
  template <class Action>
  bool ForEach(int list, Action action) const {
    for (int node = Of(list).head; node != kNone; node = At(node).next) {
      if (!action(At(node).record)) return false;
    }
    return true;
  }

 private:
  struct Node {
    SegIpb record;
    int next;
  };
  struct List {
    int head;
    int tail;
  };

  Node& At(int node) const { return m_nodes.get()[node]; }
  List& Of(int list) const { return m_lists.get()[list]; }
  int NewNode(const SegIpb& record, int next);

  std::unique_ptr<Node[]> m_nodes;
  std::unique_ptr<List[]> m_lists;
  int m_nodeCount = 0;
  int m_listCount = 0;
};
