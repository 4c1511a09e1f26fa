#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "formats/meshes/PlyHeader.h"

namespace formats {

// The values behind a polygon file's header, one after the other, whatever their encoding. Doubles
// hold every type's values exactly.
class PlyValues {
 public:
  virtual ~PlyValues() = default;

  // Ahead of an element's count of lines or records: refuses counts that the file cannot hold.
  virtual void BeginElements(const PlyElement& element) = 0;
  // Ahead of each of them.
  virtual void BeginElement() = 0;
  virtual double Value(PlyType type) = 0;
  // The entries of a list, its count ahead of them.
  std::vector<double> List(const PlyProperty& property);

  [[noreturn]] virtual void Fail(const std::string& reason) const = 0;

 protected:
  // Refuses a list that is longer than the rest of the file.
  virtual void CheckRoom(std::uint64_t entries, PlyType type) const = 0;
};

std::unique_ptr<PlyValues> OpenPlyValues(const std::string& path, const PlyHeader& header);

}  // namespace formats
