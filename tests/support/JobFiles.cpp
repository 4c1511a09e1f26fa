#include "support/JobFiles.h"

#include "support/FileBuilder.h"

namespace support {
namespace {

template <typename Array>
void AppendDoubles(FileBuilder& file, const Array& values) {
  for (const double value : values) file.Double(value);
}

int ToolType(const Path& path) { return static_cast<int>(path.tool.index()) + 1; }

std::size_t DoublesPerPosition(const Path& path) { return path.pathType == 1 ? 3 : 6; }

void AppendPlacement(FileBuilder& file, const Path& path) {
  file.Double(path.sweepToler).Double(path.pathToler).Double(path.compressToler);
  AppendDoubles(file, path.matrix);
  AppendDoubles(file, path.origin);
}

void AppendCounts(FileBuilder& file, const CustomBlock& tool) {
  file.Int32(static_cast<std::int64_t>(tool.arcs.size()));
  file.Int32(static_cast<std::int64_t>(tool.lines.size()));
}

// The tool blocks of a per-path file: flags and values apart, piece by piece in parallel arrays.
struct PathInfoTool {
  FileBuilder& file;
  void operator()(const ConvexBlock& tool) const { AppendDoubles(file, tool.values); }
  void operator()(const UndercutBlock& tool) const {
    file.Uint8(tool.useFlip).Uint8(tool.useRegular);
    AppendDoubles(file, tool.values);
  }
  void operator()(const CustomBlock& tool) const {
    AppendCounts(file, tool);
    for (const auto& arc : tool.arcs) file.Uint8(arc.flip);
    for (const auto& arc : tool.arcs) file.Int32(arc.index);
    for (const auto& arc : tool.arcs) AppendDoubles(file, arc.values);
    for (const auto& arc : tool.arcs) file.Uint8(arc.convex);
    for (const auto& line : tool.lines) file.Uint8(line.flip);
    for (const auto& line : tool.lines) file.Int32(line.index);
    for (const auto& line : tool.lines) AppendDoubles(file, line.values);
  }
};

// The tool blocks of the interchange file: one piece after another.
struct InterchangeTool {
  FileBuilder& file;
  void operator()(const ConvexBlock& tool) const { AppendDoubles(file, tool.values); }
  void operator()(const UndercutBlock& tool) const {
    const auto& v = tool.values;
    file.Doubles({v[0], v[1]}).Uint8(tool.useFlip);
    file.Doubles({v[2], v[3], v[4], v[5], v[6], v[7]}).Uint8(tool.useRegular);
    file.Doubles({v[8], v[9], v[10], v[11], v[12], v[13]});
  }
  void operator()(const CustomBlock& tool) const {
    AppendCounts(file, tool);
    for (const auto& arc : tool.arcs) {
      file.Int32(arc.index);
      AppendDoubles(file, arc.values);
      file.Uint8(arc.flip).Uint8(arc.convex);
    }
    for (const auto& line : tool.lines) {
      file.Int32(line.index);
      AppendDoubles(file, line.values);
      file.Uint8(line.flip);
    }
  }
};

}  // namespace

Surface Cube(double edge, unsigned char colour) {
  Surface cube;
  for (const double z : {0.0, edge}) {
    for (const double y : {0.0, edge}) {
      for (const double x : {0.0, edge}) cube.vertices.push_back({x, y, z});
    }
  }
  cube.facets = {{{1, 3, 4}, colour}, {{1, 4, 2}, colour}, {{5, 6, 8}, colour},
                 {{5, 8, 7}, colour}, {{1, 2, 6}, colour}, {{1, 6, 5}, colour},
                 {{3, 7, 8}, colour}, {{3, 8, 4}, colour}, {{1, 5, 7}, colour},
                 {{1, 7, 3}, colour}, {{2, 4, 8}, colour}, {{2, 8, 6}, colour}};
  return cube;
}

Surface OneFacet(double size, unsigned char colour) {
  return {{{0, 0, 0}, {size, 0, 0}, {0, size, 0}}, {{{1, 2, 3}, colour}}};
}

std::string BinarySurfaceBytes(const Surface& surface) {
  FileBuilder file;
  file.Text("binary surface");
  file.Int32(static_cast<std::int64_t>(surface.vertices.size()));
  file.Int32(static_cast<std::int64_t>(surface.facets.size()));
  for (const auto& vertex : surface.vertices) AppendDoubles(file, vertex);
  for (const auto& facet : surface.facets) {
    for (const std::int32_t number : facet.numbers) file.Int32(number);
    file.Uint8(facet.colour);
  }
  return file.Bytes();
}

std::string CompareInfoBytes(const Bands& bands) {
  FileBuilder file;
  file.Int32(bands.stockColour).Int32(bands.divisions);
  for (const std::uint32_t colour : bands.colours) file.Uint32(colour);
  return file.Doubles(bands.distances).Bytes();
}

std::string PathInfoHeadBytes(const Path& path) {
  FileBuilder file;
  file.Int16(path.pathType).Uint8(path.colour);
  AppendPlacement(file, path);
  file.Int16(ToolType(path));
  std::visit(PathInfoTool{file}, path.tool);
  return file.Bytes();
}

std::string PathInfoBytes(const Path& path) {
  FileBuilder positions;
  positions.Doubles(path.positions);
  return PathInfoHeadBytes(path) + positions.Bytes();
}

std::string InterchangeBytes(const std::vector<Path>& paths) {
  FileBuilder file;
  file.Text("binary toolpaths").Int32(0).Uint32(static_cast<std::uint32_t>(paths.size()));
  for (const Path& path : paths) {
    file.Int32(path.pathType).Int32(path.colour);
    AppendPlacement(file, path);
    file.Int32(ToolType(path));
    std::visit(InterchangeTool{file}, path.tool);
    file.Uint32(1).Uint32(
        static_cast<std::uint32_t>(path.positions.size() / DoublesPerPosition(path)));
    file.Doubles(path.positions);
  }
  return file.Bytes();
}

}  // namespace support
