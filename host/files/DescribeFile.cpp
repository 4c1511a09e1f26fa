#include "host/files/DescribeFile.h"

#include <algorithm>

#include "formats/ErrorCapture.h"
#include "formats/FileError.h"
#include "formats/InterchangeFile.h"
#include "formats/OpenFile.h"
#include "formats/PathInfoFile.h"
#include "formats/curves/CurvesFile.h"
#include "formats/meshes/MeshFile.h"
#include "host/files/FileKind.h"

namespace host {

namespace {

using Json = nlohmann::ordered_json;

void AddSurface(const std::string& path, Json& description) {
  const formats::MeshFormat format = formats::MeshFormatOf(path);
  const formats::Mesh mesh = formats::ReadMesh(path);
  description["format"] = formats::NameOf(format);
  description.update(DescribeMesh(mesh));
  if (format != formats::MeshFormat::BinarySurface) return;
  const std::uint64_t used = 22 + 24 * mesh.vertices.size() + 13 * mesh.facets.size();
  description["trailing_bytes"] = formats::FileSize(path) - used;
}

void AddInterchange(const std::string& path, Json& description) {
  description["paths"] = Json::array();
  for (const formats::PathRecord& record : formats::ReadInterchangeFile(path)) {
    description["paths"].push_back(DescribePath(record));
  }
}

void AddErrorCapture(const std::string& path, Json& description) {
  description["entries"] = Json::array();
  for (const formats::CapturedMessage& entry : formats::ReadErrorCapture(path)) {
    description["entries"].push_back({{"fatal", entry.fatal}, {"text", entry.text}});
  }
}

void AddText(const std::string& path, Json& description) {
  const std::string text = formats::ReadWholeFile(path);
  description["lines"] = std::count(text.begin(), text.end(), '\n');
}

}  // namespace

Json DescribeFile(const std::string& path) {
  const FileKind kind = KindOf(path);
  Json description = {{"file", path}, {"kind", NameOf(kind)}, {"bytes", formats::FileSize(path)}};
  switch (kind) {
    case FileKind::kSurface:
      AddSurface(path, description);
      break;
    case FileKind::kCurves:
      description.update(DescribeCurves(formats::ReadCurves(path)));
      break;
    case FileKind::kInterchange:
      AddInterchange(path, description);
      break;
    case FileKind::kPath:
      description["paths"] = Json::array({DescribePath(formats::ReadPathInfoFile(path))});
      break;
    case FileKind::kErrorCapture:
      AddErrorCapture(path, description);
      break;
    case FileKind::kInterchangeText:
      AddText(path, description);
      break;
    case FileKind::kOther:
      break;
  }
  return description;
}

}  // namespace host
