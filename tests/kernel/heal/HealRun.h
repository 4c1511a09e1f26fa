#pragma once

#include <string>
#include <vector>

#include "callbacks/UIDialog.h"
#include "formats/Mesh.h"
#include "support/geometry/Point.h"

namespace heal_test {

/// Records every callback; throws Stop at call number `throwAt` (counted from 1).
class HealDialog : public UIDialog {
 public:
  struct Stop {};

  void CreateWait(const char* message) override { Add(std::string("wait ") + message); }
  void UpdateWait(const char* message) override { Add(std::string("wait ") + message); }
  void EndWait() override { Add("end wait"); }
  void CreateProgress(const char* message, int total) override;
  void ResetWait(const char* message, int total) override;
  void UpdateProgress(const char* message) override { Add(std::string("update ") + message); }
  void SetProgress(int count) override { Add("count " + std::to_string(count)); }
  void EndProgress() override { Add("end"); }
  void ErrorMessage(const char* message, bool fatal) override;

  int throwAt = 0;
  std::vector<std::string> calls, stages, warnings, errors;

 private:
  void Add(const std::string& line);
};

struct HealResult {
  std::string input, output;  // bytes of the files; `output` as it was when nothing was written
  formats::Mesh mesh;         // read from the output, when that is a surface
  std::vector<std::string> names;  // all that lies in the run's directory afterwards
  bool stopped = false;            // the dialog threw
  HealDialog dialog;
};

/// What the output file holds before the run.
extern const std::string kOlderOutput;

HealResult RunHeal(const formats::Mesh& mesh, double tolerance, int throwAt = 0);
HealResult RunHealOnBytes(const std::string& bytes, double tolerance, int throwAt = 0);

/// Fails the test unless the run wrote what it read, byte for byte, and warned of nothing.
void ExpectUnchanged(const HealResult& run);

/// Fails the test when the result is not closed, edge-manifold and outward, has a facet of no area,
/// or an error or a warning was given.
void ExpectMended(const HealResult& run);

/// A torus about the z axis through `centre`, radii 10 and 4, two facets a cell.
formats::Mesh Torus(int round, int across, const support::Point& centre = {0, 0, 0});

/// Adds a mesh with its own vertices.
void Add(formats::Mesh& mesh, const formats::Mesh& other);

/// Turns all facets over.
formats::Mesh Reversed(formats::Mesh mesh);

/// Every facet with three vertices of its own.
formats::Mesh Soup(const formats::Mesh& mesh);

std::size_t CountColour(const formats::Mesh& mesh, std::uint8_t colour);
std::size_t Components(const formats::Mesh& mesh);

}  // namespace heal_test
