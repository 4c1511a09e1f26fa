#include "stock/LoadBinarySurface.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <new>

#include "blocks/BlockReader.h"
#include "platform/QZCore.h"
#include "stock/SurfaceTransfer.h"

namespace {

constexpr char kSourceUnit[] = "QZTUTLA2";
constexpr std::size_t kHeaderSize = 14;
constexpr long long kVerticesOffset = 22;
constexpr std::size_t kVertexSize = 24;
constexpr std::size_t kTriangleSize = 13;

struct Counts {
  std::int32_t vertices = 0;
  std::int32_t triangles = 0;
};

struct Triangle {
  std::uint32_t a, b, c;  // zero-based
  char colour;
};

struct Selection {
  short mode;
  short colourCount;
  const unsigned char* colours;

  bool All() const { return mode == 0; }
  bool ByColour() const { return mode == 1; }
};

bool ReadCounts(BlockReader* in, Counts* counts) {
  char header[kHeaderSize];
  return in->Read(header, sizeof header) && in->Read(&counts->vertices) &&
         in->Read(&counts->triangles) && counts->triangles >= 1 && counts->vertices >= 1;
}

// Null when there is no memory; the size is clamped so that a count no memory can serve fails here
// and not in a wrapped multiplication.
void** NewHandles(std::int32_t count) {
  constexpr std::size_t kMost = std::numeric_limits<std::size_t>::max() / sizeof(void*);
  const std::size_t wanted = static_cast<std::size_t>(count);
  const std::size_t size =
      wanted > kMost ? std::numeric_limits<std::size_t>::max() : wanted * sizeof(void*);
  return static_cast<void**>(::operator new(size, std::nothrow));
}

// Number 0 and negative ones wrap to numbers that no vertex has.
std::uint32_t ZeroBased(const unsigned char* number) {
  std::uint32_t value = 0;
  std::memcpy(&value, number, sizeof value);
  return value - 1;
}

Triangle Decode(const unsigned char* record) {
  return {ZeroBased(record), ZeroBased(record + 4), ZeroBased(record + 8),
          static_cast<char>(record[12])};
}

bool Exists(const Triangle& triangle, const Counts& counts) {
  const auto vertices = static_cast<std::uint32_t>(counts.vertices);
  return triangle.a < vertices && triangle.b < vertices && triangle.c < vertices;
}

// Calls action(triangle) for each triangle of the section; false at the first that is missing or
// that the action refuses.
template <class Action>
bool ForEachTriangle(BlockReader* in, const Counts& counts, Action action) {
  auto left = static_cast<std::size_t>(counts.triangles);
  while (left > 0) {
    const BlockReader::Records records = in->ReadRecords(kTriangleSize, left);
    if (records.count == 0) return false;
    for (std::size_t i = 0; i < records.count; ++i) {
      if (!action(Decode(records.bytes + i * kTriangleSize))) return false;
    }
    left -= records.count;
  }
  return true;
}

// A handle that is not null marks a vertex as used by some triangle, whatever its colour.
bool MarkUsedVertices(BlockReader* in, const Counts& counts, void** handles) {
  const long long end = kVerticesOffset + static_cast<long long>(kVertexSize) * counts.vertices;
  // The last vertex is asked for first: a count that the file does not live up to must not make
  // this touch the whole array.
  double last[3];
  if (!in->Seek(end - static_cast<long long>(kVertexSize)) || !in->Read(&last)) return false;
  for (std::int32_t i = 0; i < counts.vertices; ++i) handles[i] = nullptr;
  static char used;
  return ForEachTriangle(in, counts,
                         [&](const Triangle& triangle) {
                           if (!Exists(triangle, counts)) return false;
                           handles[triangle.a] = &used;
                           handles[triangle.b] = &used;
                           handles[triangle.c] = &used;
                           return true;
                         }) &&
         in->Seek(kVerticesOffset);
}

bool PlayVertices(BlockReader* in, const Counts& counts, const Selection& selection,
                  SurfaceTransfer* channel, void** handles) {
  auto left = static_cast<std::size_t>(counts.vertices);
  void** handle = handles;
  while (left > 0) {
    const BlockReader::Records records = in->ReadRecords(kVertexSize, left);
    if (records.count == 0) return false;
    for (std::size_t i = 0; i < records.count; ++i, ++handle) {
      double xyz[3];
      std::memcpy(xyz, records.bytes + i * kVertexSize, sizeof xyz);
      if (selection.All() || (selection.ByColour() && *handle != nullptr)) {
        *handle = channel->AddVertex(xyz);
      }
    }
    left -= records.count;
  }
  return true;
}

// A handle may be null: what becomes of a vertex for which it had no memory is the channel's
// affair.
void PlayOne(const Triangle& triangle, SurfaceTransfer* channel, void** handles) {
  channel->AddTriangle(handles[triangle.a], handles[triangle.b], handles[triangle.c],
                       triangle.colour);
}

// Once for every entry that matches: a colour listed twice passes the triangle twice.
void PlayMatching(const Triangle& triangle, const Selection& selection, SurfaceTransfer* channel,
                  void** handles) {
  for (short i = 0; i < selection.colourCount; ++i) {
    if (selection.colours[i] != static_cast<unsigned char>(triangle.colour)) continue;
    PlayOne(triangle, channel, handles);
  }
}

bool PlayTriangles(BlockReader* in, const Counts& counts, const Selection& selection,
                   SurfaceTransfer* channel, void** handles) {
  return ForEachTriangle(in, counts, [&](const Triangle& triangle) {
    if (!selection.All() && !selection.ByColour()) return true;
    if (!Exists(triangle, counts)) return false;
    if (selection.ByColour()) {
      PlayMatching(triangle, selection, channel, handles);
    } else {
      PlayOne(triangle, channel, handles);
    }
    return true;
  });
}

bool Play(FILE* stream, const Selection& selection, SurfaceTransfer* channel, void*** handles) {
  BlockReader in(stream);
  Counts counts;
  if (!ReadCounts(&in, &counts)) return false;
  *handles = NewHandles(counts.vertices);
  if (*handles == nullptr) return false;
  channel->Reset();
  if (selection.ByColour() && !MarkUsedVertices(&in, counts, *handles)) return false;
  if (!PlayVertices(&in, counts, selection, channel, *handles)) return false;
  if (!PlayTriangles(&in, counts, selection, channel, *handles)) return false;
  channel->Close();
  return true;
}

}  // namespace

bool LoadBinarySurface(const char* fileName, SurfaceTransfer* channel, short mode,
                       unsigned short colourCount, const unsigned char* colours) {
  FILE* stream = m_fopen(kSourceUnit, __LINE__, fileName, "rb");
  if (stream == nullptr) return false;
  // No owners for stream and handles, on purpose: when the channel throws, both stay as they are.
  // The kernel may still be unwinding with handles in hand, and the host reports the stream under
  // this unit's name.
  void** handles = nullptr;
  const Selection selection{mode, static_cast<short>(colourCount), colours};
  const bool played = Play(stream, selection, channel, &handles);
  ::operator delete(static_cast<void*>(handles));
  m_fclose(kSourceUnit, __LINE__, stream);
  return played;
}
