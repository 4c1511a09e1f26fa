#include "host/files/FileKind.h"

#include <charconv>
#include <string_view>

#include "formats/FileError.h"
#include "formats/OpenFile.h"
#include "formats/PathInfoFile.h"
#include "formats/curves/CurvesFile.h"
#include "formats/meshes/MeshFile.h"

namespace host {

namespace {

std::string Head(const std::string& path) {
  std::ifstream stream = formats::OpenForReading(path);
  std::string bytes(200, '\0');
  stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  bytes.resize(static_cast<size_t>(stream.gcount()));
  return bytes;
}

bool BeginsWithCapturedMessage(std::string_view head) {
  while (head.starts_with('\r') || head.starts_with('\n')) head.remove_prefix(1);
  return head.starts_with("Error Message Received:") ||
         head.starts_with("Warning Message Received:");
}

// The first line's comment; the delimiter ahead of it could be anything.
bool BeginsLikeInterchangeText(std::string_view head) {
  return head.substr(0, head.find('\n')).find(" //16 chars delimiter") != std::string_view::npos;
}

std::optional<FileKind> KindByName(const std::string& name) {
  if (PathNumber(name)) return FileKind::kPath;
  if (name.ends_with("BinaryPaths.tmp")) return FileKind::kInterchange;
  if (name.ends_with("BinaryPaths.txt")) return FileKind::kInterchangeText;
  if (name.ends_with("ErrorCapture.txt")) return FileKind::kErrorCapture;
  if (name == "TmpCompareInfo.tmp") return FileKind::kOther;
  if (name.ends_with(".curves")) return FileKind::kCurves;
  if (name == "StockModelInput.tmp" || name == "StockModelOutput.tmp") return FileKind::kSurface;
  const auto format = formats::FormatByExtension(name);
  if (format && !name.ends_with(".tmp") && !name.ends_with(".TMP")) return FileKind::kSurface;
  return std::nullopt;
}

bool ReadsAsPathFile(const std::string& path) {
  try {
    formats::ReadPathInfoFile(path);
    return true;
  } catch (const formats::FileError&) {
    return false;
  }
}

}  // namespace

const char* NameOf(FileKind kind) {
  switch (kind) {
    case FileKind::kSurface:
      return "surface";
    case FileKind::kCurves:
      return "curves";
    case FileKind::kInterchange:
      return "toolpath interchange file";
    case FileKind::kInterchangeText:
      return "text of the interchange file";
    case FileKind::kPath:
      return "per-path file";
    case FileKind::kErrorCapture:
      return "error capture file";
    case FileKind::kOther:
      break;
  }
  return "other file";
}

FileKind KindOf(const std::string& path) {
  const std::string head = Head(path);
  const std::string name = FileName(path);
  // A per-path file has no mark of its own, so its name is asked before its bytes.
  if (PathNumber(name)) return FileKind::kPath;
  if (head.starts_with("binary toolpaths")) {
    return BeginsLikeInterchangeText(head) ? FileKind::kInterchangeText : FileKind::kInterchange;
  }
  if (BeginsWithCapturedMessage(head)) return FileKind::kErrorCapture;
  if (BeginsLikeInterchangeText(head)) return FileKind::kInterchangeText;
  if (formats::CurvesVariantByContent(path)) return FileKind::kCurves;
  if (formats::FormatByContent(path)) return FileKind::kSurface;
  if (const auto kind = KindByName(name)) return *kind;
  return ReadsAsPathFile(path) ? FileKind::kPath : FileKind::kOther;
}

std::optional<int> PathNumber(const std::string& name) {
  constexpr std::string_view kFront = "TmpPathInfo";
  constexpr std::string_view kBack = ".tmp";
  if (!name.starts_with(kFront) || !name.ends_with(kBack)) return std::nullopt;
  if (name.size() <= kFront.size() + kBack.size()) return std::nullopt;
  const char* end = name.data() + name.size() - kBack.size();
  int number = 0;
  const auto [stop, error] = std::from_chars(name.data() + kFront.size(), end, number);
  // Written back and compared: a number in another spelling ("007") names no path.
  const bool whole = stop == end && error == std::errc() && number >= 0;
  if (!whole || std::to_string(number) != std::string(name.data() + kFront.size(), end)) {
    return std::nullopt;
  }
  return number;
}

std::string FileName(const std::string& path) {
  return path.substr(path.find_last_of("/\\") + 1);  // npos + 1 is 0: the whole path
}

}  // namespace host
