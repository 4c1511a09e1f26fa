// Another library's readers and writers as a witness: each must read what the other has written.
#include <CGAL/IO/OBJ.h>
#include <CGAL/IO/OFF.h>
#include <CGAL/IO/PLY.h>
#include <CGAL/IO/STL.h>
#include <CGAL/Simple_cartesian.h>
#include <array>
#include <cstdint>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "formats/meshes/MeshFile.h"
#include "support/TempDirectory.h"

namespace {

using Point = CGAL::Simple_cartesian<double>::Point_3;
using formats::Mesh;
using formats::MeshEncoding;
using formats::MeshFormat;
using support::TempDirectory;

struct Soup {
  std::vector<Point> points;
  std::vector<std::vector<std::size_t>> polygons;
};

// Coordinates that single precision and six digits hold exactly: what the other side can keep.
Mesh Pyramid() {
  return {{{0, 0, 0}, {4, 0, 0}, {4, 4.5, 0}, {0, 4.5, 0}, {2, 2.25, 3.125}},
          {{{0, 1, 4}, 1},
           {{1, 2, 4}, 2},
           {{2, 3, 4}, 3},
           {{3, 0, 4}, 4},
           {{0, 2, 1}, 5},
           {{0, 3, 2}, 6}}};
}

// The corners of the facets in order; numbers may differ, places may not.
std::vector<std::array<double, 3>> CornersOf(const Mesh& mesh) {
  std::vector<std::array<double, 3>> corners;
  for (const formats::Facet& facet : mesh.facets) {
    for (const std::int32_t v : facet.vertices) {
      corners.push_back(mesh.vertices[static_cast<std::size_t>(v)]);
    }
  }
  return corners;
}

std::vector<std::array<double, 3>> CornersOf(const Soup& soup) {
  std::vector<std::array<double, 3>> corners;
  for (const auto& polygon : soup.polygons) {
    for (const std::size_t v : polygon) {
      const Point& p = soup.points[v];
      corners.push_back({p.x(), p.y(), p.z()});
    }
  }
  return corners;
}

Soup SoupOf(const Mesh& mesh) {
  Soup soup;
  for (const auto& v : mesh.vertices) soup.points.emplace_back(v[0], v[1], v[2]);
  for (const formats::Facet& facet : mesh.facets) {
    soup.polygons.emplace_back(facet.vertices.begin(), facet.vertices.end());
  }
  return soup;
}

class CgalSoup : public testing::Test {
 protected:
  std::string Written(const char* name, MeshFormat format, MeshEncoding encoding) {
    const std::string path = directory_ / name;
    formats::WriteMesh(path, Pyramid(), format, encoding);
    return path;
  }

  TempDirectory directory_;
  Soup soup_;
};

TEST_F(CgalSoup, ReadsOurStl) {
  for (const MeshEncoding encoding : {MeshEncoding::Binary, MeshEncoding::Ascii}) {
    soup_ = {};
    const std::string path = Written("m.stl", MeshFormat::Stl, encoding);
    ASSERT_TRUE(CGAL::IO::read_STL(path, soup_.points, soup_.polygons));
    EXPECT_EQ(CornersOf(soup_), CornersOf(Pyramid()));
  }
}

TEST_F(CgalSoup, ReadsOurPly) {
  for (const MeshEncoding encoding : {MeshEncoding::Binary, MeshEncoding::Ascii}) {
    soup_ = {};
    const std::string path = Written("m.ply", MeshFormat::Ply, encoding);
    std::ifstream stream(path, std::ios::binary);
    std::vector<CGAL::IO::Color> faceColours;
    std::vector<CGAL::IO::Color> vertexColours;
    ASSERT_TRUE(
        CGAL::IO::read_PLY(stream, soup_.points, soup_.polygons, faceColours, vertexColours));
    EXPECT_EQ(CornersOf(soup_), CornersOf(Pyramid()));
    ASSERT_EQ(faceColours.size(), 6U);
    EXPECT_EQ(faceColours[0], CGAL::IO::Color(230, 60, 50));
  }
}

TEST_F(CgalSoup, ReadsOurObjAndOff) {
  ASSERT_TRUE(CGAL::IO::read_OBJ(Written("m.obj", MeshFormat::Obj, MeshEncoding::Ascii),
                                 soup_.points, soup_.polygons));
  EXPECT_EQ(CornersOf(soup_), CornersOf(Pyramid()));
  soup_ = {};
  ASSERT_TRUE(CGAL::IO::read_OFF(Written("m.off", MeshFormat::Off, MeshEncoding::Ascii),
                                 soup_.points, soup_.polygons));
  EXPECT_EQ(CornersOf(soup_), CornersOf(Pyramid()));
}

TEST_F(CgalSoup, WritesWhatWeRead) {
  const Soup soup = SoupOf(Pyramid());
  for (const bool binary : {true, false}) {
    const auto mode = CGAL::parameters::use_binary_mode(binary);
    ASSERT_TRUE(CGAL::IO::write_STL(directory_ / "m.stl", soup.points, soup.polygons, mode));
    EXPECT_EQ(CornersOf(formats::ReadMesh(directory_ / "m.stl")), CornersOf(Pyramid()));
    ASSERT_TRUE(CGAL::IO::write_PLY(directory_ / "m.ply", soup.points, soup.polygons, mode));
    EXPECT_EQ(CornersOf(formats::ReadMesh(directory_ / "m.ply")), CornersOf(Pyramid()));
  }
  ASSERT_TRUE(CGAL::IO::write_OBJ(directory_ / "m.obj", soup.points, soup.polygons));
  EXPECT_EQ(CornersOf(formats::ReadMesh(directory_ / "m.obj")), CornersOf(Pyramid()));
  ASSERT_TRUE(CGAL::IO::write_OFF(directory_ / "m.off", soup.points, soup.polygons));
  EXPECT_EQ(CornersOf(formats::ReadMesh(directory_ / "m.off")), CornersOf(Pyramid()));
}

}  // namespace
