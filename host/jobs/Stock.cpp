#include "host/jobs/Stock.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <string_view>

#include "formats/FileError.h"
#include "formats/meshes/MeshFile.h"

namespace host {

namespace {

constexpr std::string_view kBox = "box:";

[[noreturn]] void FailBox(const std::string& description, const std::string& reason) {
  throw formats::FileError(description + ": " + reason);
}

std::array<double, 6> CornersOf(const std::string& description) {
  std::string_view rest = std::string_view(description).substr(kBox.size());
  std::array<double, 6> corners{};
  for (std::size_t i = 0; i < corners.size(); ++i) {
    const std::string_view text = rest.substr(0, rest.find(','));
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), corners[i]);
    const bool last = i + 1 == corners.size();
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(corners[i]) ||
        last != (text.size() == rest.size())) {
      FailBox(description, "a box takes six numbers: box:x0,y0,z0,x1,y1,z1");
    }
    rest.remove_prefix(last ? rest.size() : text.size() + 1);
  }
  return corners;
}

formats::Mesh BoxFrom(const std::string& description) {
  const auto corners = CornersOf(description);
  for (std::size_t axis = 0; axis < 3; ++axis) {
    if (!(corners[axis] < corners[axis + 3])) {
      FailBox(description, std::string("the box has no extent along ") + "xyz"[axis]);
    }
  }
  return BoxMesh({corners[0], corners[1], corners[2]}, {corners[3], corners[4], corners[5]});
}

}  // namespace

bool IsBox(const std::string& description) { return description.starts_with(kBox); }

formats::Mesh BoxMesh(const std::array<double, 3>& low, const std::array<double, 3>& high) {
  formats::Mesh mesh;
  for (unsigned corner = 0; corner < 8; ++corner) {
    mesh.vertices.push_back({(corner & 1U) != 0 ? high[0] : low[0],
                             (corner & 2U) != 0 ? high[1] : low[1],
                             (corner & 4U) != 0 ? high[2] : low[2]});
  }
  constexpr std::int32_t kQuads[6][4] = {{0, 2, 3, 1}, {4, 5, 7, 6}, {0, 1, 5, 4},
                                         {2, 6, 7, 3}, {0, 4, 6, 2}, {1, 3, 7, 5}};
  for (const auto& quad : kQuads) {
    mesh.facets.push_back({{quad[0], quad[1], quad[2]}, 0});
    mesh.facets.push_back({{quad[0], quad[2], quad[3]}, 0});
  }
  return mesh;
}

formats::Mesh StockFrom(const std::string& description) {
  return IsBox(description) ? BoxFrom(description) : formats::ReadMesh(description);
}

}  // namespace host
