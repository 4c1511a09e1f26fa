#include "kernel/heal/UniteBodies.h"

#include <CGAL/Polygon_mesh_processing/corefinement.h>
#include <array>

#include "kernel/heal/CgalMesh.h"

namespace kernel {
namespace {

namespace pmp = CGAL::Polygon_mesh_processing;

// Hands colours on to the parts of split and copied facets.
class ColourKeeper : public pmp::Corefinement::Default_visitor<CgalMesh> {
 public:
  using Face = CgalMesh::Face_index;

  explicit ColourKeeper(const std::function<void()>& check) : m_check(&check) {}

  void before_subface_creations(Face whole, CgalMesh& mesh) { m_colour = ColoursOf(mesh)[whole]; }
  void after_subface_created(Face part, CgalMesh& mesh) { ColoursOf(mesh)[part] = m_colour; }
  void after_face_copy(Face from, const CgalMesh& source, Face to, CgalMesh& target) {
    const auto colours = source.property_map<Face, int>("f:colour").first;
    ColoursOf(target)[to] = colours[from];
  }
  void progress_filtering_intersections(double) const { (*m_check)(); }
  void triangulating_faces_step() const { (*m_check)(); }
  void edge_face_intersections_step() const { (*m_check)(); }

 private:
  const std::function<void()>* m_check;  // visitors are copied
  int m_colour = -1;
};

}  // namespace

std::optional<SurfaceMesh> UniteBodies(const SurfaceMesh& a, const SurfaceMesh& b,
                                       const std::function<void()>& check) {
  const std::unique_lock turn = CgalTurn();
  // In one array: the library goes by the order of their addresses.
  std::array<CgalMesh, 2> operands;
  auto& [first, second] = operands;
  CgalMesh both;
  if (!ToCgal(a, first) || !ToCgal(b, second)) return std::nullopt;
  ColoursOf(both);
  try {
    const bool united = pmp::corefine_and_compute_union(
        first, second, both,
        CGAL::parameters::visitor(ColourKeeper(check)).throw_on_self_intersection(true));
    if (!united) return std::nullopt;
  } catch (const pmp::Corefinement::Self_intersection_exception&) {
    return std::nullopt;
  }
  return FromCgal(both, ColoursOf(both));
}

}  // namespace kernel
