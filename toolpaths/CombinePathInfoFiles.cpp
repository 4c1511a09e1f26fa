#include "toolpaths/CombinePathInfoFiles.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>

#include "blocks/BlockReader.h"
#include "blocks/BlockWriter.h"
#include "platform/QZCore.h"
#include "toolpaths/CopyCustomTool.h"
#include "toolpaths/InterchangeHead.h"
#include "toolpaths/TrackedFile.h"

namespace {

constexpr std::size_t kToleranceSize = sizeof(double);
constexpr std::size_t kMatrixSize = 9 * sizeof(double);
constexpr std::size_t kOriginSize = 3 * sizeof(double);
constexpr std::size_t kConvexToolSize = 6 * sizeof(double);
constexpr std::size_t kUndercutToolSize = 2 + 14 * sizeof(double);

CString PathInfoName(int number) {
  CString name;
  name.Format("TmpPathInfo%d.tmp", number);
  return name;
}

int CountPathInfoFiles(const CString& directory) {
  int count = 0;
  while (file_exists((directory + PathInfoName(count)).GetString(), 0) != 0) ++count;
  return count;
}

template <std::size_t kSize>
bool CopyBytes(BlockReader* in, BlockWriter* out) {
  unsigned char bytes[kSize];
  return in->Read(&bytes) && out->Write(bytes, kSize);
}

// Reads a field of type Narrow and writes it as a 32-bit one.
template <class Narrow>
bool CopyWidened(BlockReader* in, BlockWriter* out, std::int32_t* value) {
  Narrow narrow = 0;
  if (!in->Read(&narrow)) return false;
  *value = narrow;
  return out->Write(*value);
}

// Sweep, path and compression tolerance, each a field of its own.
bool CopyTolerances(BlockReader* in, BlockWriter* out) {
  for (int i = 0; i < 3; ++i) {
    if (!CopyBytes<kToleranceSize>(in, out)) return false;
  }
  return true;
}

bool CopyToolBlock(std::int32_t toolType, BlockReader* in, BlockWriter* out) {
  switch (toolType) {
    case 1:
      return CopyBytes<kConvexToolSize>(in, out);
    case 2: {
      // Read and not written, on purpose: readers of the combined file rely on the number of cuts
      // following the tool type at once.
      unsigned char undercutTool[kUndercutToolSize];
      return in->Read(&undercutTool);
    }
    case 3:
      return CopyCustomTool(in, out);
    default:
      return false;
  }
}

// Copies position records until the input ends. A last record of which only some doubles are there
// counts: it is completed from the record in front of it, from zeros when it is the first.
bool CopyPositions(std::size_t doubles, BlockReader* in, BlockWriter* out, std::uint32_t* count) {
  const std::size_t size = doubles * sizeof(double);
  unsigned char last[6 * sizeof(double)] = {};
  for (;;) {
    const BlockReader::Records records =
        in->ReadRecords(size, std::numeric_limits<std::size_t>::max());
    if (records.count == 0) break;
    if (!out->Write(records.bytes, records.count * size)) return false;
    *count += static_cast<std::uint32_t>(records.count);
    std::memcpy(last, records.bytes + (records.count - 1) * size, size);
  }
  const BlockReader::Records rest = in->ReadRecords(sizeof(double), doubles - 1);
  if (rest.count == 0) return true;
  std::memcpy(last, rest.bytes, rest.count * sizeof(double));
  ++*count;
  return out->Write(last, size);
}

// Afterwards the stream stands where it stood before. The way back is remembered rather than asked
// for with fseek, which some libraries refuse in files beyond 2 or 4 GiB.
bool WriteCountAt(std::fpos_t place, std::uint32_t count, FILE* stream) {
  std::fpos_t end;
  return std::fgetpos(stream, &end) == 0 && std::fsetpos(stream, &place) == 0 &&
         std::fwrite(&count, 1, sizeof count, stream) == sizeof count &&
         std::fsetpos(stream, &end) == 0;
}

// Always one cut. Its number of positions is known only at the end of the input; until then a 0
// stands in its place, which is what a failure on the way leaves on disk.
bool CopyCut(std::int32_t pathType, TrackedFile* input, BlockReader* in, FILE* output,
             BlockWriter* out) {
  std::fpos_t countPlace;
  if (!out->Write(std::uint32_t{1}) || !out->Flush()) return false;
  if (std::fgetpos(output, &countPlace) != 0 || !out->Write(std::uint32_t{0})) return false;
  std::uint32_t count = 0;
  if (!CopyPositions(pathType == 1 ? 3 : 6, in, out, &count)) return false;
  input->Close();
  return out->Flush() && WriteCountAt(countPlace, count, output);
}

bool AppendPath(const CString& directory, int number, FILE* output, BlockWriter* out) {
  TrackedFile input(directory.GetString(), PathInfoName(number).GetString(), "rb");
  if (!input.IsOpen()) return false;
  BlockReader in(input.Stream());
  std::int32_t pathType = 0;
  std::int32_t colour = 0;
  std::int32_t toolType = 0;
  return CopyWidened<std::int16_t>(&in, out, &pathType) &&
         CopyWidened<std::uint8_t>(&in, out, &colour) && CopyTolerances(&in, out) &&
         CopyBytes<kMatrixSize>(&in, out) && CopyBytes<kOriginSize>(&in, out) &&
         CopyWidened<std::int16_t>(&in, out, &toolType) && CopyToolBlock(toolType, &in, out) &&
         CopyCut(pathType, &input, &in, output, out);
}

}  // namespace

bool CombinePathInfoFiles(CString workingDirectory) {
  const CString path = workingDirectory + "BinaryPaths.tmp";
  TrackedFile output(workingDirectory.GetString(), path.GetString(), "wb");
  if (!output.IsOpen()) return false;
  BlockWriter out(output.Stream());
  if (!WriteInterchangeHead(&out)) return false;
  const int count = CountPathInfoFiles(workingDirectory);
  if (!out.Write(std::int32_t{count})) return false;
  for (int number = 0; number < count; ++number) {
    if (!AppendPath(workingDirectory, number, output.Stream(), &out)) return false;
  }
  return out.Flush();
}
