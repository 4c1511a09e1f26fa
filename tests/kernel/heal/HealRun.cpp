#include "HealRun.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <numbers>
#include <utility>

#include "formats/BinarySurface.h"
#include "formats/FileError.h"
#include "formats/MeshMeasures.h"
#include "platform/IFHeal.h"
#include "support/TempDirectory.h"
#include "support/geometry/MeshChecks.h"

namespace heal_test {
namespace {

HealResult RunOnFile(const support::TempDirectory& directory, double tolerance, int throwAt) {
  HealResult result;
  result.dialog.throwAt = throwAt;
  std::string input = (directory.Path() / "in.iff").string();
  std::string output = (directory.Path() / "out.iff").string();
  result.input = support::ReadWholeFile(input);
  support::WriteWholeFile(output, kOlderOutput);
  try {
    IFHeal heal(&result.dialog);
    heal.Run(tolerance, input.data(), output.data());
  } catch (const HealDialog::Stop&) {
    result.stopped = true;
  }
  result.output = support::ReadWholeFile(output);
  if (result.output != kOlderOutput) result.mesh = formats::ReadBinarySurface(output);
  result.names = support::NamesIn(directory.Path());
  return result;
}

}  // namespace

const std::string kOlderOutput = "an older result";

void HealDialog::Add(const std::string& line) {
  calls.push_back(line);
  if (static_cast<int>(calls.size()) == throwAt) throw Stop();
}

void HealDialog::CreateProgress(const char* message, int total) {
  stages.push_back(message);
  Add("progress " + std::to_string(total));
}

void HealDialog::ResetWait(const char* message, int total) {
  EXPECT_EQ(message, stages.back());
  Add("reset " + std::to_string(total));
}

void HealDialog::ErrorMessage(const char* message, bool fatal) {
  (fatal ? errors : warnings).push_back(message);
  Add(std::string(fatal ? "error " : "warning ") + message);
}

HealResult RunHeal(const formats::Mesh& mesh, double tolerance, int throwAt) {
  const support::TempDirectory directory;
  formats::WriteBinarySurface((directory.Path() / "in.iff").string(), mesh);
  return RunOnFile(directory, tolerance, throwAt);
}

HealResult RunHealOnBytes(const std::string& bytes, double tolerance, int throwAt) {
  const support::TempDirectory directory;
  support::WriteWholeFile(directory.Path() / "in.iff", bytes);
  return RunOnFile(directory, tolerance, throwAt);
}

void ExpectUnchanged(const HealResult& run) {
  EXPECT_TRUE(run.output == run.input);
  EXPECT_TRUE(run.dialog.warnings.empty()) << run.dialog.warnings[0];
  EXPECT_TRUE(run.dialog.errors.empty()) << run.dialog.errors[0];
}

void ExpectMended(const HealResult& run) {
  EXPECT_TRUE(run.dialog.warnings.empty()) << run.dialog.warnings[0];
  EXPECT_TRUE(run.dialog.errors.empty()) << run.dialog.errors[0];
  EXPECT_EQ(support::ClosedFault(run.mesh), "");
  EXPECT_EQ(support::ZeroAreaFault(run.mesh), "");
  EXPECT_EQ(support::VertexFault(run.mesh), "");
  EXPECT_GT(support::Volume(run.mesh), 0);
}

formats::Mesh Torus(int round, int across, const support::Point& centre) {
  formats::Mesh mesh;
  for (int i = 0; i < round; ++i) {
    const double u = 2 * std::numbers::pi * i / round;
    for (int j = 0; j < across; ++j) {
      const double v = 2 * std::numbers::pi * j / across;
      const double r = 10 + 4 * std::cos(v);
      mesh.vertices.push_back(
          support::Plus(centre, {r * std::cos(u), r * std::sin(u), 4 * std::sin(v)}));
    }
  }
  const auto at = [&](int i, int j) { return i % round * across + j % across; };
  for (int i = 0; i < round; ++i) {
    for (int j = 0; j < across; ++j) {
      mesh.facets.push_back({{at(i, j), at(i + 1, j), at(i + 1, j + 1)}, 1});
      mesh.facets.push_back({{at(i, j), at(i + 1, j + 1), at(i, j + 1)}, 2});
    }
  }
  return mesh;
}

void Add(formats::Mesh& mesh, const formats::Mesh& other) {
  const auto first = static_cast<std::int32_t>(mesh.vertices.size());
  mesh.vertices.insert(mesh.vertices.end(), other.vertices.begin(), other.vertices.end());
  for (formats::Facet facet : other.facets) {
    for (std::int32_t& vertex : facet.vertices) vertex += first;
    mesh.facets.push_back(facet);
  }
}

formats::Mesh Reversed(formats::Mesh mesh) {
  for (formats::Facet& facet : mesh.facets) std::swap(facet.vertices[1], facet.vertices[2]);
  return mesh;
}

formats::Mesh Soup(const formats::Mesh& mesh) {
  formats::Mesh soup;
  for (formats::Facet facet : mesh.facets) {
    for (std::int32_t& vertex : facet.vertices) {
      soup.vertices.push_back(mesh.vertices[static_cast<std::size_t>(vertex)]);
      vertex = static_cast<std::int32_t>(soup.vertices.size()) - 1;
    }
    soup.facets.push_back(facet);
  }
  return soup;
}

std::size_t CountColour(const formats::Mesh& mesh, std::uint8_t colour) {
  return static_cast<std::size_t>(
      std::count_if(mesh.facets.begin(), mesh.facets.end(),
                    [&](const formats::Facet& facet) { return facet.colour == colour; }));
}

std::size_t Components(const formats::Mesh& mesh) {
  return formats::AnalyseTopology(mesh).components;
}

}  // namespace heal_test
