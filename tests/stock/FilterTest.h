#pragma once

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "stock/FilterStockByColor.h"
#include "support/JobFiles.h"
#include "support/TempDirectory.h"

/// A filter from "in.iff" to "out.iff", with the directory known to hosts as "job" (Watch).
class FilterTest : public ::testing::Test {
 protected:
  std::filesystem::path Input() const { return m_directory.Path() / "in.iff"; }
  std::filesystem::path Output() const { return m_directory.Path() / "out.iff"; }
  std::string Spelled(const std::string& name) const {
    return support::AddinSpelling(m_directory.Path()) + name;
  }
  std::string OutputBytes() const { return support::ReadWholeFile(Output()); }

  /// Makes the host's events speak of the directory as "job".
  template <typename Host>
  void Watch(Host& host) const {
    host.events.Alias(m_directory.Path().string(), "job");
  }

  bool FilterAgain(const std::vector<unsigned char>& colours) const {
    return FilterStockByColor(Spelled("in.iff").c_str(), Spelled("out.iff").c_str(),
                              static_cast<unsigned short>(colours.size()), colours.data());
  }
  bool Filter(const std::string& inputBytes, const std::vector<unsigned char>& colours) const {
    support::WriteWholeFile(Input(), inputBytes);
    return FilterAgain(colours);
  }
  bool Filter(const support::Surface& input, const std::vector<unsigned char>& colours) const {
    return Filter(support::BinarySurfaceBytes(input), colours);
  }

 private:
  support::TempDirectory m_directory;
};

/// Two facets of colour 7, one of 9, one of 200, and a vertex, the third, that no facet uses.
inline support::Surface FourColouredFacets() {
  return {{{0, 0, 0}, {1, 0, 0}, {9, 9, 9}, {0, 1, 0}, {0, 0, 1}},
          {{{1, 2, 4}, 7}, {{1, 4, 5}, 9}, {{1, 5, 2}, 7}, {{2, 5, 4}, 200}}};
}

/// What any filter of it begins with: the vertices that some facet uses.
inline support::Surface ItsUsedVertices() {
  return {{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}, {}};
}
