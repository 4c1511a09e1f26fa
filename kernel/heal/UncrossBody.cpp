#include "kernel/heal/UncrossBody.h"

#include <CGAL/Polygon_mesh_processing/repair_self_intersections.h>

#include "kernel/heal/CgalMesh.h"

namespace kernel {
namespace {

namespace pmp = CGAL::Polygon_mesh_processing;

class Watcher : public pmp::experimental::Remove_self_intersection_default_visitor<CgalMesh> {
 public:
  explicit Watcher(const std::function<void()>& check) : m_check(&check) {}

  void start_iteration() { (*m_check)(); }
  void start_component_handling() { (*m_check)(); }

 private:
  const std::function<void()>* m_check;  // visitors are copied
};

}  // namespace

std::optional<SurfaceMesh> UncrossBody(const SurfaceMesh& body, double tolerance,
                                       const std::function<void()>& check) {
  const std::unique_lock turn = CgalTurn();
  CgalMesh mesh;
  if (tolerance <= 0 || !ToCgal(body, mesh)) return std::nullopt;
  pmp::experimental::remove_self_intersections(
      mesh, CGAL::parameters::polyhedral_envelope_epsilon(tolerance).visitor(Watcher(check)));
  if (!CGAL::is_closed(mesh)) return std::nullopt;
  const CgalColours colours = ColoursOf(mesh);
  SpreadColours(mesh, colours);
  return FromCgal(mesh, colours);
}

}  // namespace kernel
