#pragma once

#include <memory>

#include "curves/SegIpb.h"

/// Lists of segments, each the continuation of the one before it. Lists and records are numbered
/// from 0 in the order made; a list is never empty and never goes. Everything lies in three arrays,
/// so that a million short lists cost no more than one long one.
class SegmentLists {
 public:
  static constexpr int kNone = -1;

  /// Room for `records` more, each perhaps in a list of its own. False, and nothing changed, when
  /// there is no memory.
  bool Reserve(int records);

  int Count() const { return m_listCount; }
  const SegIpb& Head(int list) const { return At(Of(list).head); }
  const SegIpb& Tail(int list) const { return At(Of(list).tail); }

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
    for (int record = Of(list).head; record != kNone; record = Next(record)) {
      if (!action(At(record))) return false;
    }
    return true;
  }

 private:
  struct List {
    int head;
    int tail;
  };

  SegIpb& At(int record) const { return m_records.get()[record]; }
  int& Next(int record) const { return m_next.get()[record]; }
  List& Of(int list) const { return m_lists.get()[list]; }
  int NewRecord(const SegIpb& record, int next);

  // The links apart from the records: at a tail nothing but the link is touched.
  std::unique_ptr<SegIpb[]> m_records;
  std::unique_ptr<int[]> m_next;
  std::unique_ptr<List[]> m_lists;
  int m_recordCount = 0;
  int m_listCount = 0;
};
