#pragma once

#include <optional>
#include <string>

#include "formats/curves/DrawingFile.h"
#include "host/qzhost/Options.h"
#include "host/qzhost/ResultPlace.h"

namespace host {

/// Where curves are to appear: as a drawing when the path's extension is that of one, else in the
/// binary file that the add-in makes. The constructor throws as that of ResultPlace does, and
/// CommandError for the extension of a mesh format.
class CurvesTarget {
 public:
  explicit CurvesTarget(const std::string& path);

  /// Puts them there in one go; `file` holds them.
  void Put(const std::string& file, const formats::Curves& curves, Units units);

  /// "SVG", "DXF", or the name of the variant.
  std::string FormatName(formats::CurvesVariant variant) const;
  /// Whether z is lost there.
  bool LosesHeightsOf(const formats::Curves& curves) const;

 private:
  std::optional<formats::DrawingFormat> m_format;
  ResultPlace m_place;
};

/// The unit of drawings.
formats::DrawingUnit DrawingUnitFor(Units units);

}  // namespace host
