#include "host/qzhost/CurvesTarget.h"

#include <fstream>

#include "formats/FileError.h"
#include "formats/OpenFile.h"
#include "formats/curves/CurvesFile.h"
#include "formats/meshes/MeshFile.h"
#include "host/files/ConvertCurves.h"
#include "host/qzhost/CommandError.h"

namespace host {

namespace {

// The host gives its scratch files the extension .tmp whatever they hold.
void RefuseMeshExtension(const std::string& path) {
  const auto format = formats::FormatByExtension(path);
  const bool isScratch = path.ends_with(".tmp") || path.ends_with(".TMP");
  if (!format || isScratch) return;
  throw CommandError(path + ": curves are no mesh (.svg, .dxf, or a binary curves file)");
}

void Copy(const std::string& from, const std::string& to) {
  std::ofstream stream = formats::OpenForWriting(to);
  const std::string bytes = formats::ReadWholeFile(from);
  stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  stream.close();
  if (!stream) throw formats::FileError(to + ": cannot be written completely");
}

}  // namespace

CurvesTarget::CurvesTarget(const std::string& path)
    : m_format(formats::DrawingFormatByExtension(path)), m_place(path) {
  RefuseMeshExtension(path);
}

void CurvesTarget::Put(const std::string& file, const formats::Curves& curves, Units units) {
  m_place.Write([&](const std::string& path) {
    if (!m_format) return Copy(file, path);
    formats::WriteDrawing(path, curves, *m_format, DrawingUnitFor(units));
  });
  m_place.PutInPlace();
}

std::string CurvesTarget::FormatName(formats::CurvesVariant variant) const {
  return m_format ? formats::NameOf(*m_format) : formats::NameOf(variant);
}

bool CurvesTarget::LosesHeightsOf(const formats::Curves& curves) const {
  return m_format && LosesHeights(curves, *m_format);
}

formats::DrawingUnit DrawingUnitFor(Units units) {
  return units == Units::kInches ? formats::DrawingUnit::Inch : formats::DrawingUnit::Millimetre;
}

}  // namespace host
